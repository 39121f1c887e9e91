#include "functionbuttontaskmenu.h"
#include "customwidgetplugin.h"
#include "ui_functionbuttoneditor.h"
#include "widgetpluginregistry.h"

HMI_EDITOR_TASK_MENU_INSTANCE(FunctionButton, FunctionButtonEditor, functionButtonListEdit)
// The caption is edited with Designer's multi-line text editor.
HMI_WIDGET_PLUGIN(FunctionButton, FunctionButtonTaskMenuFactory, QStringLiteral("Buttons"), QStringLiteral(":/FunctionButton.png"),
                  QStringLiteral("functionbutton.h"),
                  CustomWidgetPlugin::textButtonDomXml(QStringLiteral("FunctionButton"), QStringLiteral("functionButton"), 100, 30,
                                                       QStringLiteral("FunctionButton"), {QStringLiteral("text")}))
