#include "modbuslink.h"

#include <QTimer>

#include <modbus.h>

#include <cerrno>

namespace {
// A device that has not answered by then is not going to; the link thread waits no longer per request.
constexpr int ResponseTimeoutMs = 300;
}

ModbusLink::ModbusLink(const QString &host, int port, QObject *parent)
    : QObject(parent)
    , m_host(host.toLatin1())
    , m_port(port)
{
}

ModbusLink::~ModbusLink()
{
    if (m_context) {
        modbus_close(m_context);
        modbus_free(m_context);
    }
}

void ModbusLink::start()
{
    m_pollTimer = new QTimer(this);
    m_pollTimer->setInterval(m_period);
    connect(m_pollTimer, &QTimer::timeout, this, &ModbusLink::poll);
    m_retryTimer = new QTimer(this);
    m_retryTimer->setSingleShot(true);
    connect(m_retryTimer, &QTimer::timeout, this, [this] {
        if (!connectNow()) {
            m_retryMs = std::min(m_retryMs * 2, int(LastRetryMs));
            m_retryTimer->start(m_retryMs);
        }
    });
    if (!connectNow())
        m_retryTimer->start(m_retryMs);
}

void ModbusLink::stop()
{
    m_stopped = true;
    if (m_pollTimer)
        m_pollTimer->stop();
    if (m_retryTimer)
        m_retryTimer->stop();
    if (m_context)
        modbus_close(m_context);
}

void ModbusLink::setPeriod(int milliseconds)
{
    m_period = std::max(1, milliseconds);
    if (m_pollTimer)
        m_pollTimer->setInterval(m_period);
}

void ModbusLink::setPlan(const QVector<ModbusRequest> &plan, int generation)
{
    m_plan = plan;
    m_generation = generation;
    if (m_up)
        poll(); // new variables get their values now, not a period later
}

bool ModbusLink::connectNow()
{
    if (m_stopped)
        return true;
    if (!m_context) {
        m_context = modbus_new_tcp(m_host.constData(), m_port);
        if (!m_context) {
            Q_EMIT linkDown(QString::fromLocal8Bit(modbus_strerror(errno)));
            return false;
        }
        modbus_set_response_timeout(m_context, 0, ResponseTimeoutMs * 1000);
    }
    if (modbus_connect(m_context) != 0) {
        modbus_close(m_context);
        return false;
    }
    m_up = true;
    m_retryMs = FirstRetryMs;
    Q_EMIT linkUp();
    m_pollTimer->start();
    poll();
    return true;
}

void ModbusLink::dropConnection(const QString &why)
{
    modbus_close(m_context);
    m_pollTimer->stop();
    if (m_up) {
        m_up = false;
        Q_EMIT linkDown(why);
    }
    m_retryTimer->start(m_retryMs);
}

bool ModbusLink::selectUnit(int unit)
{
    // A unit libmodbus refuses would leave the previous one selected: the request must not go at all.
    return modbus_set_slave(m_context, unit) == 0;
}

QString ModbusLink::unitRefused(int unit)
{
    return QStringLiteral("unit %1 cannot be addressed (%2)").arg(unit).arg(QString::fromLocal8Bit(modbus_strerror(errno)));
}

bool ModbusLink::lostConnection(int error)
{
    // Modbus exceptions and undecodable answers come over a connection that still works.
    return error < MODBUS_ENOBASE;
}

void ModbusLink::poll()
{
    // Before the first plan a poll would read nothing, yet be taken for the form's values having come.
    if (!m_up || m_stopped || m_generation == 0)
        return;
    ModbusPollResult result;
    result.generation = m_generation;
    result.values.resize(m_plan.size());
    int answered = 0;
    for (int i = 0; i < m_plan.size(); ++i) {
        const ModbusRequest &r = m_plan.at(i);
        QVector<quint16> &values = result.values[i];
        if (!selectUnit(r.unit)) {
            result.failures << unitRefused(r.unit);
            continue;
        }
        values.resize(r.count);
        int read = -1;
        if (r.table == ModbusMap::Coils || r.table == ModbusMap::DiscreteInputs) {
            QVector<uint8_t> bits(r.count);
            read = r.table == ModbusMap::Coils ? modbus_read_bits(m_context, r.start, r.count, bits.data())
                                               : modbus_read_input_bits(m_context, r.start, r.count, bits.data());
            for (int b = 0; b < r.count; ++b)
                values[b] = bits.at(b);
        } else {
            read = r.table == ModbusMap::HoldingRegisters ? modbus_read_registers(m_context, r.start, r.count, values.data())
                                                          : modbus_read_input_registers(m_context, r.start, r.count, values.data());
        }
        if (read == r.count) {
            result.failures << QString();
            ++answered;
            continue;
        }
        const int error = read < 0 ? errno : EMBMDATA;
        values.clear();
        result.failures << QString::fromLocal8Bit(modbus_strerror(error));
        if (lostConnection(error)) {
            dropConnection(result.failures.last());
            return;
        }
        // An answer that was not one may leave its rest in the socket: start the next request clean.
        modbus_flush(m_context);
    }
    Q_EMIT polled(result);
}

void ModbusLink::write(const ModbusWrite &write)
{
    // A write that cannot go now is dropped: a machine must not act on an operator's stale command.
    if (!m_up || m_stopped) {
        Q_EMIT writeFailed(write.what, QStringLiteral("the link is down"));
        return;
    }
    if (!selectUnit(write.unit)) {
        Q_EMIT writeFailed(write.what, unitRefused(write.unit));
        return;
    }
    int done = -1;
    switch (write.operation) {
    case ModbusWrite::Registers:
        done = write.values.size() == 1 ? modbus_write_register(m_context, write.address, write.values.first())
                                        : modbus_write_registers(m_context, write.address, int(write.values.size()),
                                                                 write.values.constData());
        break;
    case ModbusWrite::Coil:
        done = modbus_write_bit(m_context, write.address, write.values.value(0) ? 1 : 0);
        break;
    case ModbusWrite::RegisterBits:
        done = modbus_mask_write_register(m_context, write.address, write.andMask, write.orMask);
        break;
    }
    if (done >= 0)
        return;
    const int error = errno;
    const QString why = QString::fromLocal8Bit(modbus_strerror(error));
    Q_EMIT writeFailed(write.what, why);
    if (lostConnection(error))
        dropConnection(why);
    else
        modbus_flush(m_context);
}
