#include "picturebuttonplugin.h"

#include "PictureButton.h"
#include "picturebuttontaskmenu.h"
#include "widgetpluginregistry.h"

namespace {

CustomWidgetPlugin::Description description()
{
    CustomWidgetPlugin::Description d;
    d.name = QStringLiteral("PictureButton");
    d.group = QStringLiteral("Buttons");
    d.iconPath = QStringLiteral(":/PictureButton.png");
    d.includeFile = QStringLiteral("PictureButton.h");
    d.domXml = CustomWidgetPlugin::textButtonDomXml(QStringLiteral("PictureButton"), QStringLiteral("pictureButton"),
                                                    100, 30, QStringLiteral("PictureButton"), {QStringLiteral("text")});
    return d;
}

} // namespace

HMI_REGISTER_WIDGET_PLUGIN(PictureButtonPlugin, WidgetPluginRegistry::PictureButton)

PictureButtonPlugin::PictureButtonPlugin(QObject *parent)
    : TypedWidgetPlugin(description(), parent)
{
}
