#include "controllerbinding.h"

#include "designerhost.h"
#include "norvointerface_z3.h"
#include "qeltapp.h"

#include <QVariant>
#include <QWidget>

#include <algorithm>

using norvo_v0::QeltApp;

namespace {
// Integer and bit variables are registered with these format values.
constexpr int Format1 = 1, Format2 = 10, Format3 = 10, Format4 = 0, Reserved = 0;
} // namespace

ControllerBinding::ControllerBinding(QWidget *widget, norvo_v0::UpdateVariableInterface *callback)
    : m_widget(widget)
    , m_callback(callback)
{
}

QWidget *ControllerBinding::findForm(const QWidget *widget)
{
    for (QWidget *w = widget ? widget->parentWidget() : nullptr; w; w = w->parentWidget()) {
        if (qstrcmp(w->metaObject()->className(), "QDialog") == 0)
            return w;
    }
    // A designer's preview of a form whose top is no dialog.
    DesignerHost *host = DesignerHost::instance();
    return host && widget ? host->previewForm(widget) : nullptr;
}

bool ControllerBinding::attachToForm()
{
    if (m_app)
        return true;
    QWidget *form = findForm(m_widget);
    if (!form)
        return false;
    QeltApp *app = QeltApp::fromVariant(form->property("QeltApp"));
    if (!app)
        return false;
    m_app = app;
    m_form = form;
    return true;
}

void ControllerBinding::attach(void *app, void *form)
{
    m_app = static_cast<QeltApp *>(app);
    m_form = static_cast<QWidget *>(form);
}

void ControllerBinding::setComId(int comId)
{
    m_comId = std::max(0, comId);
}

void ControllerBinding::setChannel(int channel)
{
    const int count = NORVOInterface_Z3::initialization()->maxChannelCount();
    m_channel = channel > 1 ? channel - 1 : 0; // no channel - 1 overflow for INT_MIN
    if (m_channel >= count)
        m_channel = std::max(0, count - 1);
}

int ControllerBinding::resolvedChannel() const
{
    if (!m_chnNoVarEnable || !m_app)
        return m_channel;
    const int current = m_app->getData(0, QeltApp::Com, QeltApp::CurrentChannelAddress, 0);
    return current > 1 ? current - 1 : 0;
}

int ControllerBinding::registrationChannel() const
{
    return m_chnNoVarEnable ? QeltApp::CurrentChannel : m_channel;
}

bool ControllerBinding::acceptsAddress(int channel, int bitType, int address, int lowestType, int highestType)
{
    return channel >= 1 && channel <= MaxAddressChannel && bitType >= lowestType && bitType <= highestType
           && address >= 0;
}

void ControllerBinding::registerBit(int index, int bitType, int address, int bitIndex) const
{
    registerBit(index, bitType, address, bitIndex, m_channel);
}

void ControllerBinding::registerBit(int index, int bitType, int address, int bitIndex, int channel) const
{
    if (!m_app || bitType < 0)
        return;
    m_app->registerUIVariable(m_form, m_widget, m_callback, index, m_comId, channel, 0, address, bitType,
                              bitIndex, Format1, Format2, Format3, Format4, Reserved, false);
}

void ControllerBinding::registerData(int index, int dataClass, int address) const
{
    registerData(index, dataClass, address, m_channel);
}

void ControllerBinding::registerData(int index, int dataClass, int address, int channel) const
{
    if (!m_app || dataClass < 0)
        return;
    m_app->registerUIVariable(m_form, m_widget, m_callback, index, m_comId, channel, dataClass, address, -1,
                              0, Format1, Format2, Format3, Format4, Reserved, false);
}

void ControllerBinding::stopUpdates() const
{
    if (m_app)
        m_app->stopUpdateUI();
}

void ControllerBinding::removeRegistrations() const
{
    if (m_app)
        m_app->removeUIVariable(m_form, m_widget);
}

void ControllerBinding::startUpdates() const
{
    if (m_app)
        m_app->startUpdateUI(m_form);
}

std::optional<bool> ControllerBinding::reregisterBit(int index, int bitType, int address, int bitIndex) const
{
    if (!m_app)
        return std::nullopt;
    stopUpdates();
    removeRegistrations();
    registerBit(index, bitType, address, bitIndex, registrationChannel());
    const bool value = m_app->getBit(resolvedChannel(), bitType, address, bitIndex, 0);
    startUpdates();
    return value;
}

std::optional<bool> ControllerBinding::readBit(int bitType, int address, int bitIndex) const
{
    if (!m_app)
        return std::nullopt;
    return readBitOn(resolvedChannel(), bitType, address, bitIndex);
}

bool ControllerBinding::writeBit(int bitType, int address, int bitIndex, bool value) const
{
    if (!m_app)
        return false;
    return writeBitOn(resolvedChannel(), bitType, address, bitIndex, value);
}

std::optional<bool> ControllerBinding::readBitOn(int channel, int bitType, int address, int bitIndex) const
{
    if (!m_app)
        return std::nullopt;
    return m_app->getBit(channel, bitType, address, bitIndex, m_comId);
}

bool ControllerBinding::writeBitOn(int channel, int bitType, int address, int bitIndex, bool value) const
{
    if (!m_app)
        return false;
    m_app->setBit(channel, QeltApp::BitType(bitType), address, bitIndex, value, m_comId);
    return true;
}

std::optional<int> ControllerBinding::readData(int dataClass, int address) const
{
    if (!m_app)
        return std::nullopt;
    return m_app->getData(resolvedChannel(), QeltApp::DataClass(dataClass), address, m_comId);
}

bool ControllerBinding::writeData(int dataClass, int address, int value) const
{
    if (!m_app)
        return false;
    m_app->setData(resolvedChannel(), QeltApp::DataClass(dataClass), address, value, m_comId);
    return true;
}

void ControllerBinding::setOperationalAuthority(int authority)
{
    if (authority >= 0 && authority <= MaxAuthority)
        m_authority = authority;
}

void ControllerBinding::updateAuthority(int operatorAuthority)
{
    m_granted = m_authority == 0 || m_authority >= operatorAuthority;
    applyEnabled();
}

void ControllerBinding::setEnabledRequest(bool enabled)
{
    m_enabledRequest = enabled;
    applyEnabled();
}

void ControllerBinding::applyEnabled() const
{
    // The widget's own setEnabled slot stores the request; the base's applies the result.
    m_widget->QWidget::setEnabled(m_enabledRequest && m_granted);
}
