#include "gridsplitterplugin.h"

#include "widgetpluginregistry.h"

HMI_REGISTER_WIDGET_PLUGIN(GridSplitterPlugin, WidgetPluginRegistry::GridSplitter)

namespace {

CustomWidgetPlugin::Description description()
{
    CustomWidgetPlugin::Description d;
    d.name = QStringLiteral("GridSplitter");
    d.group = QStringLiteral("Containers");
    d.iconPath = QStringLiteral(":/GridSplitter.png");
    d.includeFile = QStringLiteral("gridsplitter.h");
    d.domXml = CustomWidgetPlugin::fixedDomXml(QStringLiteral("GridSplitter"), QStringLiteral("gridSplitter"), 300, 300);
    return d;
}

} // namespace

GridSplitterPlugin::GridSplitterPlugin(QObject *parent)
    : TypedWidgetPlugin(description(), parent)
{
}
