#ifndef MODBUSCONTROLLER_H
#define MODBUSCONTROLLER_H

#include "modbuslink.h"
#include "modbusmap.h"
#include "modbusplan.h"
#include "qeltapp.h"
#include "simulatedcontroller.h"
#include "unknownvaluemarks.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QThread>

// The application service on a Modbus/TCP device: the widgets register, read and write controller
// variables as on the simulated controller; the map says where each lives on the device. Values come
// from polling exactly the registered variables (in the link's own thread) and reach the widgets on
// the GUI thread, coalesced, through an in-memory copy that also serves reads and the soft keypad.
// Writes go to the device at once, or are refused with a warning while the link is down: never kept
// for later. Widgets whose values are not known (link down, read refused) are veiled.
class ModbusController : public QObject, public norvo_v0::QeltApp
{
    Q_OBJECT
public:
    ModbusController(const ModbusMap &map, const QString &host, int port, QObject *parent = nullptr);
    ~ModbusController() override;

    void setPollPeriod(int milliseconds);
    bool isLinkUp() const { return m_up; }
    // Registered variables the map does not hold, one line each naming the variable and its widget.
    const QStringList &problems() const { return m_problems; }
    const UnknownValueMarks &marks() const { return m_marks; }
    SimulatedController &values() { return m_values; }

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

Q_SIGNALS:
    void linkStateChanged(bool up, const QString &why);
    // A write that did not reach the device, with the reason; also printed as a warning.
    void writeRefused(const QString &message);
    // Every poll that arrived (for tests and load figures).
    void pollApplied();

private:
    struct Variable
    {
        QPointer<QWidget> form;
        QPointer<QWidget> widget;
        int comId = 0, channel = 0, dataClass = -1, bitType = -1, address = 0, bitIndex = 0;
        const ModbusMap::Entry *entry = nullptr;
        ModbusPlan::Place place;
        bool known = false;
    };

    void replanSoon();
    void replan();
    void applyPoll(const ModbusPollResult &result);
    void setLinkState(bool up, const QString &why);
    void refuse(const QString &what, const QString &why);
    void updateMarks(const QString &why);
    const ModbusMap::Entry *entryFor(int comId, int channel, ModbusMap::Kind kind, int area, int address,
                                     const QString &what);

    ModbusMap m_map;
    SimulatedController m_values;
    UnknownValueMarks m_marks;
    QThread m_thread;
    ModbusLink *m_link = nullptr;
    QList<Variable> m_variables;
    QStringList m_problems;
    QString m_target;
    int m_generation = 0;
    bool m_replanPending = false;
    bool m_up = false;
    QString m_downWhy;
    QString m_lastRefused;
};

#endif
