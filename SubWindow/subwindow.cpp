#include "subwindow.h"

#include "backgroundfill.h"
#include "designerhost.h"
#include "mdiarea.h"
#include "movehandler.h"
#include "norvointerface_z3.h"
#include "widgetfactory.h"

#include <QMetaMethod>
#include <QTimerEvent>

HMI_REGISTER_WIDGET(SubWindow)

SubWindow::SubWindow(QWidget *parent)
    : QFrame(parent)
    , m_backgroundColor(palette().color(QPalette::Window))
{
    NORVOInterface_Z3::setWidgetDefaultFont(this);
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    if (formWindow()) {
        for (int edge = MoveHandler::Left; edge <= MoveHandler::Bottom; ++edge) {
            m_handles[edge] = new MoveHandler(MoveHandler::Edge(edge), this);
            m_handles[edge]->hide();
        }
    }
}

SubWindow::~SubWindow() = default;

QWidget *SubWindow::formWindow() const
{
    return DesignerHost::formWindowOf(const_cast<SubWindow *>(this));
}

QColor SubWindow::backgroundColor() const { return m_backgroundColor; }

void SubWindow::setBackgroundColor(const QColor &color)
{
    m_backgroundColor = color;
    BackgroundFill::apply(this, color);
}

MoveHandler *SubWindow::handle(int edge) const
{
    return edge >= 0 && edge < int(m_handles.size()) ? m_handles[edge] : nullptr;
}

void SubWindow::setActive(bool on)
{
    if (on)
        raise();
    for (MoveHandler *handle : m_handles) {
        if (!handle)
            continue;
        handle->setVisible(on);
        if (on)
            handle->raise();
    }
}

void SubWindow::handlerMove(MoveHandler *, const QPoint &delta)
{
    QWidget *area = parentWidget();
    QWidget *fw = formWindow();
    if (!area || !fw)
        return;
    const QRect moved = geometry().translated(delta);
    if (!QRect(0, 0, area->width(), area->height()).contains(moved))
        return;
    move(moved.topLeft());
    layOutHandles();
    if (DesignerHost *host = DesignerHost::instance())
        host->markDirty(fw);
}

void SubWindow::layOutHandles()
{
    for (MoveHandler *handle : m_handles) {
        if (handle)
            handle->setGeometry(MoveHandler::stripRect(handle->edge(), size()));
    }
}

void SubWindow::startTimer()
{
    if (m_timerId == 0)
        m_timerId = QObject::startTimer(TimeoutInterval);
}

void SubWindow::connectNotify(const QMetaMethod &signal)
{
    if (signal == QMetaMethod::fromSignal(&SubWindow::subWindowTimeout)) {
        m_timeoutWanted = true;
        if (isVisible())
            startTimer();
    }
    QFrame::connectNotify(signal);
}

void SubWindow::disconnectNotify(const QMetaMethod &signal)
{
    // An invalid signal stands for "everything disconnected".
    if ((!signal.isValid() || signal == QMetaMethod::fromSignal(&SubWindow::subWindowTimeout))
        && !isSignalConnected(QMetaMethod::fromSignal(&SubWindow::subWindowTimeout))) {
        m_timeoutWanted = false;
        if (m_timerId) {
            killTimer(m_timerId);
            m_timerId = 0;
        }
    }
    QFrame::disconnectNotify(signal);
}

void SubWindow::showEvent(QShowEvent *event)
{
    QFrame::showEvent(event);
    if (m_timeoutWanted)
        startTimer();
    if (!m_firstHide) {
        if (auto *area = qobject_cast<MdiArea *>(parentWidget()))
            area->setActiveSubWindow(this);
    }
    emit subWindowShow();
}

void SubWindow::hideEvent(QHideEvent *event)
{
    QFrame::hideEvent(event);
    if (m_timerId) {
        killTimer(m_timerId);
        m_timerId = 0;
    }
    if (m_firstHide) {
        m_firstHide = false;
        return;
    }
    emit subWindowHide();
}

void SubWindow::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_timerId)
        emit subWindowTimeout();
    else
        QFrame::timerEvent(event);
}

void SubWindow::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    layOutHandles();
}
