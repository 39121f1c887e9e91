#include "modbusmap.h"

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

} // namespace

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
    m_errors.clear();
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
    const QJsonValue list = document.object().value(QLatin1String("entries"));
    if (!list.isArray() || list.toArray().isEmpty()) {
        m_errors << QStringLiteral("no \"entries\" list");
        return false;
    }
    const QJsonArray array = list.toArray();
    if (array.size() > MaxEntries) {
        m_errors << QStringLiteral("%1 entries; a map holds at most %2").arg(array.size()).arg(MaxEntries);
        return false;
    }
    for (int i = 0; i < array.size(); ++i) {
        Entry entry;
        if (readEntry(i + 1, array.at(i).toObject(), &entry))
            m_entries << entry;
    }
    if (m_errors.isEmpty())
        checkOverlaps();
    if (!m_errors.isEmpty())
        m_entries.clear();
    return m_errors.isEmpty();
}

bool ModbusMap::readEntry(int number, const QJsonObject &object, Entry *entry)
{
    const int before = int(m_errors.size());
    const auto fail = [&](const QString &what) { m_errors << QStringLiteral("entry %1: %2").arg(number).arg(what); };
    const auto integer = [&](const char *key, int fallback, int lowest, int highest) {
        const QJsonValue value = object.value(QLatin1String(key));
        if (value.isUndefined())
            return fallback;
        // In range before it is made an int: a JSON number such as 1e62 is beyond what an int holds.
        const double number = value.toDouble(-1.5);
        if (!value.isDouble() || !(number >= lowest && number <= highest) || number != std::trunc(number)) {
            fail(QStringLiteral("\"%1\" must be a whole number from %2 to %3").arg(QLatin1String(key)).arg(lowest).arg(highest));
            return fallback;
        }
        return int(number);
    };
    entry->number = number;
    entry->comId = integer("link", 0, 0, 255);
    entry->channel = integer("channel", 1, 1, 64) - 1;
    const bool words = object.contains(QLatin1String("dataClass"));
    const bool bits = object.contains(QLatin1String("bitType"));
    if (words == bits) {
        fail(QStringLiteral("needs either \"dataClass\" or \"bitType\""));
        return false;
    }
    const QString areaText = object.value(QLatin1String(words ? "dataClass" : "bitType")).toString();
    entry->area = words ? indexOf(DataClassNames, areaText) : indexOf(BitTypeNames, areaText);
    if (entry->area < 0)
        fail(QStringLiteral("\"%1\" is no %2").arg(areaText, words ? QStringLiteral("data class (User, Mcm, Sys, Reg, Bus, Com)")
                                                                   : QStringLiteral("bit type (I_BIT ... Com_BIT)")));
    entry->kind = words ? Word : kindOfBitType(entry->area);
    entry->first = integer("first", -1, 0, INT_MAX - 1);
    entry->last = integer("last", -1, 0, INT_MAX - 1);
    if (!object.contains(QLatin1String("first")) || !object.contains(QLatin1String("last")))
        fail(QStringLiteral("needs \"first\" and \"last\" addresses"));
    else if (entry->last < entry->first)
        fail(QStringLiteral("\"last\" is below \"first\""));
    entry->unit = integer("unit", 1, 0, 255);
    // 248 ... 254 are reserved: libmodbus refuses them, and the request would go to the unit before.
    if (entry->unit > 247 && entry->unit < 255)
        fail(QStringLiteral("\"unit\" %1 is no Modbus/TCP unit (0 ... 247, or 255)").arg(entry->unit));
    const int table = indexOf(TableNames, object.value(QLatin1String("table")).toString());
    if (table < 0)
        fail(QStringLiteral("\"table\" must be coils, discreteInputs, holding or input"));
    entry->table = Table(std::max(table, 0));
    const bool bitTable = entry->table == Coils || entry->table == DiscreteInputs;
    if (table >= 0 && bitTable != (entry->kind == PlcBit))
        fail(entry->kind == PlcBit ? QStringLiteral("PLC bits live in coils or discrete inputs")
                                   : QStringLiteral("words and bits of words live in holding or input registers"));
    entry->start = integer("start", 0, 0, ModbusAddresses - 1);
    entry->registers = integer("registers", 2, 1, 2);
    const QString order = object.value(QLatin1String("wordOrder")).toString(QStringLiteral("highFirst"));
    if (order != QLatin1String("highFirst") && order != QLatin1String("lowFirst"))
        fail(QStringLiteral("\"wordOrder\" must be highFirst or lowFirst"));
    entry->highWordFirst = order != QLatin1String("lowFirst");
    if (m_errors.size() == before && qint64(entry->start) + entry->span() > ModbusAddresses)
        fail(QStringLiteral("%1 addresses from %2 run past the device's last address 65535").arg(entry->span()).arg(entry->start));
    return m_errors.size() == before;
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
            } else if (a.unit == b.unit && a.table == b.table && (a.kind == WordBit) == (b.kind == WordBit)
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
