#ifndef MODBUSMAP_H
#define MODBUSMAP_H

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

class QJsonObject;

// Where the controller variables of a panel live on Modbus devices, as a panel builder writes it in a
// JSON file:
//   {"entries": [{"link": 0, "channel": 1, "dataClass": "User", "first": 0, "last": 99,
//                 "unit": 1, "table": "holding", "start": 0, "registers": 2, "wordOrder": "highFirst"},
//                {"channel": 1, "bitType": "I_BIT", "first": 0, "last": 63,
//                 "unit": 1, "table": "discreteInputs", "start": 0}]}
// A data class's words are holding or input registers, one or two per word ("registers", default 2;
// a pair in "wordOrder" "highFirst" (default) or "lowFirst"). The PLC bit areas (I_BIT ... Tm_BIT) are
// coils or discrete inputs, one per bit address. The bit types that are bits of words (User_BIT ...
// Com_BIT) are registers like words, the bit index counting from the lowest bit of the word. "link"
// defaults to 0 and "channel" (1-based, as in the widgets' properties) to 1.
class ModbusMap
{
public:
    enum Table { Coils, DiscreteInputs, HoldingRegisters, InputRegisters };
    enum Kind { Word, PlcBit, WordBit };

    struct Entry
    {
        int number = 0; // 1-based, as the panel builder counts the file's entries
        int comId = 0;
        int channel = 0; // 0-based
        Kind kind = Word;
        int area = 0; // data class or bit type
        int first = 0;
        int last = 0;
        int unit = 1;
        Table table = HoldingRegisters;
        int start = 0;
        int registers = 2;
        bool highWordFirst = true;

        // "entry 3 (link 0, channel 1, User words 0 ... 99)"
        QString describe() const;
        // Registers (or coils) the entry's variables take on the device; of a map being read, up to twice
        // the int range.
        qint64 span() const { return (qint64(last) - first + 1) * (kind == PlcBit ? 1 : registers); }
        bool writable() const { return table == Coils || table == HoldingRegisters; }
    };

    static constexpr int MaxEntries = 10000;
    static constexpr qint64 MaxFileBytes = 4 * 1024 * 1024;

    // False, with errors() naming the entries, for a map that cannot be used whole.
    bool parse(const QByteArray &json);
    bool readFile(const QString &fileName);
    const QStringList &errors() const { return m_errors; }
    const QList<Entry> &entries() const { return m_entries; }

    // The entry holding a variable, or null.
    const Entry *find(int comId, int channel, Kind kind, int area, int address) const;
    static Kind kindOfBitType(int bitType);
    // "link 0, channel 1, User word 100" as the messages name a variable.
    static QString describeVariable(int comId, int channel, int dataClass, int bitType, int address, int bitIndex);

private:
    bool readEntry(int number, const QJsonObject &object, Entry *entry);
    void checkOverlaps();

    QList<Entry> m_entries;
    QStringList m_errors;
};

#endif
