#include "stackedwidget.h"

#include <QApplication>

StackedWidget::StackedWidget(QWidget *parent)
    : QWidget(parent)
{
    // The pages are drawn by themselves; the stack only reserves their place.
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

QWidget *StackedWidget::widget(int index) const
{
    return index >= 0 && index < m_pages.size() ? m_pages.at(index).data() : nullptr;
}

int StackedWidget::indexOf(QWidget *page) const
{
    for (int i = 0; i < m_pages.size(); ++i) {
        if (m_pages.at(i) == page)
            return i;
    }
    return -1;
}

void StackedWidget::insertWidget(int index, QWidget *page)
{
    if (!page || indexOf(page) >= 0)
        return;
    index = qBound(0, index, count());
    m_pages.insert(index, page);
    page->hide();
    if (m_current >= index)
        ++m_current;
}

QWidget *StackedWidget::removeAt(int index)
{
    QWidget *page = widget(index);
    if (index < 0 || index >= count())
        return nullptr;
    m_pages.removeAt(index);
    if (page)
        page->hide();
    if (index == m_current)
        m_current = -1;
    else if (index < m_current)
        --m_current;
    return page;
}

void StackedWidget::move(int from, int to)
{
    if (from < 0 || from >= count() || to < 0 || to >= count() || from == to)
        return;
    QPointer<QWidget> current = currentWidget();
    m_pages.move(from, to);
    m_current = indexOf(current);
}

void StackedWidget::clear()
{
    for (const QPointer<QWidget> &page : std::as_const(m_pages)) {
        if (page)
            page->hide();
    }
    m_pages.clear();
    m_current = -1;
}

void StackedWidget::setCurrentIndex(int index)
{
    QWidget *next = widget(index);
    if (!next)
        return;
    QWidget *previous = currentWidget();
    m_current = index;
    if (next == previous) {
        placeCurrent();
        return;
    }
    // Switch without showing the change half done, and keep the keyboard focus on the pages. Only
    // when updates are on: switching them off while a parent has them off (Designer loading a form)
    // would keep them off for good.
    QWidget *updatesOwner = parentWidget() ? parentWidget() : this;
    const bool suspend = updatesOwner->updatesEnabled();
    if (suspend)
        updatesOwner->setUpdatesEnabled(false);
    const bool hadFocus = previous && previous->isAncestorOf(QApplication::focusWidget());
    placeCurrent();
    next->show();
    next->raise();
    if (previous)
        previous->hide();
    if (hadFocus)
        next->setFocus();
    if (suspend)
        updatesOwner->setUpdatesEnabled(true);
}

void StackedWidget::setCurrentWidget(QWidget *page)
{
    const int index = indexOf(page);
    if (index < 0) {
        qWarning("StackedWidget::setCurrentWidget: Widget %p not contained in stack", static_cast<void *>(page));
        return;
    }
    setCurrentIndex(index);
}

void StackedWidget::placeCurrent()
{
    QWidget *page = currentWidget();
    if (!page)
        return;
    // The pages are the tab widget's children: the stack's area in the tab widget's coordinates.
    page->setGeometry(page->parentWidget() == parentWidget() ? geometry() : rect());
}

void StackedWidget::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeCurrent();
}

void StackedWidget::moveEvent(QMoveEvent *event)
{
    QWidget::moveEvent(event);
    placeCurrent();
}
