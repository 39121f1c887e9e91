#ifndef BUTTONGROUPTASKMENU_H
#define BUTTONGROUPTASKMENU_H

#include "buttongroup.h"
#include "propertytaskmenu.h"

// "Edit Properties..." of a button group: the Button Group Editor, without a companion editor.
class ButtonGroupTaskMenu : public PropertyTaskMenu
{
    Q_OBJECT
public:
    ButtonGroupTaskMenu(ButtonGroup *group, QObject *parent);

protected:
    QWidget *createPreview() const override;
    std::unique_ptr<QObject> buildEditor(QDialog *dialog, QWidget *preview,
                                         QDesignerFormWindowInterface *formWindow) override;
};

class ButtonGroupTaskMenuFactory : public WidgetTaskMenuFactory<ButtonGroup, ButtonGroupTaskMenu>
{
    Q_OBJECT
public:
    explicit ButtonGroupTaskMenuFactory(QExtensionManager *parent);
};

#endif
