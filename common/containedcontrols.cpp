#include "containedcontrols.h"

#include <QMetaObject>
#include <QWidget>

namespace {

template <typename Call>
void forEachControl(const QList<QWidget *> &holders, const char *signature, Call call)
{
    for (QWidget *holder : holders) {
        if (!holder)
            continue;
        for (QWidget *control : holder->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (control->metaObject()->indexOfSlot(signature) >= 0)
                call(control);
        }
    }
}

} // namespace

namespace ContainedControls {

void attach(const QList<QWidget *> &holders, void *app, void *form)
{
    forEachControl(holders, "setQeltAppAndFormPtr(void*,void*)", [&](QWidget *control) {
        QMetaObject::invokeMethod(control, "setQeltAppAndFormPtr", Qt::DirectConnection, Q_ARG(void *, app),
                                  Q_ARG(void *, form));
    });
}

void updateLanguage(const QList<QWidget *> &holders, int index)
{
    forEachControl(holders, "updateLanguage(int)", [&](QWidget *control) {
        QMetaObject::invokeMethod(control, "updateLanguage", Qt::DirectConnection, Q_ARG(int, index));
    });
}

} // namespace ContainedControls
