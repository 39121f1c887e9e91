#include "tabwidgetplugin.h"

#include "widgetpluginregistry.h"

HMI_REGISTER_WIDGET_PLUGIN(TabWidgetPlugin, WidgetPluginRegistry::TabWidget)

namespace {

CustomWidgetPlugin::Description description()
{
    CustomWidgetPlugin::Description d;
    d.name = QStringLiteral("TabWidget");
    d.group = QStringLiteral("Containers");
    d.iconPath = QStringLiteral(":/TabWidget.png");
    d.includeFile = QStringLiteral("tabwidget.h");
    d.domXml = CustomWidgetPlugin::fixedDomXml(QStringLiteral("TabWidget"), QStringLiteral("tabWidget"), 150, 150);
    return d;
}

} // namespace

TabWidgetPlugin::TabWidgetPlugin(QObject *parent)
    : TypedWidgetPlugin(description(), parent)
{
}
