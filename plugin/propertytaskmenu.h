#ifndef PROPERTYTASKMENU_H
#define PROPERTYTASKMENU_H

#include <QExtensionFactory>
#include <QObject>
#include <QPointer>
#include <QtDesigner/QDesignerTaskMenuExtension>

#include <memory>

class QAction;
class QDesignerFormWindowInterface;
class QDialog;

// The context menu of a placed widget: "Edit Properties..." (also what a double click opens) runs
// the widget's editor dialog with a live preview, and its companion editor when accepted.
class PropertyTaskMenu : public QObject, public QDesignerTaskMenuExtension
{
    Q_OBJECT
    Q_INTERFACES(QDesignerTaskMenuExtension)
public:
    PropertyTaskMenu(QWidget *widget, QObject *parent);
    ~PropertyTaskMenu() override;

    QAction *preferredEditAction() const override;
    QList<QAction *> taskActions() const override;

public Q_SLOTS:
    void editState();

protected:
    QWidget *widget() const { return m_widget; }
    // A new instance of the widget's class, without parent.
    virtual QWidget *createPreview() const = 0;
    // Builds the editor layout on dialog; returns the companion editor whose accept() slot runs when
    // the dialog is accepted, or null.
    virtual std::unique_ptr<QObject> buildEditor(QDialog *dialog, QWidget *preview,
                                                 QDesignerFormWindowInterface *formWindow) = 0;

private:
    QAction *m_editAction;
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
