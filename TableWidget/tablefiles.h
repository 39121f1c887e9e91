#ifndef TABLEFILES_H
#define TABLEFILES_H

#include "hmiwidgets_export.h"

#include <QString>

#include <functional>

class QIODevice;
class QTableWidgetItem;
class TableWidget;
namespace norvo_v0 {
class QeltApp;
}

// Table text files: one line a row, cells separated by tabs, UTF-8. Part c of a line is always column
// c of its row: a cell without item, in a hidden column or covered by a merged cell is an empty part,
// so the parts after it stay in place; a line ends after its last cell written. Saving writes text
// cells as they read (a tab or line break in a text as a blank), value cells as the controller's
// current value (decimal, with the cell's width and decimal places) and bit cells as 0 or 1. Loading
// puts texts into the shown text cells and writes the values of the shown value cells to the variables
// they show, refusing what is not such a value (an empty part writes nothing); bit cells are not
// written. A longer file adds rows, as far as MaxCells; at most MaxBytes of a file are read.
class HMIWIDGETS_EXPORT TableFiles
{
public:
    // A cell of the table, also of rows whose items have not been made: false when there is none.
    using ReadCell = std::function<bool(int row, int column, QString *text, QString *binding)>;
    // The item of a cell after its row has been made, or null.
    using MakeItem = std::function<QTableWidgetItem *(int row, int column)>;

    // Rows x columns a file may grow the table to: far more than any parameter list.
    static constexpr qint64 MaxCells = 500000;
    static constexpr qint64 MaxBytes = 16 * 1024 * 1024;

    TableFiles(TableWidget *table, ReadCell readCell, MakeItem makeItem);

    void save(QIODevice *file, norvo_v0::QeltApp *app) const;
    // Returns the values refused. A file not read whole is told to the operator.
    int load(QIODevice *file, norvo_v0::QeltApp *app, const QString &fileName) const;

    // What a cell holds in a file.
    static QString valueText(double value, int width, int decimals);

private:
    QString cellOutput(const QString &text, const QString &binding, norvo_v0::QeltApp *app) const;
    // Not hidden, and not under another cell of a merged cell.
    bool isShown(int row, int column) const;

    TableWidget *const m_table;
    ReadCell m_readCell;
    MakeItem m_makeItem;
};

#endif
