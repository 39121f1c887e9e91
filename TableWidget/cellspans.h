#ifndef CELLSPANS_H
#define CELLSPANS_H

#include "hmiwidgets_export.h"

#include <QByteArray>
#include <QList>

class QTableWidget;

// The merged cells of a table ("mergeCells"): hex text of an uncompressed Qt 4.8 data stream with a
// count and that many rectangles, each read as (first row, first column, last row, last column).
class HMIWIDGETS_EXPORT CellSpans
{
public:
    struct Span
    {
        int row = 0;
        int column = 0;
        int rowSpan = 1;
        int columnSpan = 1;
        bool operator==(const Span &o) const
        {
            return row == o.row && column == o.column && rowSpan == o.rowSpan && columnSpan == o.columnSpan;
        }
    };
    // More spans than any screen of merged headers needs; the count is checked against the bytes too.
    static constexpr int MaxSpans = 100000;

    // The spans that could be read: reading stops at the end of the stream or at the first rectangle
    // that is not a span (ends before it starts). A rectangle reaching the largest number ends one
    // short of it, so first + span never overflows. False when the text is not hex or has no count.
    static bool decode(const QByteArray &hexText, QList<Span> *spans);
    // Sets the spans on table, each cut at the table's edge; returns how many had to be cut.
    static int apply(const QList<Span> &spans, QTableWidget *table);
    static QByteArray encode(const QList<Span> &spans);
};

#endif
