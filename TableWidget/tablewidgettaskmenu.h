#ifndef TABLEWIDGETTASKMENU_H
#define TABLEWIDGETTASKMENU_H

#include "propertytaskmenu.h"
#include "tablewidget.h"

#include <memory>

namespace Ui {
class TableWidgetEditor;
}

// "Edit Properties..." of a parameter table: the Table Widget Editor. Its "Edit Items..." button
// opens Designer's own item editor for the same table; its soft-keypad field is committed as
// "keyPad" when the dialog is accepted.
class TableWidgetTaskMenu : public PropertyTaskMenu
{
    Q_OBJECT
public:
    TableWidgetTaskMenu(TableWidget *table, QObject *parent);
    ~TableWidgetTaskMenu() override;

public Q_SLOTS:
    void myAcceptSlot();

protected:
    QWidget *createPreview() const override;
    std::unique_ptr<QObject> buildEditor(QDialog *dialog, QWidget *preview,
                                         QDesignerFormWindowInterface *formWindow) override;

private:
    std::unique_ptr<Ui::TableWidgetEditor> m_ui;
};

class TableWidgetTaskMenuFactory : public WidgetTaskMenuFactory<TableWidget, TableWidgetTaskMenu>
{
    Q_OBJECT
public:
    explicit TableWidgetTaskMenuFactory(QExtensionManager *parent);
};

#endif
