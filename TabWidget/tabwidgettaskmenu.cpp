#include "tabwidgettaskmenu.h"

#include "tabwidgetpropertieseditor.h"
#include "ui_tabwidgeteditor.h"

#include <QDialog>

TabWidgetTaskMenu::TabWidgetTaskMenu(TabWidget *widget, QObject *parent)
    : PropertyTaskMenu(widget, parent)
{
}

TabWidgetTaskMenu::~TabWidgetTaskMenu() = default;

QWidget *TabWidgetTaskMenu::createPreview() const
{
    return new TabWidget;
}

std::unique_ptr<QObject> TabWidgetTaskMenu::buildEditor(QDialog *dialog, QWidget *preview,
                                                        QDesignerFormWindowInterface *formWindow)
{
    m_ui = std::make_unique<Ui::TabWidgetEditor>();
    m_ui->setupUi(dialog);
    auto *widget = qobject_cast<TabWidget *>(this->widget());
    auto *previewWidget = qobject_cast<TabWidget *>(preview);
    if (!widget || !previewWidget)
        return nullptr;
    return std::make_unique<TabWidgetPropertiesEditor>(widget, previewWidget, formWindow, m_ui.get());
}

TabWidgetTaskMenuFactory::TabWidgetTaskMenuFactory(QExtensionManager *parent)
    : WidgetTaskMenuFactory<TabWidget, TabWidgetTaskMenu>(parent)
{
}
