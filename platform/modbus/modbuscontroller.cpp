#include "modbuscontroller.h"

#include <QThread>
#include <QTimer>
#include <QWidget>

#include <algorithm>

using norvo_v0::QeltApp;

struct ModbusController::DeviceLink
{
    QThread thread;
    ModbusLink *link = nullptr;
    int state = ModbusLink::Connecting;
    QString why; // while not up
    int generation = 0;
    QString lastFailure; // said once when it starts, not at every poll
};

ModbusController::ModbusController(const ModbusMap &map, const QString &host, int port, QObject *parent)
    : ModbusController(
          [&] {
              ModbusMap m = map;
              m.setAddress(host, port);
              return m;
          }(),
          parent)
{
}

ModbusController::ModbusController(const ModbusMap &map, QObject *parent)
    : QObject(parent)
    , m_map(map)
{
    qRegisterMetaType<ModbusPollResult>();
    qRegisterMetaType<ModbusWriteOutcome>();
    for (int d = 0; d < m_map.devices().size(); ++d) {
        const ModbusMap::Device &device = m_map.devices().at(d);
        auto dl = std::make_unique<DeviceLink>();
        dl->why = QStringLiteral("Connecting to %1 ...").arg(device.describe());
        dl->link = new ModbusLink(device);
        dl->link->moveToThread(&dl->thread);
        connect(&dl->thread, &QThread::started, dl->link, &ModbusLink::start);
        connect(&dl->thread, &QThread::finished, dl->link, &QObject::deleteLater);
        connect(dl->link, &ModbusLink::stateChanged, this, [this, d](int state, const QString &why) { applyState(d, state, why); });
        connect(dl->link, &ModbusLink::polled, this, [this, d](const ModbusPollResult &result) { applyPoll(d, result); });
        connect(dl->link, &ModbusLink::written, this, &ModbusController::applyOutcome);
        dl->thread.setObjectName(QStringLiteral("modbus %1").arg(device.describe()));
        dl->thread.start();
        m_links.push_back(std::move(dl));
    }
    updateStatus();
    replanSoon(); // a device with nothing to read is up once connected
}

ModbusController::~ModbusController()
{
    for (const auto &dl : m_links)
        dl->link->requestStop();
    for (const auto &dl : m_links)
        QMetaObject::invokeMethod(dl->link, &ModbusLink::stop, Qt::BlockingQueuedConnection);
    for (const auto &dl : m_links) {
        dl->thread.quit();
        dl->thread.wait();
    }
}

void ModbusController::setPollPeriod(int milliseconds)
{
    m_pollPeriod = milliseconds;
    for (const auto &dl : m_links)
        QMetaObject::invokeMethod(dl->link, [link = dl->link, milliseconds] { link->setPeriod(milliseconds); });
}

void ModbusController::setTrace(std::shared_ptr<ModbusTrace> trace)
{
    for (const auto &dl : m_links)
        QMetaObject::invokeMethod(dl->link, [link = dl->link, trace] { link->setTrace(trace); });
}

bool ModbusController::isLinkUp() const
{
    return std::all_of(m_links.begin(), m_links.end(), [](const auto &dl) { return dl->state == ModbusLink::Up; });
}

QString ModbusController::status() const
{
    return m_status;
}

bool ModbusController::getBit(int channel, int bitType, int address, int bitIndex, int comId)
{
    return m_values.getBit(channel, bitType, address, bitIndex, comId);
}

int ModbusController::getData(int channel, DataClass dataClass, int address, int comId)
{
    return m_values.getData(channel, dataClass, address, comId);
}

void ModbusController::report(const QString &message)
{
    qWarning("%s", qPrintable(message));
    Q_EMIT writeReported(message);
}

void ModbusController::refuse(const QString &what, const QString &why)
{
    m_troubled.insert(what);
    report(QStringLiteral("Write of %1 refused: %2").arg(what, why));
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
    else if (m_links.at(entry->device)->state != ModbusLink::Up)
        refuse(what, QStringLiteral("not sent: the link to %1 is down").arg(m_map.devices().at(entry->device).describe()));
    else
        return entry;
    return nullptr;
}

void ModbusController::send(ModbusWrite write, const Pending &pending)
{
    write.id = ++m_nextWrite;
    write.unit = pending.entry->unit;
    m_pending.insert(write.id, pending);
    ModbusLink *link = m_links.at(pending.entry->device)->link;
    QMetaObject::invokeMethod(link, [link, write] { link->write(write); });
}

