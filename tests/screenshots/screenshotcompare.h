#ifndef SCREENSHOTCOMPARE_H
#define SCREENSHOTCOMPARE_H

#include <QImage>
#include <QString>

// A rendering against its reference picture: pixels whose colour differs by more than a small
// tolerance in any channel count as different, and a few of them (anti-aliasing) are allowed.
class ScreenshotCompare
{
public:
    static constexpr int ChannelTolerance = 16;
    static constexpr double AllowedShare = 0.002;

    ScreenshotCompare(const QImage &actual, const QImage &reference);

    bool matches() const;
    QString summary() const;
    // The reference faded, with the differing pixels in red.
    QImage diffImage() const;

private:
    QImage m_actual;
    QImage m_reference;
    qint64 m_different = 0;
};

#endif
