#include "gridgeometry.h"

#include <cmath>

GridGeometry::GridGeometry(const QSize &widgetSize, int frameWidth, int spacing, int lineWidth)
    : m_widgetSize(widgetSize)
    , m_frameWidth(frameWidth)
    , m_spacing(spacing)
    , m_offset(frameWidth + spacing)
    , m_area(widgetSize.width() - 2 * m_offset, widgetSize.height() - 2 * m_offset)
    , m_lineWidth(lineWidth)
{
}

QRect GridGeometry::verticalLine(double position) const
{
    const int x = int(std::floor(m_area.width() * position + 0.5)) + m_offset - handleWidth() / 2;
    return QRect(x, m_offset, handleWidth(), m_area.height());
}

QRect GridGeometry::horizontalLine(double position) const
{
    const int y = int(std::floor(m_area.height() * position + 0.5)) + m_offset - handleWidth() / 2;
    return QRect(m_offset, y, m_area.width(), handleWidth());
}

QRect GridGeometry::cell(int row, int column, const QList<QRect> &verticalLines,
                         const QList<QRect> &horizontalLines) const
{
    const int columns = int(verticalLines.size()) + 1;
    const int rows = int(horizontalLines.size()) + 1;
    const int left = column == 0 ? m_offset : verticalLines.at(column - 1).right();
    const int right = column == columns - 1 ? m_widgetSize.width() - m_spacing - m_frameWidth - 1
                                            : verticalLines.at(column).left();
    const int top = row == 0 ? m_offset : horizontalLines.at(row - 1).bottom();
    const int bottom = row == rows - 1 ? m_widgetSize.height() - m_spacing - m_frameWidth - 1
                                       : horizontalLines.at(row).top();
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

int GridGeometry::clampDrag(int proposed, int extent, int previousTrailing, int nextLeading, int minDistance) const
{
    const int lower = previousTrailing < 0 ? minDistance : previousTrailing + minDistance - m_offset;
    const int upper = nextLeading < 0 ? extent - minDistance : nextLeading - minDistance - m_offset;
    int offset = proposed;
    if (offset < lower)
        offset = lower;
    if (offset + handleWidth() > upper)
        offset = upper - handleWidth();
    return offset;
}

double GridGeometry::positionAt(int offset, int extent) const
{
    return extent > 0 ? double(offset + handleWidth() / 2) / extent : 0.0;
}
