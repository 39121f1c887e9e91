#include "modbustestserver.h"

#include <QElapsedTimer>

ModbusTestServer::~ModbusTestServer()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished(5000);
}

bool ModbusTestServer::start()
{
    QStringList arguments{QStringLiteral(HMI_MODBUS_SERVER), QString::number(m_port)};
    if (m_garbage)
        arguments << QStringLiteral("--garbage");
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(HMI_PYTHON), arguments);
    if (!m_process.waitForStarted(5000))
        return false;
    // It says where it listens once it accepts connections.
    const QStringList words = answer(false, 10000).value(0).split(QLatin1Char(' '));
    if (words.value(0) != QLatin1String("listening"))
        return false;
    m_port = words.value(1).toInt();
    return true;
}

QStringList ModbusTestServer::command(const QString &line)
{
    m_process.write(line.toUtf8() + '\n');
    return answer(line == QLatin1String("log"), 5000);
}

// One line, or the lines up to "end".
QStringList ModbusTestServer::answer(bool multiLine, int milliseconds)
{
    QStringList lines;
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < milliseconds && m_process.state() == QProcess::Running) {
        while (m_process.canReadLine()) {
            const QString line = QString::fromUtf8(m_process.readLine()).trimmed();
            if (!multiLine)
                return {line};
            if (line == QLatin1String("end"))
                return lines;
            lines << line;
        }
        m_process.waitForReadyRead(100);
    }
    return lines;
}

QList<int> ModbusTestServer::get(const QString &table, int unit, int address, int count)
{
    QList<int> values;
    const QStringList answer = command(QStringLiteral("get %1 %2 %3 %4").arg(table).arg(unit).arg(address).arg(count));
    for (const QString &v : answer.value(0).split(QLatin1Char(' '), Qt::SkipEmptyParts))
        values << v.toInt();
    return values;
}
