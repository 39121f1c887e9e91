#ifndef TABLEWIDGETPLUGIN_H
#define TABLEWIDGETPLUGIN_H

#include "customwidgetplugin.h"

// Offers TableWidget in Designer's widget box, under "Item Widgets". Its items are edited with
// Designer's own item editor; the table's extra-info extension keeps them in "data" alone.
class TableWidgetPlugin : public CustomWidgetPlugin
{
    Q_OBJECT
public:
    explicit TableWidgetPlugin(QObject *parent = nullptr);
    QWidget *createWidget(QWidget *parent) override;
    void initialize(QDesignerFormEditorInterface *core) override;

protected:
    QExtensionFactory *createTaskMenuFactory(QExtensionManager *manager) const override;
};

#endif