void ModbusController::setBit(int channel, BitType bitType, int address, int bitIndex, bool value, int comId)
{
    const int c = m_values.resolveChannel(channel);
    const QString what = ModbusMap::describeVariable(comId, c, -1, bitType, address, bitIndex);
    const ModbusMap::Kind kind = ModbusMap::kindOfBitType(bitType);
    const ModbusMap::Entry *entry = entryFor(comId, c, kind, bitType, address, what);
    if (!entry)
        return;
    const ModbusPlan::Piece piece = ModbusPlan::pieceOf(*entry, address);
    ModbusWrite write;
    if (kind == ModbusMap::PlcBit) {
        write.operation = ModbusWrite::Coil;
        write.address = piece.start;
        write.values = {quint16(value ? 1 : 0)};
    } else {
        if (bitIndex < 0 || bitIndex >= 16 * entry->registers)
            return refuse(what, QStringLiteral("its word has %1 bits").arg(16 * entry->registers));
        const quint16 bit = entry->maskOfBit(bitIndex);
        write.operation = ModbusWrite::RegisterBits;
        write.address = piece.start + entry->registerOfBit(bitIndex);
        write.andMask = quint16(~bit);
        write.orMask = value ? bit : 0;
    }
    send(write, {what, entry, c, -1, bitType, address, bitIndex, comId});
}

void ModbusController::setData(int channel, DataClass dataClass, int address, int value, int comId)
{
    const int c = m_values.resolveChannel(channel);
    const QString what = ModbusMap::describeVariable(comId, c, dataClass, -1, address, 0);
    const ModbusMap::Entry *entry = entryFor(comId, c, ModbusMap::Word, dataClass, address, what);
    if (!entry)
        return;
    ModbusWrite write;
    write.address = ModbusPlan::pieceOf(*entry, address).start;
    QString why;
    if (!entry->encode(value, &write.values, &why))
        return refuse(what, why);
    send(write, {what, entry, c, dataClass, -1, address, 0, comId});
}

void ModbusController::applyOutcome(const ModbusWriteOutcome &outcome)
{
    const Pending p = m_pending.take(outcome.id);
    if (!p.entry)
        return;
    switch (outcome.result) {
    case ModbusWriteOutcome::Done:
        if (m_troubled.remove(p.what))
            report(QStringLiteral("Write of %1 done.").arg(p.what));
        return;
    case ModbusWriteOutcome::Refused:
        return refuse(p.what, outcome.why);
    case ModbusWriteOutcome::Unknown:
        break;
    }
    m_troubled.insert(p.what);
    QString now = QStringLiteral("reading it back failed too");
    if (!outcome.readBack.isEmpty()) {
        // What the device holds is what the widgets show, whatever became of the write.
        if (p.bitType >= 0) {
            const bool on = p.entry->kind == ModbusMap::PlcBit ? outcome.readBack.first() != 0
                                                               : (outcome.readBack.first() & p.entry->maskOfBit(p.bitIndex)) != 0;
            m_values.setBit(p.channel, BitType(p.bitType), p.address, p.bitIndex, on, p.comId);
            now = QStringLiteral("the device holds %1 now").arg(on ? 1 : 0);
        } else if (outcome.readBack.size() >= p.entry->registers) {
            const qint32 word = p.entry->decode(outcome.readBack.constData());
            m_values.setData(p.channel, DataClass(p.dataClass), p.address, word, p.comId);
            now = QStringLiteral("the device holds %1 now").arg(word);
        }
    }
    report(QStringLiteral("Write of %1: outcome unknown, %2; %3").arg(p.what, outcome.why, now));
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
    v.why = QStringLiteral("Value not read yet");
    if (!v.entry) {
        v.why = QStringLiteral("not in the map");
        const QString problem = QStringLiteral("no map entry for %1 (widget \"%2\")")
                                    .arg(ModbusMap::describeVariable(comId, v.channel, dataClass, bitType, address, bitIndex),
                                         widget->objectName());
        if (!m_problems.contains(problem)) {
            qWarning("%s", qPrintable(problem));
            m_problems << problem;
        }
    }
    m_variables << v;
    const DeviceLink *dl = v.entry ? m_links.at(v.entry->device).get() : nullptr;
    m_marks.mark(widget, dl && dl->state != ModbusLink::Up ? dl->why : v.why);
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
    for (int d = 0; d < int(m_links.size()); ++d) {
        QVector<ModbusPlan::Piece> pieces;
        QVector<int> owners;
        for (int i = 0; i < m_variables.size(); ++i) {
            const Variable &v = m_variables.at(i);
            if (v.entry && v.entry->device == d) {
                pieces << ModbusPlan::pieceOf(*v.entry, v.address);
                owners << i;
            }
        }
        QVector<ModbusPlan::Place> places;
        const QVector<ModbusRequest> plan = ModbusPlan::build(m_map, pieces, &places);
        for (int p = 0; p < owners.size(); ++p)
            m_variables[owners.at(p)].place = places.at(p);
        DeviceLink &dl = *m_links.at(d);
        const int generation = ++dl.generation;
        QMetaObject::invokeMethod(dl.link, [link = dl.link, plan, generation] { link->setPlan(plan, generation); });
    }
    updateStatus();
}

