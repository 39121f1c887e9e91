#include "designertextregistration.h"

#include "designerhost.h"
#include "norvointerface_z3.h"

DesignerTextRegistration::DesignerTextRegistration(QWidget *widget, Hmi_v0::HMI_UiUpdateInterface *iface)
    : m_iface(iface)
{
    DesignerHost *host = DesignerHost::instance();
    m_formWindow = DesignerHost::formWindowOf(widget);
    if (m_formWindow)
        NORVOInterface_Z3::initialization()->setHMIUiUpdateInterfaceWidgetPtr(m_formWindow, host->fileName(m_formWindow),
                                                                             m_iface);
}

DesignerTextRegistration::~DesignerTextRegistration()
{
    if (m_formWindow)
        NORVOInterface_Z3::initialization()->removeHMIUiUpdateInterfaceWidgetPtr(m_formWindow, m_iface);
}
