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

// Table text files: one line a row, cells separated by tabs, UTF-8. Saving writes text cells as they
// read, value cells as the controller's current value (decimal, with the cell's width and decimal
// places) and bit cells as 0 or 1; loading puts texts into text cells and writes value cells'
// values to the controller, refusing what is not such a value, and adds rows for longer files.
class HMIWIDGETS_EXPORT TableFiles
{
public:
    // A cell of the table, also of rows whose items have not been made: false when there is none.
    using ReadCell = std::function<bool(int row, int column, QString *text, QString *binding)>;
    // The item of a cell after its row has been made, or null.
    using MakeItem = std::function<QTableWidgetItem *(int row, int column)>;

    TableFiles(TableWidget *table, ReadCell readCell, MakeItem makeItem);

    void save(QIODevice *file, norvo_v0::QeltApp *app) const;
    // Returns the values refused.
    int load(QIODevice *file, norvo_v0::QeltApp *app, const QString &fileName) const;

    // What a cell holds in a file.
    static QString valueText(double value, int width, int decimals);

private:
    QString cellOutput(const QString &text, const QString &binding, norvo_v0::QeltApp *app) const;

    TableWidget *const m_table;
    ReadCell m_readCell;
    MakeItem m_makeItem;
};

#endif
