#include "mdiareaplugin.h"

#include "widgetpluginregistry.h"

HMI_REGISTER_WIDGET_PLUGIN(MdiAreaPlugin, WidgetPluginRegistry::MdiArea)

namespace {

CustomWidgetPlugin::Description description()
{
    CustomWidgetPlugin::Description d;
    d.name = QStringLiteral("MdiArea");
    d.group = QStringLiteral("Containers");
    d.iconPath = QStringLiteral(":/mdiarea.png");
    d.includeFile = QStringLiteral("mdiarea.h");
    d.domXml = CustomWidgetPlugin::fixedDomXml(QStringLiteral("MdiArea"), QStringLiteral("MdiArea"), 200, 200);
    return d;
}

} // namespace

MdiAreaPlugin::MdiAreaPlugin(QObject *parent)
    : TypedWidgetPlugin(description(), parent)
{
}
