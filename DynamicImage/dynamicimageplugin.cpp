#include "dynamicimageplugin.h"

#include "widgetpluginregistry.h"

HMI_REGISTER_WIDGET_PLUGIN(DynamicImagePlugin, WidgetPluginRegistry::DynamicImage)

namespace {

CustomWidgetPlugin::Description description()
{
    CustomWidgetPlugin::Description d;
    d.name = QStringLiteral("DynamicImage");
    d.group = QStringLiteral("Display Widgets");
    d.iconPath = QStringLiteral(":/DynamicImage.png");
    d.includeFile = QStringLiteral("dynamicimage.h");
    d.domXml = CustomWidgetPlugin::fixedDomXml(QStringLiteral("DynamicImage"), QStringLiteral("dynamicImage"), 60, 60);
    return d;
}

} // namespace

DynamicImagePlugin::DynamicImagePlugin(QObject *parent)
    : TypedWidgetPlugin(description(), parent)
{
}
