#include "bitwriteaction.h"

#include "controllerbinding.h"

std::optional<BitWrite> BitWriteAction::press(const ControllerBinding &binding, int action, const BitAddress &bit)
{
    if (!binding.isAttached() || action < SetOn || action > Invert)
        return std::nullopt;
    const int channel = binding.resolvedChannel();
    bool value = action == SetOn || action == KeepOn;
    if (action == Invert)
        value = !binding.readBitOn(channel, bit.type, bit.address, bit.bitIndex).value_or(false);
    binding.writeBitOn(channel, bit.type, bit.address, bit.bitIndex, value);
    if (action == KeepOn || action == KeepOff)
        return BitWrite{channel, bit, !value};
    return std::nullopt;
}
