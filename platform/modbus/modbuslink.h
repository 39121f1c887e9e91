#ifndef MODBUSLINK_H
#define MODBUSLINK_H

#include "modbusmap.h"

#include <QMetaType>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVector>

struct _modbus;
class QTimer;

// One read the link makes every poll: count registers (or coils) of a unit's table from start.
struct ModbusRequest
{
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
    QString what; // the variable, for messages
};

// What one poll read: per request its values, or why it failed.
struct ModbusPollResult
{
    int generation = 0;
    QVector<QVector<quint16>> values;
    QStringList failures; // empty text: that request was answered
};
Q_DECLARE_METATYPE(ModbusPollResult)

// The connection to one Modbus/TCP device, living in a thread of its own so that no network wait
// ever reaches the GUI: polls its plan every period, makes the writes it is given at once or drops
// them (never later), and reconnects by itself after a loss, waiting longer after each failed try.
class ModbusLink : public QObject
{
    Q_OBJECT
public:
    ModbusLink(const QString &host, int port, QObject *parent = nullptr);
    ~ModbusLink() override;

    static constexpr int MaxRegistersPerRead = 125;
    static constexpr int MaxBitsPerRead = 2000;
    static constexpr int FirstRetryMs = 100;
    static constexpr int LastRetryMs = 5000;

public Q_SLOTS:
    void start();
    void stop();
    void setPeriod(int milliseconds);
    void setPlan(const QVector<ModbusRequest> &plan, int generation);
    void write(const ModbusWrite &write);

Q_SIGNALS:
    void linkUp();
    void linkDown(const QString &why);
    void polled(const ModbusPollResult &result);
    void writeFailed(const QString &what, const QString &why);

private:
    bool connectNow();
    void dropConnection(const QString &why);
    void poll();
    bool selectUnit(int unit);
    static QString unitRefused(int unit);
    // Whether the error leaves the connection unusable (as opposed to the device refusing one request).
    static bool lostConnection(int error);

    const QByteArray m_host;
    const int m_port;
    _modbus *m_context = nullptr;
    QTimer *m_pollTimer = nullptr;
    QTimer *m_retryTimer = nullptr;
    int m_retryMs = FirstRetryMs;
    bool m_up = false;
    bool m_stopped = false;
    int m_period = 100;
    QVector<ModbusRequest> m_plan;
    int m_generation = 0;
};

#endif
