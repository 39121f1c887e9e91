#ifndef SIBLINGBUTTONS_H
#define SIBLINGBUTTONS_H

#include <QList>

class AbstractButton;

// The group of a button without a group object: the buttons below the same parent widget
// (only the auto-exclusive ones when the button itself is auto-exclusive).
class SiblingButtons
{
public:
    static QList<AbstractButton *> of(const AbstractButton *button);

    // The first other checked member; the button itself when only it is checked; null when the button is
    // not auto-exclusive or alone.
    static AbstractButton *checkedMember(const AbstractButton *button);

    // Keeps tab focus on the button just focused and takes it from its checkable siblings, so that Tab
    // leaves an exclusive group instead of walking through it.
    static void restrictTabFocus(AbstractButton *focused);

    // The member that an arrow key moves focus to from the button, or null.
    static AbstractButton *arrowTarget(const AbstractButton *from, int key);
};

#endif // SIBLINGBUTTONS_H
