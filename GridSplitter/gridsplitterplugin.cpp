#include "gridsplittertaskmenu.h"
#include "customwidgetplugin.h"
#include "ui_gridsplittereditor.h"
#include "widgetpluginregistry.h"

HMI_EDITOR_TASK_MENU_INSTANCE(GridSplitter, GridSplitterEditor, void)
HMI_WIDGET_PLUGIN(GridSplitter, GridSplitterTaskMenuFactory, QStringLiteral("Containers"), QStringLiteral(":/GridSplitter.png"),
                  QStringLiteral("gridsplitter.h"),
                  CustomWidgetPlugin::fixedDomXml(QStringLiteral("GridSplitter"), QStringLiteral("gridSplitter"), 300, 300))
