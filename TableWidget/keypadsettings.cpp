#include "keypadsettings.h"

void KeypadSettings::setSoftKeypad(bool on)
{
    m_softKeypad = on;
    if (!m_enabledTaken) {
        m_record.enabled = on ? 1 : 0;
        m_enabledTaken = true;
    }
}

void KeypadSettings::setAutoAdjust(bool on)
{
    m_autoAdjust = on;
    setPosition(on ? Auto : Custom);
}

void KeypadSettings::setPosition(int position)
{
    m_position = position;
    m_record.position = position;
}

void KeypadSettings::setGeometry(const QRect &rect)
{
    m_geometry = rect;
    m_record.x = rect.left();
    m_record.y = rect.top();
    m_record.width = rect.width();
    m_record.height = rect.height();
}

void KeypadSettings::setRecord(const NKeyPadStruct &record)
{
    m_record = record;
    m_enabledTaken = true;
}
