#ifndef TABWIDGETTASKMENU_H
#define TABWIDGETTASKMENU_H

#include "propertytaskmenu.h"
#include "tabwidget.h"

#include <memory>

namespace Ui {
class TabWidgetEditor;
}

// "Edit Properties..." of a tab widget: the TabWidget Editor, whose tab page and authority field are
// run by a TabWidgetPropertiesEditor.
class TabWidgetTaskMenu : public PropertyTaskMenu
{
    Q_OBJECT
public:
    TabWidgetTaskMenu(TabWidget *widget, QObject *parent);
    ~TabWidgetTaskMenu() override;

protected:
    QWidget *createPreview() const override;
    std::unique_ptr<QObject> buildEditor(QDialog *dialog, QWidget *preview,
                                         QDesignerFormWindowInterface *formWindow) override;

private:
    std::unique_ptr<Ui::TabWidgetEditor> m_ui;
};

class TabWidgetTaskMenuFactory : public WidgetTaskMenuFactory<TabWidget, TabWidgetTaskMenu>
{
    Q_OBJECT
public:
    explicit TabWidgetTaskMenuFactory(QExtensionManager *parent);
};

#endif
