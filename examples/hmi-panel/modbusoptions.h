#ifndef MODBUSOPTIONS_H
#define MODBUSOPTIONS_H

#include <QCommandLineOption>
#include <QString>

#include <memory>

class ModbusController;
class QCommandLineParser;

// The panel's Modbus options: --map MAP.json alone for a map naming its devices, or with
// --modbus HOST:PORT for a map of one device; --poll MS and --trace FILE.
class ModbusOptions
{
public:
    void addTo(QCommandLineParser &parser);
    bool wanted(const QCommandLineParser &parser) const;
    // The controller on the map's devices, or null with the reasons in *error.
    std::unique_ptr<ModbusController> start(const QCommandLineParser &parser, QString *error) const;

    const QCommandLineOption map{QStringLiteral("map"),
                                 QStringLiteral("Where the form's variables live on Modbus devices (with --check: report "
                                                "variables it lacks, bits past their word, writes to read-only tables)."),
                                 QStringLiteral("MAP.json")};

private:
    const QCommandLineOption m_modbus{QStringLiteral("modbus"),
                                      QStringLiteral("Run the form on the Modbus/TCP device at HOST:PORT instead of the "
                                                     "simulated controller (with a --map that names no devices)."),
                                      QStringLiteral("HOST:PORT")};
    const QCommandLineOption m_poll{QStringLiteral("poll"), QStringLiteral("Poll period in milliseconds (10 up)."),
                                    QStringLiteral("MS"), QStringLiteral("100")};
    const QCommandLineOption m_trace{QStringLiteral("trace"),
                                     QStringLiteral("Write one line per Modbus request to FILE (time, device, unit, "
                                                    "function, address, count, result, milliseconds)."),
                                     QStringLiteral("FILE")};
};

#endif
