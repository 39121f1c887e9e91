#ifndef CONTAINEDCONTROLS_H
#define CONTAINEDCONTROLS_H

#include "hmiwidgets_export.h"

#include <QList>

class QWidget;

// What a container passes on to the controls the panel builder placed in its pages, cells or panels
// (the direct children of each holder): the application object and the panel language. A control
// that is a container itself passes them on in turn.
namespace ContainedControls {

HMIWIDGETS_EXPORT void attach(const QList<QWidget *> &holders, void *app, void *form);
HMIWIDGETS_EXPORT void updateLanguage(const QList<QWidget *> &holders, int index);

} // namespace ContainedControls

#endif
