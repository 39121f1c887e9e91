#ifndef MAPCHECK_H
#define MAPCHECK_H

#include "formfinding.h"
#include "formvariables.h"
#include "modbusmap.h"

// A form's variables against the map of a Modbus device, as the panel would meet them there: a
// variable the map lacks (shown veiled, written never), a bit past the width of its word, and a
// write the device's read-only tables would refuse.
class MapCheck
{
public:
    explicit MapCheck(const ModbusMap &map) : m_map(map) {}
    void check(const FormWidget &widget, const FormVariable &variable, QList<FormFinding> *findings) const;

private:
    ModbusMap m_map;
};

#endif
