#include "tablewidgettaskmenu.h"

#include "designercommit.h"
#include "ui_tablewidgeteditor.h"

#include <QAction>
#include <QDesignerFormEditorInterface>
#include <QDesignerFormWindowInterface>
#include <QDialog>
#include <QExtensionManager>

TableWidgetTaskMenu::TableWidgetTaskMenu(TableWidget *table, QObject *parent)
    : PropertyTaskMenu(table, parent)
{
}

TableWidgetTaskMenu::~TableWidgetTaskMenu() = default;

QWidget *TableWidgetTaskMenu::createPreview() const
{
    return new TableWidget;
}

std::unique_ptr<QObject> TableWidgetTaskMenu::buildEditor(QDialog *dialog, QWidget *,
                                                          QDesignerFormWindowInterface *formWindow)
{
    m_ui = std::make_unique<Ui::TableWidgetEditor>();
    m_ui->setupUi(dialog);
    auto *table = qobject_cast<TableWidget *>(widget());
    if (!table)
        return nullptr;
    // Designer's own table menu, which the table keeps beside ours; its first action edits the items.
    if (formWindow) {
        QObject *extension = formWindow->core()->extensionManager()->extension(
            table, QStringLiteral("QDesignerInternalTaskMenuExtension"));
        // Designer builds its menus anew on every call: ask once.
        auto *menu = qobject_cast<QDesignerTaskMenuExtension *>(extension);
        const QList<QAction *> actions = menu ? menu->taskActions() : QList<QAction *>();
        if (!actions.isEmpty())
            connect(m_ui->editItemsButton, &QPushButton::clicked, actions.first(), &QAction::trigger);
    }
    m_ui->keyPadEditor->setKeyPadStruct(table->keyPad());
    connect(dialog, &QDialog::accepted, this, &TableWidgetTaskMenu::myAcceptSlot);
    return nullptr;
}

void TableWidgetTaskMenu::myAcceptSlot()
{
    auto *table = qobject_cast<TableWidget *>(widget());
    if (!table || !m_ui)
        return;
    // Written also when unchanged, so that the keypad properties are saved with the form.
    DesignerCommit::setProperty(table, "keyPad", QVariant::fromValue(m_ui->keyPadEditor->getKeyPadStruct()));
}

TableWidgetTaskMenuFactory::TableWidgetTaskMenuFactory(QExtensionManager *parent)
    : WidgetTaskMenuFactory<TableWidget, TableWidgetTaskMenu>(parent)
{
}
