#include "modbusmap.h"

#include "mapfieldreader.h"

#include "qeltapp.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>

#include <algorithm>
#include <climits>
#include <cmath>

using norvo_v0::QeltApp;

namespace {

const char *const DataClassNames[] = {"User", "Mcm", "Sys", "Reg", "Bus", "Com"};
const char *const BitTypeNames[] = {"I_BIT", "O_BIT", "C_BIT", "S_BIT", "A_BIT", "Cn_BIT", "Tm_BIT",
                                    "User_BIT", "Mcm_BIT", "Sys_BIT", "Reg_BIT", "Bus_BIT", "Com_BIT"};
const char *const TableNames[] = {"coils", "discreteInputs", "holding", "input"};
constexpr int ModbusAddresses = 65536;

template<int N>
int indexOf(const char *const (&names)[N], const QString &name)
{
    for (int i = 0; i < N; ++i) {
        if (name == QLatin1String(names[i]))
            return i;
    }
    return -1;
}

QString areaName(ModbusMap::Kind kind, int area)
{
    if (kind == ModbusMap::Word)
        return area >= 0 && area < 6 ? QString::fromLatin1(DataClassNames[area]) + QStringLiteral(" words")
                                     : QStringLiteral("words");
    return area >= 0 && area < 13 ? QString::fromLatin1(BitTypeNames[area]) + QStringLiteral(" bits")
                                  : QStringLiteral("bits");
}

bool intersects(qint64 a1, qint64 a2, qint64 b1, qint64 b2)
{
    return a1 <= b2 && b1 <= a2;
}

QString unitRefused(const ModbusMap::Device &device, int unit)
{
    return device.serial ? QStringLiteral("\"unit\" %1 is no Modbus RTU unit (1 ... 247)").arg(unit)
                         : QStringLiteral("\"unit\" %1 is no Modbus/TCP unit (0 ... 247, or 255)").arg(unit);
}

quint16 swapped(quint16 value, bool swap)
{
    return swap ? quint16((value >> 8) | (value << 8)) : value;
}

// "type", or the older "registers" (1: uint16, 2: int32), with what goes with it.
void readType(MapFieldReader &read, const QJsonObject &object, ModbusMap::Entry *entry)
{
    if (entry->kind == ModbusMap::PlcBit) {
        for (const char *key : {"type", "registers", "wordOrder", "byteSwap"}) {
            if (object.contains(QLatin1String(key)))
                read.fail(QStringLiteral("PLC bits are single coils or inputs: \"%1\" is for registers").arg(QLatin1String(key)));
        }
        entry->registers = 1;
        return;
    }
    const QJsonValue type = object.value(QLatin1String("type"));
    const int registers = read.integer("registers", 0, 1, 2);
    if (type.toString() == QLatin1String("uint32"))
        read.fail(QStringLiteral("\"type\" uint32 does not fit the panel's words (signed 32-bit): use int32"));
    else if (!type.isUndefined())
        entry->type = ModbusMap::Type(read.choice("type", ModbusMap::Int32, {"int16", "uint16", "int32"}));
    else
        entry->type = registers == 1 ? ModbusMap::UInt16 : ModbusMap::Int32;
    entry->registers = entry->type == ModbusMap::Int32 ? 2 : 1;
    if (registers && registers != entry->registers)
        read.fail(QStringLiteral("\"registers\" %1 contradicts \"type\" %2 (%3 registers)")
                      .arg(registers)
                      .arg(type.toString())
                      .arg(entry->registers));
    const int order = read.choice("wordOrder", 0, {"highFirst", "lowFirst"});
    if (entry->registers == 1 && object.contains(QLatin1String("wordOrder")))
        read.fail(QStringLiteral("\"wordOrder\" is for words of two registers (type int32)"));
    entry->highWordFirst = order == 0;
    entry->byteSwap = read.boolean("byteSwap", false);
}

} // namespace

QString ModbusMap::Device::address() const
{
    if (!serial)
        return QStringLiteral("%1:%2").arg(host).arg(port);
    return QStringLiteral("%1 %2 %3%4%5").arg(serialPort).arg(baud).arg(dataBits).arg(QLatin1Char(parity)).arg(stopBits);
}

QString ModbusMap::Device::describe() const
{
    return name.isEmpty() ? address() : QStringLiteral("device %1 (%2)").arg(name, address());
}

QString ModbusMap::tableName(Table table)
{
    return QLatin1String(TableNames[table]);
}

qint32 ModbusMap::Entry::decode(const quint16 *values) const
{
    if (registers == 1) {
        const quint16 value = swapped(values[0], byteSwap);
        return type == Int16 ? qint32(qint16(value)) : qint32(value);
    }
    const quint32 first = swapped(values[0], byteSwap), second = swapped(values[1], byteSwap);
    return qint32(highWordFirst ? (first << 16) | second : (second << 16) | first);
}

