#include "modbuslink.h"

#include <QDateTime>
#include <QTimer>

#include <modbus.h>

#include <cerrno>

namespace {

qint64 now()
{
    return QDateTime::currentMSecsSinceEpoch();
}

bool retryable(const ModbusConnection::Reply &reply)
{
    return reply.result == ModbusConnection::NoAnswer || reply.result == ModbusConnection::Garbled;
}

} // namespace

ModbusLink::ModbusLink(const ModbusMap::Device &device, QObject *parent)
    : QObject(parent)
    , m_connection(device)
    , m_readLimit{device.maxRegisters, device.maxBits}
    , m_readModifyWrite(device.maskWrite == ModbusMap::ReadModifyWrite)
{
}

ModbusLink::~ModbusLink() = default;

QString ModbusLink::deviceName() const
{
    return m_connection.device().describe();
}

void ModbusLink::start()
{
    m_pollTimer = new QTimer(this);
    m_pollTimer->setInterval(m_period);
    connect(m_pollTimer, &QTimer::timeout, this, &ModbusLink::poll);
    m_retryTimer = new QTimer(this);
    m_retryTimer->setSingleShot(true);
    connect(m_retryTimer, &QTimer::timeout, this, &ModbusLink::tryConnect);
    tryConnect();
}

void ModbusLink::stop()
{
    m_stopped = true;
    if (m_pollTimer)
        m_pollTimer->stop();
    if (m_retryTimer)
        m_retryTimer->stop();
    m_connection.close();
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
    if (!m_connection.isOpen())
        return;
    if (plan.isEmpty())
        setState(Up, QString());
    poll(); // new variables get their values now, not a period later
}

void ModbusLink::setState(State state, const QString &why)
{
    if (state == m_state)
        return;
    m_state = state;
    Q_EMIT stateChanged(state, why);
}

void ModbusLink::tryConnect()
{
    if (m_stopped)
        return;
    QString why;
    if (!m_connection.open(&why)) {
        dropConnection(QStringLiteral("cannot connect: %1").arg(why));
        return;
    }
    // Up once the device answers: a connection alone says nothing of a stalled device. With nothing to
    // read yet there is nothing to ask it.
    m_failuresInARow = 0;
    m_pollTimer->start();
    if (m_generation > 0 && m_plan.isEmpty())
        setState(Up, QString());
    poll();
}

void ModbusLink::dropConnection(const QString &why)
{
    m_connection.close();
    m_pollTimer->stop();
    setState(Down, why);
    m_retryTimer->start(m_retryMs);
    m_retryMs = std::min(m_retryMs * 2, int(LastRetryMs));
}

bool ModbusLink::account(const ModbusConnection::Reply &reply)
{
    if (reply.heard()) {
        m_failuresInARow = 0;
        m_retryMs = FirstRetryMs;
        setState(Up, QString());
        return true;
    }
    if (reply.result == ModbusConnection::Lost || (reply.result == ModbusConnection::NotSent && reply.error == EPIPE)) {
        dropConnection(QStringLiteral("connection lost: %1").arg(reply.why));
        return false;
    }
    if (retryable(reply) && ++m_failuresInARow >= m_connection.device().downAfter) {
        dropConnection(QStringLiteral("%1 requests in a row without an answer (%2)").arg(m_failuresInARow).arg(reply.why));
        return false;
    }
    return true;
}

// A device that closed an idle connection gets a new one before the next request, quietly: nothing
// was lost, and the operator's widgets need not flash.
bool ModbusLink::ensureOpen()
{
    if (m_stopped || !m_connection.isOpen())
        return false;
    if (!m_connection.closedByDevice())
        return true;
    QString why;
    if (m_connection.open(&why))
        return true;
    dropConnection(QStringLiteral("the device closed the connection; reconnecting failed: %1").arg(why));
    return false;
}

bool ModbusLink::unitResting(int unit) const
{
    const auto rest = m_resting.constFind(unit);
    return rest != m_resting.cend() && now() < rest->until;
}

void ModbusLink::unitHeard(int unit, const QString &why)
{
    if (why.isEmpty()) {
        m_resting.remove(unit);
        return;
    }
    Rest &rest = m_resting[unit];
    rest.why = why;
    rest.until = now() + rest.ms;
    rest.ms = std::min(rest.ms * 2, int(LastRetryMs));
}

