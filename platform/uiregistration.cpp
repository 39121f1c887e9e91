#include "uiregistration.h"

QVariantList UiRegistration::arguments() const
{
    return {index, comId, channel, dataClass, address, bitType, bitIndex,
            format1, format2, format3, format4, reserved, asText};
}
