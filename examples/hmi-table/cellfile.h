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
    // What a screen of a panel can page through; a table of more is not a parameter list. These
    // bounds keep writing a form well under a few hundred megabytes and seconds.
    static constexpr int MaxRows = 100000;
    static constexpr int MaxColumns = TableContents::MaxColumns;
    // Rows x columns. A cell takes a few hundred bytes here while it is stored; this keeps a file
    // of tabs or of one-letter cells under a few hundred megabytes.
    static constexpr qint64 MaxCells = 500000;
    static constexpr qint64 MaxFileBytes = 16 * 1024 * 1024;

    // Pure: the whole file in, the table or the first problem (with its line) out.
    static bool parse(const QByteArray &text, TableCells *table, Problem *problem);
    // The file for a table, read back by parse() as the same table. A header that holds more than
    // labels and a width is written as its label alone, with a note saying so.
    static QByteArray format(const TableCells &table, QStringList *notes = nullptr);
};

#endif