void ModbusController::applyPoll(int device, const ModbusPollResult &result)
{
    DeviceLink &dl = *m_links.at(device);
    if (result.generation != dl.generation || dl.state != ModbusLink::Up)
        return; // read for variables that have changed since
    QString failure;
    bool changed = false; // what is known: marks and the message line follow only a change
    for (Variable &v : m_variables) {
        if (!v.entry || v.entry->device != device || v.place.request < 0 || v.place.request >= result.answers.size() || !v.widget)
            continue;
        const ModbusAnswer &answer = result.answers.at(v.place.request);
        const int width = v.entry->kind == ModbusMap::PlcBit ? 1 : v.entry->registers;
        if (v.place.offset + width > answer.values.size())
            continue;
        const bool wasKnown = v.known;
        v.known = true;
        for (int i = 0; i < width && !answer.missing.isEmpty(); ++i)
            v.known = v.known && !answer.missing.testBit(v.place.offset + i);
        if (!v.known) {
            changed = changed || wasKnown || v.why != answer.failure;
            v.why = answer.failure;
            failure = failure.isEmpty() ? answer.failure : failure;
            continue;
        }
        changed = changed || !wasKnown;
        const quint16 *registers = answer.values.constData() + v.place.offset;
        if (v.bitType >= 0 && v.entry->kind == ModbusMap::PlcBit) {
            m_values.setBit(v.channel, BitType(v.bitType), v.address, v.bitIndex, registers[0] != 0, v.comId);
        } else {
            const qint32 word = v.entry->decode(registers);
            if (v.bitType >= 0)
                m_values.setBit(v.channel, BitType(v.bitType), v.address, v.bitIndex,
                                v.bitIndex >= 0 && v.bitIndex < 32 && ((quint32(word) >> v.bitIndex) & 1u), v.comId);
            else
                m_values.setData(v.channel, DataClass(v.dataClass), v.address, word, v.comId);
        }
    }
    if (!failure.isEmpty() && failure != dl.lastFailure)
        qWarning("Modbus %s: %s", qPrintable(m_map.devices().at(device).describe()), qPrintable(failure));
    dl.lastFailure = failure;
    if (changed)
        updateMarks();
    Q_EMIT pollApplied(device);
}

void ModbusController::applyState(int device, int state, const QString &why)
{
    DeviceLink &dl = *m_links.at(device);
    const QString name = m_map.devices().at(device).describe();
    const bool wasDown = dl.state == ModbusLink::Down;
    dl.state = state;
    dl.lastFailure.clear();
    if (state == ModbusLink::Up) {
        if (wasDown)
            qWarning("Modbus %s: answering again", qPrintable(name));
    } else {
        dl.why = QStringLiteral("No connection to %1: %2").arg(name, why);
        qWarning("Modbus: %s", qPrintable(dl.why));
        for (Variable &v : m_variables) {
            if (v.entry && v.entry->device == device)
                v.known = false;
        }
    }
    updateMarks();
}

void ModbusController::updateMarks()
{
    QHash<QWidget *, QString> unknown;
    for (const Variable &v : std::as_const(m_variables)) {
        if (!v.widget)
            continue;
        const DeviceLink *dl = v.entry ? m_links.at(v.entry->device).get() : nullptr;
        QString &why = unknown[v.widget];
        if (why.isEmpty() && dl && dl->state != ModbusLink::Up)
            why = dl->why;
        else if (why.isEmpty() && !v.known)
            why = v.why;
    }
    for (auto it = unknown.cbegin(); it != unknown.cend(); ++it) {
        if (it.value().isEmpty())
            m_marks.unmark(it.key());
        else
            m_marks.mark(it.key(), it.value());
    }
    updateStatus();
}

// What the message line says: devices that are down, then how many variables are not known and the
// commonest reason, e.g. "Connected; 12 variables unknown: unit 2 does not answer".
void ModbusController::updateStatus()
{
    QStringList parts;
    bool connecting = false;
    for (const auto &dl : m_links) {
        connecting = connecting || dl->state == ModbusLink::Connecting;
        if (dl->state != ModbusLink::Up)
            parts << dl->why;
    }
    QHash<QString, int> reasons;
    int unknown = 0;
    for (const Variable &v : std::as_const(m_variables)) {
        if (v.widget && !v.known && (!v.entry || m_links.at(v.entry->device)->state == ModbusLink::Up)) {
            ++unknown;
            ++reasons[v.why];
        }
    }
    if (unknown > 0 && !connecting) {
        const auto commonest = std::max_element(reasons.cbegin(), reasons.cend());
        parts << QStringLiteral("%1 variable%2 unknown: %3").arg(unknown).arg(unknown == 1 ? "" : "s", commonest.key());
    }
    QString status = parts.join(QStringLiteral("; "));
    if (std::all_of(m_links.begin(), m_links.end(), [](const auto &dl) { return dl->state == ModbusLink::Up; }))
        status = parts.isEmpty() ? QStringLiteral("Connected.") : QStringLiteral("Connected; ") + status;
    if (status != m_status) {
        m_status = status;
        Q_EMIT statusChanged(status);
    }
}
