#ifndef EDITORTASKMENU_H
#define EDITORTASKMENU_H

#include "edittaskmenu.h"
#include "propertytaskmenu.h"

#include <cstring>
#include <memory>
#include <type_traits>

// Base under the class name Name: inherits(Name) holds, as for a class of that name. Designer's
// extension manager and the tests tell a widget's task menu and factory apart by class name.
template <class Base, const char *Name>
class NamedObject : public Base
{
public:
    using Base::Base;
    void *qt_metacast(const char *name) override
    {
        return name && std::strcmp(name, Name) == 0 ? this : Base::qt_metacast(name);
    }
};

// "Edit Properties..." of a Widget whose editor dialog is the uic layout Ui and, unless Editor is void,
// whose fields the companion Editor(Widget *, Widget *preview, QDesignerFormWindowInterface *, Ui *)
// writes to the widget when the dialog is accepted. The members are defined out of the class so that
// only the file instantiating it (HMI_EDITOR_TASK_MENU_INSTANCE) needs the layout's class.
template <class Widget, class Ui, class Editor = void>
class EditorTaskMenu : public PropertyTaskMenu
{
public:
    EditorTaskMenu(Widget *widget, QObject *parent);
    ~EditorTaskMenu() override;

protected:
    QWidget *createPreview() const override;
    std::unique_ptr<QObject> buildEditor(QDialog *dialog, QWidget *preview,
                                         QDesignerFormWindowInterface *formWindow) override;

private:
    // The companion reads the fields through it until the dialog has closed.
    std::unique_ptr<Ui> m_ui;
};

template <class Widget, class Ui, class Editor>
EditorTaskMenu<Widget, Ui, Editor>::EditorTaskMenu(Widget *widget, QObject *parent)
    : PropertyTaskMenu(widget, parent)
{
}

template <class Widget, class Ui, class Editor>
EditorTaskMenu<Widget, Ui, Editor>::~EditorTaskMenu() = default;

template <class Widget, class Ui, class Editor>
QWidget *EditorTaskMenu<Widget, Ui, Editor>::createPreview() const
{
    return new Widget;
}

template <class Widget, class Ui, class Editor>
std::unique_ptr<QObject> EditorTaskMenu<Widget, Ui, Editor>::buildEditor(
    QDialog *dialog, [[maybe_unused]] QWidget *preview, [[maybe_unused]] QDesignerFormWindowInterface *formWindow)
{
    // The object name, title, size and start page come with the layout.
    m_ui = std::make_unique<Ui>();
    m_ui->setupUi(dialog);
    if constexpr (std::is_void_v<Editor>) {
        return nullptr;
    } else {
        auto *target = qobject_cast<Widget *>(widget());
        auto *previewWidget = qobject_cast<Widget *>(preview);
        if (!target || !previewWidget)
            return nullptr;
        return std::make_unique<Editor>(target, previewWidget, formWindow, m_ui.get());
    }
}

// Declares Widget##TaskMenu, with the layout Ui::Layout and the companion Editor (void for none), and
// Widget##TaskMenuFactory, which gives it to each Widget; both answer to their names.
#define HMI_EDITOR_TASK_MENU(Widget, Layout, Editor)                                                    \
    namespace Ui {                                                                                  \
    class Layout;                                                                                   \
    }                                                                                               \
    extern template class EditorTaskMenu<Widget, Ui::Layout, Editor>;                               \
    inline constexpr char hmiClassName_##Widget##TaskMenu[] = #Widget "TaskMenu";                   \
    inline constexpr char hmiClassName_##Widget##TaskMenuFactory[] = #Widget "TaskMenuFactory";     \
    using Widget##TaskMenu = NamedObject<EditorTaskMenu<Widget, Ui::Layout, Editor>, hmiClassName_##Widget##TaskMenu>; \
    using Widget##TaskMenuFactory =                                                                 \
        NamedObject<WidgetTaskMenuFactory<Widget, Widget##TaskMenu>, hmiClassName_##Widget##TaskMenuFactory>;

// The one instantiation of a widget's task menu, in a file that includes its layout (ui_*.h).
#define HMI_EDITOR_TASK_MENU_INSTANCE(Widget, Layout, Editor) template class EditorTaskMenu<Widget, Ui::Layout, Editor>;

#endif
