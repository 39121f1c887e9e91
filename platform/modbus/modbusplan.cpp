#include "modbusplan.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace {

bool bitTable(ModbusMap::Table table)
{
    return table == ModbusMap::Coils || table == ModbusMap::DiscreteInputs;
}

// Whether one entry of the unit's table spans every address from first to last.
bool covered(const ModbusMap &map, int device, int unit, ModbusMap::Table table, int first, int last)
{
    for (const ModbusMap::Entry &e : map.entries()) {
        if (e.device == device && e.unit == unit && e.table == table && e.start <= first && e.start + e.span() - 1 >= last)
            return true;
    }
    return false;
}

} // namespace

ModbusPlan::Piece ModbusPlan::pieceOf(const ModbusMap::Entry &entry, int address)
{
    Piece piece;
    piece.entry = &entry;
    const int width = entry.kind == ModbusMap::PlcBit ? 1 : entry.registers;
    piece.start = entry.start + (address - entry.first) * width;
    piece.count = width;
    return piece;
}

QVector<ModbusRequest> ModbusPlan::build(const ModbusMap &map, const QVector<Piece> &pieces, QVector<Place> *places)
{
    places->fill(Place(), pieces.size());
    QVector<int> order(pieces.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](int a, int b) {
        const Piece &p = pieces.at(a), &q = pieces.at(b);
        return std::make_tuple(p.entry->device, p.entry->unit, int(p.entry->table), p.start)
               < std::make_tuple(q.entry->device, q.entry->unit, int(q.entry->table), q.start);
    });
    QVector<ModbusRequest> requests;
    for (int i : order) {
        const Piece &p = pieces.at(i);
        const ModbusMap::Device &device = map.devices().at(p.entry->device);
        const int limit = bitTable(p.entry->table) ? device.maxBits : device.maxRegisters;
        bool joined = false;
        if (!requests.isEmpty()) {
            ModbusRequest &r = requests.last();
            const int end = r.start + r.count; // first address after the request
            const int newEnd = std::max(end, p.start + p.count);
            joined = r.device == p.entry->device && r.unit == p.entry->unit && r.table == p.entry->table && newEnd - r.start <= limit
                     && (p.start <= end || covered(map, r.device, r.unit, r.table, end, p.start - 1));
            if (joined)
                r.count = newEnd - r.start;
        }
        if (!joined)
            requests.append({p.entry->device, p.entry->unit, p.entry->table, p.start, p.count});
        (*places)[i] = {int(requests.size()) - 1, p.start - requests.last().start};
    }
    return requests;
}
