#ifndef ENUMVALUE_H
#define ENUMVALUE_H

#include <QMetaEnum>

// Enum properties reach their setters from forms and setProperty with any integer. The enums have a
// fixed underlying type, so such a value is representable; setters keep only the declared ones.
template <typename E>
bool isEnumValue(E value)
{
    return QMetaEnum::fromType<E>().valueToKey(int(value)) != nullptr;
}

// Assigns value to field when it is one of the enum's values; tells whether it did.
template <typename E>
bool assignEnum(E &field, E value)
{
    if (!isEnumValue(value))
        return false;
    field = value;
    return true;
}

#endif
