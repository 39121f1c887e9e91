#include "tabpageorder.h"

#include "tabwidget.h"

TabPageOrder::TabPageOrder(TabWidget *widget, Order before, Order after, Apply apply)
    : QUndoCommand(QObject::tr("Move tab of '%1'").arg(widget->objectName()))
    , m_widget(widget)
    , m_before(std::move(before))
    , m_after(std::move(after))
    , m_apply(apply)
{
}

void TabPageOrder::undo()
{
    if (m_widget)
        m_apply(m_widget, m_before);
}

void TabPageOrder::redo()
{
    if (m_widget)
        m_apply(m_widget, m_after);
}
