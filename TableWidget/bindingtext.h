#ifndef BINDINGTEXT_H
#define BINDINGTEXT_H

#include "hmiwidgets_export.h"

#include <QString>
#include <QStringList>

// The variable address a table cell carries in its what's-this text, fields separated by "@":
//   value cell: channel @ data class @ address @ width @ decimals @ lowest @ highest
//               [@ size code @ radix index @ link [@ extra]]   (the bracketed part only with 10 or more fields)
//   bit cell:   "bit" @ channel @ bit type @ address @ bit index @ link [@ fields 6 ... 10]
// Anything with fewer fields is a text cell. Parsed once per cell; a field that is not a number
// reads as 0.
struct HMIWIDGETS_EXPORT BindingText
{
    enum Kind { Text, Value, Bit };

    Kind kind = Text;
    QStringList fields;
    int channel = 0;    // 0-based
    int dataClass = -1; // value cells
    int bitType = -1;   // bit cells
    int address = 0;
    int bitIndex = 0;
    int comId = 0;
    int width = 0;
    int decimals = 0;
    double lowest = -1000000000.0;
    double highest = 1000000000.0;
    int sizeCode = 4; // also the registration's format1
    int radix = 10;
    int extra = 0; // field 10 when present

    static BindingText parse(const QString &text);
    // The 0-based channel of a 1-based channel field: a channel below 1 is the first one.
    static int channelIndex(int field) { return field > 1 ? field - 1 : 0; }
    // The number base of a radix index: 0 -> 10, 1 -> 16, 2 -> 8, 3 -> 2.
    static int radixOfIndex(int index);
    int field(int index) const;
};

#endif
