#ifndef VALUECONVERSION_H
#define VALUECONVERSION_H

#include "hmiwidgets_export.h"

#include <QString>

#include <optional>

// Turns what an operator typed into the 32-bit word a controller variable holds. Anything that is
// not a number of the cell's kind, lies outside the cell's range or does not fit the word is
// refused: a typing slip must never be written as some other number.
class HMIWIDGETS_EXPORT ValueConversion
{
public:
    // The raw word of a number shown with decimals places: x * 10^decimals moved 0.1 away from zero
    // and truncated toward zero (so 12.345 with 2 places is 1234, -0.005 is 0).
    static std::optional<qint32> doubleToInt(double x, int decimals);

    // A keypad text by the cell's size code: 0 or 1 a signed integer in the radix, 2 or 3 an unsigned
    // one (stored bit for bit in the word), 4 a decimal number scaled by the decimal places; its
    // value must lie within lowest ... highest. Any other size code is the word 0.
    static std::optional<qint32> fromKeypad(const QString &text, int sizeCode, int radix, int decimals, double lowest,
                                            double highest);

    // A decimal number typed into the input line, scaled by the decimal places.
    static std::optional<qint32> fromDecimalText(const QString &text, int decimals);
};

#endif