bool ModbusMap::Entry::encode(qint32 value, QVector<quint16> *values, QString *why) const
{
    if (type == Int16 && (value < -32768 || value > 32767)) {
        *why = QStringLiteral("%1 does not fit a signed 16-bit word (-32768 ... 32767)").arg(value);
        return false;
    }
    if (type == UInt16 && (value < 0 || value > 0xffff)) {
        *why = QStringLiteral("%1 does not fit an unsigned 16-bit word (0 ... 65535)").arg(value);
        return false;
    }
    if (registers == 1) {
        *values = {swapped(quint16(value), byteSwap)};
        return true;
    }
    const quint16 high = swapped(quint16(quint32(value) >> 16), byteSwap);
    const quint16 low = swapped(quint16(quint32(value) & 0xffff), byteSwap);
    *values = highWordFirst ? QVector<quint16>{high, low} : QVector<quint16>{low, high};
    return true;
}

int ModbusMap::Entry::registerOfBit(int bitIndex) const
{
    // The low half of a two-register word holds bits 0 ... 15.
    return registers == 1 ? 0 : ((bitIndex < 16) == highWordFirst ? 1 : 0);
}

quint16 ModbusMap::Entry::maskOfBit(int bitIndex) const
{
    return swapped(quint16(1u << (bitIndex % 16)), byteSwap);
}

QString ModbusMap::Entry::describe() const
{
    return QStringLiteral("entry %1 (link %2, channel %3, %4 %5 ... %6)")
        .arg(number)
        .arg(comId)
        .arg(channel + 1)
        .arg(areaName(kind, area))
        .arg(first)
        .arg(last);
}

ModbusMap::Kind ModbusMap::kindOfBitType(int bitType)
{
    return bitType >= QeltApp::User_BIT ? WordBit : PlcBit;
}

QString ModbusMap::describeVariable(int comId, int channel, int dataClass, int bitType, int address, int bitIndex)
{
    if (bitType >= 0) {
        const QString name = bitType < 13 ? QString::fromLatin1(BitTypeNames[bitType]) : QString::number(bitType);
        return kindOfBitType(bitType) == WordBit
                   ? QStringLiteral("link %1, channel %2, %3 %4.%5").arg(comId).arg(channel + 1).arg(name).arg(address).arg(bitIndex)
                   : QStringLiteral("link %1, channel %2, %3 %4").arg(comId).arg(channel + 1).arg(name).arg(address);
    }
    const QString name = dataClass >= 0 && dataClass < 6 ? QString::fromLatin1(DataClassNames[dataClass])
                                                         : QString::number(dataClass);
    return QStringLiteral("link %1, channel %2, %3 word %4").arg(comId).arg(channel + 1).arg(name).arg(address);
}

bool ModbusMap::readFile(const QString &fileName)
{
    m_entries.clear();
    // A named pipe or a device would block open() or never end.
    if (QFileInfo(fileName).exists() && !QFileInfo(fileName).isFile()) {
        m_errors = QStringList{QStringLiteral("%1: not a regular file; not a map").arg(fileName)};
        return false;
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        m_errors = QStringList{QStringLiteral("%1: %2").arg(fileName, file.errorString())};
        return false;
    }
    if (file.size() > MaxFileBytes) {
        m_errors = QStringList{QStringLiteral("%1: larger than %2 bytes; not a map").arg(fileName).arg(MaxFileBytes)};
        return false;
    }
    return parse(file.readAll());
}

bool ModbusMap::parse(const QByteArray &json)
{
    m_entries.clear();
    m_devices.clear();
    m_errors.clear();
    m_namesDevices = false;
    if (json.size() > MaxFileBytes) {
        m_errors << QStringLiteral("larger than %1 bytes; not a map").arg(MaxFileBytes);
        return false;
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        m_errors << QStringLiteral("not JSON at byte %1: %2").arg(error.offset).arg(error.errorString());
        return false;
    }
    const QJsonObject top = document.object();
    for (auto it = top.begin(); it != top.end(); ++it) {
        if (it.key() != QLatin1String("entries") && it.key() != QLatin1String("devices"))
            m_errors << QStringLiteral("unknown field \"%1\" (a map has \"devices\" and \"entries\")").arg(it.key().left(40));
    }
    const QJsonValue list = top.value(QLatin1String("entries"));
    if (!list.isArray() || list.toArray().isEmpty()) {
        m_errors << QStringLiteral("no \"entries\" list");
        return false;
    }
    const QJsonArray array = list.toArray();
    if (array.size() > MaxEntries) {
        m_errors << QStringLiteral("%1 entries; a map holds at most %2").arg(array.size()).arg(MaxEntries);
        return false;
    }
    if (!readDevices(top))
        return false;
    for (int i = 0; i < array.size() && m_errors.size() < 100; ++i) {
        Entry entry;
        if (readEntry(i + 1, array.at(i).toObject(), &entry))
            m_entries << entry;
    }
    if (m_errors.isEmpty())
        checkOverlaps();
    if (!m_errors.isEmpty()) {
        m_entries.clear();
        m_devices.clear();
    }
    return m_errors.isEmpty();
}

