#include "regularfile.h"

#include <QCoreApplication>
#include <QFileInfo>

bool RegularFile::open(OpenMode mode)
{
    const QString why = refusal(fileName(), mode);
    if (!why.isEmpty()) {
        setErrorString(why);
        return false;
    }
    return QFile::open(mode);
}

QString RegularFile::refusal(const QString &path, OpenMode mode)
{
    const QFileInfo info(path);
    // Links are followed: what counts is the file that would be opened.
    if (!info.exists())
        return mode & WriteOnly ? QString() : QCoreApplication::translate("RegularFile", "No such file");
    if (!info.isFile())
        return QCoreApplication::translate("RegularFile", "Not a regular file");
    return QString();
}
