#ifndef UIREGISTRATION_H
#define UIREGISTRATION_H

#include "hmiplatform_export.h"

#include <QPointer>
#include <QVariantList>
#include <QWidget>

namespace norvo_v0 { class UpdateVariableInterface; }

// One watched variable as a widget registers it, in the order of registerUIVariable's arguments.
struct HMIPLATFORM_EXPORT UiRegistration
{
    QPointer<QWidget> form;
    QPointer<QWidget> widget;
    norvo_v0::UpdateVariableInterface *callback = nullptr;
    int index = 0, comId = 0, channel = 0, dataClass = -1, address = 0, bitType = -1, bitIndex = 0;
    int format1 = 0, format2 = 0, format3 = 0, format4 = 0, reserved = 0;
    bool asText = false;

    // The twelve ints and the flag, in the call's order.
    QVariantList arguments() const;

    // The same callback and arguments (form and widget aside).
    bool sameArguments(const UiRegistration &other) const;
};

#endif
