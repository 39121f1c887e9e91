#ifndef INTERACTIONSTATE_H
#define INTERACTIONSTATE_H

#include "hmiwidgets_export.h"

class AbstractButton;

// The face a button shows by interaction, for buttons whose colours and pictures follow focus, checked
// and down rather than a controller bit. Buttons without a checked-hot face show Pushed for CheckedHot.
enum class InteractionState { Normal, Pushed, Hot, CheckedHot, Disabled };

HMIWIDGETS_EXPORT InteractionState interactionState(const AbstractButton &button, bool focused);

#endif // INTERACTIONSTATE_H
