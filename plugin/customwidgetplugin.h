#ifndef CUSTOMWIDGETPLUGIN_H
#define CUSTOMWIDGETPLUGIN_H

#include <QObject>
#include <QtGlobal>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <type_traits>

class QExtensionFactory;
class QExtensionManager;

// What the descriptors of our widgets share: the fixed answers, the initialised flag, and
// initialize() installing the designer host and registering the widget's task-menu factory once.
// A descriptor supplies its description, createWidget() and its factory.
class CustomWidgetPlugin : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    struct Description
    {
        QString name;
        QString group;
        QString iconPath;
        QString includeFile;
        QString domXml;
        bool container = false;
    };

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override;
    bool isInitialized() const override;
    void initialize(QDesignerFormEditorInterface *core) override;
    QString domXml() const override;
    QString codeTemplate() const override;

    // The initial form XML of a widget that only needs its class, name and size (and the given child
    // elements, such as a table's columns).
    static QString fixedDomXml(const QString &className, const QString &objectName, int width, int height,
                               const QString &children = QString());
    // The initial form XML of a text button, with its multi-line string properties.
    static QString textButtonDomXml(const QString &className, const QString &objectName, int width, int height,
                                    const QString &text, const QStringList &multiLineProperties);

protected:
    CustomWidgetPlugin(const Description &description, QObject *parent);
    // The widget's task-menu factory, made with the manager as its parent; null for none.
    virtual QExtensionFactory *createTaskMenuFactory(QExtensionManager *manager) const = 0;
    // Every widget made for Designer passes here: one made for a preview joins its preview's session.
    static QWidget *made(QWidget *widget, QWidget *parent);

private:
    Description m_description;
    bool m_initialized = false;
};

// A descriptor that creates Widget and registers Factory as its task menu (none for void): a widget's
// descriptor is then only its constructor with the description.
template <class Widget, class Factory = void>
class TypedWidgetPlugin : public CustomWidgetPlugin
{
public:
    TypedWidgetPlugin(const Description &description, QObject *parent)
        : CustomWidgetPlugin(description, parent)
    {
    }
    QWidget *createWidget(QWidget *parent) override { return made(new Widget(parent), parent); }

protected:
    QExtensionFactory *createTaskMenuFactory([[maybe_unused]] QExtensionManager *manager) const override
    {
        if constexpr (std::is_void_v<Factory>)
            return nullptr;
        else
            return new Factory(manager);
    }
};

#endif
