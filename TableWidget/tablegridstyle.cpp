#include "tablegridstyle.h"

#include "tablewidget.h"

#include <QApplication>
#include <QPointer>
#include <QStyleFactory>

QStyle *TableGridStyle::shared()
{
    static QPointer<TableGridStyle> style;
    if (!style) {
        // A style of the application's kind; one the factory does not know (or the application's style
        // sheet engine) leaves the choice to the proxy, which takes what the application started with.
#if QT_VERSION >= QT_VERSION_CHECK(6, 1, 0)
        const QString name = QApplication::style()->name();
#else
        const QString name = QApplication::style()->objectName();
#endif
        style = new TableGridStyle(name.isEmpty() ? nullptr : QStyleFactory::create(name));
        style->setParent(qApp);
    }
    return style;
}

int TableGridStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                              QStyleHintReturn *returnData) const
{
    if (hint == SH_Table_GridLineColor) {
        if (const auto *table = qobject_cast<const TableWidget *>(widget)) {
            // Opaque, as a colour written "rgb(r, g, b)" would be.
            const QColor c = table->gridColor();
            return int(qRgb(c.red(), c.green(), c.blue()));
        }
    }
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}
