#include "customwidgetplugin.h"
#include "subwindow.h"
#include "widgetpluginregistry.h"

// Lets Designer load the MDI area's panels; the widget box never shows it, nor its picture.
HMI_WIDGET_PLUGIN(SubWindow, void, QStringLiteral("[invisible]"), QStringLiteral(":/SubWindow.png"),
                  QStringLiteral("subwindow.h"),
                  CustomWidgetPlugin::fixedDomXml(QStringLiteral("SubWindow"), QStringLiteral("SubWindow"), 100, 100), true)
