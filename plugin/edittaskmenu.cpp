#include "edittaskmenu.h"

#include <QAction>

EditTaskMenu::EditTaskMenu(QWidget *widget, QObject *parent)
    : QObject(parent)
    , m_editAction(new QAction(tr("Edit Properties..."), this))
    , m_widget(widget)
{
    connect(m_editAction, &QAction::triggered, this, &EditTaskMenu::editState);
}

EditTaskMenu::~EditTaskMenu() = default;

QAction *EditTaskMenu::preferredEditAction() const
{
    return m_editAction;
}

QList<QAction *> EditTaskMenu::taskActions() const
{
    return {m_editAction};
}
