#ifndef DESIGNERCOMMIT_H
#define DESIGNERCOMMIT_H

#include "hmiwidgets_export.h"

#include <QVariant>

class QWidget;

// Records a property change of a widget in its Designer form as an undoable edit: the form's
// selection is cleared, the widget selected so the cursor applies to it, the property set, and the
// widget deselected. Returns false (and touches nothing) outside a designer form.
class HMIWIDGETS_EXPORT DesignerCommit
{
public:
    static bool setProperty(QWidget *widget, const char *name, const QVariant &value);
    // Records a change already made on the widget by hand (a drag), from before to the property's
    // value now, as one undo step of its own named description. Returns false (and touches nothing)
    // outside a designer form or when the value did not change.
    static bool recordChange(QWidget *widget, const char *name, const QVariant &before, const QString &description);
};

#endif
