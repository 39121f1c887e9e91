#ifndef TABLECELLS_H
#define TABLECELLS_H

#include "cellspans.h"

#include <QString>
#include <QVector>

// The contents of a parameter table as the cell file and the form hold them: the two texts of every
// cell and column header, the column count, and the merged cells. Rows and the header list keep no
// trailing empty items, so two equal tables compare equal however they were written.
struct TableCells
{
    // A cell or header item: its display text and its what's-this text (binding and sections).
    struct Item
    {
        QString text;
        QString whatsThis;
        bool isEmpty() const { return text.isEmpty() && whatsThis.isEmpty(); }
        bool operator==(const Item &o) const { return text == o.text && whatsThis == o.whatsThis; }
        bool operator!=(const Item &o) const { return !(*this == o); }
    };
    using Row = QVector<Item>;

    QVector<Row> rows;
    int columnCount = 0;
    QVector<Item> headers;
    QList<CellSpans::Span> spans;

    // Drops the empty items at the end of a row or header list.
    static void trim(QVector<Item> *items)
    {
        while (!items->isEmpty() && items->constLast().isEmpty())
            items->removeLast();
    }

    bool operator==(const TableCells &o) const
    {
        return rows == o.rows && columnCount == o.columnCount && headers == o.headers && spans == o.spans;
    }
    bool operator!=(const TableCells &o) const { return !(*this == o); }
};

#endif
