#ifndef FUNCTIONBUTTONTASKMENU_H
#define FUNCTIONBUTTONTASKMENU_H

#include "functionbutton.h"
#include "propertytaskmenu.h"

#include <memory>

namespace Ui {
class FunctionButtonEditor;
}

// "Edit Properties..." of a function button: the Function Button Editor, whose captions, fonts and
// caption colour are committed by functionButtonListEdit.
class FunctionButtonTaskMenu : public PropertyTaskMenu
{
    Q_OBJECT
public:
    FunctionButtonTaskMenu(FunctionButton *button, QObject *parent);
    ~FunctionButtonTaskMenu() override;

protected:
    QWidget *createPreview() const override;
    std::unique_ptr<QObject> buildEditor(QDialog *dialog, QWidget *preview,
                                         QDesignerFormWindowInterface *formWindow) override;

private:
    // The layout of the dialog being run; the companion editor reads it until the dialog closes.
    std::unique_ptr<Ui::FunctionButtonEditor> m_ui;
};

class FunctionButtonTaskMenuFactory : public WidgetTaskMenuFactory<FunctionButton, FunctionButtonTaskMenu>
{
    Q_OBJECT
public:
    explicit FunctionButtonTaskMenuFactory(QExtensionManager *parent);
};

#endif
