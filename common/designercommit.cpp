#include "designercommit.h"

#include "designerhost.h"

#include <QString>

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
