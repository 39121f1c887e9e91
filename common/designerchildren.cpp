#include "designerchildren.h"

#include "designerhost.h"

#include <QWidget>

namespace {
// Marks a widget release() took from the form, to be managed again by readopt().
const char *const ReleasedMark = "_hmi_released";

QWidget *formWindowOf(QWidget *owner, DesignerHost **host)
{
    *host = DesignerHost::instance();
    return *host ? DesignerHost::formWindowOf(owner) : nullptr;
}
} // namespace

namespace DesignerChildren {

void adopt(QWidget *owner, QWidget *child, bool tagged)
{
    DesignerHost *host = nullptr;
    QWidget *formWindow = formWindowOf(owner, &host);
    if (!formWindow || !child)
        return;
    host->manageWidget(formWindow, child);
    // Designer saves the place of every child it read from a form: so must the first save.
    host->markPropertyChanged(child, QStringLiteral("geometry"));
    if (tagged)
        host->markPropertyChanged(child, QStringLiteral("statusTip"));
}

void release(QWidget *owner, QWidget *child)
{
    DesignerHost *host = nullptr;
    QWidget *formWindow = formWindowOf(owner, &host);
    if (!formWindow || !child)
        return;
    // findChildren lists parents before their children: walk it backwards, deepest first.
    const QList<QWidget *> inside = child->findChildren<QWidget *>();
    for (auto it = inside.crbegin(); it != inside.crend(); ++it) {
        if (host->isManaged(formWindow, *it)) {
            (*it)->setProperty(ReleasedMark, true);
            host->unmanageWidget(formWindow, *it);
        }
    }
    host->unmanageWidget(formWindow, child);
}

void readopt(QWidget *owner, QWidget *child, bool tagged)
{
    DesignerHost *host = nullptr;
    QWidget *formWindow = formWindowOf(owner, &host);
    if (!formWindow || !child)
        return;
    adopt(owner, child, tagged);
    for (QWidget *w : child->findChildren<QWidget *>()) {
        if (w->property(ReleasedMark).toBool()) {
            w->setProperty(ReleasedMark, QVariant());
            host->manageWidget(formWindow, w);
        }
    }
}

void refresh(QWidget *owner)
{
    DesignerHost *host = nullptr;
    if (QWidget *formWindow = formWindowOf(owner, &host))
        host->refreshEditors(formWindow);
}

} // namespace DesignerChildren
