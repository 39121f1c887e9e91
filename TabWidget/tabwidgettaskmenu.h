#ifndef TABWIDGETTASKMENU_H
#define TABWIDGETTASKMENU_H

#include "editortaskmenu.h"
#include "tabwidget.h"
#include "tabwidgetpropertieseditor.h"

// "Edit Properties..." of a tab widget: the TabWidget Editor, whose tab page and authority field a
// TabWidgetPropertiesEditor runs.
HMI_EDITOR_TASK_MENU(TabWidget, TabWidgetEditor, TabWidgetPropertiesEditor)

#endif
