#include "cellspans.h"

#include "hexframe.h"
#include "storedstream.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>

bool CellSpans::decode(const QByteArray &hexText, QList<Span> *spans)
{
    spans->clear();
    if (hexText.isEmpty())
        return true;
    QByteArray bytes;
    if (!HexFrame::fromHex(hexText, &bytes))
        return false;
    QDataStream in(bytes);
    StoredStream::prepare(in);
    qint32 count = 0;
    in >> count;
    if (in.status() != QDataStream::Ok || count < 0)
        return false;
    // A count beyond the rectangles present is read as far as they go; nothing is reserved for it.
    for (qint32 i = 0; i < std::min(count, qint32(MaxSpans)); ++i) {
        qint32 left = 0, top = 0, right = 0, bottom = 0;
        in >> left >> top >> right >> bottom;
        if (in.status() != QDataStream::Ok)
            break;
        // Rows in left/right, columns in top/bottom: the rectangle's own axes are not the table's.
        if (left < 0 || top < 0 || right < left || bottom < top)
            break;
        spans->append({left, top, right - left + 1, bottom - top + 1});
    }
    return true;
}

QByteArray CellSpans::encode(const QList<Span> &spans)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    StoredStream::prepare(out);
    out << qint32(spans.size());
    for (const Span &s : spans)
        out << qint32(s.row) << qint32(s.column) << qint32(s.row + s.rowSpan - 1) << qint32(s.column + s.columnSpan - 1);
    return bytes.toHex();
}
