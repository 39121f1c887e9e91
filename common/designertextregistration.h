#ifndef DESIGNERTEXTREGISTRATION_H
#define DESIGNERTEXTREGISTRATION_H

#include "hmiwidgets_export.h"

#include <QPointer>
#include <QWidget>

namespace Hmi_v0 { class HMI_UiUpdateInterface; }

// While a widget lives in a Designer form, its text interface is registered with the HMI under that
// form window and its file name, so the translation tool can reach the widget's captions.
// At run time there is no form window and nothing is registered.
class HMIWIDGETS_EXPORT DesignerTextRegistration
{
public:
    DesignerTextRegistration(QWidget *widget, Hmi_v0::HMI_UiUpdateInterface *iface);
    ~DesignerTextRegistration();
    DesignerTextRegistration(const DesignerTextRegistration &) = delete;
    DesignerTextRegistration &operator=(const DesignerTextRegistration &) = delete;

    QWidget *formWindow() const { return m_formWindow; }

private:
    QWidget *m_formWindow = nullptr; // kept raw: the removal is keyed by the pointer value
    Hmi_v0::HMI_UiUpdateInterface *m_iface;
};

#endif
