#ifndef BACKGROUNDFILL_H
#define BACKGROUNDFILL_H

#include "hmiwidgets_export.h"

class QColor;
class QWidget;

// A container's background colour: the palette's window colour. In a Designer form the widget's
// "autoFillBackground" is switched on in its property sheet too, so that the colour is painted and
// saved; not while the widget is still being loaded (before its first polish), when the form brings
// its own value.
namespace BackgroundFill {

HMIWIDGETS_EXPORT void apply(QWidget *widget, const QColor &color);

} // namespace BackgroundFill

#endif
