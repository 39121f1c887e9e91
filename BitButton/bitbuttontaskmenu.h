#ifndef BITBUTTONTASKMENU_H
#define BITBUTTONTASKMENU_H

#include "bitbutton.h"
#include "bitbuttontextlistedit.h"
#include "editortaskmenu.h"

// "Edit Properties..." of a bit button: the Bit Button Editor, whose texts page a BitButtonTextListEdit runs.
HMI_EDITOR_TASK_MENU(BitButton, BitButtonEditor, BitButtonTextListEdit)

#endif
