#include "filestamp.h"

#include <QDateTime>
#include <QFileInfo>

FileStamp FileStamp::of(const QString &file)
{
    const QFileInfo info(file);
    if (file.isEmpty() || !info.exists())
        return {};
    return {true, info.size(), info.lastModified().toMSecsSinceEpoch()};
}
