#ifndef MODBUSTESTSERVER_H
#define MODBUSTESTSERVER_H

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

// The pymodbus server of modbusserver.py on 127.0.0.1 (a free port unless one is given), or on one end of
// a socat pseudo-terminal pair (startSerial(); the panel uses serialPort()), driven through its commands.
class ModbusTestServer
{
public:
    explicit ModbusTestServer(bool garbage = false, int port = 0) : m_garbage(garbage), m_port(port) {}
    ~ModbusTestServer();

    // False when it did not start listening within a few seconds.
    bool start();
    // Modbus RTU on a pseudo-terminal pair; false when either end did not come up.
    bool startSerial();
    int port() const { return m_port; }
    // The panel's end of the serial line.
    QString serialPort() const { return m_dir ? m_dir->filePath(QStringLiteral("panel")) : QString(); }
    // One command; its answer's lines.
    QStringList command(const QString &line);
    // A behaviour switched on ("nofc22", "late 1 500", ...) or all off ("behave normal"): true when taken.
    bool behave(const QString &line) { return command(line) == QStringList{QStringLiteral("ok")}; }
    QList<int> get(const QString &table, int unit, int address, int count);
    // Every request that reached a unit: "fc unit address count", then why when not answered as usual.
    QStringList log() { return command(QStringLiteral("log")); }

private:
    bool startServer(const QStringList &arguments);
    QStringList answer(bool multiLine, int milliseconds);
    QProcess m_process;
    QProcess m_socat;
    std::unique_ptr<QTemporaryDir> m_dir;
    bool m_garbage;
    int m_port;
};

#endif
