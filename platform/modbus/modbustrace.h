#ifndef MODBUSTRACE_H
#define MODBUSTRACE_H

#include <QFile>
#include <QMutex>
#include <QString>

// One line per Modbus request, from every device's thread, for commissioning:
//   2026-11-26T05:40:01.123 device=plc unit=1 fc=3 address=100 count=64 result=ok ms=2.1
// Stops writing, with a last line saying so, when the file reaches MaxBytes.
class ModbusTrace
{
public:
    static constexpr qint64 MaxBytes = 256 * 1024 * 1024;

    // False with errorString() when the file cannot be written.
    bool open(const QString &fileName);
    QString errorString() const { return m_file.errorString(); }
    void record(const QString &device, int unit, int function, int address, int count, const QString &result,
                double milliseconds);

private:
    QMutex m_mutex;
    QFile m_file;
    bool m_full = false;
};

#endif
