#include "spanlayout.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <tuple>
#include <vector>

namespace {

qint64 lastRow(const CellSpans::Span &s) { return qint64(s.row) + s.rowSpan - 1; }
qint64 lastColumn(const CellSpans::Span &s) { return qint64(s.column) + s.columnSpan - 1; }

} // namespace

SpanLayout::Fault SpanLayout::check(const QList<CellSpans::Span> &spans, int rows, int columns)
{
    for (int i = 0; i < spans.size(); ++i) {
        const CellSpans::Span &s = spans.at(i);
        if (s.row < 0 || s.column < 0 || s.rowSpan < 1 || s.columnSpan < 1 || lastRow(s) >= rows
            || lastColumn(s) >= columns)
            return {i, -1};
    }
    // Sweep the spans by first row. The open spans (those reaching the current row) cover disjoint
    // column ranges, kept by first column; a span that ended above is dropped when met.
    std::vector<int> order(size_t(spans.size()));
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](int a, int b) {
        const CellSpans::Span &x = spans.at(a), &y = spans.at(b);
        return std::tie(x.row, x.column, a) < std::tie(y.row, y.column, b);
    });
    std::map<int, int> open; // first column -> span index
    for (const int i : order) {
        const CellSpans::Span &s = spans.at(i);
        auto it = open.upper_bound(int(lastColumn(s)));
        while (it != open.begin()) {
            --it;
            const CellSpans::Span &t = spans.at(it->second);
            if (lastRow(t) < s.row) {
                it = open.erase(it);
                continue;
            }
            if (lastColumn(t) >= s.column)
                return {std::max(i, it->second), std::min(i, it->second)};
            break;
        }
        open[s.column] = i;
    }
    return {};
}
