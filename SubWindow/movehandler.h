#ifndef MOVEHANDLER_H
#define MOVEHANDLER_H

#include "hmiwidgets_export.h"

#include <QWidget>

class SubWindow;

// A drag strip along one edge of a panel in Designer: dragging it moves the panel.
class HMIWIDGETS_EXPORT MoveHandler : public QWidget
{
    Q_OBJECT
public:
    enum Edge { Left, Right, Top, Bottom };
    MoveHandler(Edge edge, SubWindow *panel);

    Edge edge() const { return m_edge; }
    // The strip's place on a panel of this size.
    static QRect stripRect(Edge edge, const QSize &panel);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    SubWindow *const m_panel;
    Edge m_edge;
    bool m_pressed = false;
    QPoint m_press;
    QRect m_pressGeometry; // the panel's, at the press
};

#endif
