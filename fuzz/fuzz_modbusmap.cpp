// Feeds arbitrary bytes to the Modbus map a panel builder writes: parsed, and when it reads, every
// entry's first and last variable looked up and planned as one poll within its device's read limits,
// and a word written and read back through the entry's type.
#include "modbusmap.h"
#include "modbusplan.h"

#include <QByteArray>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    ModbusMap map;
    if (!map.parse(QByteArray(reinterpret_cast<const char *>(data), int(size)))) {
        if (map.errors().isEmpty() || !map.entries().isEmpty())
            std::abort();
        return 0;
    }
    QVector<ModbusPlan::Piece> pieces;
    for (const ModbusMap::Entry &e : map.entries()) {
        if (e.device < 0 || e.device >= map.devices().size() || !map.devices().at(e.device).validUnit(e.unit))
            std::abort();
        QVector<quint16> registers;
        QString why;
        const qint32 word = e.type == ModbusMap::Int32 ? qint32(0x80017ffe) : e.type == ModbusMap::Int16 ? -2 : 65534;
        if (e.kind != ModbusMap::PlcBit && (!e.encode(word, &registers, &why) || registers.size() != e.registers
                                            || e.decode(registers.constData()) != word))
            std::abort();
        for (int address : {e.first, e.last}) {
            if (map.find(e.comId, e.channel, e.kind, e.area, address) != &e)
                std::abort(); // entries never overlap, so the lookup finds this one
            pieces << ModbusPlan::pieceOf(e, address);
        }
    }
    QVector<ModbusPlan::Place> places;
    const QVector<ModbusRequest> plan = ModbusPlan::build(map, pieces, &places);
    for (int i = 0; i < pieces.size(); ++i) {
        const ModbusRequest &r = plan.at(places.at(i).request);
        if (r.start + places.at(i).offset != pieces.at(i).start || places.at(i).offset + pieces.at(i).count > r.count
            || r.start + r.count > 65536)
            std::abort();
        const ModbusMap::Device &device = map.devices().at(r.device);
        const bool bits = r.table == ModbusMap::Coils || r.table == ModbusMap::DiscreteInputs;
        if (r.count > (bits ? device.maxBits : device.maxRegisters) && r.count > pieces.at(i).count)
            std::abort();
    }
    return 0;
}
