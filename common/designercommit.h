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
};

#endif