void ModbusMap::setAddress(const QString &host, int port)
{
    if (m_namesDevices || m_devices.size() != 1)
        return;
    m_devices.first().host = host;
    m_devices.first().port = port;
}

bool ModbusMap::readDevices(const QJsonObject &document)
{
    const QJsonValue list = document.value(QLatin1String("devices"));
    if (list.isUndefined()) {
        m_devices << Device();
        return true;
    }
    m_namesDevices = true;
    const QJsonArray array = list.toArray();
    if (!list.isArray() || array.isEmpty() || array.size() > MaxDevices) {
        m_errors << QStringLiteral("\"devices\" must list 1 to %1 devices").arg(MaxDevices);
        return false;
    }
    for (int i = 0; i < array.size(); ++i) {
        Device device;
        if (readDevice(i + 1, array.at(i).toObject(), &device))
            m_devices << device;
    }
    return m_errors.isEmpty();
}

bool ModbusMap::readDevice(int number, const QJsonObject &object, Device *device)
{
    MapFieldReader read(object, QStringLiteral("device %1").arg(number), &m_errors);
    read.knownKeys({"name", "host", "port", "serial", "baud", "parity", "dataBits", "stopBits", "unit",
                    "maxRegisters", "maxBits", "timeoutMs", "retries", "downAfter", "maskWrite"});
    device->name = read.text("name");
    if (device->name.isEmpty() || device->name.size() > 40)
        read.fail(QStringLiteral("needs a \"name\" of 1 to 40 characters"));
    for (const Device &other : std::as_const(m_devices)) {
        if (other.name == device->name)
            read.fail(QStringLiteral("\"%1\" names two devices").arg(device->name));
    }
    device->serial = object.contains(QLatin1String("serial"));
    if (device->serial == object.contains(QLatin1String("host")))
        read.fail(QStringLiteral("needs either \"host\" (Modbus/TCP) or \"serial\" (Modbus RTU)"));
    if (device->serial) {
        device->serialPort = read.text("serial");
        if (device->serialPort.isEmpty())
            read.fail(QStringLiteral("\"serial\" must name the serial port"));
        device->baud = read.integer("baud", 19200, 50, 4000000);
        device->parity = "NEO"[read.choice("parity", 1, {"none", "even", "odd"})];
        device->dataBits = read.integer("dataBits", 8, 7, 8);
        device->stopBits = read.integer("stopBits", 1, 1, 2);
    } else {
        device->host = read.text("host");
        if (device->host.isEmpty())
            read.fail(QStringLiteral("\"host\" must name the device"));
        device->port = read.integer("port", 502, 1, 65535);
    }
    for (const char *key : {"baud", "parity", "dataBits", "stopBits"}) {
        if (!device->serial && object.contains(QLatin1String(key)))
            read.fail(QStringLiteral("\"%1\" is for a serial line").arg(QLatin1String(key)));
    }
    if (device->serial && object.contains(QLatin1String("port")))
        read.fail(QStringLiteral("\"port\" is for Modbus/TCP; a serial line has \"serial\""));
    device->unit = read.integer("unit", 1, 0, 255);
    if (!device->validUnit(device->unit))
        read.fail(unitRefused(*device, device->unit));
    device->maxRegisters = read.integer("maxRegisters", 125, 1, 125);
    device->maxBits = read.integer("maxBits", 2000, 1, 2000);
    device->timeoutMs = read.integer("timeoutMs", 1000, 10, 60000);
    device->retries = read.integer("retries", 1, 0, 5);
    device->downAfter = read.integer("downAfter", 3, 1, 100);
    device->maskWrite = MaskWrite(read.choice("maskWrite", MaskAuto, {"fc22", "readModifyWrite", "auto"}));
    return read.ok();
}

