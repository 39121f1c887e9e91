#include "hexframe.h"

#include <zlib.h>

int HexFrame::hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

QByteArray HexFrame::encode(const QByteArray &data)
{
    return qCompress(data).toHex();
}

bool HexFrame::fromHex(const QByteArray &hexText, QByteArray *bytes)
{
    // QByteArray::fromHex skips what is not a digit; stored buffers must be hex throughout.
    const QByteArray text = hexText.trimmed();
    if (text.isEmpty() || text.size() % 2 != 0)
        return false;
    QByteArray out(text.size() / 2, Qt::Uninitialized);
    for (int i = 0; i < out.size(); ++i) {
        const int high = hexDigit(text.at(2 * i));
        const int low = hexDigit(text.at(2 * i + 1));
        if (high < 0 || low < 0)
            return false;
        out[i] = char((high << 4) | low);
    }
    *bytes = out;
    return true;
}

bool HexFrame::Budget::spend(qint64 bytes)
{
    if (bytes < 0 || bytes > m_left)
        return false;
    m_left -= bytes;
    return true;
}

bool HexFrame::uncompress(const QByteArray &block, QByteArray *data, Budget &budget)
{
    if (block.size() < 4)
        return false;
    const auto *bytes = reinterpret_cast<const uchar *>(block.constData());
    const quint32 claimed = (quint32(bytes[0]) << 24) | (quint32(bytes[1]) << 16) | (quint32(bytes[2]) << 8)
                            | quint32(bytes[3]);
    // The claim is spent up front: it is what gets allocated, and qCompress claims exactly its output.
    if (qint64(claimed) > MaxLayerSize || !budget.spend(qint64(claimed)))
        return false;

    if (claimed == 0) { // qCompress writes an empty input as the size alone
        data->clear();
        return true;
    }

    QByteArray out(int(claimed), Qt::Uninitialized);
    z_stream zs{};
    zs.next_in = const_cast<Bytef *>(bytes + 4);
    zs.avail_in = uInt(block.size() - 4);
    if (inflateInit(&zs) != Z_OK)
        return false;
    zs.next_out = reinterpret_cast<Bytef *>(out.data());
    zs.avail_out = uInt(out.size());
    // Output beyond the claimed size stops the inflate short of the stream end: refused.
    const int rc = inflate(&zs, Z_FINISH);
    const uLong produced = zs.total_out;
    inflateEnd(&zs);
    if (rc != Z_STREAM_END)
        return false;
    out.resize(int(produced));
    *data = out;
    return true;
}

bool HexFrame::decode(const QByteArray &hexText, QByteArray *data, Budget &budget)
{
    QByteArray block;
    return fromHex(hexText, &block) && uncompress(block, data, budget);
}

bool HexFrame::decode(const QByteArray &hexText, QByteArray *data)
{
    Budget budget;
    return decode(hexText, data, budget);
}
