#include "customwidgetplugin.h"
#include "mdiarea.h"
#include "mdiareataskmenu.h"
#include "widgetpluginregistry.h"

// Its panels, not the area itself, take the dropped widgets.
HMI_WIDGET_PLUGIN(MdiArea, MdiAreaTaskMenuFactory, QStringLiteral("Containers"), QStringLiteral(":/mdiarea.png"),
                  QStringLiteral("mdiarea.h"),
                  CustomWidgetPlugin::fixedDomXml(QStringLiteral("MdiArea"), QStringLiteral("MdiArea"), 200, 200))
