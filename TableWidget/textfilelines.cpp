#include "textfilelines.h"

#include <QIODevice>
#include <QTextStream>

#include <algorithm>
#include <cstring>

namespace {
constexpr qint64 ChunkBytes = 256 * 1024;

// Where the first line end (CR or LF) lies in bytes, or size for none.
qint64 endOfLine(const char *bytes, qint64 size)
{
    const void *lf = std::memchr(bytes, '\n', size_t(size));
    const qint64 before = lf ? static_cast<const char *>(lf) - bytes : size;
    const void *cr = std::memchr(bytes, '\r', size_t(before));
    return cr ? static_cast<const char *>(cr) - bytes : before;
}
} // namespace

TextFileLines::TextFileLines(QIODevice *device, qint64 maxLineBytes, qint64 maxBytes)
    : m_device(device)
    , m_maxLineBytes(std::max<qint64>(1, maxLineBytes))
    , m_maxBytes(std::max<qint64>(0, maxBytes))
{
}

bool TextFileLines::fill()
{
    if (m_position > 0) {
        m_buffer.remove(0, int(m_position));
        m_position = 0;
    }
    const qint64 want = std::min(ChunkBytes, m_maxBytes - m_read);
    const QByteArray chunk = want > 0 ? m_device->read(want) : QByteArray();
    if (chunk.isEmpty()) {
        m_exhausted = true;
        return false;
    }
    m_read += chunk.size();
    m_buffer += chunk;
    return true;
}

bool TextFileLines::atEnd() const
{
    return m_position >= m_buffer.size() && (m_exhausted || m_device->atEnd());
}

bool TextFileLines::stoppedEarly() const
{
    return m_exhausted && !m_device->atEnd();
}

QByteArray TextFileLines::nextBytes()
{
    ++m_count;
    QByteArray line;
    QByteArray ending;
    bool cut = false;
    for (;;) {
        const char *start = m_buffer.constData() + m_position;
        const qint64 available = m_buffer.size() - m_position;
        const qint64 length = endOfLine(start, available);
        const qint64 room = m_maxLineBytes - line.size();
        if (length > room)
            cut = true;
        if (room > 0)
            line.append(start, int(std::min(length, room)));
        m_position += length;
        if (length < available) {
            ending = QByteArray(1, start[length]);
            ++m_position;
            break;
        }
        if (!fill())
            break;
    }
    // A CR may be the first half of a CR-LF whose LF is in the next piece.
    if (ending == "\r" && (m_position < m_buffer.size() || fill()) && m_buffer.at(int(m_position)) == '\n') {
        ++m_position;
        ending = "\r\n";
    }
    if (!m_endKnown && !ending.isEmpty()) {
        m_lineEnd = ending;
        m_endKnown = true;
    }
    if (cut)
        ++m_cut;
    return line;
}

QString TextFileLines::next()
{
    const QByteArray line = nextBytes();
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
