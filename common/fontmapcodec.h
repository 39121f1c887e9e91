#ifndef FONTMAPCODEC_H
#define FONTMAPCODEC_H

#include "hmiwidgets_export.h"

#include <QByteArray>
#include <QFont>
#include <QMap>

// The stored per-language fonts ("MapBuffer"): hex text of a compressed data stream holding up to
// two QMap<int, QFont> (language index -> font), each read only while the stream has data left.
class HMIWIDGETS_EXPORT FontMapCodec
{
public:
    struct Maps
    {
        QMap<int, QFont> captionFonts;
        QMap<int, QFont> secondFonts;
    };

    static QByteArray encode(const Maps &maps);
    // Each map holds at most one font per language; more, or more bytes than the default expansion
    // limit, is malformed.
    static bool decode(const QByteArray &buffer, Maps *maps);
};

#endif
