#ifndef CELLFILE_H
#define CELLFILE_H

#include "problem.h"
#include "tablecells.h"
#include "tablecontents.h"

#include <QByteArray>
#include <QStringList>

// The text file a panel builder writes a parameter table in: UTF-8, one line per table row, cells
// separated by tabs (see CellField for a field), CR-LF or LF, the last newline optional, a UTF-8 byte
// order mark skipped. Lines starting with "#" are directives or comments:
//   #columns <TAB> header <TAB> ...            column headers: Label|Label2... and {WIDTH} in pixels
//   #span <TAB> row <TAB> column <TAB> rows <TAB> columns   a merged cell, first row and column 0-based
//   #anything else                             a comment
// The table has a row per data line and as many columns as the widest line or the #columns line.
class CellFile
{
public:
    static constexpr int MaxLineBytes = 1024 * 1024;
    static constexpr int MaxRows = TableContents::MaxRows;
    static constexpr int MaxColumns = TableContents::MaxColumns;
    // Rows x columns. An empty cell stores in four bytes but takes a few dozen in memory here; this
    // keeps a file of tabs from taking gigabytes, and is beyond any table a panel shows.
    static constexpr qint64 MaxCells = 16 * 1024 * 1024;
    // A table never stores smaller than its text, and the panel reads no larger stored table.
    static constexpr qint64 MaxFileBytes = TableContents::ExpansionLimit;

    // Pure: the whole file in, the table or the first problem (with its line) out.
    static bool parse(const QByteArray &text, TableCells *table, Problem *problem);
    // The file for a table, read back by parse() as the same table. A header that holds more than
    // labels and a width is written as its label alone, with a note saying so.
    static QByteArray format(const TableCells &table, QStringList *notes = nullptr);
};

#endif
