#ifndef FILESTAMP_H
#define FILESTAMP_H

#include <QString>
#include <QtGlobal>

// What tells an editor's save of a file: whether it is there, its size and its time. A changed stamp
// means the file is to be read again.
struct FileStamp
{
    bool exists = false;
    qint64 size = -1;
    qint64 modified = 0; // ms since the epoch

    static FileStamp of(const QString &file);
    bool operator==(const FileStamp &o) const { return exists == o.exists && size == o.size && modified == o.modified; }
    bool operator!=(const FileStamp &o) const { return !(*this == o); }
};

#endif
