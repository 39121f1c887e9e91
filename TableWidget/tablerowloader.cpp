#include "tablerowloader.h"

#include <QDataStream>
#include <QIODevice>
#include <QMap>
#include <QTableWidget>
#include <QTimer>

#include <algorithm>

namespace {

// Every role an item holds, by role.
QMap<int, QVariant> rolesOf(const QTableWidgetItem &item)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    item.write(out);
    QDataStream in(bytes);
    QMap<int, QVariant> roles;
    qint32 count = 0;
    in >> count;
    for (qint32 i = 0; i < count && in.status() == QDataStream::Ok; ++i) {
        qint32 role = 0;
        QVariant value;
        in >> role >> value;
        roles.insert(role, value);
    }
    return roles;
}

} // namespace

namespace {
// Contents indexed in one idle slice: a couple of milliseconds.
constexpr qint64 IndexSlice = 2 * 1024 * 1024;
// The first slice waits until the first rows are painted and their values have come.
constexpr int IndexDelayMs = 100;
} // namespace

TableRowLoader::TableRowLoader(QTableWidget *table)
    : m_table(table)
{
}

TableRowLoader::~TableRowLoader() = default;

void TableRowLoader::indexWhenIdle()
{
    if (!m_indexer) {
        m_indexer = std::make_unique<QTimer>();
        QObject::connect(m_indexer.get(), &QTimer::timeout, m_indexer.get(), [this] {
            m_indexer->setInterval(0);
            if (m_whole || !m_contents.indexAhead(IndexSlice))
                m_indexer->stop();
        });
    }
    m_indexer->start(IndexDelayMs);
}

bool TableRowLoader::load(const QByteArray &hexText)
{
    m_loaded.clear();
    m_skipped.clear();
    m_made.clear();
    m_kept.clear();
    m_loadedCount = 0;
    m_whole = false;
    m_warned = false;
    m_contents = TableContents();
    if (m_indexer)
        m_indexer->stop();
    m_storedRow = -1;
    m_storedCells.clear();
    if (hexText.isEmpty())
        return true;
    return m_contents.load(hexText);
}

bool TableRowLoader::isLoaded(int row) const
{
    if (m_whole)
        return row >= 0 && row < m_table->rowCount();
    return row >= 0 && row < int(m_loaded.size()) && m_loaded[size_t(row)];
}

void TableRowLoader::cover(int first, int last)
{
    const int screen = std::max(1, last - first + 1);
    int from = 0;
    int to = 0;
    const bool firstLoad = m_loadedCount == 0;
    if (firstLoad) {
        to = 3 * (last - first) + 2;
    } else {
        from = first - screen;
        to = last + 2 * screen;
    }
    loadRows(from == 1 ? 0 : from, to, nullptr, false);
    if (firstLoad && m_loadedCount > 0)
        indexWhenIdle();
}

void TableRowLoader::makeCell(int row, int column)
{
    if (!isLoaded(row))
        loadRows(row, row, nullptr, false);
    // Searches, files and jumps reach the cells of a hidden column too.
    if (!isLoaded(row) || !isSkipped(column) || m_table->item(row, column))
        return;
    QList<TableContents::Roles> cells;
    if (readCells(row, std::min(m_table->columnCount(), m_contents.columnCount()), &cells))
        placeSkipped(row, cells, column);
}

void TableRowLoader::loadAll(Prepare prepare)
{
    loadRows(0, m_table->rowCount() - 1, prepare, true);
}

void TableRowLoader::columnShown(int column)
{
    if (!isSkipped(column))
        return;
    m_skipped[size_t(column)] = false;
    const int columns = std::min(m_table->columnCount(), m_contents.columnCount());
    QList<TableContents::Roles> cells;
    for (int r = 0; r < int(m_loaded.size()); ++r) {
        if (m_loaded[size_t(r)] && !m_table->item(r, column) && readCells(r, columns, &cells)
            && column < cells.size())
            placeItem(r, column, cells.at(column), nullptr);
    }
}

void TableRowLoader::placeSkipped(int row, const QList<TableContents::Roles> &cells, int onlyColumn)
{
    for (int c = 0; c < cells.size(); ++c) {
        if (isSkipped(c) && (onlyColumn < 0 || c == onlyColumn) && !m_table->item(row, c))
            placeItem(row, c, cells.at(c), nullptr);
    }
}

