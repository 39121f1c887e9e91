#ifndef MDIAREAPLUGIN_H
#define MDIAREAPLUGIN_H

#include "customwidgetplugin.h"
#include "mdiarea.h"
#include "mdiareataskmenu.h"

// The MDI area's entry in Designer's widget box ("Containers"), with its task menu. Its panels, not
// the area itself, take the dropped widgets.
class MdiAreaPlugin : public TypedWidgetPlugin<MdiArea, MdiAreaTaskMenuFactory>
{
    Q_OBJECT
public:
    explicit MdiAreaPlugin(QObject *parent = nullptr);
};

#endif
