#include "propertytaskmenu.h"

#include "propertydialog.h"

#include <QAction>
#include <QDesignerFormWindowInterface>
#include <QDialog>

PropertyTaskMenu::PropertyTaskMenu(QWidget *widget, QObject *parent)
    : QObject(parent)
    , m_editAction(new QAction(tr("Edit Properties..."), this))
    , m_widget(widget)
{
    connect(m_editAction, &QAction::triggered, this, &PropertyTaskMenu::editState);
}

PropertyTaskMenu::~PropertyTaskMenu() = default;

QAction *PropertyTaskMenu::preferredEditAction() const
{
    return m_editAction;
}

QList<QAction *> PropertyTaskMenu::taskActions() const
{
    return {m_editAction};
}

void PropertyTaskMenu::editState()
{
    if (!m_widget)
        return;
    QDesignerFormWindowInterface *formWindow = QDesignerFormWindowInterface::findFormWindow(m_widget);
    QWidget *preview = createPreview();
    // The dialog owns the preview and deletes itself once closed.
    QDialog *dialog = createPropertyDialog(m_widget, preview);
    const std::unique_ptr<QObject> companion = buildEditor(dialog, preview, formWindow);
    if (companion)
        connect(dialog, SIGNAL(accepted()), companion.get(), SLOT(accept()));
    dialog->exec();
}
