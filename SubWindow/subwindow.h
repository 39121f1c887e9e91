#ifndef SUBWINDOW_H
#define SUBWINDOW_H

#include "hmiwidgets_export.h"

#include <QColor>
#include <QFrame>

#include <array>

class MoveHandler;

// A panel of an MDI area: a framed container for the panel builder's controls. It reports being
// shown and hidden (not its first hide, which is the form settling) and, while shown, ticks every
// 200 ms for whoever listens. In Designer the active panel carries drag strips on its edges.
class HMIWIDGETS_EXPORT SubWindow : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)

public:
    static constexpr int TimeoutInterval = 200;

    Q_INVOKABLE explicit SubWindow(QWidget *parent = nullptr);
    ~SubWindow() override;

    QColor backgroundColor() const;
    void setBackgroundColor(const QColor &color);

    // Raises the panel when on; in Designer shows or hides the drag strips.
    void setActive(bool on);
    // Designer: moves the panel by delta if it stays inside its area.
    void handlerMove(MoveHandler *handler, const QPoint &delta);
    // The drag strip of an edge, null at run time.
    MoveHandler *handle(int edge) const;

Q_SIGNALS:
    void subWindowShow();
    void subWindowHide();
    void subWindowTimeout();

protected:
    void connectNotify(const QMetaMethod &signal) override;
    void disconnectNotify(const QMetaMethod &signal) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget *formWindow() const;
    void layOutHandles();
    void startTimer();

    std::array<MoveHandler *, 4> m_handles{};
    bool m_firstHide = true;
    int m_timerId = 0;
    bool m_timeoutWanted = false;
    QColor m_backgroundColor;
};

#endif
