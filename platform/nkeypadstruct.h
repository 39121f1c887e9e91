#ifndef NKEYPADSTRUCT_H
#define NKEYPADSTRUCT_H

#include "hmiplatform_export.h"

#include <QMetaType>
#include <QRect>
#include <QString>

// How a widget asks for the soft keypad: whether it is used, where it opens (0 automatic next to
// the field, 1 centred on the form, 2 at the given rectangle) and that rectangle. The two flags and
// the text belong to the keypad's owner; widgets keep and return them untouched.
struct HMIPLATFORM_EXPORT NKeyPadStruct
{
    char flag1 = 0;
    char flag2 = 0;
    int enabled = 0;
    int position = 0;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    QString text;

    QRect geometry() const { return QRect(x, y, width, height); }
    bool operator==(const NKeyPadStruct &other) const;
    bool operator!=(const NKeyPadStruct &other) const { return !(*this == other); }
};

Q_DECLARE_METATYPE(NKeyPadStruct)

#endif
