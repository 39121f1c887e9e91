#include "edittaskmenu.h"

#include "formcheckdialog.h"

#include <QAction>
#include <QtDesigner/QDesignerFormWindowInterface>

EditTaskMenu::EditTaskMenu(QWidget *widget, QObject *parent)
    : QObject(parent)
    , m_editAction(new QAction(tr("Edit Properties..."), this))
    , m_checkAction(new QAction(tr("Check Form..."), this))
    , m_widget(widget)
{
    connect(m_editAction, &QAction::triggered, this, &EditTaskMenu::editState);
    connect(m_checkAction, &QAction::triggered, this, &EditTaskMenu::checkForm);
}

EditTaskMenu::~EditTaskMenu() = default;

QAction *EditTaskMenu::preferredEditAction() const
{
    return m_editAction;
}

QList<QAction *> EditTaskMenu::taskActions() const
{
    return {m_editAction, m_checkAction};
}

void EditTaskMenu::checkForm()
{
    if (m_widget)
        FormCheckDialog::showFor(QDesignerFormWindowInterface::findFormWindow(m_widget));
}
