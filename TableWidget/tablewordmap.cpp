#include "tablewordmap.h"

#include "hexframe.h"
#include "storedstream.h"

#include <QDataStream>
#include <QIODevice>

namespace {
constexpr int MinRecordSize = 3 * 4 + 4 + 4;
}

bool TableWordMap::decode(const QByteArray &buffer)
{
    fonts.clear();
    entries.clear();
    if (buffer.isEmpty())
        return true;
    QByteArray data;
    if (!HexFrame::decode(buffer, &data))
        return false;
    QDataStream in(data);
    StoredStream::prepare(in);
    QMap<int, QFont> readFonts;
    QList<TextData> readEntries;
    if (!in.atEnd() && !StoredStream::readFontMap(in, readFonts, TextData::MaxLanguages))
        return false;
    if (!in.atEnd()) {
        qint32 count = 0;
        if (!StoredStream::readCount(in, count, MinRecordSize, MaxEntries))
            return false;
        for (qint32 i = 0; i < count; ++i) {
            TextData record;
            in >> record;
            if (in.status() != QDataStream::Ok)
                return false;
            readEntries.append(record);
        }
    }
    fonts = readFonts;
    entries = readEntries;
    return true;
}

QByteArray TableWordMap::encode() const
{
    if (fonts.isEmpty() && entries.isEmpty())
        return QByteArray();
    QByteArray data;
    QDataStream out(&data, QIODevice::WriteOnly);
    StoredStream::prepare(out);
    StoredStream::writeFontMap(out, fonts);
    out << qint32(entries.size());
    for (const TextData &record : entries)
        out << record;
    return HexFrame::encode(data);
}
