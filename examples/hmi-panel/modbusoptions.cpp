#include "modbusoptions.h"

#include "modbuscontroller.h"
#include "modbusmap.h"
#include "modbustrace.h"

#include <QCommandLineParser>

void ModbusOptions::addTo(QCommandLineParser &parser)
{
    parser.addOptions({m_modbus, map, m_poll, m_trace});
}

bool ModbusOptions::wanted(const QCommandLineParser &parser) const
{
    return parser.isSet(m_modbus) || parser.isSet(map);
}

std::unique_ptr<ModbusController> ModbusOptions::start(const QCommandLineParser &parser, QString *error) const
{
    bool pollOk = false;
    const int poll = parser.value(m_poll).toInt(&pollOk);
    if (!pollOk || poll < 10) {
        *error = QStringLiteral("--poll wants a whole number of milliseconds from 10 up, not %1").arg(parser.value(m_poll));
        return nullptr;
    }
    ModbusMap modbusMap;
    if (!parser.isSet(map)) {
        *error = QStringLiteral("--modbus needs --map MAP.json");
        return nullptr;
    }
    if (!modbusMap.readFile(parser.value(map))) {
        *error = modbusMap.errors().join(QLatin1Char('\n'));
        return nullptr;
    }
    if (parser.isSet(m_modbus) == modbusMap.namesDevices()) {
        *error = modbusMap.namesDevices()
                     ? QStringLiteral("%1 names its devices: --modbus is for a map without a \"devices\" list").arg(parser.value(map))
                     : QStringLiteral("%1 names no devices: give the device with --modbus HOST:PORT").arg(parser.value(map));
        return nullptr;
    }
    if (parser.isSet(m_modbus)) {
        const QString target = parser.value(m_modbus);
        const int colon = int(target.lastIndexOf(QLatin1Char(':')));
        bool portOk = false;
        const int port = target.mid(colon + 1).toInt(&portOk);
        if (colon <= 0 || !portOk || port <= 0 || port > 65535) {
            *error = QStringLiteral("--modbus wants HOST:PORT, not %1").arg(target);
            return nullptr;
        }
        modbusMap.setAddress(target.left(colon), port);
    }
    std::shared_ptr<ModbusTrace> trace;
    if (parser.isSet(m_trace)) {
        trace = std::make_shared<ModbusTrace>();
        if (!trace->open(parser.value(m_trace))) {
            *error = QStringLiteral("--trace %1: %2").arg(parser.value(m_trace), trace->errorString());
            return nullptr;
        }
    }
    auto controller = std::make_unique<ModbusController>(modbusMap);
    controller->setPollPeriod(poll);
    if (trace)
        controller->setTrace(trace);
    return controller;
}
