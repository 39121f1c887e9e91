#include "cellspans.h"

#include "hexframe.h"
#include "storedstream.h"

#include <QDataStream>
#include <QIODevice>
#include <QTableWidget>

#include <algorithm>
#include <limits>

namespace {
constexpr qint32 LastCell = std::numeric_limits<qint32>::max() - 1;

qint32 lastOf(int first, int span)
{
    return qint32(std::clamp<qint64>(qint64(first) + span - 1, 0, LastCell));
}
} // namespace

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
        // The cell after a span keeps a number: a span reaching the largest one ends a cell short.
        right = std::min(right, LastCell);
        bottom = std::min(bottom, LastCell);
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
        out << qint32(s.row) << qint32(s.column) << lastOf(s.row, s.rowSpan) << lastOf(s.column, s.columnSpan);
    return bytes.toHex();
}

int CellSpans::apply(const QList<Span> &spans, QTableWidget *table)
{
    int cut = 0;
    for (const Span &s : spans) {
        const int rows = std::min(s.rowSpan, table->rowCount() - s.row);
        const int columns = std::min(s.columnSpan, table->columnCount() - s.column);
        if (rows != s.rowSpan || columns != s.columnSpan)
            ++cut;
        if (rows > 0 && columns > 0 && (rows > 1 || columns > 1))
            table->setSpan(s.row, s.column, rows, columns);
    }
    return cut;
}
