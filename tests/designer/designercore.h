#ifndef DESIGNERCORE_H
#define DESIGNERCORE_H

#include <QString>
#include <QWidget>

#include <functional>

class QDesignerCustomWidgetInterface;
class QDialog;
class QDesignerFormEditorInterface;
class QDesignerFormWindowInterface;
class QMainWindow;

// The real Qt Designer core for tests, offscreen: a form editor with its task menus, property
// editor, object inspector and action editor, and the plugins found on QT_PLUGIN_PATH initialised
// (the test sets QT_PLUGIN_PATH to the build's plugins folder). Form windows are made from .ui text.
//
// One core per process, as in Designer: descriptors initialise once, with the first core that asks,
// so a second core would have no task menus and no designer host. Make it after the QApplication,
// close the forms a test made with closeForms(), and call release() from cleanupTestCase().
class DesignerCore
{
public:
    static DesignerCore &instance();
    static void release();

    QDesignerFormEditorInterface *core() const { return m_core; }

    // A new, active form window holding the given .ui document (a plain QWidget form when empty),
    // clean and with an empty undo stack. Null (with a warning) when Designer refuses the document.
    // With shown, the form sits in a shown host window, as in Designer (shown widgets build then).
    QDesignerFormWindowInterface *createForm(const QString &uiDocument, bool shown = false);
    // Removes and deletes every form window.
    void closeForms();

    // A .ui document: a QWidget form "Form" of 400 x 300 holding the given <widget> elements.
    static QString formDocument(const QString &childWidgets);
    // The form's widget of that object name (the form itself included), or null.
    static QWidget *formWidget(QDesignerFormWindowInterface *form, const QString &objectName);

    // The plugin's descriptors in their order.
    static QList<QDesignerCustomWidgetInterface *> descriptors();
    // Opens the editor dialog of widget's preferred task-menu action and runs step on it while it is
    // open; a dialog step leaves open is cancelled. False when no dialog opened. With menuId, the
    // task menu of that extension id (Designer's own table menu: "QDesignerInternalTaskMenuExtension").
    static bool runEditor(QWidget *widget, const std::function<void(QDialog *)> &step, const char *menuId = nullptr);

    // Pastes the <widget> element onto target (a page, cell, panel or the form), as a drop does.
    static void paste(QDesignerFormWindowInterface *form, QWidget *target, const QString &widgetElement);

private:
    DesignerCore();
    ~DesignerCore();

    QMainWindow *m_topLevel = nullptr;
    QWidget *m_host = nullptr;
    QDesignerFormEditorInterface *m_core = nullptr;
};

#endif
