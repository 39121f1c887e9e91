#include "simulatedcontroller.h"

#include "keypaddescription.h"
#include "keypaddialog.h"
#include "keypadplacement.h"
#include "updatevariableinterface.h"
#include "valueformatter.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <QWidget>

#include <algorithm>

using norvo_v0::QeltApp;

SimulatedController::SimulatedController(QObject *parent)
    : QObject(parent)
{
    // The panel starts on channel 1.
    m_memory.setWord(0, 0, Com, CurrentChannelAddress, 1);
}

SimulatedController::~SimulatedController() = default;

int SimulatedController::resolveChannel(int channel)
{
    if (channel != CurrentChannel)
        return channel;
    const int current = m_memory.word(0, 0, Com, CurrentChannelAddress);
    return current > 1 ? current - 1 : 0; // no overflow for INT_MIN
}

bool SimulatedController::getBit(int channel, int bitType, int address, int bitIndex, int comId)
{
    return m_memory.bit(comId, resolveChannel(channel), bitType, address, bitIndex);
}

void SimulatedController::setBit(int channel, BitType bitType, int address, int bitIndex, bool value, int comId)
{
    const int c = resolveChannel(channel);
    if (m_memory.setBit(comId, c, bitType, address, bitIndex, value)) {
        Q_EMIT bitChanged(comId, c, bitType, address, bitIndex, value);
        scheduleFlush();
    }
}

int SimulatedController::getData(int channel, DataClass dataClass, int address, int comId)
{
    return m_memory.word(comId, resolveChannel(channel), dataClass, address);
}

void SimulatedController::setData(int channel, DataClass dataClass, int address, int value, int comId)
{
    const int c = resolveChannel(channel);
    if (m_memory.setWord(comId, c, dataClass, address, value)) {
        Q_EMIT dataChanged(comId, c, dataClass, address, value);
        scheduleFlush();
    }
}

void SimulatedController::registerUIVariable(QWidget *form, QWidget *widget,
                                             norvo_v0::UpdateVariableInterface *callback, int index,
                                             int comId, int channel, int dataClass, int address,
                                             int bitType, int bitIndex, int format1, int format2,
                                             int format3, int format4, int reserved, bool asText)
{
    if (!form || !widget || !callback)
        return;
    const auto removed = m_removed.find(index);
    if (removed != m_removed.end() && removed->form == form && removed->widget == widget
        && removed->sameArguments({nullptr, nullptr, callback, index, comId, channel, dataClass, address, bitType,
                                   bitIndex, format1, format2, format3, format4, reserved, asText})) {
        m_registrations.insert(m_registrations.cend(), m_nextId++, std::move(*removed));
        m_removed.erase(removed);
    } else {
        Registration r;
        static_cast<UiRegistration &>(r) = UiRegistration{form,     widget,  callback, index,   comId,
                                                          channel,  dataClass, address, bitType, bitIndex,
                                                          format1, format2, format3, format4, reserved, asText};
        m_registrations.insert(m_registrations.cend(), m_nextId++, r);
    }
    if (!m_watchedForms.contains(form)) {
        m_watchedForms.insert(form);
        connect(form, &QObject::destroyed, this, &SimulatedController::dropForm);
    }
    if (m_running && m_activeForms.contains(form))
        scheduleFlush();
}

void SimulatedController::removeUIVariable(QWidget *form, QWidget *widget)
{
    m_removed.clear();
    for (auto it = m_registrations.begin(); it != m_registrations.end();) {
        if (it->form == form && it->widget == widget) {
            m_removed.insert(it->index, std::move(*it));
            it = m_registrations.erase(it);
        } else {
            ++it;
        }
    }
}

void SimulatedController::startUpdateUI(QWidget *form)
{
    if (!form)
        return;
    m_activeForms.insert(form);
    m_removed.clear();
    if (!m_watchedForms.contains(form)) {
        m_watchedForms.insert(form);
        connect(form, &QObject::destroyed, this, &SimulatedController::dropForm);
    }
    m_running = true;
    // Each registration of the form gets its current value once more.
    for (Registration &r : m_registrations) {
        if (r.form == form)
            r.delivered = false;
    }
    scheduleFlush();
}

