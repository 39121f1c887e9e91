#ifndef TEXTFILELINES_H
#define TEXTFILELINES_H

#include "hmiwidgets_export.h"

#include <QByteArray>
#include <QString>

class QIODevice;
class QTextStream;

// The lines of a table or NC file as UTF-8 text (on both Qt majors), whatever their ends: LF, CR-LF,
// or none on the last line. Files come from operators and USB sticks: a line longer than the limit
// is cut there and the rest of it skipped, so no line costs more than the limit.
class HMIWIDGETS_EXPORT TextFileLines
{
public:
    static constexpr qint64 MaxLineBytes = 1 << 20;

    explicit TextFileLines(QIODevice *device, qint64 maxLineBytes = MaxLineBytes);

    bool atEnd() const;
    QString next();
    // The lines read so far, and how many of them were cut.
    int count() const { return m_count; }
    int cutLines() const { return m_cut; }

    // Makes stream write UTF-8.
    static void useUtf8(QTextStream *stream);

private:
    // Reads the next piece of the device behind what is left; false at its end.
    bool fill();

    QIODevice *const m_device;
    QByteArray m_buffer;
    qint64 m_position = 0;
    const qint64 m_maxLineBytes;
    int m_count = 0;
    int m_cut = 0;
};

#endif
