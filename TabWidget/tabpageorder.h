#ifndef TABPAGEORDER_H
#define TABPAGEORDER_H

#include "hmiwidgets_export.h"

#include <QList>
#include <QPointer>
#include <QUndoCommand>
#include <QWidget>

class TabWidget;

// A tab moved in Designer, as one step of its undo history: the pages' order (and with it their
// tags) before and after. The lists that move with the tabs are recorded beside it as property
// changes; this puts the pages themselves back.
class HMIWIDGETS_EXPORT TabPageOrder : public QUndoCommand
{
public:
    using Order = QList<QPointer<QWidget>>;
    using Apply = void (*)(TabWidget *, const Order &);

    TabPageOrder(TabWidget *widget, Order before, Order after, Apply apply);

    void undo() override;
    void redo() override;

private:
    QPointer<TabWidget> m_widget;
    Order m_before;
    Order m_after;
    Apply m_apply;
};

#endif
