#ifndef MODBUSMAP_H
#define MODBUSMAP_H

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVector>

class QJsonObject;

// Where the controller variables of a panel live on Modbus devices, as a panel builder writes it in a
// JSON file:
//   {"devices": [{"name": "plc", "host": "192.168.0.10", "port": 502, "unit": 1},
//                {"name": "drives", "serial": "/dev/ttyUSB0", "baud": 19200, "parity": "even"}],
//    "entries": [{"device": "plc", "channel": 1, "dataClass": "User", "first": 0, "last": 99,
//                 "table": "holding", "start": 0, "type": "int32", "wordOrder": "highFirst"},
//                {"device": "drives", "bitType": "I_BIT", "first": 0, "last": 63, "unit": 2,
//                 "table": "discreteInputs", "start": 0}]}
// Without "devices" the map has one device whose address the command line gives (--modbus HOST:PORT).
// A data class's words are holding or input registers of a "type": int16, uint16 (one register) or
// int32 (two, in "wordOrder" highFirst (default) or lowFirst); "byteSwap" swaps the two bytes of each
// register. The PLC bit areas (I_BIT ... Tm_BIT) are coils or discrete inputs, one per bit address. The
// bit types that are bits of words (User_BIT ... Com_BIT) are registers like words, the bit index
// counting from the lowest bit of the word. "link" defaults to 0 and "channel" (1-based, as in the
// widgets' properties) to 1.
class ModbusMap
{
public:
    enum Table { Coils, DiscreteInputs, HoldingRegisters, InputRegisters };
    enum Kind { Word, PlcBit, WordBit };
    enum Type { Int16, UInt16, Int32 };
    // How one bit of a register is written: function 22, or a read and a write (not atomic on the
    // device), or function 22 until the device says it has none.
    enum MaskWrite { MaskFc22, ReadModifyWrite, MaskAuto };

    struct Device
    {
        QString name; // empty for the one device of a map without "devices"
        bool serial = false;
        QString host;
        int port = 502;
        QString serialPort;
        int baud = 19200;
        char parity = 'E';
        int dataBits = 8;
        int stopBits = 1;
        int unit = 1; // of the entries that name none
        int maxRegisters = 125; // per read
        int maxBits = 2000;
        int timeoutMs = 1000;
        int retries = 1; // of a read that got no answer; a write is never sent twice
        int downAfter = 3; // failed requests in a row that take the link down
        MaskWrite maskWrite = MaskAuto;

        // "192.168.0.10:502" or "/dev/ttyUSB0 19200 8E1"
        QString address() const;
        // "device plc (192.168.0.10:502)", or the address alone for a map without devices
        QString describe() const;
        bool validUnit(int unit) const { return serial ? unit >= 1 && unit <= 247 : (unit >= 0 && unit <= 247) || unit == 255; }
    };

    struct Entry
    {
        int number = 0; // 1-based, as the panel builder counts the file's entries
        int device = 0; // index in devices()
        int comId = 0;
        int channel = 0; // 0-based
        Kind kind = Word;
        int area = 0; // data class or bit type
        int first = 0;
        int last = 0;
        int unit = 1;
        Table table = HoldingRegisters;
        int start = 0;
        Type type = Int32;
        int registers = 2; // per word: 1 for the 16-bit types
        bool highWordFirst = true;
        bool byteSwap = false;

        // "entry 3 (link 0, channel 1, User words 0 ... 99)"
        QString describe() const;
        // Registers (or coils) the entry's variables take on the device; of a map being read, up to twice
        // the int range.
        qint64 span() const { return (qint64(last) - first + 1) * (kind == PlcBit ? 1 : registers); }
        bool writable() const { return table == Coils || table == HoldingRegisters; }
        // The word held by registers (as read from the device, this entry's registers of one word).
        qint32 decode(const quint16 *registers) const;
        // The registers that hold value, or false with the reason when the type cannot hold it.
        bool encode(qint32 value, QVector<quint16> *registers, QString *why) const;
        // The register of a word holding bit bitIndex, and the bit's mask in it as sent to the device.
        int registerOfBit(int bitIndex) const;
        quint16 maskOfBit(int bitIndex) const;
    };

    static constexpr int MaxEntries = 10000;
    static constexpr int MaxDevices = 64;
    static constexpr qint64 MaxFileBytes = 4 * 1024 * 1024;

    // False, with errors() naming the entries, for a map that cannot be used whole.
    bool parse(const QByteArray &json);
    bool readFile(const QString &fileName);
    const QStringList &errors() const { return m_errors; }
    const QList<Entry> &entries() const { return m_entries; }
    const QList<Device> &devices() const { return m_devices; }
    // Whether the file named its devices; if not, setAddress() gives the one device's.
    bool namesDevices() const { return m_namesDevices; }
    void setAddress(const QString &host, int port);

    // The entry holding a variable, or null.
    const Entry *find(int comId, int channel, Kind kind, int area, int address) const;
    static Kind kindOfBitType(int bitType);
    // "link 0, channel 1, User word 100" as the messages name a variable.
    static QString describeVariable(int comId, int channel, int dataClass, int bitType, int address, int bitIndex);
    static QString tableName(Table table);

private:
    bool readDevices(const QJsonObject &document);
    bool readDevice(int number, const QJsonObject &object, Device *device);
    bool readEntry(int number, const QJsonObject &object, Entry *entry);
    void checkOverlaps();

    QList<Device> m_devices;
    QList<Entry> m_entries;
    QStringList m_errors;
    bool m_namesDevices = false;
};

#endif
