#include "textfilelines.h"

#include <QIODevice>
#include <QTextStream>

#include <algorithm>

TextFileLines::TextFileLines(QIODevice *device, qint64 maxLineBytes)
    : m_device(device)
    , m_maxLineBytes(std::max<qint64>(1, maxLineBytes))
{
}

bool TextFileLines::atEnd() const
{
    return m_device->atEnd();
}

QString TextFileLines::next()
{
    QByteArray line = m_device->readLine(m_maxLineBytes + 1);
    ++m_count;
    if (line.endsWith('\n')) {
        line.chop(1);
    } else if (!m_device->atEnd()) {
        // Over the limit: drop the rest of this line, a piece at a time.
        ++m_cut;
        line.truncate(int(m_maxLineBytes));
        QByteArray rest;
        do {
            rest = m_device->readLine(64 * 1024);
        } while (!rest.isEmpty() && !rest.endsWith('\n'));
    }
    if (line.endsWith('\r'))
        line.chop(1);
    return QString::fromUtf8(line);
}

void TextFileLines::useUtf8(QTextStream *stream)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    stream->setCodec("UTF-8");
#else
    stream->setEncoding(QStringConverter::Utf8);
#endif
}
