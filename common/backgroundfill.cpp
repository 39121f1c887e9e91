#include "backgroundfill.h"

#include "designerhost.h"

#include <QColor>
#include <QPalette>
#include <QWidget>

namespace BackgroundFill {

void apply(QWidget *widget, const QColor &color)
{
    QPalette palette = widget->palette();
    palette.setBrush(QPalette::Window, color);
    widget->setPalette(palette);
    if (!widget->testAttribute(Qt::WA_WState_Polished))
        return;
    DesignerHost *host = DesignerHost::instance();
    if (host && DesignerHost::formWindowOf(widget))
        host->setSheetProperty(widget, QStringLiteral("autoFillBackground"), true);
}

} // namespace BackgroundFill
