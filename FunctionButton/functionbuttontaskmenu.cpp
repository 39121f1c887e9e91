#include "functionbuttontaskmenu.h"

#include "functionbuttonlistedit.h"
#include "ui_functionbuttoneditor.h"

FunctionButtonTaskMenu::FunctionButtonTaskMenu(FunctionButton *button, QObject *parent)
    : PropertyTaskMenu(button, parent)
{
}

FunctionButtonTaskMenu::~FunctionButtonTaskMenu() = default;

QWidget *FunctionButtonTaskMenu::createPreview() const
{
    return new FunctionButton;
}

std::unique_ptr<QObject> FunctionButtonTaskMenu::buildEditor(QDialog *dialog, QWidget *preview,
                                                             QDesignerFormWindowInterface *formWindow)
{
    m_ui = std::make_unique<Ui::FunctionButtonEditor>();
    m_ui->setupUi(dialog); // object name, title, 868 x 580, the General tab first
    return std::make_unique<functionButtonListEdit>(qobject_cast<FunctionButton *>(widget()),
                                                    qobject_cast<FunctionButton *>(preview), formWindow, m_ui.get());
}

FunctionButtonTaskMenuFactory::FunctionButtonTaskMenuFactory(QExtensionManager *parent)
    : WidgetTaskMenuFactory<FunctionButton, FunctionButtonTaskMenu>(parent)
{
}
