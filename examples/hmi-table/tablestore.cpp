#include "tablestore.h"

#include "cellfile.h"
#include "tablecontents.h"

#include <QTableWidgetItem>

#include <algorithm>
#include <memory>
#include <vector>

bool TableStore::store(const TableCells &cells, StoredTable *stored, QString *error)
{
    *stored = StoredTable();
    std::vector<std::unique_ptr<QTableWidgetItem>> owned;
    QList<QList<const QTableWidgetItem *>> grid;
    grid.reserve(cells.rows.size());
    for (const TableCells::Row &row : cells.rows) {
        QList<const QTableWidgetItem *> items;
        items.reserve(row.size());
        for (const TableCells::Item &cell : row) {
            if (cell.isEmpty()) {
                items.append(nullptr); // written as an item without roles
                continue;
            }
            auto item = std::make_unique<QTableWidgetItem>();
            if (!cell.text.isEmpty())
                item->setText(cell.text);
            if (!cell.whatsThis.isEmpty())
                item->setData(Qt::WhatsThisRole, cell.whatsThis);
            items.append(item.get());
            owned.push_back(std::move(item));
        }
        grid.append(items);
    }
    const int rows = int(cells.rows.size());
    const int columns = std::max(cells.columnCount, int(cells.headers.size()));
    stored->data = TableContents::encode(rows, columns, grid);
    owned.clear();
    // The reader's own limits decide, so that no form is written that a panel then refuses.
    TableContents check;
    if (!check.load(stored->data)) {
        *error = QStringLiteral("the table would take more than a panel reads stored (%1 MiB)")
                     .arg(TableContents::ExpansionLimit / (1024 * 1024));
        *stored = StoredTable();
        return false;
    }
    stored->rowCount = rows;
    stored->columnCount = columns;
    if (!cells.spans.isEmpty())
        stored->mergeCells = CellSpans::encode(cells.spans);
    const bool labelled = std::any_of(cells.headers.cbegin(), cells.headers.cend(),
                                      [](const TableCells::Item &h) { return !h.isEmpty(); });
    if (labelled) {
        for (int c = 0; c < columns; ++c)
            stored->columns.append(cells.headers.value(c));
    }
    return true;
}

bool TableStore::load(const StoredTable &stored, TableCells *cells, QString *error, QStringList *notes)
{
    *cells = TableCells();
    TableContents contents;
    if (!stored.data.isEmpty() && !contents.load(stored.data)) {
        *error = QStringLiteral("its data is not a stored table a panel can read");
        return false;
    }
    if (qint64(contents.rowCount()) * contents.columnCount() > CellFile::MaxCells) {
        *error = QStringLiteral("it has more than the %1 cells (rows x columns) a cell file holds").arg(CellFile::MaxCells);
        return false;
    }
    int richer = 0;
    QList<TableContents::Roles> roles;
    cells->rows.reserve(contents.rowCount());
    for (int r = 0; r < contents.rowCount(); ++r) {
        if (!contents.readRow(r, contents.columnCount(), &roles)) {
            *error = QStringLiteral("its data breaks off at row %1 of %2").arg(r + 1).arg(contents.rowCount());
            *cells = TableCells();
            return false;
        }
        TableCells::Row row;
        row.reserve(roles.size());
        for (const TableContents::Roles &cell : roles) {
            TableCells::Item item;
            bool other = false;
            for (const auto &[role, value] : cell) {
                if (role == Qt::DisplayRole)
                    item.text = value.toString();
                else if (role == Qt::WhatsThisRole)
                    item.whatsThis = value.toString();
                else
                    other = true;
            }
            richer += other;
            row.append(item);
        }
        TableCells::trim(&row);
        cells->rows.append(row);
    }
    cells->columnCount = std::max(contents.columnCount(), int(stored.columns.size()));
    cells->headers = stored.columns;
    TableCells::trim(&cells->headers);
    if (!CellSpans::decode(stored.mergeCells, &cells->spans)) {
        *error = QStringLiteral("its merged cells (mergeCells) are not readable");
        *cells = TableCells();
        return false;
    }
    if (richer > 0 && notes)
        *notes << QStringLiteral("%1 cells hold more than a text and a binding (flags, fonts, colours...); "
                                 "the cell file keeps only those two")
                      .arg(richer);
    return true;
}
