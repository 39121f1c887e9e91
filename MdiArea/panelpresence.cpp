#include "panelpresence.h"

#include "mdiarea.h"
#include "subwindow.h"

#include <QCoreApplication>

PanelPresence::PanelPresence(MdiArea *area)
    : QUndoCommand(QCoreApplication::translate("MdiAreaTaskMenu", "New panel in '%1'").arg(area->objectName()))
    , m_area(area)
    , m_adds(true)
    , m_activeBefore(area->activeSubWindow())
{
}

PanelPresence::PanelPresence(MdiArea *area, SubWindow *panel)
    : QUndoCommand(QCoreApplication::translate("MdiAreaTaskMenu", "Delete '%1'").arg(panel->objectName()))
    , m_area(area)
    , m_panel(panel)
    , m_adds(false)
    , m_activeBefore(area->activeSubWindow())
{
}

void PanelPresence::redo()
{
    if (!m_area)
        return;
    if (m_adds && !m_panel) {
        m_panel = m_area->addSubWindow();
        m_activeAfter = m_area->activeSubWindow();
        return;
    }
    place(m_adds);
    if (!m_activeAfter.isEmpty())
        m_area->setActiveSubWindow(m_activeAfter);
}

void PanelPresence::undo()
{
    if (!m_area)
        return;
    place(!m_adds);
    if (!m_activeBefore.isEmpty())
        m_area->setActiveSubWindow(m_activeBefore);
}

void PanelPresence::place(bool present)
{
    if (!m_panel)
        return;
    if (present)
        m_area->restoreSubWindow(m_panel);
    else
        m_area->removeSubWindow(m_panel->objectName());
}
