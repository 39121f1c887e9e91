#ifndef KEYPADPLACEMENT_H
#define KEYPADPLACEMENT_H

#include "hmiplatform_export.h"

#include <QRect>
#include <QSize>

// Where the soft keypad opens: next to the field being edited (below it, or above it when there is
// no room below), centred on the form, or at a fixed rectangle; always kept on the screen.
class HMIPLATFORM_EXPORT KeypadPlacement
{
public:
    enum Position { Auto = 0, Center = 1, Custom = 2 };

    // A fixed rectangle without a size falls back to the place next to the field; a missing form
    // to the screen.
    static QRect place(int position, const QRect &custom, const QRect &field, const QRect &form, const QSize &size,
                       const QRect &screen);
};

#endif
