#ifndef STACKEDWIDGET_H
#define STACKEDWIDGET_H

#include "hmiwidgets_export.h"

#include <QList>
#include <QPointer>
#include <QWidget>

// The page stack of a TabWidget: the pages in tab order, the current one shown over the whole stack
// and the others hidden. The pages stay children of the tab widget (they are what a form saves);
// the stack only places them.
class HMIWIDGETS_EXPORT StackedWidget : public QWidget
{
    Q_OBJECT
public:
    explicit StackedWidget(QWidget *parent = nullptr);

    int count() const { return int(m_pages.size()); }
    int currentIndex() const { return m_current; }
    QWidget *widget(int index) const;
    QWidget *currentWidget() const { return widget(m_current); }
    int indexOf(QWidget *page) const;
    void insertWidget(int index, QWidget *page);
    // Takes the page at index out of the stack (hidden); null for none.
    QWidget *removeAt(int index);
    void move(int from, int to);
    void clear();
    // Gives the current page the stack's area.
    void placeCurrent();

public Q_SLOTS:
    void setCurrentIndex(int index);
    void setCurrentWidget(QWidget *page);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void moveEvent(QMoveEvent *event) override;

private:
    QList<QPointer<QWidget>> m_pages;
    int m_current = -1;
};

#endif
