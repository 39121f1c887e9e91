#include "modbustestserver.h"

#include <QElapsedTimer>

ModbusTestServer::~ModbusTestServer()
{
    for (QProcess *process : {&m_process, &m_socat}) {
        process->kill();
        process->waitForFinished(5000);
    }
}

bool ModbusTestServer::start()
{
    QStringList arguments{QString::number(m_port)};
    if (m_garbage)
        arguments << QStringLiteral("--garbage");
    return startServer(arguments);
}

bool ModbusTestServer::startSerial()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_socat.setProcessChannelMode(QProcess::MergedChannels);
    const QString pty = QStringLiteral("pty,raw,echo=0,link=") + m_dir->path();
    m_socat.start(QStringLiteral("socat"), {QStringLiteral("-d"), QStringLiteral("-d"), pty + QStringLiteral("/server"),
                                            pty + QStringLiteral("/panel")});
    // Both links exist once it says it relays.
    const QByteArray relaying("starting data transfer loop");
    QByteArray said;
    while (!said.contains(relaying) && m_socat.waitForReadyRead(5000))
        said += m_socat.readAll();
    return said.contains(relaying) && startServer({QStringLiteral("--serial"), m_dir->filePath(QStringLiteral("server"))});
}

bool ModbusTestServer::startServer(const QStringList &arguments)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(HMI_PYTHON), QStringList{QStringLiteral(HMI_MODBUS_SERVER)} + arguments);
    if (!m_process.waitForStarted(5000))
        return false;
    // It says where it serves once it does.
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
