#ifndef BUTTONGROUPTASKMENU_H
#define BUTTONGROUPTASKMENU_H

#include "buttongroup.h"
#include "editortaskmenu.h"

// "Edit Properties..." of a button group: the Button Group Editor, without a companion editor.
HMI_EDITOR_TASK_MENU(ButtonGroup, ButtonGroupEditor, void)

#endif
