#ifndef TABWIDGETPLUGIN_H
#define TABWIDGETPLUGIN_H

#include "customwidgetplugin.h"
#include "tabwidget.h"
#include "tabwidgettaskmenu.h"

// The tab widget's entry in Designer's widget box ("Containers"), with its task menu. It is not a
// Designer container itself: its pages are, and it makes them.
class TabWidgetPlugin : public TypedWidgetPlugin<TabWidget, TabWidgetTaskMenuFactory>
{
    Q_OBJECT
public:
    explicit TabWidgetPlugin(QObject *parent = nullptr);
};

#endif
