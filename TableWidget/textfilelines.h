#ifndef TEXTFILELINES_H
#define TEXTFILELINES_H

#include "hmiwidgets_export.h"

#include <QByteArray>
#include <QString>

#include <limits>

class QIODevice;
class QTextStream;

// The lines of a table file, an NC program or a word library, whatever their ends: LF, CR-LF, CR
// alone, or none on the last line. Files come from operators and USB sticks: a line longer than its
// limit is cut there and the rest of it skipped, and no more than maxBytes of the device are read, so
// neither a long line nor an endless file costs more than the limits.
class HMIWIDGETS_EXPORT TextFileLines
{
public:
    static constexpr qint64 MaxLineBytes = 1 << 20;

    explicit TextFileLines(QIODevice *device, qint64 maxLineBytes = MaxLineBytes,
                           qint64 maxBytes = std::numeric_limits<qint64>::max());

    bool atEnd() const;
    // The next line as UTF-8 text (on both Qt majors).
    QString next();
    // The next line's bytes as read, without its end.
    QByteArray nextBytes();
    // The lines read so far, and how many of them were cut.
    int count() const { return m_count; }
    int cutLines() const { return m_cut; }
    // Reading ended before the device did: at maxBytes, or on a read error.
    bool stoppedEarly() const;
    // The end of the first line that had one ("\n" before any).
    QByteArray lineEnd() const { return m_lineEnd; }

    // Makes stream write UTF-8.
    static void useUtf8(QTextStream *stream);

private:
    // Reads the next piece of the device behind what is left; false at its end or limit.
    bool fill();

    QIODevice *const m_device;
    QByteArray m_buffer;
    qint64 m_position = 0;
    const qint64 m_maxLineBytes;
    const qint64 m_maxBytes;
    qint64 m_read = 0;
    bool m_exhausted = false;
    int m_count = 0;
    int m_cut = 0;
    QByteArray m_lineEnd = "\n";
    bool m_endKnown = false;
};

#endif
