#ifndef PROPERTYTASKMENU_H
#define PROPERTYTASKMENU_H

#include "edittaskmenu.h"

#include <memory>

class QDesignerFormWindowInterface;
class QDialog;

// "Edit Properties..." as the widget's editor dialog with a live preview, and its companion editor
// when accepted.
class PropertyTaskMenu : public EditTaskMenu
{
    Q_OBJECT
public:
    using EditTaskMenu::EditTaskMenu;

public Q_SLOTS:
    void editState() override;

protected:
    // A new instance of the widget's class, without parent.
    virtual QWidget *createPreview() const = 0;
    // Builds the editor layout on dialog; returns the companion editor whose accept() slot runs when
    // the dialog is accepted, or null.
    virtual std::unique_ptr<QObject> buildEditor(QDialog *dialog, QWidget *preview,
                                                 QDesignerFormWindowInterface *formWindow) = 0;
};

#endif
