#include "modbuscontroller.h"

#include <QTimer>
#include <QWidget>

#include <algorithm>

using norvo_v0::QeltApp;

namespace {

qint32 wordOf(const ModbusMap::Entry &entry, const QVector<quint16> &values, int offset)
{
    if (entry.registers == 1)
        return values.value(offset);
    const quint32 first = values.value(offset), second = values.value(offset + 1);
    return qint32(entry.highWordFirst ? (first << 16) | second : (second << 16) | first);
}

} // namespace

ModbusController::ModbusController(const ModbusMap &map, const QString &host, int port, QObject *parent)
    : QObject(parent)
    , m_map(map)
    , m_target(QStringLiteral("%1:%2").arg(host).arg(port))
    , m_downWhy(QStringLiteral("no connection to %1 yet").arg(m_target))
{
    qRegisterMetaType<ModbusPollResult>();
    m_link = new ModbusLink(host, port);
    m_link->moveToThread(&m_thread);
    connect(&m_thread, &QThread::started, m_link, &ModbusLink::start);
    connect(&m_thread, &QThread::finished, m_link, &QObject::deleteLater);
    connect(m_link, &ModbusLink::linkUp, this, [this] { setLinkState(true, QString()); });
    connect(m_link, &ModbusLink::linkDown, this, [this](const QString &why) { setLinkState(false, why); });
    connect(m_link, &ModbusLink::polled, this, &ModbusController::applyPoll);
    connect(m_link, &ModbusLink::writeFailed, this, [this](const QString &what, const QString &why) { refuse(what, why); });
    m_thread.setObjectName(QStringLiteral("modbus %1").arg(m_target));
    m_thread.start();
}

ModbusController::~ModbusController()
{
    QMetaObject::invokeMethod(m_link, &ModbusLink::stop, Qt::BlockingQueuedConnection);
    m_thread.quit();
    m_thread.wait();
}

void ModbusController::setPollPeriod(int milliseconds)
{
    QMetaObject::invokeMethod(m_link, [link = m_link, milliseconds] { link->setPeriod(milliseconds); });
}

bool ModbusController::getBit(int channel, int bitType, int address, int bitIndex, int comId)
{
    return m_values.getBit(channel, bitType, address, bitIndex, comId);
}

int ModbusController::getData(int channel, DataClass dataClass, int address, int comId)
{
    return m_values.getData(channel, dataClass, address, comId);
}

void ModbusController::refuse(const QString &what, const QString &why)
{
    const QString message = QStringLiteral("Write of %1 refused: %2").arg(what, why);
    qWarning("%s", qPrintable(message));
    Q_EMIT writeRefused(message);
}

const ModbusMap::Entry *ModbusController::entryFor(int comId, int channel, ModbusMap::Kind kind, int area,
                                                   int address, const QString &what)
{
    const ModbusMap::Entry *entry = m_map.find(comId, channel, kind, area, address);
    if (!entry)
        refuse(what, QStringLiteral("the map has no entry for it"));
    else if (!entry->writable())
        refuse(what, QStringLiteral("%1 maps it to read-only %2").arg(entry->describe(),
                                                                      entry->table == ModbusMap::InputRegisters
                                                                          ? QStringLiteral("input registers")
                                                                          : QStringLiteral("discrete inputs")));
    return entry && entry->writable() ? entry : nullptr;
}

void ModbusController::setBit(int channel, BitType bitType, int address, int bitIndex, bool value, int comId)
{
    const int c = m_values.resolveChannel(channel);
    const QString what = ModbusMap::describeVariable(comId, c, -1, bitType, address, bitIndex);
    if (!m_up)
        return refuse(what, QStringLiteral("the link to %1 is down").arg(m_target));
    const ModbusMap::Kind kind = ModbusMap::kindOfBitType(bitType);
    const ModbusMap::Entry *entry = entryFor(comId, c, kind, bitType, address, what);
    if (!entry)
        return;
    const ModbusPlan::Piece piece = ModbusPlan::pieceOf(*entry, address);
    ModbusWrite write;
    write.unit = entry->unit;
    write.what = what;
    if (kind == ModbusMap::PlcBit) {
        write.operation = ModbusWrite::Coil;
        write.address = piece.start;
        write.values = {quint16(value ? 1 : 0)};
    } else {
        if (bitIndex < 0 || bitIndex >= 16 * entry->registers)
            return refuse(what, QStringLiteral("its word has %1 bits").arg(16 * entry->registers));
        // The register of the pair that holds the bit: the low half of the word for bits 0 ... 15.
        const bool lowHalf = bitIndex < 16;
        const int registerIndex = entry->registers == 1 ? 0 : (lowHalf == entry->highWordFirst ? 1 : 0);
        const quint16 bit = quint16(1u << (bitIndex % 16));
        write.operation = ModbusWrite::RegisterBits;
        write.address = piece.start + registerIndex;
        write.andMask = quint16(~bit);
        write.orMask = value ? bit : 0;
    }
    QMetaObject::invokeMethod(m_link, [link = m_link, write] { link->write(write); });
}

