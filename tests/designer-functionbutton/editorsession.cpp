#include "editorsession.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionManager>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QTimer>

bool EditorSession::run(QDesignerFormEditorInterface *core, QWidget *widget, const Step &step)
{
    auto *menu = qt_extension<QDesignerTaskMenuExtension *>(core->extensionManager(), widget);
    if (!menu || !menu->preferredEditAction())
        return false;
    bool opened = false;
    // The first event the dialog's modal loop handles; stopped if no loop ever runs.
    QTimer inLoop;
    inLoop.setSingleShot(true);
    QObject::connect(&inLoop, &QTimer::timeout, [&opened, &step] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        opened = true;
        step(dialog);
        if (dialog->isVisible())
            dialog->reject();
    });
    inLoop.start(0);
    menu->preferredEditAction()->trigger();
    inLoop.stop();
    return opened;
}
