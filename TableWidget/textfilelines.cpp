#include "textfilelines.h"

#include <QIODevice>
#include <QTextStream>

#include <algorithm>
#include <cstring>

namespace {
constexpr qint64 ChunkBytes = 256 * 1024;
} // namespace

TextFileLines::TextFileLines(QIODevice *device, qint64 maxLineBytes)
    : m_device(device)
    , m_maxLineBytes(std::max<qint64>(1, maxLineBytes))
{
}

bool TextFileLines::fill()
{
    if (m_position > 0) {
        m_buffer.remove(0, m_position);
        m_position = 0;
    }
    const QByteArray chunk = m_device->read(ChunkBytes);
    if (chunk.isEmpty())
        return false;
    m_buffer += chunk;
    return true;
}

bool TextFileLines::atEnd() const
{
    return m_position >= m_buffer.size() && m_device->atEnd();
}

QString TextFileLines::next()
{
    ++m_count;
    QByteArray line;
    bool cut = false;
    for (;;) {
        const char *start = m_buffer.constData() + m_position;
        const qint64 available = m_buffer.size() - m_position;
        const void *found = std::memchr(start, '\n', size_t(available));
        const qint64 length = found ? static_cast<const char *>(found) - start : available;
        const qint64 room = m_maxLineBytes - line.size();
        if (length > room)
            cut = true;
        if (!cut || room > 0)
            line.append(start, int(std::min(length, std::max<qint64>(0, room))));
        m_position += found ? length + 1 : length;
        if (found || !fill())
            break;
    }
    if (cut)
        ++m_cut;
    if (line.endsWith('\r'))
        line.chop(1);
    // With its length: a NUL byte does not end a line here, on either Qt major.
    return QString::fromUtf8(line.constData(), int(line.size()));
}

void TextFileLines::useUtf8(QTextStream *stream)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    stream->setCodec("UTF-8");
#else
    stream->setEncoding(QStringConverter::Utf8);
#endif
}
