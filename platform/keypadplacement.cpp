#include "keypadplacement.h"

#include <algorithm>

namespace {
// Moves rect inside bounds as far as it fits (its top left corner wins when it is larger).
QRect keptInside(QRect rect, const QRect &bounds)
{
    if (!bounds.isValid())
        return rect;
    rect.moveLeft(std::max(bounds.left(), std::min(rect.left(), bounds.right() - rect.width() + 1)));
    rect.moveTop(std::max(bounds.top(), std::min(rect.top(), bounds.bottom() - rect.height() + 1)));
    return rect;
}
} // namespace

QRect KeypadPlacement::place(int position, const QRect &custom, const QRect &field, const QRect &form,
                             const QSize &size, const QRect &screen)
{
    if (position == Custom && custom.width() > 0 && custom.height() > 0)
        return keptInside(custom, screen);
    QRect rect(QPoint(0, 0), size);
    if (position == Center) {
        rect.moveCenter((form.isValid() ? form : screen).center());
        return keptInside(rect, screen);
    }
    if (!field.isValid()) {
        rect.moveCenter((form.isValid() ? form : screen).center());
        return keptInside(rect, screen);
    }
    rect.moveTopLeft(field.bottomLeft() + QPoint(0, 1));
    if (screen.isValid() && rect.bottom() > screen.bottom())
        rect.moveBottom(field.top() - 1);
    return keptInside(rect, screen);
}
