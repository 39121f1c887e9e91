#include "modbusconnection.h"

#include "modbustrace.h"

#include <QElapsedTimer>

#include <modbus.h>

#include <cerrno>
#include <poll.h>
#include <sys/socket.h>

ModbusConnection::ModbusConnection(const ModbusMap::Device &device)
    : m_device(device)
{
}

ModbusConnection::~ModbusConnection()
{
    close();
    if (m_context)
        modbus_free(m_context);
}

bool ModbusConnection::open(QString *why)
{
    if (!m_context) {
        const QByteArray where = (m_device.serial ? m_device.serialPort : m_device.host).toLocal8Bit();
        m_context = m_device.serial ? modbus_new_rtu(where.constData(), m_device.baud, m_device.parity,
                                                     m_device.dataBits, m_device.stopBits)
                                    : modbus_new_tcp(where.constData(), m_device.port);
        if (!m_context) {
            *why = QString::fromLocal8Bit(modbus_strerror(errno));
            return false;
        }
        const int ms = m_device.timeoutMs;
        if (modbus_set_response_timeout(m_context, uint32_t(ms / 1000), uint32_t(ms % 1000) * 1000) != 0) {
            *why = QString::fromLocal8Bit(modbus_strerror(errno));
            return false;
        }
    }
    close();
    if (modbus_connect(m_context) != 0) {
        *why = QString::fromLocal8Bit(modbus_strerror(errno));
        modbus_close(m_context);
        return false;
    }
    m_open = true;
    if (!m_device.serial)
        m_socket = modbus_get_socket(m_context);
    return true;
}

void ModbusConnection::close()
{
    m_socket = -1;
    if (m_context && m_open)
        modbus_close(m_context);
    m_open = false;
}

void ModbusConnection::interrupt()
{
    const int socket = m_socket;
    if (socket >= 0)
        ::shutdown(socket, SHUT_RDWR);
}

bool ModbusConnection::closedByDevice()
{
    if (!m_open)
        return true;
    // A late answer to a request given up on would pass for the next one's: it goes.
    if (m_device.serial)
        return modbus_flush(m_context) < 0;
    pollfd p{modbus_get_socket(m_context), POLLIN | POLLRDHUP, 0};
    if (p.fd < 0)
        return true;
    if (::poll(&p, 1, 0) <= 0)
        return false;
    if (p.revents & (POLLRDHUP | POLLHUP | POLLERR))
        return true;
    char byte;
    return ::recv(p.fd, &byte, 1, MSG_PEEK | MSG_DONTWAIT) == 0 || modbus_flush(m_context) < 0;
}

ModbusConnection::Reply ModbusConnection::classify(int error)
{
    Reply reply;
    reply.error = error;
    reply.why = QString::fromLocal8Bit(modbus_strerror(error));
    if (error == ETIMEDOUT)
        reply.result = NoAnswer;
    else if (error > MODBUS_ENOBASE && error <= MODBUS_ENOBASE + MODBUS_EXCEPTION_GATEWAY_TARGET)
        reply.result = Exception;
    else if (error >= EMBBADCRC && error <= EMBBADSLAVE)
        reply.result = Garbled;
    else
        reply.result = error == EPIPE ? NotSent : Lost;
    return reply;
}

ModbusConnection::Reply ModbusConnection::run(int unit, int function, int address, int count,
                                              const std::function<int()> &request)
{
    QElapsedTimer clock;
    clock.start();
    Reply reply;
    if (!m_open) {
        reply = {NotSent, ENOTCONN, QStringLiteral("not connected")};
    } else if (modbus_set_slave(m_context, unit) != 0) {
        // libmodbus keeps the unit before: the request must not go at all.
        reply = {NotSent, errno, QStringLiteral("unit %1 cannot be addressed (%2)").arg(unit).arg(QString::fromLocal8Bit(modbus_strerror(errno)))};
    } else if (request() < 0) {
        reply = classify(errno);
        // The rest of a bad answer must not start the next one.
        if ((reply.result == NoAnswer || reply.result == Garbled) && modbus_flush(m_context) < 0)
            reply = {Lost, errno, QString::fromLocal8Bit(modbus_strerror(errno))};
    }
    if (m_trace) {
        static const char *const Results[] = {"ok", "exception", "no answer", "bad answer", "connection lost", "not sent"};
        QString result = QLatin1String(Results[reply.result]);
        if (reply.result != Answered && reply.result != NoAnswer)
            result += QStringLiteral(" (%1)").arg(reply.why);
        m_trace->record(m_device.name.isEmpty() ? m_device.address() : m_device.name, unit, function, address, count,
                        result, double(clock.nsecsElapsed()) / 1e6);
    }
    return reply;
}

ModbusConnection::Reply ModbusConnection::readBits(int unit, bool coils, int start, int count, quint16 *values)
{
    QVector<uint8_t> bits(count);
    const Reply reply = run(unit, coils ? 1 : 2, start, count, [&] {
        const int read = coils ? modbus_read_bits(m_context, start, count, bits.data())
                               : modbus_read_input_bits(m_context, start, count, bits.data());
        if (read >= 0 && read != count)
            errno = EMBMDATA;
        return read == count ? read : -1;
    });
    for (int i = 0; reply.answered() && i < count; ++i)
        values[i] = bits.at(i);
    return reply;
}

ModbusConnection::Reply ModbusConnection::readRegisters(int unit, bool holding, int start, int count, quint16 *values)
{
    return run(unit, holding ? 3 : 4, start, count, [&] {
        const int read = holding ? modbus_read_registers(m_context, start, count, values)
                                 : modbus_read_input_registers(m_context, start, count, values);
        if (read >= 0 && read != count)
            errno = EMBMDATA;
        return read == count ? read : -1;
    });
}

ModbusConnection::Reply ModbusConnection::writeRegisters(int unit, int address, const QVector<quint16> &values)
{
    const int count = int(values.size());
    return run(unit, count == 1 ? 6 : 16, address, count, [&] {
        return count == 1 ? modbus_write_register(m_context, address, values.first())
                          : modbus_write_registers(m_context, address, count, values.constData());
    });
}

ModbusConnection::Reply ModbusConnection::writeCoil(int unit, int address, bool on)
{
    return run(unit, 5, address, 1, [&] { return modbus_write_bit(m_context, address, on ? 1 : 0); });
}

ModbusConnection::Reply ModbusConnection::maskWrite(int unit, int address, quint16 andMask, quint16 orMask)
{
    return run(unit, 22, address, 1, [&] { return modbus_mask_write_register(m_context, address, andMask, orMask); });
}
