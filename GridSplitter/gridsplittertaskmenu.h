#ifndef GRIDSPLITTERTASKMENU_H
#define GRIDSPLITTERTASKMENU_H

#include "editortaskmenu.h"
#include "gridsplitter.h"

// "Edit Properties..." of a grid splitter: the Grid Splitter Editor, without a companion editor.
HMI_EDITOR_TASK_MENU(GridSplitter, GridSplitterEditor, void)

#endif
