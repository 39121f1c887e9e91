#include "gridsplittertaskmenu.h"

#include "ui_gridsplittereditor.h"

GridSplitterTaskMenu::GridSplitterTaskMenu(GridSplitter *grid, QObject *parent)
    : PropertyTaskMenu(grid, parent)
{
}

QWidget *GridSplitterTaskMenu::createPreview() const
{
    return new GridSplitter;
}

std::unique_ptr<QObject> GridSplitterTaskMenu::buildEditor(QDialog *dialog, QWidget *, QDesignerFormWindowInterface *)
{
    Ui::GridSplitterEditor ui;
    ui.setupUi(dialog); // object name, title, 690 x 420, the Appearance tab
    return nullptr;
}

GridSplitterTaskMenuFactory::GridSplitterTaskMenuFactory(QExtensionManager *parent)
    : WidgetTaskMenuFactory<GridSplitter, GridSplitterTaskMenu>(parent)
{
}