void TableRowLoader::rowInserted(int row)
{
    if (isEmpty())
        return;
    if (m_whole) {
        m_loadedCount = m_table->rowCount();
        return;
    }
    // The table has one row more than the stored contents from row on.
    if (row >= 0 && size_t(row) <= m_loaded.size())
        m_loaded.insert(m_loaded.begin() + row, true);
    const int rows = m_table->rowCount();
    const bool skipped = std::find(m_skipped.cbegin(), m_skipped.cend(), true) != m_skipped.cend();
    for (int r = 0; r < rows; ++r) {
        const int stored = r < row ? r : r - 1;
        const bool made = isLoaded(r);
        if (r == row || (made && !skipped) || stored >= m_contents.rowCount())
            continue;
        QList<TableContents::Roles> cells;
        if (!readCells(stored, m_table->columnCount(), &cells))
            continue;
        if (made) {
            placeSkipped(r, cells);
            continue;
        }
        for (int c = 0; c < cells.size(); ++c)
            placeItem(r, c, cells.at(c), nullptr);
    }
    // Every row is made now, in every column, also rows inserted later: a file of many lines
    // inserts row after row.
    m_skipped.clear();
    m_loaded.clear();
    m_loaded.shrink_to_fit();
    m_made.clear();
    m_kept.clear();
    m_whole = true;
    m_loadedCount = rows;
}

bool TableRowLoader::storedTexts(int row, int column, QString *text, QString *binding)
{
    text->clear();
    binding->clear();
    if ((isLoaded(row) && !isSkipped(column)) || row < 0 || row >= std::min(m_table->rowCount(), m_contents.rowCount()))
        return false;
    if (row != m_storedRow) {
        m_storedCells.clear();
        m_storedRow = row;
        const int columns = std::min(m_table->columnCount(), m_contents.columnCount());
        if (!readCells(row, columns, &m_storedCells))
            m_storedCells.clear();
    }
    if (column < 0 || column >= m_storedCells.size() || m_storedCells.at(column).isEmpty())
        return false;
    for (const auto &[role, value] : m_storedCells.at(column)) {
        if (role == Qt::DisplayRole)
            *text = value.toString();
        else if (role == Qt::WhatsThisRole)
            *binding = value.toString();
    }
    return true;
}

void TableRowLoader::loadRows(int first, int last, Prepare prepare, bool hiddenToo)
{
    if (m_whole)
        return;
    const int rows = std::min(m_table->rowCount(), m_contents.rowCount());
    first = std::max(first, 0);
    last = std::min(last, rows - 1);
    if (first > last)
        return;
    if (m_loaded.size() < size_t(rows))
        m_loaded.resize(size_t(rows), false);
    const int columns = std::min(m_table->columnCount(), m_contents.columnCount());
    QList<TableContents::Roles> cells;
    for (int r = first; r <= last; ++r) {
        if (m_loaded[size_t(r)])
            continue;
        if (!readCells(r, columns, &cells)) {
            // A malformed item: the rows before it stay. The contents are read only as far as the
            // rows shown, so this is where the panel builder learns of it.
            if (!m_warned)
                qWarning("%s \"%s\": property \"data\" is malformed from row %d on; the rows before it are shown",
                         m_table->metaObject()->className(), qPrintable(m_table->objectName()), r);
            m_warned = true;
            break;
        }
        for (int c = 0; c < cells.size(); ++c) {
            if (hiddenToo || !m_table->isColumnHidden(c)) {
                placeItem(r, c, cells.at(c), prepare);
            } else if (!isSkipped(c)) {
                m_skipped.resize(std::max(m_skipped.size(), size_t(c) + 1), false);
                m_skipped[size_t(c)] = true;
            }
        }
        m_loaded[size_t(r)] = true;
        m_made.insert(r);
        ++m_loadedCount;
    }
}

