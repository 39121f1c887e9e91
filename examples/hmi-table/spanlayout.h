#ifndef SPANLAYOUT_H
#define SPANLAYOUT_H

#include "cellspans.h"

// Whether merged cells fit a table: each inside rows x columns, none sharing a cell with another
// (the table view refuses overlapping spans one by one, leaving a layout nobody wrote).
class SpanLayout
{
public:
    struct Fault
    {
        int index = -1; // the span at fault, -1 when all fit
        int other = -1; // for an overlap, the earlier span it shares cells with
    };

    // The first span outside the table, else the later span of the first overlapping pair met
    // going down the table. O(n log n), so a table of many merged rows stays quick.
    static Fault check(const QList<CellSpans::Span> &spans, int rows, int columns);
};

#endif
