#include "uiregistration.h"

QVariantList UiRegistration::arguments() const
{
    return {index, comId, channel, dataClass, address, bitType, bitIndex,
            format1, format2, format3, format4, reserved, asText};
}

bool UiRegistration::sameArguments(const UiRegistration &o) const
{
    return callback == o.callback && index == o.index && comId == o.comId
        && channel == o.channel && dataClass == o.dataClass && address == o.address && bitType == o.bitType
        && bitIndex == o.bitIndex && format1 == o.format1 && format2 == o.format2 && format3 == o.format3
        && format4 == o.format4 && reserved == o.reserved && asText == o.asText;
}
