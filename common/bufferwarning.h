#ifndef BUFFERWARNING_H
#define BUFFERWARNING_H

#include "hmiwidgets_export.h"

class QObject;
class QString;

// A stored buffer property that could not be read is treated as holding no data; the panel builder
// learns which widget and property through this warning.
HMIWIDGETS_EXPORT void warnUnreadableBuffer(const QObject *widget, const char *property);

// A property value from a form that the widget refuses, clamps or cuts: 'Class "name": property "p": what'.
// The form checker shows what follows the prefix.
HMIWIDGETS_EXPORT void warnProperty(const QObject *widget, const char *property, const QString &what);

#endif
