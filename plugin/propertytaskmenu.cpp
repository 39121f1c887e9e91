#include "propertytaskmenu.h"

#include "propertydialog.h"

#include <QDesignerFormWindowInterface>
#include <QDialog>

void PropertyTaskMenu::editState()
{
    QWidget *target = widget();
    if (!target)
        return;
    QDesignerFormWindowInterface *formWindow = QDesignerFormWindowInterface::findFormWindow(target);
    QWidget *preview = createPreview();
    // The dialog owns the preview and deletes itself once closed.
    QDialog *dialog = createPropertyDialog(target, preview);
    const std::unique_ptr<QObject> companion = buildEditor(dialog, preview, formWindow);
    if (companion)
        connect(dialog, SIGNAL(accepted()), companion.get(), SLOT(accept()));
    dialog->exec();
}
