#ifndef HEXFRAME_H
#define HEXFRAME_H

#include "hmiwidgets_export.h"

#include <QByteArray>

// The framing of stored byte-array properties: lowercase hexadecimal text of a qCompress block
// (4-byte big-endian uncompressed size, then a zlib stream).
class HMIWIDGETS_EXPORT HexFrame
{
public:
    // Larger claimed or actual sizes are refused rather than allocated.
    static constexpr qint64 MaxUncompressedSize = 64 * 1024 * 1024;

    static QByteArray encode(const QByteArray &data);
    // False for empty, non-hex, truncated or corrupt input, or more than MaxUncompressedSize.
    static bool decode(const QByteArray &hexText, QByteArray *data);

    static bool fromHex(const QByteArray &hexText, QByteArray *bytes);
    static bool uncompress(const QByteArray &block, QByteArray *data);
};

#endif
