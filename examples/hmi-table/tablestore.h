#ifndef TABLESTORE_H
#define TABLESTORE_H

#include "storedtable.h"
#include "tablecells.h"

#include <QStringList>

// Converts between a table's cells and the properties its form stores them in, through the table's
// own codecs (TableContents for "data", CellSpans for "mergeCells").
class TableStore
{
public:
    // False when the stored table would be larger than a panel reads. Headers become one <column>
    // per column when any is labelled, none otherwise.
    static bool store(const TableCells &cells, StoredTable *stored, QString *error);
    // The size comes from the stored data (none: no rows); the size properties are not consulted.
    // False when the data or the merged cells cannot be read whole. Notes say what the cell file
    // leaves out (roles other than the text and the binding).
    static bool load(const StoredTable &stored, TableCells *cells, QString *error, QStringList *notes);
};

#endif
