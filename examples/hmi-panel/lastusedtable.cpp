#include "lastusedtable.h"

#include "tablewidget.h"

#include <QCoreApplication>
#include <QEvent>

LastUsedTable::LastUsedTable(QObject *parent)
    : QObject(parent)
{
    QCoreApplication::instance()->installEventFilter(this);
}

TableWidget *LastUsedTable::table() const
{
    return m_table;
}

bool LastUsedTable::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress) {
        for (QObject *o = watched; o; o = o->parent()) {
            if (auto *table = qobject_cast<TableWidget *>(o)) {
                m_table = table;
                break;
            }
        }
    }
    return QObject::eventFilter(watched, event);
}