void SimulatedController::stopUpdateUI()
{
    m_running = false;
}

bool SimulatedController::isUpdating(QWidget *form) const
{
    return m_running && m_activeForms.contains(form);
}

int SimulatedController::registrationCount(QWidget *form) const
{
    if (!form)
        return int(m_registrations.size());
    return int(std::count_if(m_registrations.cbegin(), m_registrations.cend(),
                             [form](const Registration &r) { return r.form == form; }));
}

QString SimulatedController::showKeypad(bool *ok, int radix, const QString &text, int positionMode,
                                        const QRect &customGeometry, const QRect &itemRect,
                                        const QRect &formRect, QWidget *parent, int maxLength,
                                        int decimals, double lowest, double highest)
{
    KeypadDialog dialog(parent);
    dialog.setEntry(radix, text, maxLength, decimals, lowest, highest);
    const KeypadDescription what = KeypadDescription::at(itemRect);
    dialog.setDescription(what.name, what.unit);
    const QPoint anchor = itemRect.isValid() ? itemRect.center() : formRect.center();
    QScreen *screen = QGuiApplication::screenAt(anchor);
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const QRect bounds = screen ? screen->availableGeometry() : QRect();
    dialog.adjustSize();
    m_lastKeypadGeometry = KeypadPlacement::place(positionMode, customGeometry, itemRect, formRect, dialog.size(), bounds);
    dialog.setGeometry(m_lastKeypadGeometry);
    if (m_keypadDriver)
        QTimer::singleShot(0, &dialog, [this, &dialog] { m_keypadDriver(dialog); });
    const bool accepted = dialog.exec() == QDialog::Accepted;
    if (ok)
        *ok = accepted;
    return accepted ? dialog.text() : QString();
}

qint32 SimulatedController::currentValue(const Registration &r)
{
    const int c = resolveChannel(r.channel);
    if (r.bitType >= 0)
        return m_memory.bit(r.comId, c, r.bitType, r.address, r.bitIndex) ? 1 : 0;
    return m_memory.word(r.comId, c, r.dataClass, r.address);
}

void SimulatedController::scheduleFlush()
{
    if (m_flushPending)
        return;
    m_flushPending = true;
    QTimer::singleShot(0, this, &SimulatedController::flushUpdates);
}

void SimulatedController::flushUpdates()
{
    m_flushPending = false;
    if (!m_running || m_flushing)
        return;
    m_flushing = true;
    // Callbacks may register, remove or stop updates: walk a snapshot of ids and look each up again.
    const QList<int> ids = m_registrations.keys();
    for (int id : ids) {
        if (!m_running)
            break;
        auto it = m_registrations.find(id);
        if (it == m_registrations.end() || !m_activeForms.contains(it->form.data()))
            continue;
        if (!it->widget) {
            m_registrations.erase(it);
            continue;
        }
        const qint32 value = currentValue(*it);
        if (it->delivered && it->lastValue == value)
            continue;
        const bool changed = it->lastText.isNull() || it->lastValue != value;
        it->delivered = true;
        it->lastValue = value;
        // Trimmed as the table shows a value when it first registers it, so a cell does not shift
        // when its first update arrives. Delivered again after a restart, but formatted only when it
        // changed.
        if (it->asText && changed)
            it->lastText = ValueFormatter::format(value, it->format1, it->format2, it->format3, it->format4).trimmed();
        const Registration r = *it;
        if (r.asText)
            r.callback->updateData(r.index, r.lastText);
        else
            r.callback->updateData(r.index, int(value));
    }
    m_flushing = false;
}

void SimulatedController::dropForm(QObject *form)
{
    m_activeForms.remove(form);
    m_watchedForms.remove(form);
    m_removed.clear();
    for (auto it = m_registrations.begin(); it != m_registrations.end();) {
        if (!it->form || it->form.data() == form) // QWidget emits destroyed() before QPointers clear
            it = m_registrations.erase(it);
        else
            ++it;
    }
}
