#include "fontmapcodec.h"

#include "hexframe.h"
#include "storedstream.h"
#include "textdata.h"

#include <QDataStream>
#include <QIODevice>

QByteArray FontMapCodec::encode(const Maps &maps)
{
    QByteArray data;
    QDataStream out(&data, QIODevice::WriteOnly);
    StoredStream::prepare(out);
    StoredStream::writeFontMap(out, maps.captionFonts);
    StoredStream::writeFontMap(out, maps.secondFonts);
    return HexFrame::encode(data);
}

bool FontMapCodec::decode(const QByteArray &buffer, Maps *maps)
{
    QByteArray data;
    if (!HexFrame::decode(buffer, &data))
        return false;
    QDataStream in(data);
    StoredStream::prepare(in);
    Maps read;
    if (!in.atEnd() && !StoredStream::readFontMap(in, read.captionFonts, TextData::MaxLanguages))
        return false;
    if (!in.atEnd() && !StoredStream::readFontMap(in, read.secondFonts, TextData::MaxLanguages))
        return false;
    *maps = read;
    return true;
}
