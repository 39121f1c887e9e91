#ifndef CONTROLLERBINDING_H
#define CONTROLLERBINDING_H

#include "hmiwidgets_export.h"

#include <optional>

class QWidget;
namespace norvo_v0 {
class QeltApp;
class UpdateVariableInterface;
} // namespace norvo_v0

// The link between one widget and the application object: attachment, the channel and link of its
// variables, registration with the standard format integers, reads and writes, and the rule that
// the widget is enabled exactly when its enabled request and the operator's authority allow it.
// Without an application object every controller access is skipped.
class HMIWIDGETS_EXPORT ControllerBinding
{
public:
    static constexpr int MaxAuthority = 99;
    static constexpr int MaxAddressChannel = 8;

    ControllerBinding(QWidget *widget, norvo_v0::UpdateVariableInterface *callback);

    // Self-attachment: the form is the first ancestor whose class is exactly "QDialog" and the
    // application comes from its "QeltApp" property (in a designer's preview, its top widget). Does
    // nothing when already attached.
    bool attachToForm();
    // Attachment by the application (setQeltAppAndFormPtr).
    void attach(void *app, void *form);
    static QWidget *findForm(const QWidget *widget);

    bool isAttached() const { return m_app != nullptr; }
    norvo_v0::QeltApp *app() const { return m_app; }
    QWidget *form() const { return m_form; }

    int comId() const { return m_comId; }
    void setComId(int comId);
    // 1-based as the property shows it, clamped to 1 ... maxChannelCount().
    int channel() const { return m_channel + 1; }
    void setChannel(int channel);
    int channelIndex() const { return m_channel; }
    void setChannelIndex(int index) { m_channel = index; }
    bool chnNoVarEnable() const { return m_chnNoVarEnable; }
    void setChnNoVarEnable(bool enable) { m_chnNoVarEnable = enable; }
    // The 0-based channel for a read or write: the stored one, or the current-channel variable
    // minus one (at least 0) when ChnNoVarEnable is set.
    int resolvedChannel() const;
    // The channel to register for a live address change: the current channel marker or the stored one.
    int registrationChannel() const;
    // Arguments of the address-change slots: channel 1 ... 8, bit type within the range, address >= 0.
    static bool acceptsAddress(int channel, int bitType, int address, int lowestType, int highestType);

    // Registrations skip a kind of -1 and a missing application.
    void registerBit(int index, int bitType, int address, int bitIndex) const;
    void registerBit(int index, int bitType, int address, int bitIndex, int channel) const;
    void registerData(int index, int dataClass, int address) const;
    void registerData(int index, int dataClass, int address, int channel) const;
    void stopUpdates() const;
    void removeRegistrations() const;
    void startUpdates() const;
    // Live address change of one bit item: stop, drop every item, register this one again on the
    // registration channel, read its value and restart. Returns the value read (none when unattached).
    std::optional<bool> reregisterBit(int index, int bitType, int address, int bitIndex) const;

    std::optional<bool> readBit(int bitType, int address, int bitIndex) const;
    bool writeBit(int bitType, int address, int bitIndex, bool value) const;
    // The same on a channel resolved beforehand, so that one operator action reads and writes one
    // channel even if the current-channel word changes in between.
    std::optional<bool> readBitOn(int channel, int bitType, int address, int bitIndex) const;
    bool writeBitOn(int channel, int bitType, int address, int bitIndex, bool value) const;
    std::optional<int> readData(int dataClass, int address) const;
    bool writeData(int dataClass, int address, int value) const;

    int operationalAuthority() const { return m_authority; }
    // Values outside 0 ... 99 are ignored; takes effect at the next updateAuthority.
    void setOperationalAuthority(int authority);
    void updateAuthority(int operatorAuthority);
    bool authorityGranted() const { return m_granted; }
    bool enabledRequest() const { return m_enabledRequest; }
    void setEnabledRequest(bool enabled);

private:
    void applyEnabled() const;

    QWidget *const m_widget;
    norvo_v0::UpdateVariableInterface *const m_callback;
    norvo_v0::QeltApp *m_app = nullptr;
    QWidget *m_form = nullptr;
    int m_comId = 0;
    int m_channel = 0;
    bool m_chnNoVarEnable = false;
    int m_authority = 0;
    bool m_granted = true;
    bool m_enabledRequest = true;
};

#endif
