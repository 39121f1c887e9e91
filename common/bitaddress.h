#ifndef BITADDRESS_H
#define BITADDRESS_H

#include "enumvalue.h"

// One controller bit of a widget, on the widget's link and channel. Type -1 means not configured.
struct BitAddress
{
    int type = -1;
    int address = 0;
    int bitIndex = 0;

    // Bits live in 32-bit words; bit-index setters ignore anything else.
    static constexpr bool isBitIndex(int index) { return index >= 0 && index <= 31; }
};

// Property setters of a bit's kind and bit index: values the widget does not declare are ignored (the
// kind with a warning naming the widget's property).
template <typename E>
void setBitType(const QObject *widget, const char *property, BitAddress &bit, E type)
{
    if (acceptEnum(widget, property, type))
        bit.type = int(type);
}

inline void setBitIndex(BitAddress &bit, int index)
{
    if (BitAddress::isBitIndex(index))
        bit.bitIndex = index;
}

#endif
