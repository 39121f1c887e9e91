#include "enumvalue.h"

#include <QObject>

void warnUnknownEnumValue(const QObject *widget, const char *property, int value)
{
    qWarning("%s \"%s\": property \"%s\": %d is no value of it; it is ignored", widget->metaObject()->className(),
             qPrintable(widget->objectName()), property, value);
}
