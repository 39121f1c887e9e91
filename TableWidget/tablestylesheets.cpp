#include "tablestylesheets.h"

namespace TableStyleSheets {

namespace {
const QLatin1String Tabs("\t\t\t");
}

QString verticalScrollBar(int extent)
{
    return QStringLiteral("QScrollBar:vertical {border-radius: 4px; border: 0px solid grey;background: grey;"
                          "width: %1px;margin: 0px,0px,0px,0px;padding-top:0px;padding-bottom:0px;}")
               .arg(extent)
        + Tabs + QStringLiteral("QScrollBar::handle:vertical {border-radius: 4px; background: #efefef;min-height: 20px;}")
        + Tabs + QStringLiteral("QScrollBar::add-line:vertical{height:0px;width:40px;subcontrol-position:bottom;}")
        + Tabs + QStringLiteral("QScrollBar::sub-line:vertical{height:0px;width:40px;subcontrol-position:top;}");
}

QString horizontalScrollBar(int extent)
{
    return QStringLiteral("QScrollBar:horizontal {border-radius: 4px; border: 0px solid grey;background: grey;"
                          "height: %1px;margin: 0px,0px,0px,0px;padding-left:0px;padding-right:0px;}")
               .arg(extent)
        + Tabs + QStringLiteral("QScrollBar::handle:horizontal {border-radius: 4px; background: #efefef;min-width: 20px;}")
        + Tabs + QStringLiteral("QScrollBar::add-line:horizontal{height:40px;width:0px;subcontrol-position:right;}")
        + Tabs + QStringLiteral("QScrollBar::sub-line:horizontal{height:40px;width:0px;subcontrol-position:left;}");
}

QString grid(const QColor &color)
{
    return QStringLiteral("QTableView{gridline-color : rgb(%1, %2, %3);}").arg(color.red()).arg(color.green()).arg(color.blue());
}

} // namespace TableStyleSheets
