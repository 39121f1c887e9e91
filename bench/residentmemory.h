#ifndef RESIDENTMEMORY_H
#define RESIDENTMEMORY_H

#include <QFile>

// The process's resident memory in KiB as the kernel counts it, or -1.
inline qint64 residentKiB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toLongLong();
    }
    return -1;
}

#endif
