#include "valueconversion.h"

#include <cmath>
#include <limits>

namespace {
constexpr double WordMin = double(std::numeric_limits<qint32>::min());
constexpr double WordMax = double(std::numeric_limits<qint32>::max());

bool inRange(double value, double lowest, double highest)
{
    return value >= lowest && value <= highest; // false for NaN limits too
}
} // namespace

std::optional<qint32> ValueConversion::doubleToInt(double x, int decimals)
{
    const double scaled = x * std::pow(10.0, std::max(0, decimals));
    if (!std::isfinite(scaled))
        return std::nullopt;
    const double moved = scaled > 0 ? scaled + 0.1 : scaled < 0 ? scaled - 0.1 : 0.0;
    const double whole = std::trunc(moved);
    if (whole < WordMin || whole > WordMax)
        return std::nullopt;
    return qint32(whole);
}

std::optional<qint32> ValueConversion::fromDecimalText(const QString &text, int decimals)
{
    bool ok = false;
    const double x = text.trimmed().toDouble(&ok);
    if (!ok)
        return std::nullopt;
    return doubleToInt(x, decimals);
}

std::optional<qint32> ValueConversion::fromKeypad(const QString &text, int sizeCode, int radix, int decimals,
                                                  double lowest, double highest)
{
    const QString t = text.trimmed();
    bool ok = false;
    switch (sizeCode) {
    case 0:
    case 1: {
        const qlonglong v = t.toLongLong(&ok, radix);
        if (!ok || v < qlonglong(WordMin) || v > qlonglong(WordMax) || !inRange(double(v), lowest, highest))
            return std::nullopt;
        return qint32(v);
    }
    case 2:
    case 3: {
        if (t.startsWith(QLatin1Char('-')) || t.startsWith(QLatin1Char('+')))
            return std::nullopt;
        const qulonglong v = t.toULongLong(&ok, radix);
        if (!ok || v > std::numeric_limits<quint32>::max() || !inRange(double(v), lowest, highest))
            return std::nullopt;
        return qint32(quint32(v));
    }
    case 4: {
        const double x = t.toDouble(&ok);
        if (!ok || !inRange(x, lowest, highest))
            return std::nullopt;
        return doubleToInt(x, decimals);
    }
    default:
        return 0;
    }
}
