#include "bitwriteaction.h"

#include "bitaddress.h"
#include "controllerbinding.h"

void BitWriteAction::press(const ControllerBinding &binding, int action, const BitAddress &bit)
{
    if (!binding.isAttached())
        return;
    switch (action) {
    case SetOn:
    case KeepOn:
        binding.writeBit(bit.type, bit.address, bit.bitIndex, true);
        break;
    case SetOff:
    case KeepOff:
        binding.writeBit(bit.type, bit.address, bit.bitIndex, false);
        break;
    case Invert:
        binding.writeBit(bit.type, bit.address, bit.bitIndex,
                         !binding.readBit(bit.type, bit.address, bit.bitIndex).value_or(false));
        break;
    default:
        break;
    }
}

void BitWriteAction::release(const ControllerBinding &binding, int action, const BitAddress &bit)
{
    if (action == KeepOn)
        binding.writeBit(bit.type, bit.address, bit.bitIndex, false);
    else if (action == KeepOff)
        binding.writeBit(bit.type, bit.address, bit.bitIndex, true);
}
