#include "functionbuttonplugin.h"

#include "functionbutton.h"
#include "functionbuttontaskmenu.h"
#include "widgetpluginregistry.h"

namespace {

CustomWidgetPlugin::Description description()
{
    CustomWidgetPlugin::Description d;
    d.name = QStringLiteral("FunctionButton");
    d.group = QStringLiteral("Buttons");
    d.iconPath = QStringLiteral(":/FunctionButton.png");
    d.includeFile = QStringLiteral("functionbutton.h");
    // The caption is edited with Designer's multi-line text editor.
    d.domXml = CustomWidgetPlugin::textButtonDomXml(QStringLiteral("FunctionButton"), QStringLiteral("functionButton"),
                                                    100, 30, QStringLiteral("FunctionButton"),
                                                    {QStringLiteral("text")});
    return d;
}

} // namespace

HMI_REGISTER_WIDGET_PLUGIN(FunctionButtonPlugin, WidgetPluginRegistry::FunctionButton)

FunctionButtonPlugin::FunctionButtonPlugin(QObject *parent)
    : TypedWidgetPlugin(description(), parent)
{
}
