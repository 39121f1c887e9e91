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

QRect onScreenScale(const QRect &rect) { return KeypadPlacement::isOnScreenScale(rect) ? rect : QRect(); }
} // namespace

bool KeypadPlacement::isOnScreenScale(const QRect &rect)
{
    const auto within = [](qint64 v, qint64 lowest) { return v >= lowest && v <= MaxCoordinate; };
    return within(rect.left(), -MaxCoordinate) && within(rect.top(), -MaxCoordinate)
        && within(qint64(rect.right()) - rect.left() + 1, 0) && within(qint64(rect.bottom()) - rect.top() + 1, 0);
}

QRect KeypadPlacement::place(int position, const QRect &custom, const QRect &field, const QRect &form,
                             const QSize &size, const QRect &screen)
{
    const QRect bounds = onScreenScale(screen);
    if (position == Custom && isOnScreenScale(custom) && custom.width() > 0 && custom.height() > 0)
        return keptInside(custom, bounds);
    const QRect formRect = onScreenScale(form);
    const QRect fieldRect = onScreenScale(field);
    QRect rect(0, 0, std::clamp(size.width(), 0, int(MaxCoordinate)), std::clamp(size.height(), 0, int(MaxCoordinate)));
    if (position == Center || !fieldRect.isValid()) {
        rect.moveCenter((formRect.isValid() ? formRect : bounds).center());
        return keptInside(rect, bounds);
    }
    rect.moveTopLeft(fieldRect.bottomLeft() + QPoint(0, 1));
    if (bounds.isValid() && rect.bottom() > bounds.bottom())
        rect.moveBottom(fieldRect.top() - 1);
    return keptInside(rect, bounds);
}
