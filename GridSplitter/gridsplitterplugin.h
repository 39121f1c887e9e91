#ifndef GRIDSPLITTERPLUGIN_H
#define GRIDSPLITTERPLUGIN_H

#include "customwidgetplugin.h"
#include "gridsplitter.h"
#include "gridsplittertaskmenu.h"

// The grid splitter's entry in Designer's widget box ("Containers"), with its task menu. Its cells,
// not the grid itself, take the dropped widgets.
class GridSplitterPlugin : public TypedWidgetPlugin<GridSplitter, GridSplitterTaskMenuFactory>
{
    Q_OBJECT
public:
    explicit GridSplitterPlugin(QObject *parent = nullptr);
};

#endif
