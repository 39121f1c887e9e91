#include "buttongroupplugin.h"

#include "buttongroup.h"
#include "buttongrouptaskmenu.h"
#include "widgetpluginregistry.h"

namespace {

CustomWidgetPlugin::Description description()
{
    CustomWidgetPlugin::Description d;
    d.name = QStringLiteral("ButtonGroup");
    d.group = QStringLiteral("Buttons");
    d.iconPath = QStringLiteral(":/ButtonGroup.png");
    d.includeFile = QStringLiteral("buttongroup.h");
    d.domXml = CustomWidgetPlugin::fixedDomXml(QStringLiteral("ButtonGroup"), QStringLiteral("buttonGroup"), 460, 60);
    return d;
}

} // namespace

HMI_REGISTER_WIDGET_PLUGIN(ButtonGroupPlugin, WidgetPluginRegistry::ButtonGroup)

ButtonGroupPlugin::ButtonGroupPlugin(QObject *parent)
    : TypedWidgetPlugin(description(), parent)
{
}
