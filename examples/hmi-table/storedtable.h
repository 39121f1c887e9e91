#ifndef STOREDTABLE_H
#define STOREDTABLE_H

#include "tablecells.h"

#include <QByteArray>

// A parameter table as its form stores it: the size properties, the hex-text "data" and "mergeCells"
// byte arrays (mergeCells empty for none) and the column header items, one per <column> element.
struct StoredTable
{
    int rowCount = 0;
    int columnCount = 0;
    QByteArray data;
    QByteArray mergeCells;
    QVector<TableCells::Item> columns;
};

#endif