std::unique_ptr<QTableWidgetItem> TableRowLoader::makeItem(const TableContents::Roles &roles) const
{
    std::unique_ptr<QTableWidgetItem> made = TableContents::makeItem(roles);
    // Forms made for the original panel font carry it on every item; the table's own font replaces it.
    const QVariant font = made->data(Qt::FontRole);
    if (font.isValid()) {
        const QFont f = made->font();
        if (f.family() == QLatin1String("SimSun") && f.pointSize() == 9)
            made->setFont(m_table->font());
    }
    return made;
}

void TableRowLoader::placeItem(int row, int column, const TableContents::Roles &roles, Prepare prepare)
{
    QTableWidgetItem *existing = m_table->item(row, column);
    if (roles.isEmpty() && !existing)
        return;
    std::unique_ptr<QTableWidgetItem> made = makeItem(roles);
    if (prepare)
        prepare(made.get());
    if (existing) {
        // The application may hold the item: keep it and give it the stored values.
        *existing = *made;
        existing->setFlags(made->flags());
        existing->setData(Qt::DisplayRole, made->data(Qt::DisplayRole));
    } else {
        m_table->setItem(row, column, made.release());
    }
}

bool TableRowLoader::readCells(int row, int columns, QList<TableContents::Roles> *cells)
{
    if (!m_contents.readRow(row, columns, cells))
        return false;
    const auto kept = m_kept.find(row);
    if (kept == m_kept.end())
        return true;
    for (int c = 0; c < cells->size() && c < kept->second.size(); ++c) {
        TableContents::Roles &roles = (*cells)[c];
        for (const auto &keptRole : kept->second.at(c)) {
            const int role = keptRole.first;
            const int at = int(std::find_if(roles.cbegin(), roles.cend(), [role](const auto &r) { return r.first == role; })
                               - roles.cbegin());
            if (at < roles.size())
                roles.removeAt(at);
            if (keptRole.second.isValid())
                roles.append({role, keptRole.second});
        }
    }
    return true;
}

int TableRowLoader::release(int first, int last, int keep, const Volatile &isVolatile)
{
    if (m_whole || m_made.empty())
        return 0;
    // One screen more on either side than cover() makes, so that stepping back and forth near the
    // edge of what is made neither drops nor makes rows at every step.
    const int screen = std::max(1, last - first + 1);
    const int low = first - 2 * screen;
    const int high = last + 3 * screen;
    std::vector<int> far(m_made.begin(), m_made.lower_bound(low));
    far.insert(far.end(), m_made.upper_bound(high), m_made.end());
    int dropped = 0;
    for (int r : far) {
        if (r != keep) {
            dropRow(r, isVolatile);
            ++dropped;
        }
    }
    return dropped;
}

void TableRowLoader::dropRow(int row, const Volatile &isVolatile)
{
    const int columns = std::min(m_table->columnCount(), m_contents.columnCount());
    QList<TableContents::Roles> stored;
    if (!m_contents.readRow(row, columns, &stored))
        return; // not readable again: the row stays as it is
    QList<TableContents::Roles> kept;
    bool any = false;
    for (int c = 0; c < columns; ++c) {
        const QTableWidgetItem *item = m_table->item(row, c);
        TableContents::Roles changed;
        if (item) {
            const std::unique_ptr<QTableWidgetItem> made = makeItem(stored.value(c));
            if (item->flags() != made->flags())
                changed.append({TableContents::FlagsRole, int(item->flags())});
            const QMap<int, QVariant> now = rolesOf(*item);
            QMap<int, QVariant> then = rolesOf(*made);
            const bool fromController = isVolatile && isVolatile(item);
            for (auto it = now.cbegin(); it != now.cend(); ++it) {
                const QVariant was = then.take(it.key());
                if (was != it.value() && !(fromController && it.key() == Qt::DisplayRole))
                    changed.append({it.key(), it.value()});
            }
            for (auto it = then.cbegin(); it != then.cend(); ++it)
                changed.append({it.key(), QVariant()});
        }
        any = any || !changed.isEmpty();
        kept.append(changed);
    }
    if (any)
        m_kept[row] = kept;
    else
        m_kept.erase(row);
    if (row == m_storedRow)
        m_storedRow = -1;
    for (int c = 0; c < m_table->columnCount(); ++c)
        delete m_table->takeItem(row, c);
    m_loaded[size_t(row)] = false;
    m_made.erase(row);
    --m_loadedCount;
}
