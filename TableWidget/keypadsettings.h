#ifndef KEYPADSETTINGS_H
#define KEYPADSETTINGS_H

#include "hmiwidgets_export.h"
#include "keypadplacement.h"
#include "nkeypadstruct.h"

#include <QRect>

// The table's soft-keypad settings: the four published properties and the record that combines
// them, kept in step as each is set.
class HMIWIDGETS_EXPORT KeypadSettings
{
public:
    enum Position { Auto = 0, Center = 1, Custom = 2 };

    bool softKeypad() const { return m_softKeypad; }
    // The record's enabled field follows only the first time either this or setRecord runs: a form
    // that sets the record keeps its own choice.
    void setSoftKeypad(bool on);
    bool autoAdjust() const { return m_autoAdjust; }
    void setAutoAdjust(bool on);
    int position() const { return m_position; }
    void setPosition(int position);
    QRect geometry() const { return m_geometry; }
    // A rectangle outside screen coordinates (KeypadPlacement::MaxCoordinate) is clamped into them;
    // false then.
    bool setGeometry(const QRect &rect);

    const NKeyPadStruct &record() const { return m_record; }
    // The same for the record's rectangle, and a position outside Auto ... Custom becomes Auto.
    bool setRecord(const NKeyPadStruct &record);

private:
    bool m_softKeypad = false;
    bool m_autoAdjust = true;
    int m_position = Auto;
    QRect m_geometry = QRect(0, 0, 0, 0);
    NKeyPadStruct m_record;
    bool m_enabledTaken = false;
};

#endif
