#include "bitbuttontaskmenu.h"
#include "customwidgetplugin.h"
#include "ui_bitbuttoneditor.h"
#include "widgetpluginregistry.h"

HMI_EDITOR_TASK_MENU_INSTANCE(BitButton, BitButtonEditor, BitButtonTextListEdit)
// The captions are edited with Designer's multi-line text editor.
HMI_WIDGET_PLUGIN(BitButton, BitButtonTaskMenuFactory, QStringLiteral("Buttons"), QStringLiteral(":/BitButton.png"),
                  QStringLiteral("bitbutton.h"),
                  CustomWidgetPlugin::textButtonDomXml(QStringLiteral("BitButton"), QStringLiteral("bitButton"), 100, 30, QStringLiteral("OFF"),
                                                       {QStringLiteral("text"), QStringLiteral("onText"), QStringLiteral("offText")}))
