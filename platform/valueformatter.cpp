#include "valueformatter.h"

#include <QtMath>

namespace {
constexpr int MaxWidth = 64;
constexpr int MaxDecimals = 9;
} // namespace

QString ValueFormatter::format(qint32 value, int sizeCode, int radix, int width, int decimals)
{
    width = qBound(0, width, MaxWidth);
    if (radix == 16 || radix == 8 || radix == 2) {
        quint64 bits = quint32(value);
        if (sizeCode == 1)
            bits &= 0xffu;
        else if (sizeCode == 2)
            bits &= 0xffffu;
        return QString::number(bits, radix).toUpper().rightJustified(width, QLatin1Char('0'));
    }
    decimals = qBound(0, decimals, MaxDecimals);
    const double scaled = double(value) / qPow(10.0, decimals);
    return QStringLiteral("%1").arg(scaled, width, 'f', decimals);
}
