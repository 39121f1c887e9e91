#ifndef ENUMVALUE_H
#define ENUMVALUE_H

#include "hmiwidgets_export.h"

#include <QMetaEnum>

class QObject;

// Enum properties reach their setters from forms and setProperty with any integer. The library's enums
// have a fixed underlying type, so such a value is representable; setters keep only the declared ones
// and tell the panel builder which widget and property refused what.
HMIWIDGETS_EXPORT void warnUnknownEnumValue(const QObject *widget, const char *property, int value);

// True when value is one of E's; otherwise warns and returns false.
template <typename E>
bool acceptEnum(const QObject *widget, const char *property, E value)
{
    if (QMetaEnum::fromType<E>().valueToKey(int(value)))
        return true;
    warnUnknownEnumValue(widget, property, int(value));
    return false;
}

// Assigns value to field when it is one of E's; tells whether it did.
template <typename E>
bool assignEnum(const QObject *widget, const char *property, E &field, E value)
{
    if (!acceptEnum(widget, property, value))
        return false;
    field = value;
    return true;
}

#endif
