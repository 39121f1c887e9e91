#ifndef TABLECOMMANDS_H
#define TABLECOMMANDS_H

#include <QString>

// The two things hmi-table does, from file names to exit status. Problems go to standard error as
// "FILE:LINE: message" (or "FILE: message"), notes as "FILE: note: message".
class TableCommands
{
public:
    // A form is at most this large: the table's own data expands to at most 256 MiB, and its hex text
    // is never larger than twice that.
    static constexpr qint64 MaxFormBytes = 1024LL * 1024 * 1024;

    // Puts the cells of cellsFile into the table; outFile empty: the form itself.
    static int write(const QString &formFile, const QString &tableName, const QString &cellsFile,
                     const QString &outFile);
    // Writes the table's cells as a cell file; outFile empty: standard output.
    static int read(const QString &formFile, const QString &tableName, const QString &outFile);
};

#endif
