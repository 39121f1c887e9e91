#ifndef MODBUSCONTROLLER_H
#define MODBUSCONTROLLER_H

#include "modbuslink.h"
#include "modbusmap.h"
#include "modbusplan.h"
#include "modbustrace.h"
#include "qeltapp.h"
#include "simulatedcontroller.h"
#include "unknownvaluemarks.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QHash>
#include <QSet>

#include <memory>
#include <vector>

// The application service on Modbus devices: the widgets register, read and write controller variables
// as on the simulated controller; the map says where each lives. Every device has a link of its own in a
// thread of its own, polling exactly the registered variables it holds; values reach the widgets on the
// GUI thread, coalesced, through an in-memory copy that also serves reads and the soft keypad. Writes go
// to the device at once, or are refused while its link is down: never kept for later. Widgets whose
// values are not known (device down, unit silent, read refused) are veiled, and status() says why.
class ModbusController : public QObject, public norvo_v0::QeltApp
{
    Q_OBJECT
public:
    explicit ModbusController(const ModbusMap &map, QObject *parent = nullptr);
    // A map without a devices list, on the device at host:port.
    ModbusController(const ModbusMap &map, const QString &host, int port, QObject *parent = nullptr);
    ~ModbusController() override;

    void setPollPeriod(int milliseconds);
    int pollPeriod() const { return m_pollPeriod; }
    void setTrace(std::shared_ptr<ModbusTrace> trace);
    // Every device answering.
    bool isLinkUp() const;
    // For the message line: "Connected.", "Connected; 12 variables unknown: unit 2 does not answer", ...
    QString status() const;
    // Registered variables the map does not hold, one line each naming the variable and its widget.
    const QStringList &problems() const { return m_problems; }
    const ModbusMap &map() const { return m_map; }
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
    void statusChanged(const QString &status);
    // A write refused, or whose outcome is unknown (and, after such, one done), naming the variable;
    // also printed as a warning.
    void writeReported(const QString &message);
    // Every poll of a device that arrived (for tests and load figures).
    void pollApplied(int device);

private:
    struct Variable
    {
        QPointer<QWidget> form;
        QPointer<QWidget> widget;
        int comId = 0, channel = 0, dataClass = -1, bitType = -1, address = 0, bitIndex = 0;
        const ModbusMap::Entry *entry = nullptr;
        ModbusPlan::Place place;
        bool known = false;
        QString why; // while not known
    };
    // A write on its way, to show its outcome.
    struct Pending
    {
        QString what;
        const ModbusMap::Entry *entry = nullptr;
        int channel = 0, dataClass = -1, bitType = -1, address = 0, bitIndex = 0, comId = 0;
    };
    struct DeviceLink;

    void replanSoon();
    void replan();
    void applyPoll(int device, const ModbusPollResult &result);
    void applyState(int device, int state, const QString &why);
    void applyOutcome(const ModbusWriteOutcome &outcome);
    void send(ModbusWrite write, const Pending &pending);
    void report(const QString &message);
    void refuse(const QString &what, const QString &why);
    void updateMarks();
    void updateStatus();
    const ModbusMap::Entry *entryFor(int comId, int channel, ModbusMap::Kind kind, int area, int address,
                                     const QString &what);

    ModbusMap m_map;
    SimulatedController m_values;
    UnknownValueMarks m_marks;
    std::vector<std::unique_ptr<DeviceLink>> m_links;
    QList<Variable> m_variables;
    QStringList m_problems;
    QHash<int, Pending> m_pending;
    QSet<QString> m_troubled; // variables whose last write was not done
    int m_nextWrite = 0;
    int m_pollPeriod = 100;
    bool m_replanPending = false;
    QString m_status;
};

#endif