void ModbusController::setData(int channel, DataClass dataClass, int address, int value, int comId)
{
    const int c = m_values.resolveChannel(channel);
    const QString what = ModbusMap::describeVariable(comId, c, dataClass, -1, address, 0);
    if (!m_up)
        return refuse(what, QStringLiteral("the link to %1 is down").arg(m_target));
    const ModbusMap::Entry *entry = entryFor(comId, c, ModbusMap::Word, dataClass, address, what);
    if (!entry)
        return;
    ModbusWrite write;
    write.unit = entry->unit;
    write.what = what;
    write.address = ModbusPlan::pieceOf(*entry, address).start;
    if (entry->registers == 1) {
        if (value < 0 || value > 0xffff)
            return refuse(what, QStringLiteral("%1 does not fit its one register").arg(value));
        write.values = {quint16(value)};
    } else {
        const quint16 high = quint16(quint32(value) >> 16), low = quint16(quint32(value) & 0xffff);
        write.values = entry->highWordFirst ? QVector<quint16>{high, low} : QVector<quint16>{low, high};
    }
    QMetaObject::invokeMethod(m_link, [link = m_link, write] { link->write(write); });
}

void ModbusController::registerUIVariable(QWidget *form, QWidget *widget,
                                          norvo_v0::UpdateVariableInterface *callback, int index, int comId,
                                          int channel, int dataClass, int address, int bitType, int bitIndex,
                                          int format1, int format2, int format3, int format4, int reserved,
                                          bool asText)
{
    m_values.registerUIVariable(form, widget, callback, index, comId, channel, dataClass, address, bitType,
                                bitIndex, format1, format2, format3, format4, reserved, asText);
    if (!form || !widget || !callback || (bitType < 0 && dataClass < 0))
        return;
    Variable v;
    v.form = form;
    v.widget = widget;
    v.comId = comId;
    v.channel = m_values.resolveChannel(channel);
    v.dataClass = dataClass;
    v.bitType = bitType;
    v.address = address;
    v.bitIndex = bitIndex;
    const ModbusMap::Kind kind = bitType >= 0 ? ModbusMap::kindOfBitType(bitType) : ModbusMap::Word;
    v.entry = m_map.find(comId, v.channel, kind, bitType >= 0 ? bitType : dataClass, address);
    if (!v.entry) {
        const QString problem = QStringLiteral("no map entry for %1 (widget \"%2\")")
                                    .arg(ModbusMap::describeVariable(comId, v.channel, dataClass, bitType, address, bitIndex),
                                         widget->objectName());
        if (!m_problems.contains(problem)) {
            qWarning("%s", qPrintable(problem));
            m_problems << problem;
        }
    }
    m_variables << v;
    m_marks.mark(widget, m_up ? QStringLiteral("Value not read yet") : m_downWhy);
    replanSoon();
}

void ModbusController::removeUIVariable(QWidget *form, QWidget *widget)
{
    m_values.removeUIVariable(form, widget);
    const auto gone = std::remove_if(m_variables.begin(), m_variables.end(),
                                     [&](const Variable &v) { return v.form == form && v.widget == widget; });
    if (gone == m_variables.end())
        return;
    m_variables.erase(gone, m_variables.end());
    m_marks.unmark(widget);
    replanSoon();
}

void ModbusController::startUpdateUI(QWidget *form)
{
    m_values.startUpdateUI(form);
}

void ModbusController::stopUpdateUI()
{
    m_values.stopUpdateUI();
}

