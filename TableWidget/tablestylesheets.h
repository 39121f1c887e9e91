#ifndef TABLESTYLESHEETS_H
#define TABLESTYLESHEETS_H

#include "hmiwidgets_export.h"

#include <QColor>
#include <QString>

// The style sheets a parameter table sets: touch-sized scroll bars and the grid colour.
namespace TableStyleSheets {

HMIWIDGETS_EXPORT QString verticalScrollBar(int extent);
HMIWIDGETS_EXPORT QString horizontalScrollBar(int extent);
HMIWIDGETS_EXPORT QString grid(const QColor &color);

} // namespace TableStyleSheets

#endif
