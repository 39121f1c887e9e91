#ifndef BUFFERWARNING_H
#define BUFFERWARNING_H

#include "hmiwidgets_export.h"

class QObject;

// A stored buffer property that could not be read is treated as holding no data; the panel builder
// learns which widget and property through this warning.
HMIWIDGETS_EXPORT void warnUnreadableBuffer(const QObject *widget, const char *property);

#endif
