#ifndef GRIDGEOMETRY_H
#define GRIDGEOMETRY_H

#include "hmiwidgets_export.h"

#include <QList>
#include <QRect>
#include <QSize>

// Where the lines and cells of a grid splitter go. The grid area is the widget less its frame and
// spacing on every side; a line is a handle two pixels wider than its pen, centred on its position
// (a fraction of the area), and a cell reaches from the line before it to the line after it,
// sharing one pixel column or row with each.
class HMIWIDGETS_EXPORT GridGeometry
{
public:
    GridGeometry(const QSize &widgetSize, int frameWidth, int spacing, int lineWidth);

    int offset() const { return m_offset; }
    QSize area() const { return m_area; }
    int handleWidth() const { return m_lineWidth + 2; }

    // The handle of a line between columns (vertical) or rows (horizontal) at position.
    QRect verticalLine(double position) const;
    QRect horizontalLine(double position) const;
    // Cell (row, column) between the given line handles, left to right and top to bottom.
    QRect cell(int row, int column, const QList<QRect> &verticalLines, const QList<QRect> &horizontalLines) const;

    // A line dragged within the area along one axis: the proposed offset of its leading edge from
    // the area's start, kept minDistance pixels from the neighbour handles (leading edge of the next,
    // trailing edge of the previous, in widget coordinates; -1 for none, the area's edge then).
    int clampDrag(int proposed, int extent, int previousTrailing, int nextLeading, int minDistance) const;
    // The position of a line whose leading edge sits at offset within an area extent long.
    double positionAt(int offset, int extent) const;

private:
    QSize m_widgetSize;
    int m_frameWidth;
    int m_spacing;
    int m_offset;
    QSize m_area;
    int m_lineWidth;
};

#endif