QString ModbusController::showKeypad(bool *ok, int radix, const QString &text, int positionMode,
                                     const QRect &customGeometry, const QRect &itemRect, const QRect &formRect,
                                     QWidget *parent, int maxLength, int decimals, double lowest, double highest)
{
    return m_values.showKeypad(ok, radix, text, positionMode, customGeometry, itemRect, formRect, parent, maxLength,
                               decimals, lowest, highest);
}

// A form registers its variables one by one while it attaches: plan once they are all in.
void ModbusController::replanSoon()
{
    if (m_replanPending)
        return;
    m_replanPending = true;
    QTimer::singleShot(0, this, &ModbusController::replan);
}

void ModbusController::replan()
{
    m_replanPending = false;
    m_variables.erase(std::remove_if(m_variables.begin(), m_variables.end(),
                                     [](const Variable &v) { return !v.widget || !v.form; }),
                      m_variables.end());
    QVector<ModbusPlan::Piece> pieces;
    QVector<int> owners;
    for (int i = 0; i < m_variables.size(); ++i) {
        const Variable &v = m_variables.at(i);
        if (v.entry) {
            pieces << ModbusPlan::pieceOf(*v.entry, v.address);
            owners << i;
        }
    }
    QVector<ModbusPlan::Place> places;
    const QVector<ModbusRequest> plan = ModbusPlan::build(m_map, pieces, &places);
    for (int p = 0; p < owners.size(); ++p)
        m_variables[owners.at(p)].place = places.at(p);
    const int generation = ++m_generation;
    QMetaObject::invokeMethod(m_link, [link = m_link, plan, generation] { link->setPlan(plan, generation); });
}

void ModbusController::applyPoll(const ModbusPollResult &result)
{
    if (result.generation != m_generation || !m_up)
        return; // read for variables that have changed since
    for (Variable &v : m_variables) {
        if (!v.entry || v.place.request < 0 || v.place.request >= result.values.size() || !v.widget)
            continue;
        const QVector<quint16> &values = result.values.at(v.place.request);
        const QString failure = result.failures.value(v.place.request);
        v.known = failure.isEmpty();
        if (!v.known) {
            continue;
        }
        if (v.bitType >= 0 && v.entry->kind == ModbusMap::PlcBit) {
            m_values.setBit(v.channel, BitType(v.bitType), v.address, v.bitIndex, values.value(v.place.offset) != 0, v.comId);
        } else {
            const qint32 word = wordOf(*v.entry, values, v.place.offset);
            if (v.bitType >= 0)
                m_values.setBit(v.channel, BitType(v.bitType), v.address, v.bitIndex,
                                v.bitIndex >= 0 && v.bitIndex < 32 && ((quint32(word) >> v.bitIndex) & 1u), v.comId);
            else
                m_values.setData(v.channel, DataClass(v.dataClass), v.address, word, v.comId);
        }
    }
    QString refused;
    for (const QString &failure : result.failures) {
        if (!failure.isEmpty()) {
            refused = QStringLiteral("The device refused the read: %1").arg(failure);
            break;
        }
    }
    // Said once when it starts, not at every poll.
    if (!refused.isEmpty() && refused != m_lastRefused)
        qWarning("Modbus %s: %s", qPrintable(m_target), qPrintable(refused));
    m_lastRefused = refused;
    updateMarks(refused);
    Q_EMIT pollApplied();
}

void ModbusController::updateMarks(const QString &why)
{
    QHash<QWidget *, bool> unknown;
    for (const Variable &v : std::as_const(m_variables)) {
        if (v.widget)
            unknown[v.widget] = unknown.value(v.widget) || !v.known || !m_up;
    }
    for (auto it = unknown.cbegin(); it != unknown.cend(); ++it) {
        if (it.value())
            m_marks.mark(it.key(), m_up ? why : m_downWhy);
        else
            m_marks.unmark(it.key());
    }
}

void ModbusController::setLinkState(bool up, const QString &why)
{
    if (!up)
        m_downWhy = QStringLiteral("No connection to %1: %2").arg(m_target, why);
    if (up == m_up)
        return;
    m_up = up;
    if (!up) {
        qWarning("Modbus: %s", qPrintable(m_downWhy));
        for (Variable &v : m_variables)
            v.known = false;
        updateMarks(m_downWhy);
    }
    Q_EMIT linkStateChanged(up, up ? QString() : m_downWhy);
}
