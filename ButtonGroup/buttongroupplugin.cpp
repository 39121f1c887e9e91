#include "buttongrouptaskmenu.h"
#include "customwidgetplugin.h"
#include "ui_buttongroupeditor.h"
#include "widgetpluginregistry.h"

HMI_EDITOR_TASK_MENU_INSTANCE(ButtonGroup, ButtonGroupEditor, void)
HMI_WIDGET_PLUGIN(ButtonGroup, ButtonGroupTaskMenuFactory, QStringLiteral("Buttons"), QStringLiteral(":/ButtonGroup.png"),
                  QStringLiteral("buttongroup.h"),
                  CustomWidgetPlugin::fixedDomXml(QStringLiteral("ButtonGroup"), QStringLiteral("buttonGroup"), 460, 60))
