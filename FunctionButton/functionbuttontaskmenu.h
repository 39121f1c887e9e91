#ifndef FUNCTIONBUTTONTASKMENU_H
#define FUNCTIONBUTTONTASKMENU_H

#include "editortaskmenu.h"
#include "functionbutton.h"
#include "functionbuttonlistedit.h"

// "Edit Properties..." of a function button: the Function Button Editor, whose captions, fonts and
// caption colour functionButtonListEdit commits.
HMI_EDITOR_TASK_MENU(FunctionButton, FunctionButtonEditor, functionButtonListEdit)

#endif