bool ModbusMap::readEntry(int number, const QJsonObject &object, Entry *entry)
{
    MapFieldReader read(object, QStringLiteral("entry %1").arg(number), &m_errors);
    read.knownKeys({"device", "link", "channel", "dataClass", "bitType", "first", "last", "unit", "table", "start",
                    "type", "registers", "wordOrder", "byteSwap"});
    entry->number = number;
    if (object.contains(QLatin1String("device")) || m_devices.size() > 1) {
        const QString name = read.text("device");
        entry->device = -1;
        for (int d = 0; d < m_devices.size(); ++d) {
            if (m_namesDevices && m_devices.at(d).name == name)
                entry->device = d;
        }
        if (entry->device < 0) {
            read.fail(!m_namesDevices ? QStringLiteral("\"device\" names no device: the map has no \"devices\" list")
                      : name.isEmpty() ? QStringLiteral("needs a \"device\" (the map has %1)").arg(m_devices.size())
                                       : QStringLiteral("\"device\" \"%1\" is not in the \"devices\" list").arg(name.left(40)));
            return false;
        }
    }
    const Device &device = m_devices.at(entry->device);
    entry->comId = read.integer("link", 0, 0, 255);
    entry->channel = read.integer("channel", 1, 1, 64) - 1;
    const bool words = object.contains(QLatin1String("dataClass"));
    const bool bits = object.contains(QLatin1String("bitType"));
    if (words == bits) {
        read.fail(QStringLiteral("needs either \"dataClass\" or \"bitType\""));
        return false;
    }
    const QString areaText = object.value(QLatin1String(words ? "dataClass" : "bitType")).toString();
    entry->area = words ? indexOf(DataClassNames, areaText) : indexOf(BitTypeNames, areaText);
    if (entry->area < 0)
        read.fail(QStringLiteral("\"%1\" is no %2").arg(areaText.left(40), words ? QStringLiteral("data class (User, Mcm, Sys, Reg, Bus, Com)")
                                                                                 : QStringLiteral("bit type (I_BIT ... Com_BIT)")));
    entry->kind = words ? Word : kindOfBitType(entry->area);
    entry->first = read.integer("first", -1, 0, INT_MAX - 1);
    entry->last = read.integer("last", -1, 0, INT_MAX - 1);
    if (!object.contains(QLatin1String("first")) || !object.contains(QLatin1String("last")))
        read.fail(QStringLiteral("needs \"first\" and \"last\" addresses"));
    else if (entry->last < entry->first)
        read.fail(QStringLiteral("\"last\" is below \"first\""));
    entry->unit = read.integer("unit", device.unit, 0, 255);
    if (!device.validUnit(entry->unit))
        read.fail(unitRefused(device, entry->unit));
    const int table = indexOf(TableNames, object.value(QLatin1String("table")).toString());
    if (table < 0)
        read.fail(QStringLiteral("\"table\" must be coils, discreteInputs, holding or input"));
    entry->table = Table(std::max(table, 0));
    const bool bitTable = entry->table == Coils || entry->table == DiscreteInputs;
    if (table >= 0 && bitTable != (entry->kind == PlcBit))
        read.fail(entry->kind == PlcBit ? QStringLiteral("PLC bits live in coils or discrete inputs")
                                        : QStringLiteral("words and bits of words live in holding or input registers"));
    entry->start = read.integer("start", 0, 0, ModbusAddresses - 1);
    readType(read, object, entry);
    if (read.ok() && qint64(entry->start) + entry->span() > ModbusAddresses)
        read.fail(QStringLiteral("%1 addresses from %2 run past the device's last address 65535").arg(entry->span()).arg(entry->start));
    return read.ok();
}

// Two entries for the same variables, or two whose variables share registers on a device: a value
// would show in two places, or a write land where the panel builder did not mean it. Bits of words
// may share their words' registers: they are those words.
void ModbusMap::checkOverlaps()
{
    for (int i = 0; i < m_entries.size(); ++i) {
        const Entry &a = m_entries.at(i);
        for (int j = i + 1; j < m_entries.size(); ++j) {
            const Entry &b = m_entries.at(j);
            if (a.comId == b.comId && a.channel == b.channel && a.kind == b.kind && a.area == b.area
                && intersects(a.first, a.last, b.first, b.last)) {
                m_errors << QStringLiteral("%1 and %2 overlap: both map the same variables").arg(a.describe(), b.describe());
            } else if (a.device == b.device && a.unit == b.unit && a.table == b.table && (a.kind == WordBit) == (b.kind == WordBit)
                       && intersects(a.start, a.start + a.span() - 1, b.start, b.start + b.span() - 1)) {
                m_errors << QStringLiteral("%1 and %2 overlap on unit %3: both use %4 %5 ... %6")
                                .arg(a.describe(), b.describe())
                                .arg(a.unit)
                                .arg(QLatin1String(TableNames[a.table]))
                                .arg(std::max(a.start, b.start))
                                .arg(std::min(a.start + a.span(), b.start + b.span()) - 1);
            }
            if (m_errors.size() >= 100)
                return;
        }
    }
}

const ModbusMap::Entry *ModbusMap::find(int comId, int channel, Kind kind, int area, int address) const
{
    for (const Entry &e : m_entries) {
        if (e.comId == comId && e.channel == channel && e.kind == kind && e.area == area && address >= e.first
            && address <= e.last)
            return &e;
    }
    return nullptr;
}
