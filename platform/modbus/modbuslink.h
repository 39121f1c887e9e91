#ifndef MODBUSLINK_H
#define MODBUSLINK_H

#include "modbusconnection.h"
#include "modbusmap.h"

#include <QBitArray>
#include <QHash>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <QVector>

#include <atomic>
#include <memory>

class QTimer;
class ModbusTrace;

// One read the link makes every poll: count registers (or coils) of a unit's table from start.
struct ModbusRequest
{
    int device = 0;
    int unit = 1;
    ModbusMap::Table table = ModbusMap::HoldingRegisters;
    int start = 0;
    int count = 1;
};

// One write an operator's action makes: registers, a coil, or some bits of one register.
struct ModbusWrite
{
    enum Operation { Registers, Coil, RegisterBits };
    Operation operation = Registers;
    int unit = 1;
    int address = 0;
    QVector<quint16> values; // Registers: the registers; Coil: one 0 or 1
    quint16 andMask = 0xffff; // RegisterBits: register := (register & andMask) | (orMask & ~andMask)
    quint16 orMask = 0;
    int id = 0; // the sender's, handed back with the outcome
};

// What became of a write: carried out (the device said so), refused (not sent, or the device answered
// with an exception), or unknown (sent, no answer in time: what the device holds now is read back).
struct ModbusWriteOutcome
{
    enum Result { Done, Refused, Unknown };
    int id = 0;
    Result result = Done;
    QString why;
    QVector<quint16> readBack; // Unknown: the registers (or the coil) as read back, empty if that failed too
};

// One request's answer: every register, or which ones the device did not give, and why.
struct ModbusAnswer
{
    QVector<quint16> values;
    QBitArray missing; // empty when none is
    QString failure;
};

struct ModbusPollResult
{
    int generation = 0;
    QVector<ModbusAnswer> answers;
};
Q_DECLARE_METATYPE(ModbusPollResult)
Q_DECLARE_METATYPE(ModbusWriteOutcome)

// One device's link, living in a thread of its own so that no wait for the device reaches the GUI or
// the other devices: polls its plan every period, makes the writes it is given at once (never twice,
// never later), and reconnects by itself, waiting longer after each failure up to LastRetryMs. The link
// is up while the device answers; it goes down when the connection is lost or after the device's
// "downAfter" requests in a row went unanswered. A unit that does not answer is left alone for a while
// and veils only its own variables; a read the device refuses as too large is split, and the size that
// worked is kept.
class ModbusLink : public QObject
{
    Q_OBJECT
public:
    enum State { Connecting, Up, Down };
    explicit ModbusLink(const ModbusMap::Device &device, QObject *parent = nullptr);
    ~ModbusLink() override;

    static constexpr int FirstRetryMs = 100;
    static constexpr int LastRetryMs = 5000;

    // From any thread: no request starts after this, and the one waiting for an answer gives up.
    void requestStop()
    {
        m_stopRequested = true;
        m_connection.interrupt();
    }

public Q_SLOTS:
    void start();
    void stop();
    void setPeriod(int milliseconds);
    void setPlan(const QVector<ModbusRequest> &plan, int generation);
    void write(const ModbusWrite &write);
    void setTrace(std::shared_ptr<ModbusTrace> trace) { m_connection.setTrace(std::move(trace)); }

Q_SIGNALS:
    void stateChanged(int state, const QString &why);
    void polled(const ModbusPollResult &result);
    void written(const ModbusWriteOutcome &outcome);

private:
    void tryConnect();
    void dropConnection(const QString &why);
    void setState(State state, const QString &why);
    // Counts a request's reply to the link's health; false when the link went down on it.
    bool account(const ModbusConnection::Reply &reply);
    bool ensureOpen();
    void poll();
    ModbusConnection::Reply read(const ModbusRequest &request, int offset, int count, quint16 *values);
    // Reads part of a request, splitting what the device refuses as too large; false once the link is down.
    bool readPart(const ModbusRequest &request, int offset, int count, ModbusAnswer *answer);
    ModbusWriteOutcome send(const ModbusWrite &write);
    ModbusConnection::Reply sendOnce(const ModbusWrite &write);
    ModbusConnection::Reply readModifyWrite(const ModbusWrite &write);
    QVector<quint16> readBack(const ModbusWrite &write);
    bool unitResting(int unit) const;
    void unitHeard(int unit, const QString &why);
    QString deviceName() const;

    ModbusConnection m_connection;
    QTimer *m_pollTimer = nullptr;
    QTimer *m_retryTimer = nullptr;
    int m_retryMs = FirstRetryMs;
    State m_state = Connecting;
    bool m_stopped = false;
    std::atomic<bool> m_stopRequested{false};
    int m_period = 100;
    int m_failuresInARow = 0;
    int m_readLimit[2]; // registers, bits: what the device takes in one read
    bool m_readModifyWrite = false;
    QVector<ModbusRequest> m_plan;
    int m_generation = 0;
    // A unit that did not answer: when to ask it again (once, no retries), and how long it rests after
    // the next miss.
    static constexpr int FirstRestMs = 1000;
    struct Rest
    {
        qint64 until = 0;
        int ms = FirstRestMs;
        QString why;
    };
    QHash<int, Rest> m_resting;
};

#endif
