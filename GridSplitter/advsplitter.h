#ifndef ADVSPLITTER_H
#define ADVSPLITTER_H

#include "gridsplitter.h"
#include "hmiwidgets_export.h"

#include <QPointer>
#include <QStringList>
#include <QWidget>

// One line of a grid splitter: it paints the line through its middle and, in a Designer form, is
// dragged to set the column widths or row heights. A line between columns has the orientation
// Qt::Horizontal (it moves sideways), one between rows Qt::Vertical.
class HMIWIDGETS_EXPORT AdvSplitter : public QWidget
{
    Q_OBJECT
public:
    AdvSplitter(Qt::Orientation orientation, GridSplitter::Private *grid, QWidget *parent);

    Qt::Orientation orientation() const { return m_orientation; }
    // The line's centre as a fraction of the grid area's width (or height).
    double position() const { return m_position; }
    void setPosition(double position) { m_position = position; }
    bool isMovable() const { return m_movable; }
    void setMovable(bool movable);
    bool isPressed() const { return m_pressed; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    bool isEditable() const;
    void updateCursor();

    Qt::Orientation m_orientation;
    double m_position = 0.0;
    QPointer<GridSplitter::Private> m_grid;
    bool m_movable = true;
    bool m_pressed = false;
    QPoint m_pressPoint; // the press, in the grid splitter's coordinates
    int m_pressEdge = 0; // the line's leading edge at the press
    QStringList m_pressPositions; // the lines of this direction at the press
};

#endif
