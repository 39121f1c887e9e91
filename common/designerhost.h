#ifndef DESIGNERHOST_H
#define DESIGNERHOST_H

#include "hmiwidgets_export.h"

#include <QObject>
#include <QString>
#include <QVariant>

class QTableWidgetItem;
class QUndoCommand;
class QWidget;

// What the widgets ask of the form designer. The designer plugin installs an implementation when
// Designer initialises it; at run time none is installed and designer-only behaviour is skipped.
// Form windows are passed as the QWidget the designer uses for them.
class HMIWIDGETS_EXPORT DesignerHost : public QObject
{
    Q_OBJECT
public:
    explicit DesignerHost(QObject *parent = nullptr);
    ~DesignerHost() override;

    // The installed host, or null (run time).
    static DesignerHost *instance();
    static void install(DesignerHost *host);
    // The form window that holds widget, or null when there is none or no host is installed.
    static QWidget *formWindowOf(QWidget *widget);

    virtual QWidget *formWindow(QWidget *widget) const = 0;
    virtual QString fileName(QWidget *formWindow) const = 0;
    // The folder of the project being edited: the folder of the form file, or the current folder.
    virtual QString projectPath(QWidget *formWindow) const = 0;

    // Property sheet: always save the property; set a property without an undo entry.
    virtual void markPropertyChanged(QWidget *widget, const QString &name) = 0;
    virtual void setSheetProperty(QWidget *widget, const QString &name, const QVariant &value) = 0;
    // Form window cursor: an undoable change; begin/end group several into one undo step.
    virtual void setUndoableProperty(QWidget *widget, const QString &name, const QVariant &value) = 0;
    virtual void beginCommand(QWidget *formWindow, const QString &description) = 0;
    virtual void endCommand(QWidget *formWindow) = 0;

    virtual void clearSelection(QWidget *formWindow) = 0;
    virtual void selectWidget(QWidget *formWindow, QWidget *widget, bool select) = 0;
    virtual bool isSelected(QWidget *formWindow, QWidget *widget) const = 0;

    // Widgets created or dropped by a widget; manage gives the new one a unique object name.
    virtual void manageWidget(QWidget *formWindow, QWidget *widget) = 0;
    virtual void unmanageWidget(QWidget *formWindow, QWidget *widget) = 0;
    virtual bool isManaged(QWidget *formWindow, QWidget *widget) const;
    // Renames widget when another widget of the form has its object name.
    virtual void ensureUniqueName(QWidget *formWindow, QWidget *widget);
    // Records a change of the widget's own (not a property) as one undoable step; the host takes
    // the command and runs its redo at once.
    virtual void pushCommand(QWidget *formWindow, QUndoCommand *command);
    virtual void markDirty(QWidget *formWindow) = 0;
    // Object inspector, action editor and property editor after structural changes.
    virtual void refreshEditors(QWidget *formWindow) = 0;
    // The object the property editor is showing.
    virtual QObject *propertyEditorObject() const = 0;
    // Gives an item made in code the designer's own roles for its texts, so that the designer's item
    // editor shows and keeps them.
    virtual void exposeItemToEditor(QTableWidgetItem *item) const;
    // The top widget of the designer's preview holding widget, when that preview runs on a controller
    // (it carries "QeltApp" as a panel's form does); null in the editor and at run time.
    virtual QWidget *previewForm(const QWidget *widget) const;

Q_SIGNALS:
    void selectionChanged(QWidget *formWindow);
    void propertyChanged(const QString &name, const QVariant &value);
};

#endif
