#ifndef MODBUSCONNECTION_H
#define MODBUSCONNECTION_H

#include "modbusmap.h"

#include <QString>
#include <QVector>

#include <atomic>
#include <functional>
#include <memory>

struct _modbus;
class ModbusTrace;

// One device's libmodbus connection (Modbus/TCP or RTU on a serial line): makes one request at a time
// and says what came of it, in the words the link decides by; every request goes to the trace.
class ModbusConnection
{
public:
    enum Result {
        Answered,
        Exception, // the device answered, refusing (error() is the exception)
        NoAnswer, // nothing within the response timeout
        Garbled, // an answer that was not one (CRC, another transaction, wrong length)
        Lost, // the connection broke; the request may or may not have reached the device
        NotSent, // nothing left this side (a unit libmodbus refuses, a send that failed)
    };
    struct Reply
    {
        Result result = Answered;
        int error = 0; // errno, or libmodbus's code for an exception
        QString why;
        bool answered() const { return result == Answered; }
        // The device is there: it answered, even if to refuse.
        bool heard() const { return result == Answered || result == Exception; }
    };

    explicit ModbusConnection(const ModbusMap::Device &device);
    ~ModbusConnection();
    ModbusConnection(const ModbusConnection &) = delete;
    ModbusConnection &operator=(const ModbusConnection &) = delete;

    bool open(QString *why);
    void close();
    // From any thread: a request waiting for its answer ends at once (Modbus/TCP).
    void interrupt();
    bool isOpen() const { return m_open; }
    // Whether the device has closed the connection since the last request (as devices that close idle
    // connections do); an answer that came too late to count is thrown away.
    bool closedByDevice();
    void setTrace(std::shared_ptr<ModbusTrace> trace) { m_trace = std::move(trace); }
    const ModbusMap::Device &device() const { return m_device; }

    Reply readBits(int unit, bool coils, int start, int count, quint16 *values);
    Reply readRegisters(int unit, bool holding, int start, int count, quint16 *values);
    Reply writeRegisters(int unit, int address, const QVector<quint16> &values);
    Reply writeCoil(int unit, int address, bool on);
    Reply maskWrite(int unit, int address, quint16 andMask, quint16 orMask);

private:
    Reply run(int unit, int function, int address, int count, const std::function<int()> &request);
    static Reply classify(int error);

    const ModbusMap::Device m_device;
    _modbus *m_context = nullptr;
    bool m_open = false;
    std::atomic<int> m_socket{-1};
    std::shared_ptr<ModbusTrace> m_trace;
};

#endif
