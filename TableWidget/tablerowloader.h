#ifndef TABLEROWLOADER_H
#define TABLEROWLOADER_H

#include "hmiwidgets_export.h"
#include "tablecontents.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <set>
#include <unordered_map>
#include <vector>

class QTableWidget;
class QTableWidgetItem;
class QTimer;

// Makes the table's items from its stored contents, only for the rows asked for, each once while it
// stays near the screen.
// The first load covers the first screen and two more below it; later loads cover the rows on
// screen with one screen of margin above and two below, wherever the table was scrolled to, so a
// jump to the end of a long list costs what a step near its start costs. Hidden columns are left
// out of the rows made (except for Designer's whole load) until they are shown. Rows far from the
// screen are dropped again; what was set in their cells since they were made (other than values the
// controller shows, read again on return) is kept as role-value pairs and put back when they return.
// Once the first rows are shown, the starts of the others are found while the application is idle,
// a slice at a time, so that a jump to a far row later reads that row alone.
class HMIWIDGETS_EXPORT TableRowLoader
{
public:
    using Prepare = void (*)(QTableWidgetItem *);
    // True for a cell whose display text the controller gives (not kept when its row is dropped).
    using Volatile = std::function<bool(const QTableWidgetItem *)>;

    explicit TableRowLoader(QTableWidget *table);
    ~TableRowLoader();

    // False for contents that cannot be read (then there is nothing to load).
    bool load(const QByteArray &hexText);
    bool isEmpty() const { return m_contents.rowCount() == 0; }
    int loadedRows() const { return m_loadedCount; }
    bool isLoaded(int row) const;

    // Makes the items of the rows around first ... last (the rows on screen).
    void cover(int first, int last);
    // Drops the rows made outside first ... last widened by a few screens, except keep (the current
    // row); returns the rows dropped.
    int release(int first, int last, int keep, const Volatile &isVolatile);
    int keptRows() const { return int(m_kept.size()); }
    // Makes the items of one row (when not made yet), and the cell of column there when it was
    // left out while hidden.
    void makeCell(int row, int column);
    // Makes every row's items, also in hidden columns, each passed to prepare.
    void loadAll(Prepare prepare);
    // A column shown again: the rows made while it was hidden get its items.
    void columnShown(int column);
    // The display and binding texts a cell of a row not made yet has in the stored contents; false
    // (and empty texts) for a made row or a cell the contents do not hold. Searches and files read
    // the whole list this way without making its items.
    bool storedTexts(int row, int column, QString *text, QString *binding);
    // A row inserted by the application: the stored rows after it would no longer line up, so the
    // rest is made now and the new row counts as made.
    void rowInserted(int row);

private:
    void loadRows(int first, int last, Prepare prepare, bool hiddenToo);
    std::unique_ptr<QTableWidgetItem> makeItem(const TableContents::Roles &roles) const;
    void placeItem(int row, int column, const TableContents::Roles &roles, Prepare prepare);
    bool isSkipped(int column) const { return column >= 0 && size_t(column) < m_skipped.size() && m_skipped[size_t(column)]; }
    // Places the missing items of the skipped columns of a made row from its stored cells.
    void placeSkipped(int row, const QList<TableContents::Roles> &cells, int onlyColumn = -1);
    // The stored cells of a row with what was kept of it when it was dropped.
    bool readCells(int row, int columns, QList<TableContents::Roles> *cells);
    void dropRow(int row, const Volatile &isVolatile);
    void indexWhenIdle();

    QTableWidget *const m_table;
    TableContents m_contents;
    std::vector<bool> m_loaded;
    std::vector<bool> m_skipped; // columns left out of made rows while hidden
    int m_storedRow = -1; // the row whose cells are in m_storedCells
    QList<TableContents::Roles> m_storedCells;
    std::set<int> m_made; // the rows in m_loaded, in order, to find the far ones at once
    // By row: per column, the roles set since the row was made (an invalid value: role cleared).
    std::unordered_map<int, QList<TableContents::Roles>> m_kept;
    int m_loadedCount = 0;
    bool m_whole = false; // every row made (after an inserted row)
    bool m_warned = false;
    std::unique_ptr<QTimer> m_indexer;
};

#endif
