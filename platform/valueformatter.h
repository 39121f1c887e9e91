#ifndef VALUEFORMATTER_H
#define VALUEFORMATTER_H

#include "hmiplatform_export.h"

#include <QString>

// Text of a data word as table cells show it, from a registration's format integers:
// sizeCode (bytes: 1, 2 or 4), radix (10, 16, 8 or 2), width and decimal places.
// Radix 10 shows value x 0.1^decimals in fixed point, right-aligned to the width; the other radices
// show the word's low sizeCode bytes as an unsigned number, zero-padded to the width.
class HMIPLATFORM_EXPORT ValueFormatter
{
public:
    static QString format(qint32 value, int sizeCode, int radix, int width, int decimals);
};

#endif
