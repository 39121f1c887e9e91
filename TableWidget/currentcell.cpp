#include "currentcell.h"

#include "bindingtext.h"

#include <QTableWidgetItem>

namespace {
constexpr int LongFormFields = 10;
} // namespace

CurrentCell CurrentCell::of(const QTableWidgetItem *item, int mode)
{
    CurrentCell c;
    if (!item)
        return c;
    if (mode == 1) {
        c.bound = true;
        return c;
    }
    if (!(item->flags() & Qt::ItemIsEditable))
        return c;
    const QString text = item->whatsThis();
    if (text.isEmpty())
        return c;
    BindingText b;
    b.fields = text.split(QLatin1Char('@'));
    const int count = int(b.fields.size());
    if (count < 4) {
        // Short forms: "2" and "3" give a plain number entry, "1" a value cell at word 0.
        const QString kind = b.fields.first().trimmed();
        if (kind == QLatin1String("2") || kind == QLatin1String("3")) {
            c.decimals = 3;
            c.lowest = -99999999.0;
            c.highest = 99999999.0;
            return c;
        }
        if (kind != QLatin1String("1"))
            return c;
    }
    c.bound = true;
    if (b.fields.first() == QLatin1String("bit")) {
        c.isBit = true;
        if (count > 5) {
            c.channel = BindingText::channelIndex(b.field(1));
            c.bitType = b.field(2);
            c.address = b.field(3);
            c.bitIndex = b.field(4);
            c.comId = b.field(5);
        }
        c.lowest = 0;
        c.highest = 1;
        c.decimals = 0;
        c.sizeCode = 3;
        c.radix = 2;
        return c;
    }
    c.isValue = true;
    if (count > 4) {
        c.channel = BindingText::channelIndex(b.field(0));
        c.dataClass = b.field(1);
        c.address = b.field(2);
        c.decimals = b.field(4);
    }
    if (count >= 7) {
        c.lowest = b.fields.at(5).trimmed().toDouble();
        c.highest = b.fields.at(6).trimmed().toDouble();
    }
    if (count >= LongFormFields) {
        c.sizeCode = b.field(7);
        c.radix = BindingText::radixOfIndex(b.field(8));
        c.comId = b.field(9);
    }
    return c;
}
