#ifndef DESIGNERCHILDREN_H
#define DESIGNERCHILDREN_H

#include "hmiwidgets_export.h"

class QWidget;

// The children a widget makes for the panel builder to fill (pages, cells, panels). In a Designer
// form they are managed by the form window, so they are saved with the form and take drops, and
// their tag (status tip) is always saved. When one goes it is released together with what was
// dropped on it, deepest first, and kept hidden, never deleted (Designer would crash on a deleted
// managed widget, now or at the next undo); when it comes back, the same widgets are managed again.
// At run time nothing of this happens.
namespace DesignerChildren {

// Manages child in owner's form window and marks its tag to be saved (children known by their
// class and name, like panels, have none).
HMIWIDGETS_EXPORT void adopt(QWidget *owner, QWidget *child, bool tagged = true);
// Stops managing child and the managed widgets inside it, remembering them.
HMIWIDGETS_EXPORT void release(QWidget *owner, QWidget *child);
// Manages again child and what release() took from it.
HMIWIDGETS_EXPORT void readopt(QWidget *owner, QWidget *child, bool tagged = true);
// Makes the object inspector, action editor and property editor show the form as it is now.
HMIWIDGETS_EXPORT void refresh(QWidget *owner);

} // namespace DesignerChildren

#endif
