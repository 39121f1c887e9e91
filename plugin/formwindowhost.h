#ifndef FORMWINDOWHOST_H
#define FORMWINDOWHOST_H

#include "designerhost.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerPropertyEditorInterface>

#include <QPointer>

class QDesignerFormWindowInterface;

// The designer host inside Qt Designer: form windows, their cursors and property sheets, the form
// window manager and the tool windows of one Designer core.
class FormWindowHost : public DesignerHost
{
    Q_OBJECT
public:
    explicit FormWindowHost(QDesignerFormEditorInterface *core);
    ~FormWindowHost() override;

    // Installs a host for core unless the installed one already serves it. The host is a child of
    // the core, so it goes away with it. Descriptors call this from initialize().
    static FormWindowHost *installFor(QDesignerFormEditorInterface *core);

    QDesignerFormEditorInterface *core() const { return m_core; }

    // Sets a property of a form's widget through the form's cursor, as one undoable change. Also for
    // properties hidden from the property editor (DESIGNABLE false, such as stored text buffers),
    // which Qt 6 Designer's cursor refuses by itself. False when the widget has no such property.
    static bool setCursorProperty(QDesignerFormWindowInterface *form, QWidget *widget, const QString &name,
                                  const QVariant &value);

    QWidget *formWindow(QWidget *widget) const override;
    QString fileName(QWidget *formWindow) const override;
    QString projectPath(QWidget *formWindow) const override;

    void markPropertyChanged(QWidget *widget, const QString &name) override;
    void setSheetProperty(QWidget *widget, const QString &name, const QVariant &value) override;
    void setUndoableProperty(QWidget *widget, const QString &name, const QVariant &value) override;
    void beginCommand(QWidget *formWindow, const QString &description) override;
    void endCommand(QWidget *formWindow) override;

    void clearSelection(QWidget *formWindow) override;
    void selectWidget(QWidget *formWindow, QWidget *widget, bool select) override;
    bool isSelected(QWidget *formWindow, QWidget *widget) const override;

    void manageWidget(QWidget *formWindow, QWidget *widget) override;
    void unmanageWidget(QWidget *formWindow, QWidget *widget) override;
    bool isManaged(QWidget *formWindow, QWidget *widget) const override;
    void ensureUniqueName(QWidget *formWindow, QWidget *widget) override;
    void pushCommand(QWidget *formWindow, QUndoCommand *command) override;
    void markDirty(QWidget *formWindow) override;
    void refreshEditors(QWidget *formWindow) override;
    QObject *propertyEditorObject() const override;
    void exposeItemToEditor(QTableWidgetItem *item) const override;
    QWidget *previewForm(const QWidget *widget) const override;

private:
    static QDesignerFormWindowInterface *form(QWidget *formWindow);
    void watchForm(QDesignerFormWindowInterface *form);
    void formSelectionChanged();
    // Designer creates its property editor after the plugins, so it is looked for again later.
    void connectPropertyEditor();

    QPointer<QDesignerFormEditorInterface> m_core;
    QPointer<QDesignerPropertyEditorInterface> m_propertyEditor;
};

#endif
