#include "designercommit.h"

#include "designerhost.h"

#include <QString>
#include <QWidget>

bool DesignerCommit::setProperty(QWidget *widget, const char *name, const QVariant &value)
{
    DesignerHost *host = DesignerHost::instance();
    QWidget *formWindow = DesignerHost::formWindowOf(widget);
    if (!host || !formWindow)
        return false;
    host->clearSelection(formWindow);
    host->selectWidget(formWindow, widget, true);
    host->setUndoableProperty(widget, QString::fromLatin1(name), value);
    host->selectWidget(formWindow, widget, false);
    return true;
}

bool DesignerCommit::recordChange(QWidget *widget, const char *name, const QVariant &before, const QString &description)
{
    DesignerHost *host = DesignerHost::instance();
    QWidget *formWindow = DesignerHost::formWindowOf(widget);
    const QVariant after = widget ? widget->property(name) : QVariant();
    if (!host || !formWindow || after == before)
        return false;
    // Designer takes the old value from the widget, so the widget holds it while the step is
    // recorded; the step then gives it the new one.
    widget->setProperty(name, before);
    // A macro of its own, as Designer merges consecutive changes of one property into one step.
    host->beginCommand(formWindow, description);
    host->setUndoableProperty(widget, QString::fromLatin1(name), after);
    host->endCommand(formWindow);
    return true;
}
