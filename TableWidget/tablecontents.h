#ifndef TABLECONTENTS_H
#define TABLECONTENTS_H

#include "hexframe.h"
#include "hexinflater.h"
#include "hmiwidgets_export.h"

#include <QByteArray>
#include <QList>
#include <QVariant>

#include <memory>
#include <utility>

class QTableWidgetItem;

// The stored contents of a parameter table ("data"): hex text of a compressed Qt 4.8 data stream with
// the row count, the column count, then every cell of every row as a QTableWidgetItem (its role-value
// pairs). Inflated only as far as the rows read so far, and read lazily: the start of every row read
// so far is remembered, so reading row r costs the rows between the furthest known start and r, once.
// Only the inflated bytes around the row read last are held; a row read again further back is
// inflated again from the nearest checkpoint before it. Untrusted: counts and lengths are
// checked against the bytes left, only the value types an item can hold are read, and reading stops at
// the first malformed item, keeping the rows before it.
class HMIWIDGETS_EXPORT TableContents
{
public:
    using Roles = QList<std::pair<int, QVariant>>;
    // What a stored table may expand to: a long parameter list is tens of megabytes.
    static constexpr qint64 ExpansionLimit = HexFrame::MaxLayerSize;
    static constexpr int MaxColumns = 10000;
    // Far beyond any parameter list a panel shows, and it keeps the row index small.
    static constexpr int MaxRows = 1000000;
    // The role under which an item's flags are stored.
    static constexpr int FlagsRole = 0x13370551;

    TableContents();
    ~TableContents();
    TableContents(TableContents &&) noexcept;
    TableContents &operator=(TableContents &&) noexcept;

    // False (and empty contents) for an empty, unreadable or malformed header.
    bool load(const QByteArray &hexText, qint64 checkpointSpacing = HexInflater::DefaultCheckpointSpacing);
    bool isEmpty() const;
    int rowCount() const;
    int columnCount() const;
    // The role-value pairs of the cells of row, columns 0 ... min(columns, columnCount()) - 1; the
    // surplus stored columns are skipped so that later rows stay aligned. False past the last row that
    // could be read (the row count, or a malformed item).
    bool readRow(int row, int columns, QList<Roles> *cells);
    // The furthest row whose start is known (-1 before any).
    int knownRows() const;
    // Finds the starts of the rows after the furthest known one, for about bytes of the contents, so
    // that a far row is later read from the checkpoint before it alone. False once every row's start
    // is known or the rest cannot be read.
    bool indexAhead(qint64 bytes);
    // The inflated bytes held now.
    qint64 heldBytes() const;

    static std::unique_ptr<QTableWidgetItem> makeItem(const Roles &roles);
    // The stored form of a grid of items (rows of columns, null items written empty).
    static QByteArray encode(int rowCount, int columnCount, const QList<QList<const QTableWidgetItem *>> &rows);

private:
    class Private;
    std::unique_ptr<Private> d;
};

#endif
