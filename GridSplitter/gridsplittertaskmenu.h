#ifndef GRIDSPLITTERTASKMENU_H
#define GRIDSPLITTERTASKMENU_H

#include "gridsplitter.h"
#include "propertytaskmenu.h"

// "Edit Properties..." of a grid splitter: the Grid Splitter Editor, without a companion editor.
class GridSplitterTaskMenu : public PropertyTaskMenu
{
    Q_OBJECT
public:
    GridSplitterTaskMenu(GridSplitter *grid, QObject *parent);

protected:
    QWidget *createPreview() const override;
    std::unique_ptr<QObject> buildEditor(QDialog *dialog, QWidget *preview,
                                         QDesignerFormWindowInterface *formWindow) override;
};

class GridSplitterTaskMenuFactory : public WidgetTaskMenuFactory<GridSplitter, GridSplitterTaskMenu>
{
    Q_OBJECT
public:
    explicit GridSplitterTaskMenuFactory(QExtensionManager *parent);
};

#endif
