#include "recordingqeltapp.h"

#include "updatevariableinterface.h"

#include <algorithm>

namespace {
// Takes a copy: a callback may register or remove while the delivery runs.
template<typename Value>
int deliverTo(QList<UiRegistration> registrations, QWidget *widget, int index, const Value &value)
{
    int count = 0;
    for (const UiRegistration &r : registrations) {
        if (r.widget && r.widget == widget && r.index == index) {
            r.callback->updateData(index, value);
            ++count;
        }
    }
    return count;
}
} // namespace

QStringList RecordingQeltApp::callNames() const
{
    QStringList names;
    for (const Call &c : m_calls)
        names.append(c.name);
    return names;
}

QList<RecordingQeltApp::Call> RecordingQeltApp::callsNamed(const QString &name) const
{
    QList<Call> out;
    std::copy_if(m_calls.begin(), m_calls.end(), std::back_inserter(out), [&name](const Call &c) { return c.name == name; });
    return out;
}

QStringList RecordingQeltApp::writes() const
{
    QStringList out;
    for (const Call &c : m_calls) {
        if (c.name != QLatin1String("setBit") && c.name != QLatin1String("setData"))
            continue;
        QStringList args;
        for (const QVariant &a : c.args)
            args.append(a.toString());
        out.append(QStringLiteral("%1(%2)").arg(c.name, args.join(QLatin1Char(','))));
    }
    return out;
}

bool RecordingQeltApp::getBit(int channel, int bitType, int address, int bitIndex, int comId)
{
    log("getBit", {channel, bitType, address, bitIndex, comId});
    return m_memory.bit(comId, channel, bitType, address, bitIndex);
}

void RecordingQeltApp::setBit(int channel, BitType bitType, int address, int bitIndex, bool value, int comId)
{
    log("setBit", {channel, int(bitType), address, bitIndex, value, comId});
    m_memory.setBit(comId, channel, bitType, address, bitIndex, value);
}

int RecordingQeltApp::getData(int channel, DataClass dataClass, int address, int comId)
{
    log("getData", {channel, int(dataClass), address, comId});
    return m_memory.word(comId, channel, dataClass, address);
}

void RecordingQeltApp::setData(int channel, DataClass dataClass, int address, int value, int comId)
{
    log("setData", {channel, int(dataClass), address, value, comId});
    m_memory.setWord(comId, channel, dataClass, address, value);
}

void RecordingQeltApp::registerUIVariable(QWidget *form, QWidget *widget,
                                          norvo_v0::UpdateVariableInterface *callback, int index,
                                          int comId, int channel, int dataClass, int address, int bitType,
                                          int bitIndex, int format1, int format2, int format3,
                                          int format4, int reserved, bool asText)
{
    const Registration r{form,      widget,  callback, index,    comId,   channel, dataClass, address,
                         bitType,   bitIndex, format1, format2, format3, format4, reserved, asText};
    m_registrations.append(r);
    log("registerUIVariable", QVariantList{pointer(form), pointer(widget), pointer(callback)} + r.arguments());
}

void RecordingQeltApp::removeUIVariable(QWidget *form, QWidget *widget)
{
    log("removeUIVariable", {pointer(form), pointer(widget)});
    m_registrations.erase(std::remove_if(m_registrations.begin(), m_registrations.end(),
                                         [&](const Registration &r) { return r.form == form && r.widget == widget; }),
                          m_registrations.end());
}

QString RecordingQeltApp::showKeypad(bool *ok, int radix, const QString &text, int positionMode,
                                     const QRect &customGeometry, const QRect &itemRect,
                                     const QRect &formRect, QWidget *parent, int maxLength, int decimals,
                                     double lowest, double highest)
{
    log("showKeypad", {radix, text, positionMode, customGeometry, itemRect, formRect, pointer(parent),
                       maxLength, decimals, lowest, highest});
    if (m_keypadMeanwhile)
        m_keypadMeanwhile();
    if (ok)
        *ok = m_keypadOk;
    return m_keypadText;
}

void RecordingQeltApp::setKeypadAnswer(const QString &text, bool ok, std::function<void()> meanwhile)
{
    m_keypadText = text;
    m_keypadOk = ok;
    m_keypadMeanwhile = std::move(meanwhile);
}

int RecordingQeltApp::deliver(QWidget *widget, int index, int value)
{
    return deliverTo(m_registrations, widget, index, value);
}

int RecordingQeltApp::deliverText(QWidget *widget, int index, const QString &text)
{
    return deliverTo(m_registrations, widget, index, text);
}
