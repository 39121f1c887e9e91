#ifndef PICTUREBUTTONTASKMENU_H
#define PICTUREBUTTONTASKMENU_H

#include "editortaskmenu.h"
#include "PictureButton.h"
#include "picturebuttontextlisteditor.h"

// "Edit Properties..." of a picture button: the Picture Button Editor, whose captions, fonts and
// caption colour PictureButtonTextListEditor commits.
HMI_EDITOR_TASK_MENU(PictureButton, PictureButtonEditor, PictureButtonTextListEditor)

#endif
