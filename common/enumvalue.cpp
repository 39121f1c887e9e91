#include "enumvalue.h"

#include "bufferwarning.h"

#include <QObject>

void warnUnknownEnumValue(const QObject *widget, const char *property, int value)
{
    warnProperty(widget, property, QStringLiteral("%1 is no value of it; it is ignored").arg(value));
}
