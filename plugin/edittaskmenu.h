#ifndef EDITTASKMENU_H
#define EDITTASKMENU_H

#include <QExtensionFactory>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <QtDesigner/QDesignerTaskMenuExtension>

class QAction;

// The context menu of a placed widget: "Edit Properties..." (also what a double click opens), running
// the widget's editor, and "Check Form...", listing what the panel would find wrong with the form.
class EditTaskMenu : public QObject, public QDesignerTaskMenuExtension
{
    Q_OBJECT
    Q_INTERFACES(QDesignerTaskMenuExtension)
public:
    EditTaskMenu(QWidget *widget, QObject *parent);
    ~EditTaskMenu() override;

    QAction *preferredEditAction() const override;
    QList<QAction *> taskActions() const override;

public Q_SLOTS:
    virtual void editState() = 0;
    void checkForm();

protected:
    QWidget *widget() const { return m_widget; }

private:
    QAction *m_editAction;
    QAction *m_checkAction;
    QPointer<QWidget> m_widget;
};

// The factory Designer asks for a widget's task menu: a Menu for each Widget, nothing otherwise.
template<class Widget, class Menu>
class WidgetTaskMenuFactory : public QExtensionFactory
{
public:
    explicit WidgetTaskMenuFactory(QExtensionManager *parent)
        : QExtensionFactory(parent)
    {
    }

protected:
    QObject *createExtension(QObject *object, const QString &iid, QObject *parent) const override
    {
        if (iid != QLatin1String("com.trolltech.Qt.Designer.TaskMenu") && iid != Q_TYPEID(QDesignerTaskMenuExtension))
            return nullptr;
        if (auto *widget = qobject_cast<Widget *>(object))
            return new Menu(widget, parent);
        return nullptr;
    }
};

#endif
