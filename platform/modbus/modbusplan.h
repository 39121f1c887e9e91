#ifndef MODBUSPLAN_H
#define MODBUSPLAN_H

#include "modbuslink.h"
#include "modbusmap.h"

#include <QVector>

// The reads that fetch a set of variables: the registers (or coils) each variable takes, merged into
// as few requests as the map allows. Two pieces join when they touch, or when the gap between them
// lies inside one map entry (the panel builder has said those addresses exist), up to the most one
// request may read.
class ModbusPlan
{
public:
    // Where a variable finds its registers: a request and the offset in its answer.
    struct Place
    {
        int request = -1;
        int offset = 0;
    };
    struct Piece
    {
        const ModbusMap::Entry *entry = nullptr;
        int start = 0; // on the device
        int count = 1;
    };

    // The device registers of a variable at address within entry.
    static Piece pieceOf(const ModbusMap::Entry &entry, int address);
    // Requests for the pieces; places[i] is where pieces[i] is read.
    static QVector<ModbusRequest> build(const ModbusMap &map, const QVector<Piece> &pieces, QVector<Place> *places);
};

#endif
