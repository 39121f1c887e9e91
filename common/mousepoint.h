#ifndef MOUSEPOINT_H
#define MOUSEPOINT_H

#include <QMouseEvent>
#include <QPoint>

// Where a mouse event happened, in the receiving widget's coordinates, on both Qt majors.
inline QPoint mousePoint(const QMouseEvent *event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event->position().toPoint();
#else
    return event->pos();
#endif
}

#endif
