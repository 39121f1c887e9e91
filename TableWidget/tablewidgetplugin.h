#ifndef TABLEWIDGETPLUGIN_H
#define TABLEWIDGETPLUGIN_H

#include "customwidgetplugin.h"
#include "tablewidget.h"
#include "tablewidgettaskmenu.h"

// Offers TableWidget in Designer's widget box, under "Item Widgets", with its task menu. Its items
// are edited with Designer's own item editor; the table's extra-info extension keeps them in "data"
// alone.
class TableWidgetPlugin : public TypedWidgetPlugin<TableWidget, TableWidgetTaskMenuFactory>
{
    Q_OBJECT
public:
    explicit TableWidgetPlugin(QObject *parent = nullptr);
    void initialize(QDesignerFormEditorInterface *core) override;
};

#endif