void ModbusLink::poll()
{
    // With nothing to read a poll would yet be taken for the form's values having come.
    if (m_plan.isEmpty() || !ensureOpen())
        return;
    ModbusPollResult result;
    result.generation = m_generation;
    result.answers.resize(m_plan.size());
    for (int i = 0; i < m_plan.size(); ++i) {
        const ModbusRequest &r = m_plan.at(i);
        ModbusAnswer &answer = result.answers[i];
        answer.values.resize(r.count);
        const int kind = r.table == ModbusMap::Coils || r.table == ModbusMap::DiscreteInputs ? 1 : 0;
        for (int offset = 0; offset < r.count;) {
            const int count = std::min(m_readLimit[kind], r.count - offset);
            if (!readPart(r, offset, count, &answer))
                return; // the link went down: the controller veils everything
            offset += count;
        }
    }
    Q_EMIT polled(result);
}

ModbusConnection::Reply ModbusLink::read(const ModbusRequest &r, int offset, int count, quint16 *values)
{
    const bool bits = r.table == ModbusMap::Coils || r.table == ModbusMap::DiscreteInputs;
    return bits ? m_connection.readBits(r.unit, r.table == ModbusMap::Coils, r.start + offset, count, values)
                : m_connection.readRegisters(r.unit, r.table == ModbusMap::HoldingRegisters, r.start + offset, count, values);
}

bool ModbusLink::readPart(const ModbusRequest &r, int offset, int count, ModbusAnswer *answer)
{
    const auto missing = [&](const QString &why) {
        if (answer->missing.isEmpty())
            answer->missing.resize(r.count);
        answer->missing.fill(true, offset, offset + count);
        if (answer->failure.isEmpty())
            answer->failure = why;
        return true;
    };
    if (m_stopRequested)
        return false;
    if (unitResting(r.unit))
        return missing(m_resting.value(r.unit).why);
    ModbusConnection::Reply reply;
    // A unit that missed its last request is asked once: each try holds up the other units' reads.
    const int retries = m_resting.contains(r.unit) ? 0 : m_connection.device().retries;
    for (int attempt = 0; attempt <= retries && (attempt == 0 || !m_stopRequested); ++attempt) {
        reply = read(r, offset, count, answer->values.data() + offset);
        if (!retryable(reply))
            break;
    }
    if (!account(reply))
        return false;
    if (reply.heard())
        unitHeard(r.unit, QString());
    if (reply.answered())
        return true;
    const bool tooLarge = reply.result == ModbusConnection::Exception && (reply.error == EMBXILADD || reply.error == EMBXILVAL);
    if (tooLarge && count > 1) {
        // Many devices take fewer registers per read than Modbus allows, and say so only this way. When
        // both halves are answered, the size was the trouble: keep to the smaller one from now on.
        const int kind = r.table == ModbusMap::Coils || r.table == ModbusMap::DiscreteInputs ? 1 : 0;
        const int first = (count + 1) / 2;
        if (!readPart(r, offset, first, answer) || !readPart(r, offset + first, count - first, answer))
            return false;
        bool halvesAnswered = true;
        for (int i = offset; i < offset + count && !answer->missing.isEmpty(); ++i)
            halvesAnswered = halvesAnswered && !answer->missing.testBit(i);
        if (halvesAnswered && first < m_readLimit[kind]) {
            m_readLimit[kind] = first;
            qWarning("Modbus %s: unit %d refuses reads of %d; reading at most %d at a time from now on",
                     qPrintable(deviceName()), r.unit, count, first);
        }
        return true;
    }
    const int end = r.start + offset + count - 1;
    switch (reply.result) {
    case ModbusConnection::NoAnswer:
    case ModbusConnection::Garbled: {
        // A unit that does not answer (or not sensibly) is left alone for a while: every request to it
        // would hold up the other units' for the whole timeout.
        const QString why = reply.result == ModbusConnection::NoAnswer
                                ? QStringLiteral("unit %1 does not answer").arg(r.unit)
                                : QStringLiteral("unit %1 answers garbled (%2)").arg(r.unit).arg(reply.why);
        unitHeard(r.unit, why);
        return missing(why);
    }
    case ModbusConnection::Exception:
        return missing(QStringLiteral("unit %1 refused the read of %2 %3 ... %4: %5")
                           .arg(r.unit)
                           .arg(ModbusMap::tableName(r.table))
                           .arg(r.start + offset)
                           .arg(end)
                           .arg(reply.why));
    default:
        return missing(QStringLiteral("unit %1: %2").arg(r.unit).arg(reply.why));
    }
}

void ModbusLink::write(const ModbusWrite &write)
{
    ModbusWriteOutcome outcome = send(write);
    outcome.id = write.id;
    Q_EMIT written(outcome);
    if (outcome.result == ModbusWriteOutcome::Unknown && m_connection.isOpen())
        poll(); // every widget shows what the device holds now
}

