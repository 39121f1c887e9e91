#ifndef BITWRITEACTION_H
#define BITWRITEACTION_H

#include "bitaddress.h"
#include "hmiwidgets_export.h"

#include <optional>

class ControllerBinding;

// One write of a bit on a channel resolved when the operator acted.
struct BitWrite
{
    int channel = 0;
    BitAddress bit;
    bool value = false;
};

// What a press of a bound button writes to its write bit.
class HMIWIDGETS_EXPORT BitWriteAction
{
public:
    enum Action { SetOn = 0, SetOff = 1, KeepOn = 2, KeepOff = 3, Invert = 4 };

    // SetOn/KeepOn write 1, SetOff/KeepOff write 0, Invert writes the negation of the bit read; the
    // channel is resolved once, so Invert reads and writes the same bit. For KeepOn and KeepOff the
    // result is the write that ends the press (the opposite value, on the same channel).
    static std::optional<BitWrite> press(const ControllerBinding &binding, int action, const BitAddress &bit);
};

#endif
