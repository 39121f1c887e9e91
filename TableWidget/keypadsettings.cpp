#include "keypadsettings.h"

#include <algorithm>

namespace {
QRect onScreenScale(qint64 x, qint64 y, qint64 width, qint64 height)
{
    constexpr qint64 Most = KeypadPlacement::MaxCoordinate;
    return QRect(int(std::clamp(x, -Most, Most)), int(std::clamp(y, -Most, Most)), int(std::clamp<qint64>(width, 0, Most)),
                 int(std::clamp<qint64>(height, 0, Most)));
}
} // namespace

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

bool KeypadSettings::setGeometry(const QRect &rect)
{
    m_geometry = onScreenScale(rect.left(), rect.top(), qint64(rect.right()) - rect.left() + 1,
                               qint64(rect.bottom()) - rect.top() + 1);
    m_record.x = m_geometry.left();
    m_record.y = m_geometry.top();
    m_record.width = m_geometry.width();
    m_record.height = m_geometry.height();
    return m_geometry == rect;
}

bool KeypadSettings::setRecord(const NKeyPadStruct &record)
{
    m_record = record;
    m_enabledTaken = true;
    const QRect rect = onScreenScale(record.x, record.y, record.width, record.height);
    m_record.x = rect.left();
    m_record.y = rect.top();
    m_record.width = rect.width();
    m_record.height = rect.height();
    if (record.position < Auto || record.position > Custom)
        m_record.position = Auto;
    return m_record == record;
}
