#include "tabwidgettaskmenu.h"
#include "customwidgetplugin.h"
#include "ui_tabwidgeteditor.h"
#include "widgetpluginregistry.h"

HMI_EDITOR_TASK_MENU_INSTANCE(TabWidget, TabWidgetEditor, TabWidgetPropertiesEditor)
HMI_WIDGET_PLUGIN(TabWidget, TabWidgetTaskMenuFactory, QStringLiteral("Containers"), QStringLiteral(":/TabWidget.png"),
                  QStringLiteral("tabwidget.h"),
                  CustomWidgetPlugin::fixedDomXml(QStringLiteral("TabWidget"), QStringLiteral("tabWidget"), 150, 150))
