#include "bitbuttonplugin.h"

#include "bitbutton.h"
#include "bitbuttontaskmenu.h"
#include "widgetpluginregistry.h"

HMI_REGISTER_WIDGET_PLUGIN(BitButtonPlugin, WidgetPluginRegistry::BitButton)

namespace {

CustomWidgetPlugin::Description description()
{
    CustomWidgetPlugin::Description d;
    d.name = QStringLiteral("BitButton");
    d.group = QStringLiteral("Buttons");
    d.iconPath = QStringLiteral(":/BitButton.png");
    d.includeFile = QStringLiteral("bitbutton.h");
    // The captions are edited with Designer's multi-line text editor.
    d.domXml = CustomWidgetPlugin::textButtonDomXml(QStringLiteral("BitButton"), QStringLiteral("bitButton"), 100, 30,
                                                    QStringLiteral("OFF"),
                                                    {QStringLiteral("text"), QStringLiteral("onText"),
                                                     QStringLiteral("offText")});
    return d;
}

} // namespace

BitButtonPlugin::BitButtonPlugin(QObject *parent)
    : TypedWidgetPlugin(description(), parent)
{
}
