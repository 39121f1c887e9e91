#include "modbustestserver.h"

#include <QElapsedTimer>
#include <QThread>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

bool accepts(int port)
{
    const int s = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(quint16(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const bool ok = ::connect(s, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0;
    ::close(s);
    return ok;
}

} // namespace

ModbusTestServer::ModbusTestServer(bool garbage, int port)
    : m_garbage(garbage)
    , m_port(port > 0 ? port : freePort())
{
}

ModbusTestServer::~ModbusTestServer()
{
    stop();
}

int ModbusTestServer::freePort()
{
    const int s = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    ::bind(s, reinterpret_cast<sockaddr *>(&address), sizeof address);
    ::getsockname(s, reinterpret_cast<sockaddr *>(&address), &length);
    ::close(s);
    return ntohs(address.sin_port);
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
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 10000) {
        if (accepts(m_port))
            return true;
        if (m_process.state() != QProcess::Running)
            return false;
        QThread::msleep(50);
    }
    return false;
}

void ModbusTestServer::stop()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished(5000);
}

QStringList ModbusTestServer::command(const QString &line)
{
    m_process.write(line.toUtf8() + '\n');
    QStringList lines;
    const bool multiLine = line == QLatin1String("log");
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 5000) {
        while (m_process.canReadLine()) {
            const QString answer = QString::fromUtf8(m_process.readLine()).trimmed();
            if (!multiLine)
                return {answer};
            if (answer == QLatin1String("end"))
                return lines;
            lines << answer;
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
