#include "cascadeplacement.h"

QRect CascadePlacement::next(const QRect &area)
{
    m_x += m_step;
    m_y += m_step;
    if (!area.contains(QRect(m_x, m_y, PanelWidth, PanelHeight))) {
        m_step = -m_step;
        m_x += 2 * m_step;
        m_y += 2 * m_step;
    }
    return QRect(m_x, m_y, PanelWidth, PanelHeight);
}
