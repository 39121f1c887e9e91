#include "interactionstate.h"

#include "abstractbutton.h"

InteractionState interactionState(const AbstractButton &button, bool focused)
{
    if (!button.isEnabled())
        return InteractionState::Disabled;
    const bool down = button.isDown();
    const bool checked = button.isCheckable() && button.isChecked();
    if (focused) {
        if (button.isCheckable())
            return checked || down ? InteractionState::CheckedHot : InteractionState::Hot;
        return down ? InteractionState::Pushed : InteractionState::Hot;
    }
    return checked || down ? InteractionState::Pushed : InteractionState::Normal;
}
