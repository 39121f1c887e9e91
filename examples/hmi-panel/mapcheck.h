#ifndef MAPCHECK_H
#define MAPCHECK_H

#include "formfinding.h"
#include "formvariables.h"
#include "modbusmap.h"
#include "widgetpropertycheck.h"

#include <QStringList>

// A form's variables against the map of a Modbus device, as the panel would meet them there: a
// variable the map lacks (shown veiled, written never), a bit past the width of its word, and a
// write the device's read-only tables would refuse.
class MapCheck
{
public:
    explicit MapCheck(const ModbusMap &map) : m_map(map) {}
    void check(const FormWidget &widget, const FormVariable &variable, QList<FormFinding> *findings) const;
    // Whether the map has no entry for the variable: the panel does not run such a form on the link.
    bool lacks(const FormVariable &variable) const { return !entry(variable); }
    // The variables of the form file that the map lacks, as findings ("FILE:LINE: ..."); none for a
    // file that is not a readable form (the loader says why).
    QStringList lacking(const QString &fileName, const WidgetPropertyCheck::Context &context) const;

private:
    const ModbusMap::Entry *entry(const FormVariable &variable) const;

    ModbusMap m_map;
};

#endif
