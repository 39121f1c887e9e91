#ifndef MODBUSTESTSERVER_H
#define MODBUSTESTSERVER_H

#include <QProcess>
#include <QStringList>

// The pymodbus server of modbusserver.py on 127.0.0.1 (a free port unless one is given), driven through
// its commands.
class ModbusTestServer
{
public:
    explicit ModbusTestServer(bool garbage = false, int port = 0) : m_garbage(garbage), m_port(port) {}
    ~ModbusTestServer();

    // False when it did not start listening within a few seconds.
    bool start();
    int port() const { return m_port; }
    // One command; its answer's lines.
    QStringList command(const QString &line);
    QList<int> get(const QString &table, int unit, int address, int count);
    // Every request served so far: "fc unit address count".
    QStringList log() { return command(QStringLiteral("log")); }

private:
    QStringList answer(bool multiLine, int milliseconds);
    QProcess m_process;
    bool m_garbage;
    int m_port;
};

#endif
