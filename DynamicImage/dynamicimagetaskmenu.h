#ifndef DYNAMICIMAGETASKMENU_H
#define DYNAMICIMAGETASKMENU_H

#include "dynamicimage.h"
#include "editortaskmenu.h"
#include "imagelisteditor.h"

// "Edit Properties..." of a dynamic image: the Dynamic Image Editor, whose Pictures page an
// ImageListEditor runs.
HMI_EDITOR_TASK_MENU(DynamicImage, DynamicImageEditor, ImageListEditor)

#endif
