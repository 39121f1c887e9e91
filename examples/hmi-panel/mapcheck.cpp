#include "mapcheck.h"

#include "formchecker.h"

const ModbusMap::Entry *MapCheck::entry(const FormVariable &v) const
{
    const ModbusMap::Kind kind = v.bitType >= 0 ? ModbusMap::kindOfBitType(v.bitType) : ModbusMap::Word;
    return m_map.find(v.comId, v.channel, kind, v.bitType >= 0 ? v.bitType : v.dataClass, v.address);
}

void MapCheck::check(const FormWidget &widget, const FormVariable &v, QList<FormFinding> *findings) const
{
    const QString name = ModbusMap::describeVariable(v.comId, v.channel, v.dataClass, v.bitType, v.address, v.bitIndex);
    const QString use = v.writes ? QStringLiteral("writes") : QStringLiteral("shows");
    const ModbusMap::Kind kind = v.bitType >= 0 ? ModbusMap::kindOfBitType(v.bitType) : ModbusMap::Word;
    const ModbusMap::Entry *entry = this->entry(v);
    const auto report = [&](const QString &message) {
        findings->append(FormFinding::about(widget, v.line, message, v.property));
    };
    if (!entry) {
        report(QStringLiteral("%1 %2, which the map has no entry for").arg(use, name));
        return;
    }
    const int bits = 16 * entry->registers;
    if (kind == ModbusMap::WordBit && v.bitIndex >= bits)
        report(QStringLiteral("%1 %2, past the %3 bits of its word in %4").arg(use, name).arg(bits).arg(entry->describe()));
    if (v.writes && !entry->writable())
        report(QStringLiteral("writes %1, which %2 puts in read-only %3")
                   .arg(name, entry->describe(),
                        kind == ModbusMap::PlcBit ? QStringLiteral("discrete inputs") : QStringLiteral("input registers")));
}

QStringList MapCheck::lacking(const QString &fileName, const WidgetPropertyCheck::Context &context) const
{
    QStringList lines;
    FormChecker checker(context, [&](const FormWidget &widget, const FormVariable &variable, QList<FormFinding> *) {
        if (!lacks(variable))
            return;
        QList<FormFinding> found;
        check(widget, variable, &found);
        for (FormFinding &finding : found) {
            finding.file = fileName;
            lines << finding.toString();
        }
    });
    QList<FormFinding> others; // the reload reports them only for a form it cannot load
    checker.checkFile(fileName, &others);
    return lines;
}
