#ifndef HEXFRAME_H
#define HEXFRAME_H

#include "hmiwidgets_export.h"

#include <QByteArray>

// The framing of stored byte-array properties: lowercase hexadecimal text of a qCompress block
// (4-byte big-endian uncompressed size, then a zlib stream).
class HMIWIDGETS_EXPORT HexFrame
{
public:
    // What one stored buffer may expand to over all its nested layers together, unless its reader
    // allows more. A few kilobytes of captions and fonts is what a button really stores.
    static constexpr qint64 DefaultExpansionLimit = 1024 * 1024;
    // No single layer is ever larger, whatever budget a reader allows: a byte array must be able to
    // hold it on every Qt major, and the allocation must stay reasonable.
    static constexpr qint64 MaxLayerSize = 256 * 1024 * 1024;

    // The bytes a buffer may still decompress to; shared by the nested layers of one buffer, so a
    // buffer whose every layer expands a little cannot add up to a large allocation or a long inflate.
    class Budget
    {
    public:
        explicit Budget(qint64 bytes = DefaultExpansionLimit) : m_left(bytes) {}
        qint64 left() const { return m_left; }
        bool spend(qint64 bytes);

    private:
        qint64 m_left;
    };

    // The value of a hex digit, or -1.
    static int hexDigit(char c);

    static QByteArray encode(const QByteArray &data);
    // False for empty, non-hex, truncated or corrupt input, or for more than the budget has left.
    static bool decode(const QByteArray &hexText, QByteArray *data, Budget &budget);
    static bool decode(const QByteArray &hexText, QByteArray *data);

    static bool fromHex(const QByteArray &hexText, QByteArray *bytes);
    // The claimed size is checked against the budget before anything is allocated.
    static bool uncompress(const QByteArray &block, QByteArray *data, Budget &budget);
};

#endif
