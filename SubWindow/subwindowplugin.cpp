#include "subwindowplugin.h"

#include "widgetpluginregistry.h"

HMI_REGISTER_WIDGET_PLUGIN(SubWindowPlugin, WidgetPluginRegistry::SubWindow)

namespace {

CustomWidgetPlugin::Description description()
{
    CustomWidgetPlugin::Description d;
    d.name = QStringLiteral("SubWindow");
    d.group = QStringLiteral("[invisible]");
    d.iconPath = QStringLiteral(":/SubWindow.png"); // no such picture: the widget box never shows it
    d.includeFile = QStringLiteral("subwindow.h");
    d.domXml = CustomWidgetPlugin::fixedDomXml(QStringLiteral("SubWindow"), QStringLiteral("SubWindow"), 100, 100);
    d.container = true;
    return d;
}

} // namespace

SubWindowPlugin::SubWindowPlugin(QObject *parent)
    : TypedWidgetPlugin(description(), parent)
{
}
