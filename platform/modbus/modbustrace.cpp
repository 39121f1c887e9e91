#include "modbustrace.h"

#include <QDateTime>
#include <QMutexLocker>

bool ModbusTrace::open(const QString &fileName)
{
    m_file.setFileName(fileName);
    return m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text);
}

void ModbusTrace::record(const QString &device, int unit, int function, int address, int count, const QString &result,
                         double milliseconds)
{
    const QString line = QStringLiteral("%1 device=%2 unit=%3 fc=%4 address=%5 count=%6 result=%7 ms=%8\n")
                             .arg(QDateTime::currentDateTime().toString(Qt::ISODateWithMs), device)
                             .arg(unit)
                             .arg(function)
                             .arg(address)
                             .arg(count)
                             .arg(result)
                             .arg(milliseconds, 0, 'f', 1);
    QMutexLocker lock(&m_mutex);
    if (m_full || !m_file.isOpen())
        return;
    if (m_file.size() > MaxBytes) {
        m_file.write("trace stopped: the file is full\n");
        m_full = true;
    } else {
        m_file.write(line.toUtf8());
    }
    m_file.flush();
}