ModbusWriteOutcome ModbusLink::send(const ModbusWrite &write)
{
    ModbusWriteOutcome outcome;
    if (!ensureOpen()) {
        outcome.result = ModbusWriteOutcome::Refused;
        outcome.why = QStringLiteral("not sent: the link to %1 is down").arg(deviceName());
        return outcome;
    }
    ModbusConnection::Reply reply = sendOnce(write);
    if (reply.result == ModbusConnection::NotSent && reply.error == EPIPE) {
        // The device had closed the connection before the request left: nothing reached it, so it goes
        // once more, on a new connection.
        QString why;
        if (m_connection.open(&why))
            reply = sendOnce(write);
    }
    const bool up = account(reply);
    switch (reply.result) {
    case ModbusConnection::Answered:
        outcome.result = ModbusWriteOutcome::Done;
        break;
    case ModbusConnection::Exception:
        outcome.result = ModbusWriteOutcome::Refused;
        outcome.why = QStringLiteral("unit %1 answered: %2").arg(write.unit).arg(reply.why);
        break;
    case ModbusConnection::NotSent:
        outcome.result = ModbusWriteOutcome::Refused;
        outcome.why = QStringLiteral("not sent: %1").arg(reply.why);
        break;
    case ModbusConnection::Lost:
        outcome.result = ModbusWriteOutcome::Unknown;
        outcome.why = QStringLiteral("the connection broke after it was sent (%1)").arg(reply.why);
        break;
    case ModbusConnection::NoAnswer:
    case ModbusConnection::Garbled:
        outcome.result = ModbusWriteOutcome::Unknown;
        outcome.why = reply.result == ModbusConnection::NoAnswer
                          ? QStringLiteral("unit %1 did not answer within %2 ms").arg(write.unit).arg(m_connection.device().timeoutMs)
                          : QStringLiteral("unit %1 answered garbled (%2)").arg(write.unit).arg(reply.why);
        if (up)
            outcome.readBack = readBack(write);
        break;
    }
    return outcome;
}

ModbusConnection::Reply ModbusLink::sendOnce(const ModbusWrite &write)
{
    switch (write.operation) {
    case ModbusWrite::Registers:
        return m_connection.writeRegisters(write.unit, write.address, write.values);
    case ModbusWrite::Coil:
        return m_connection.writeCoil(write.unit, write.address, write.values.value(0) != 0);
    case ModbusWrite::RegisterBits:
        break;
    }
    if (m_readModifyWrite)
        return readModifyWrite(write);
    const ModbusConnection::Reply reply = m_connection.maskWrite(write.unit, write.address, write.andMask, write.orMask);
    if (reply.result != ModbusConnection::Exception || reply.error != EMBXILFUN
        || m_connection.device().maskWrite != ModbusMap::MaskAuto)
        return reply;
    m_readModifyWrite = true;
    qWarning("Modbus %s: unit %d has no mask write (function 22); bits of registers are written by reading and "
             "writing the whole register from now on, which is not atomic on the device",
             qPrintable(deviceName()), write.unit);
    return readModifyWrite(write);
}

// Not atomic: a change the device makes to the register's other bits between the read and the write is lost.
ModbusConnection::Reply ModbusLink::readModifyWrite(const ModbusWrite &write)
{
    quint16 value = 0;
    ModbusConnection::Reply reply = m_connection.readRegisters(write.unit, true, write.address, 1, &value);
    if (!reply.answered()) {
        if (reply.result != ModbusConnection::Lost)
            reply.why = QStringLiteral("the register could not be read before changing a bit of it (%1)").arg(reply.why);
        if (reply.result != ModbusConnection::Lost && reply.result != ModbusConnection::Exception)
            reply.result = ModbusConnection::NotSent;
        return reply;
    }
    const quint16 changed = quint16((value & write.andMask) | (write.orMask & ~write.andMask));
    return m_connection.writeRegisters(write.unit, write.address, {changed});
}

QVector<quint16> ModbusLink::readBack(const ModbusWrite &write)
{
    const int count = write.operation == ModbusWrite::Registers ? int(write.values.size()) : 1;
    QVector<quint16> values(count);
    ModbusConnection::Reply reply;
    for (int attempt = 0; attempt <= m_connection.device().retries; ++attempt) {
        reply = write.operation == ModbusWrite::Coil ? m_connection.readBits(write.unit, true, write.address, 1, values.data())
                                                     : m_connection.readRegisters(write.unit, true, write.address, count, values.data());
        if (!retryable(reply))
            break;
    }
    return account(reply) && reply.answered() ? values : QVector<quint16>();
}
