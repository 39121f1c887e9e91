#include "bindingtext.h"

namespace {
constexpr int MinFields = 6;
constexpr int LongFormFields = 10;
} // namespace

int BindingText::field(int index) const
{
    return index < fields.size() ? fields.at(index).trimmed().toInt() : 0;
}

int BindingText::radixOfIndex(int index)
{
    // An index past the four bases is a typing slip in a form; the cell still shows its value, in
    // decimal, rather than going dead.
    static const int bases[] = {10, 16, 8, 2};
    return index >= 0 && index < 4 ? bases[index] : 10;
}

BindingText BindingText::parse(const QString &text)
{
    BindingText b;
    b.fields = text.split(QLatin1Char('@'));
    if (text.isEmpty() || b.fields.size() < MinFields)
        return b;
    if (b.fields.first() == QLatin1String("bit")) {
        b.kind = Bit;
        b.channel = channelIndex(b.field(1));
        b.bitType = b.field(2);
        b.address = b.field(3);
        b.bitIndex = b.field(4);
        b.comId = b.field(5);
        b.extra = b.field(10);
        return b;
    }
    b.kind = Value;
    b.channel = channelIndex(b.field(0));
    b.dataClass = b.field(1);
    b.address = b.field(2);
    b.width = b.field(3);
    b.decimals = b.field(4);
    b.lowest = b.fields.at(5).trimmed().toDouble();
    // Without a highest field the keypad's own upper limit applies.
    if (b.fields.size() > 6)
        b.highest = b.fields.at(6).trimmed().toDouble();
    if (b.fields.size() >= LongFormFields) {
        b.sizeCode = b.field(7);
        b.radix = radixOfIndex(b.field(8));
        b.comId = b.field(9);
        b.extra = b.field(10);
    }
    return b;
}
