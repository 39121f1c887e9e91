#ifndef SUBWINDOWPLUGIN_H
#define SUBWINDOWPLUGIN_H

#include "customwidgetplugin.h"
#include "subwindow.h"

// The MDI area's panel: a Designer container kept out of the widget box ("[invisible]"), so that
// forms holding panels load; panels are made by the MDI area's task menu.
class SubWindowPlugin : public TypedWidgetPlugin<SubWindow>
{
    Q_OBJECT
public:
    explicit SubWindowPlugin(QObject *parent = nullptr);
};

#endif
