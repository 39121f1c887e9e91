#ifndef RECORDINGQELTAPP_H
#define RECORDINGQELTAPP_H

#include "qeltapp.h"
#include "uiregistration.h"
#include "variablememory.h"

#include <QList>
#include <QPointer>
#include <QVariantList>
#include <QWidget>

#include <functional>

// Stand-in for the application object in tests: logs every call with its arguments in order,
// answers reads from a variable memory the test fills, and delivers updates only when told to.
// Pointers appear in the log as quintptr values.
class RecordingQeltApp : public norvo_v0::QeltApp
{
public:
    struct Call
    {
        QString name;
        QVariantList args;
    };
    using Registration = UiRegistration;

    bool getBit(int channel, int bitType, int address, int bitIndex, int comId) override;
    void setBit(int channel, BitType bitType, int address, int bitIndex, bool value, int comId) override;
    int getData(int channel, DataClass dataClass, int address, int comId) override;
    void setData(int channel, DataClass dataClass, int address, int value, int comId) override;
    void registerUIVariable(QWidget *form, QWidget *widget, norvo_v0::UpdateVariableInterface *callback,
                            int index, int comId, int channel, int dataClass, int address, int bitType,
                            int bitIndex, int format1, int format2, int format3, int format4, int reserved,
                            bool asText) override;
    void removeUIVariable(QWidget *form, QWidget *widget) override;
    void startUpdateUI(QWidget *form) override { log("startUpdateUI", {pointer(form)}); }
    void stopUpdateUI() override { log("stopUpdateUI", {}); }
    QString showKeypad(bool *ok, int radix, const QString &text, int positionMode,
                       const QRect &customGeometry, const QRect &itemRect, const QRect &formRect,
                       QWidget *parent, int maxLength, int decimals, double lowest, double highest) override;

    static QVariant pointer(const void *p) { return QVariant::fromValue(quintptr(p)); }

    const QList<Call> &calls() const { return m_calls; }
    QStringList callNames() const;
    QList<Call> callsNamed(const QString &name) const;
    // The setBit and setData calls in order, each as "setData(0,4,3,10,0)".
    QStringList writes() const;
    void clearCalls() { m_calls.clear(); }
    // Registrations currently held (removeUIVariable drops them), in registration order.
    QList<Registration> registrations() const { return m_registrations; }

    // Values answered by getBit/getData (setBit/setData also store into it). Channels as passed.
    VariableMemory &memory() { return m_memory; }
    // What the keypad answers; meanwhile runs while it is open (the operator logs out, the form closes).
    void setKeypadAnswer(const QString &text, bool ok, std::function<void()> meanwhile = {});

    // Calls updateData on every registration of widget with this index; returns how many.
    int deliver(QWidget *widget, int index, int value);
    int deliverText(QWidget *widget, int index, const QString &text);

private:
    void log(const char *name, const QVariantList &args) { m_calls.append(Call{QString::fromLatin1(name), args}); }

    QList<Call> m_calls;
    QList<Registration> m_registrations;
    VariableMemory m_memory;
    QString m_keypadText;
    bool m_keypadOk = false;
    std::function<void()> m_keypadMeanwhile;
};

#endif
