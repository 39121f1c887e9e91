#ifndef BITWRITEACTION_H
#define BITWRITEACTION_H

#include "hmiwidgets_export.h"

class ControllerBinding;
struct BitAddress;

// What a press and a release of a bound button write to its write bit.
class HMIWIDGETS_EXPORT BitWriteAction
{
public:
    enum Action { SetOn = 0, SetOff = 1, KeepOn = 2, KeepOff = 3, Invert = 4 };

    // SetOn/KeepOn write 1, SetOff/KeepOff write 0, Invert writes the negation of the bit read.
    static void press(const ControllerBinding &binding, int action, const BitAddress &bit);
    // KeepOn writes 0 and KeepOff writes 1 again; the other actions write nothing.
    static void release(const ControllerBinding &binding, int action, const BitAddress &bit);
};

#endif
