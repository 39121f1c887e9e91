#include "screenshotcompare.h"

#include <QColor>

#include <cstdlib>

namespace {
bool differs(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) > ScreenshotCompare::ChannelTolerance
           || std::abs(qGreen(a) - qGreen(b)) > ScreenshotCompare::ChannelTolerance
           || std::abs(qBlue(a) - qBlue(b)) > ScreenshotCompare::ChannelTolerance;
}
} // namespace

ScreenshotCompare::ScreenshotCompare(const QImage &actual, const QImage &reference)
    : m_actual(actual.convertToFormat(QImage::Format_RGB32))
    , m_reference(reference.convertToFormat(QImage::Format_RGB32))
{
    if (m_actual.size() != m_reference.size())
        return;
    for (int y = 0; y < m_actual.height(); ++y) {
        const auto *a = reinterpret_cast<const QRgb *>(m_actual.constScanLine(y));
        const auto *r = reinterpret_cast<const QRgb *>(m_reference.constScanLine(y));
        for (int x = 0; x < m_actual.width(); ++x)
            m_different += differs(a[x], r[x]) ? 1 : 0;
    }
}

bool ScreenshotCompare::matches() const
{
    if (m_reference.isNull() || m_actual.size() != m_reference.size())
        return false;
    return m_different <= qint64(AllowedShare * m_actual.width() * m_actual.height());
}

QString ScreenshotCompare::summary() const
{
    if (m_reference.isNull())
        return QStringLiteral("no reference picture");
    if (m_actual.size() != m_reference.size())
        return QStringLiteral("size %1 x %2, reference %3 x %4")
            .arg(m_actual.width()).arg(m_actual.height()).arg(m_reference.width()).arg(m_reference.height());
    return QStringLiteral("%1 of %2 pixels differ").arg(m_different).arg(qint64(m_actual.width()) * m_actual.height());
}

QImage ScreenshotCompare::diffImage() const
{
    if (m_reference.isNull() || m_actual.size() != m_reference.size())
        return m_actual;
    QImage diff(m_actual.size(), QImage::Format_RGB32);
    for (int y = 0; y < diff.height(); ++y) {
        const auto *a = reinterpret_cast<const QRgb *>(m_actual.constScanLine(y));
        const auto *r = reinterpret_cast<const QRgb *>(m_reference.constScanLine(y));
        auto *d = reinterpret_cast<QRgb *>(diff.scanLine(y));
        for (int x = 0; x < diff.width(); ++x) {
            const int grey = 160 + qGray(r[x]) * 95 / 255;
            d[x] = differs(a[x], r[x]) ? qRgb(255, 0, 0) : qRgb(grey, grey, grey);
        }
    }
    return diff;
}
