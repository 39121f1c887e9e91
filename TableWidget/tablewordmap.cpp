#include "tablewordmap.h"

#include "hexframe.h"
#include "storedstream.h"

#include <QDataStream>
#include <QIODevice>

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
    if (!in.atEnd() && !readTextRecords(in, &readEntries, MaxEntries))
        return false;
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
    writeTextRecords(out, entries);
    return HexFrame::encode(data);
}
