#include "siblingbuttons.h"

#include "abstractbutton.h"

#include <algorithm>
#include <limits>

namespace {

QRect globalRect(const QWidget *w)
{
    return w->rect().translated(w->mapToGlobal(QPoint(0, 0)));
}

// Buttons that overlap the focused one across the direction of travel come first, nearest along the
// direction, then nearest across it; all others rank after them by squared distance.
int arrowScore(const QRect &from, const QRect &to, int key)
{
    const QPoint goal = from.center();
    const QPoint p = to.center();
    const int dx = qAbs(p.x() - goal.x());
    const int dy = qAbs(p.y() - goal.y());
    const bool vertical = key == Qt::Key_Up || key == Qt::Key_Down;
    const bool columnsOverlap = to.x() < from.right() && from.x() < to.right();
    const bool rowsOverlap = to.y() < from.bottom() && from.y() < to.bottom();
    if (vertical && columnsOverlap)
        return (dy << 16) + dx;
    if (!vertical && rowsOverlap)
        return (dx << 16) + dy;
    return (1 << 30) + dx * dx + dy * dy;
}

bool liesAhead(const QPoint &goal, const QPoint &p, int key)
{
    switch (key) {
    case Qt::Key_Up: return p.y() < goal.y();
    case Qt::Key_Down: return p.y() > goal.y();
    case Qt::Key_Left: return p.x() < goal.x();
    case Qt::Key_Right: return p.x() > goal.x();
    default: return false;
    }
}

} // namespace

QList<AbstractButton *> SiblingButtons::of(const AbstractButton *button)
{
    QWidget *parent = button->parentWidget();
    if (!parent)
        return {const_cast<AbstractButton *>(button)};
    QList<AbstractButton *> members = parent->findChildren<AbstractButton *>();
    if (button->autoExclusive()) {
        members.erase(std::remove_if(members.begin(), members.end(),
                                     [](const AbstractButton *b) { return !b->autoExclusive(); }),
                      members.end());
    }
    return members;
}

AbstractButton *SiblingButtons::checkedMember(const AbstractButton *button)
{
    if (!button->autoExclusive())
        return nullptr;
    const QList<AbstractButton *> members = of(button);
    if (members.size() == 1)
        return nullptr;
    for (AbstractButton *b : members) {
        if (b != button && b->isChecked())
            return b;
    }
    return button->isChecked() ? const_cast<AbstractButton *>(button) : nullptr;
}

void SiblingButtons::restrictTabFocus(AbstractButton *focused)
{
    if (!focused->autoExclusive())
        return;
    const QList<AbstractButton *> members = of(focused);
    for (AbstractButton *b : members) {
        if (!b->isCheckable())
            continue;
        const bool keepsTab = b == focused || !focused->isCheckable();
        const int policy = keepsTab ? (b->focusPolicy() | Qt::TabFocus) : (b->focusPolicy() & ~Qt::TabFocus);
        b->setFocusPolicy(Qt::FocusPolicy(policy));
    }
}

AbstractButton *SiblingButtons::arrowTarget(const AbstractButton *from, int key)
{
    const QRect origin = globalRect(from);
    AbstractButton *best = nullptr;
    int bestScore = std::numeric_limits<int>::max();
    const QList<AbstractButton *> members = of(from);
    for (AbstractButton *b : members) {
        if (b == from || b->window() != from->window() || !b->isEnabled() || !b->isVisible())
            continue;
        if (!from->autoExclusive() && !(b->focusPolicy() & Qt::TabFocus))
            continue;
        const QRect rect = globalRect(b);
        if (!liesAhead(origin.center(), rect.center(), key))
            continue;
        const int score = arrowScore(origin, rect, key);
        if (score <= bestScore) {
            best = b;
            bestScore = score;
        }
    }
    return best;
}
