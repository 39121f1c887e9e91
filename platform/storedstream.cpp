#include "storedstream.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>

namespace StoredStream {

namespace {
constexpr int MinStringSize = 4;
constexpr int MinFontSize = 4;
constexpr int MinFontPairSize = 8;
} // namespace

void prepare(QDataStream &stream)
{
    stream.setVersion(QDataStream::Qt_4_8);
    stream.setByteOrder(QDataStream::BigEndian);
}

bool readCount(QDataStream &in, quint32 &count, int minElementSize, quint32 maxCount)
{
    in >> count;
    if (in.status() != QDataStream::Ok)
        return false;
    if (count > maxCount) {
        in.setStatus(QDataStream::ReadCorruptData);
        return false;
    }
    const QIODevice *device = in.device();
    const qint64 left = device ? device->bytesAvailable() : 0;
    if (qint64(count) * minElementSize > left) {
        in.setStatus(QDataStream::ReadCorruptData);
        return false;
    }
    return true;
}

bool readCount(QDataStream &in, qint32 &count, int minElementSize, qint32 maxCount)
{
    quint32 raw = 0; // a negative count reads as a huge one and is refused
    if (!readCount(in, raw, minElementSize, quint32(std::max(0, maxCount))))
        return false;
    count = qint32(raw);
    return true;
}

bool readStringList(QDataStream &in, QStringList &list, int maxCount)
{
    list.clear();
    quint32 count = 0;
    if (!readCount(in, count, MinStringSize, quint32(std::max(0, maxCount))))
        return false;
    list.reserve(int(count));
    for (quint32 i = 0; i < count; ++i) {
        QString s;
        in >> s;
        if (in.status() != QDataStream::Ok)
            return false;
        list.append(s);
    }
    return true;
}

void writeStringList(QDataStream &out, const QStringList &list)
{
    out << quint32(list.size());
    for (const QString &s : list)
        out << s;
}

bool readFontList(QDataStream &in, QList<QFont> &list, int maxCount)
{
    list.clear();
    quint32 count = 0;
    if (!readCount(in, count, MinFontSize, quint32(std::max(0, maxCount))))
        return false;
    list.reserve(int(count));
    for (quint32 i = 0; i < count; ++i) {
        QFont f;
        in >> f;
        if (in.status() != QDataStream::Ok)
            return false;
        list.append(f);
    }
    return true;
}

void writeFontList(QDataStream &out, const QList<QFont> &list)
{
    out << quint32(list.size());
    for (const QFont &f : list)
        out << f;
}

bool readFontMap(QDataStream &in, QMap<int, QFont> &map, int maxCount)
{
    map.clear();
    quint32 count = 0;
    if (!readCount(in, count, MinFontPairSize, quint32(std::max(0, maxCount))))
        return false;
    for (quint32 i = 0; i < count; ++i) {
        qint32 key = 0;
        QFont font;
        in >> key >> font;
        if (in.status() != QDataStream::Ok)
            return false;
        map.insert(key, font);
    }
    return true;
}

void writeFontMap(QDataStream &out, const QMap<int, QFont> &map)
{
    out << quint32(map.size());
    for (auto it = map.constEnd(); it != map.constBegin();) {
        --it;
        out << qint32(it.key()) << it.value();
    }
}

} // namespace StoredStream
