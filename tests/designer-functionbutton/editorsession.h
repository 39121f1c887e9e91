#ifndef EDITORSESSION_H
#define EDITORSESSION_H

#include <functional>

class QDesignerFormEditorInterface;
class QDialog;
class QWidget;

// Opens a placed widget's editor dialog as Designer does, through the preferred action of its task
// menu, and acts on the dialog while it runs its modal loop.
class EditorSession
{
public:
    using Step = std::function<void(QDialog *dialog)>;

    // Runs step inside the dialog's exec(); a dialog the step leaves open is cancelled.
    // False when the widget has no task menu or no dialog opened.
    static bool run(QDesignerFormEditorInterface *core, QWidget *widget, const Step &step);
};

#endif
