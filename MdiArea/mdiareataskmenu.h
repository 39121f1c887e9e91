#ifndef MDIAREATASKMENU_H
#define MDIAREATASKMENU_H

#include "edittaskmenu.h"
#include "mdiarea.h"

#include <memory>

class QDialog;
class QUndoCommand;

namespace Ui {
class MdiAreaEditor;
}

// "Edit Properties..." of an MDI area: the MdiArea Editor, a list of the panels where New and Delete
// act on the form at once, each an undo step of Designer's, and OK makes the chosen panel the active one.
class MdiAreaTaskMenu : public EditTaskMenu
{
    Q_OBJECT
public:
    MdiAreaTaskMenu(MdiArea *area, QObject *parent);
    ~MdiAreaTaskMenu() override;

    // The dialog of the last editState(), while it is open (for tests); null otherwise.
    QDialog *dialog() const { return m_dialog; }

public Q_SLOTS:
    void editState() override;
    void on_newButton_clicked();
    void on_deleteButton_clicked();

private:
    MdiArea *area() const;
    void pushCommand(QUndoCommand *command);

    std::unique_ptr<Ui::MdiAreaEditor> m_ui;
    QDialog *m_dialog = nullptr;
};

class MdiAreaTaskMenuFactory : public WidgetTaskMenuFactory<MdiArea, MdiAreaTaskMenu>
{
    Q_OBJECT
public:
    explicit MdiAreaTaskMenuFactory(QExtensionManager *parent);
};

#endif
