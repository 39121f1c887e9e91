#ifndef SIMULATEDCONTROLLER_H
#define SIMULATEDCONTROLLER_H

#include "qeltapp.h"
#include "uiregistration.h"
#include "variablememory.h"

#include <QHash>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QRect>
#include <QSet>

#include <functional>

class KeypadDialog;

// A controller in memory behind the application service: for the demo panel, for tests and for
// trying forms without a machine. Deliveries happen on the GUI thread from the event loop, coalesced:
// every change made between two deliveries reaches a registration once, with the last value.
class SimulatedController : public QObject, public norvo_v0::QeltApp
{
    Q_OBJECT
public:
    explicit SimulatedController(QObject *parent = nullptr);
    ~SimulatedController() override;

    bool getBit(int channel, int bitType, int address, int bitIndex, int comId) override;
    void setBit(int channel, BitType bitType, int address, int bitIndex, bool value, int comId) override;
    int getData(int channel, DataClass dataClass, int address, int comId) override;
    void setData(int channel, DataClass dataClass, int address, int value, int comId) override;
    void registerUIVariable(QWidget *form, QWidget *widget, norvo_v0::UpdateVariableInterface *callback,
                            int index, int comId, int channel, int dataClass, int address, int bitType,
                            int bitIndex, int format1, int format2, int format3, int format4, int reserved,
                            bool asText) override;
    void removeUIVariable(QWidget *form, QWidget *widget) override;
    void startUpdateUI(QWidget *form) override;
    void stopUpdateUI() override;
    QString showKeypad(bool *ok, int radix, const QString &text, int positionMode,
                       const QRect &customGeometry, const QRect &itemRect, const QRect &formRect,
                       QWidget *parent, int maxLength, int decimals, double lowest, double highest) override;

    int resolveChannel(int channel);
    int registrationCount(QWidget *form = nullptr) const;
    bool isUpdating(QWidget *form) const;
    // Delivers pending changes now instead of from the event loop.
    void flushUpdates();

    // Who answers the soft keypad in place of an operator (tests, scripted demos): called once the
    // keypad is open; it types and accepts or rejects. None: the operator answers.
    using KeypadDriver = std::function<void(KeypadDialog &)>;
    void setKeypadDriver(KeypadDriver driver) { m_keypadDriver = std::move(driver); }
    // Where the keypad last opened (screen coordinates).
    QRect lastKeypadGeometry() const { return m_lastKeypadGeometry; }

Q_SIGNALS:
    void bitChanged(int comId, int channel, int bitType, int address, int bitIndex, bool value);
    void dataChanged(int comId, int channel, int dataClass, int address, int value);

private:
    struct Registration : UiRegistration
    {
        bool delivered = false;
        qint32 lastValue = 0;
        QString lastText; // lastValue as delivered text, when delivered as text
    };

    qint32 currentValue(const Registration &r);
    void scheduleFlush();
    void dropForm(QObject *form);

    VariableMemory m_memory;
    QMap<int, Registration> m_registrations; // by id, ids increase in registration order
    int m_nextId = 0;
    // What the last removeUIVariable dropped, by index: a widget that registers the same again
    // (a table renewing its rows on every scroll step) gets it back with what was delivered, so an
    // unchanged value is not formatted again. Gone at the next start.
    QHash<int, Registration> m_removed;
    QSet<QObject *> m_activeForms;
    QSet<QObject *> m_watchedForms; // connected to their destroyed()
    bool m_running = false;
    bool m_flushPending = false;
    bool m_flushing = false;
    KeypadDriver m_keypadDriver;
    QRect m_lastKeypadGeometry;
};

#endif
