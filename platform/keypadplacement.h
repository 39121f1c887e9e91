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
    // Screen coordinates and sizes lie within +-MaxCoordinate: beyond any panel's screens, and far
    // enough from the int limits that no sum of them overflows.
    static constexpr int MaxCoordinate = 1 << 16;

    // A fixed rectangle without a size (or outside screen coordinates) falls back to the place next
    // to the field; a missing form to the screen. Rectangles outside screen coordinates count as
    // missing.
    static QRect place(int position, const QRect &custom, const QRect &field, const QRect &form, const QSize &size,
                       const QRect &screen);
    // Whether a rectangle lies within screen coordinates, read through its corners (a rectangle
    // made from any four numbers may be too wide for QRect's own width()).
    static bool isOnScreenScale(const QRect &rect);
};

#endif
