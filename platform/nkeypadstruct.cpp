#include "nkeypadstruct.h"

bool NKeyPadStruct::operator==(const NKeyPadStruct &o) const
{
    return flag1 == o.flag1 && flag2 == o.flag2 && enabled == o.enabled && position == o.position && x == o.x
        && y == o.y && width == o.width && height == o.height && text == o.text;
}
