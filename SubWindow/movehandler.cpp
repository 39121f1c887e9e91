#include "movehandler.h"

#include "designercommit.h"
#include "mousepoint.h"
#include "subwindow.h"

#include <QPainter>

namespace {
const int Thickness = 5;
} // namespace

MoveHandler::MoveHandler(Edge edge, SubWindow *panel)
    : QWidget(panel)
    , m_panel(panel)
    , m_edge(edge)
{
    // Designer hands the mouse to widgets of this name instead of selecting with it.
    setObjectName(QStringLiteral("__qt__passive_moveHandler"));
    setMouseTracking(true);
    setCursor(Qt::SizeAllCursor);
}

QRect MoveHandler::stripRect(Edge edge, const QSize &panel)
{
    const int w = panel.width();
    const int h = panel.height();
    switch (edge) {
    case Left: return QRect(QPoint(0, Thickness), QPoint(Thickness - 1, h - Thickness - 1));
    case Right: return QRect(QPoint(w - Thickness, Thickness), QPoint(w - 1, h - Thickness - 1));
    case Top: return QRect(QPoint(0, 0), QPoint(w - 1, Thickness - 1));
    case Bottom: return QRect(QPoint(0, h - Thickness), QPoint(w - 1, h - 1));
    }
    return QRect();
}

void MoveHandler::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QBrush(Qt::blue, Qt::Dense4Pattern));
}

void MoveHandler::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    m_pressed = true;
    m_press = mousePoint(event);
    m_pressGeometry = m_panel->geometry();
}

void MoveHandler::mouseMoveEvent(QMouseEvent *event)
{
    // The strip moves with the panel, so the pointer's offset from the press is the step still to go.
    if (m_pressed && (event->buttons() & Qt::LeftButton))
        m_panel->handlerMove(this, mousePoint(event) - m_press);
}

void MoveHandler::mouseReleaseEvent(QMouseEvent *)
{
    if (m_pressed)
        DesignerCommit::recordChange(m_panel, "geometry", m_pressGeometry,
                                     SubWindow::tr("Move '%1'").arg(m_panel->objectName()));
    m_pressed = false;
}
