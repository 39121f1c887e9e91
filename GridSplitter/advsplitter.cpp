#include "advsplitter.h"

#include "gridsplitter_p.h"
#include "mousepoint.h"

#include <QPainter>

AdvSplitter::AdvSplitter(Qt::Orientation orientation, GridSplitter::Private *grid, QWidget *parent)
    : QWidget(parent)
    , m_orientation(orientation)
    , m_grid(grid)
{
    // Designer hands the mouse to widgets of this name instead of selecting with it.
    setObjectName(QStringLiteral("__qt__passive_gridLine"));
    setMouseTracking(true);
    // At run time the lines are fixed and a press belongs to what lies below.
    setAttribute(Qt::WA_TransparentForMouseEvents, !isEditable());
    updateCursor();
}

void AdvSplitter::setMovable(bool movable)
{
    m_movable = movable;
    updateCursor();
}

bool AdvSplitter::isEditable() const
{
    return m_grid && m_grid->formWindow();
}

// The cursor tells the panel builder which way the line under it can be dragged: sideways for a line
// between columns, up and down for one between rows, and not at all when the columns or rows are
// kept the same size (or at run time).
void AdvSplitter::updateCursor()
{
    if (isEditable() && m_movable)
        setCursor(m_orientation == Qt::Horizontal ? Qt::SplitHCursor : Qt::SplitVCursor);
    else
        unsetCursor();
}

void AdvSplitter::paintEvent(QPaintEvent *)
{
    if (!m_grid)
        return;
    QPainter painter(this);
    painter.setPen(QPen(m_grid->gridLineColor, m_grid->gridLineWidth, m_grid->gridLineStyle));
    const QPoint centre = rect().center();
    if (m_orientation == Qt::Horizontal)
        painter.drawLine(centre.x(), 0, centre.x(), rect().bottom());
    else
        painter.drawLine(0, centre.y(), rect().right(), centre.y());
}

void AdvSplitter::mousePressEvent(QMouseEvent *event)
{
    if (!isEditable() || event->button() != Qt::LeftButton || !m_movable) {
        event->ignore();
        return;
    }
    m_pressed = true;
    m_pressPoint = mapToParent(mousePoint(event));
    m_pressEdge = m_orientation == Qt::Horizontal ? x() : y();
    m_pressPositions = m_grid->positionsText(m_orientation);
    m_grid->selectInForm();
    event->accept();
}

void AdvSplitter::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_pressed || !(event->buttons() & Qt::LeftButton) || !m_grid) {
        updateCursor();
        return;
    }
    const QPoint delta = mapToParent(mousePoint(event)) - m_pressPoint;
    m_grid->dragLine(this, m_pressEdge + (m_orientation == Qt::Horizontal ? delta.x() : delta.y()));
    event->accept();
}

void AdvSplitter::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_pressed) {
        event->ignore();
        return;
    }
    m_pressed = false;
    if (m_grid)
        m_grid->commitDrag(this, m_pressPositions);
    event->accept();
}
