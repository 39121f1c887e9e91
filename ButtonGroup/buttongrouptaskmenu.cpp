#include "buttongrouptaskmenu.h"

#include "ui_buttongroupeditor.h"

ButtonGroupTaskMenu::ButtonGroupTaskMenu(ButtonGroup *group, QObject *parent)
    : PropertyTaskMenu(group, parent)
{
}

QWidget *ButtonGroupTaskMenu::createPreview() const
{
    return new ButtonGroup;
}

std::unique_ptr<QObject> ButtonGroupTaskMenu::buildEditor(QDialog *dialog, QWidget *, QDesignerFormWindowInterface *)
{
    Ui::ButtonGroupEditor ui;
    ui.setupUi(dialog); // object name, title, 530 x 470, the Appearance tab
    return nullptr;
}

ButtonGroupTaskMenuFactory::ButtonGroupTaskMenuFactory(QExtensionManager *parent)
    : WidgetTaskMenuFactory<ButtonGroup, ButtonGroupTaskMenu>(parent)
{
}
