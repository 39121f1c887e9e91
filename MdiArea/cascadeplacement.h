#ifndef CASCADEPLACEMENT_H
#define CASCADEPLACEMENT_H

#include "hmiwidgets_export.h"

#include <QRect>

// Where new panels of an MDI area go: each one step further down and right of the last, bouncing
// back the other way when a panel would leave the area.
class HMIWIDGETS_EXPORT CascadePlacement
{
public:
    static constexpr int PanelWidth = 100;
    static constexpr int PanelHeight = 50;

    QRect next(const QRect &area);
    int step() const { return m_step; }

private:
    int m_x = 0;
    int m_y = 0;
    int m_step = 10;
};

#endif
