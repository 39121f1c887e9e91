#ifndef WIDGETPLUGINREGISTRY_H
#define WIDGETPLUGINREGISTRY_H

#include <QList>

#include <map>

class QDesignerCustomWidgetInterface;
class QObject;

// The designer descriptors contributed by the widget folders. A folder registers its descriptor
// when the plugin is loaded, under its place in the widget box order; the collection creates the
// descriptors in that order. So no central list has to know which widgets are built.
class WidgetPluginRegistry
{
public:
    // Places in the collection: the order in which Designer receives the descriptors.
    enum Position {
        FunctionButton = 1,
        PictureButton,
        DynamicImage,
        TableWidget,
        BitButton,
        GridSplitter,
        ButtonGroup,
        TabWidget,
        MdiArea,
        SubWindow
    };
    using Factory = QDesignerCustomWidgetInterface *(*)(QObject *parent);

    // The registry the plugin collection reads.
    static WidgetPluginRegistry &instance();

    // Registers the descriptor factory for a place; refuses (with a warning) a place already taken.
    bool add(int position, Factory factory);
    // New descriptors, each a child of parent, in the order of their places.
    QList<QDesignerCustomWidgetInterface *> create(QObject *parent) const;
    int count() const { return int(m_factories.size()); }

private:
    std::map<int, Factory> m_factories;
};

// Registers a descriptor class, constructible with a QObject parent, at a place of the collection:
//     HMI_REGISTER_WIDGET_PLUGIN(BitButtonPlugin, WidgetPluginRegistry::BitButton)
// in the descriptor's .cpp file (a file of the plugin target, so it runs when the plugin loads).
#define HMI_REGISTER_WIDGET_PLUGIN(Descriptor, position)                                              \
    namespace {                                                                                   \
    [[maybe_unused]] const bool hmiWidgetPluginRegistered_##Descriptor =                          \
        WidgetPluginRegistry::instance().add(position,                                            \
                                             [](QObject *parent) -> QDesignerCustomWidgetInterface * { \
                                                 return new Descriptor(parent);                   \
                                             });                                                  \
    }

// A widget's descriptor in one line: Widget##Plugin, the widget made by Designer, with its task menu
// from Factory (void for none), registered at the widget's place of the collection; the arguments after
// Factory are the Description's group, icon, include file, form XML and, for a container, true:
//     HMI_WIDGET_PLUGIN(GridSplitter, GridSplitterTaskMenuFactory, QStringLiteral("Containers"), ...)
#define HMI_WIDGET_PLUGIN(Widget, Factory, ...)                                                         \
    using Widget##Plugin = TypedWidgetPlugin<Widget, Factory>;                                      \
    namespace {                                                                                     \
    [[maybe_unused]] const bool hmiWidgetPluginRegistered_##Widget = WidgetPluginRegistry::instance().add( \
        WidgetPluginRegistry::Widget, [](QObject *parent) -> QDesignerCustomWidgetInterface * {      \
            return new Widget##Plugin(CustomWidgetPlugin::Description{QStringLiteral(#Widget), __VA_ARGS__}, parent); \
        });                                                                                         \
    }

#endif
