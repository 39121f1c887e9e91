#include "jumpsearch.h"

#include "jumppattern.h"
#include "tablewidget.h"

#include <QRegularExpression>

#include <algorithm>

JumpSearch::JumpSearch(TableWidget *table)
    : m_table(table)
{
}

void JumpSearch::reset()
{
    m_last = {0, -1};
    m_previous.clear();
    m_previousMethod = -1;
}

std::optional<JumpSearch::Cell> JumpSearch::search(int method, const QString &pattern, int searchColumn)
{
    const bool fresh = pattern != m_previous || method != m_previousMethod;
    if (fresh)
        m_last = {0, -1};
    m_previous = pattern;
    m_previousMethod = method;
    const int rows = m_table->rowCount();
    const int currentColumn = std::max(0, m_table->currentColumn());
    std::optional<Cell> found;
    switch (method) {
    case JumpPattern::Row: {
        const qint64 row = qint64(pattern.toInt()) - 1;
        if (row >= 0 && row < rows)
            found = Cell(int(row), currentColumn);
        break;
    }
    case JumpPattern::Number: {
        const int wanted = pattern.toInt();
        const int column = searchColumn >= 0 ? searchColumn : currentColumn;
        for (int row = fresh ? 0 : m_table->currentRow() + 1; row < rows; ++row) {
            bool ok = false;
            if (m_table->cellText(row, column).trimmed().toInt(&ok) == wanted && ok) {
                found = Cell(row, currentColumn);
                break;
            }
        }
        break;
    }
    case JumpPattern::Text:
        found = scan([](const QString &cell, const QString &wanted, const void *) { return cell == wanted; }, false,
                     pattern, nullptr);
        break;
    case JumpPattern::Variable:
    case JumpPattern::ShortVariable: {
        const QRegularExpression re(pattern);
        if (!re.isValid())
            break;
        found = scan(
            [](const QString &cell, const QString &, const void *extra) {
                return static_cast<const QRegularExpression *>(extra)->match(cell).hasMatch();
            },
            true, pattern, &re);
        break;
    }
    default:
        break;
    }
    if (found)
        m_last = *found;
    return found;
}

std::optional<JumpSearch::Cell> JumpSearch::scan(bool (*matches)(const QString &, const QString &, const void *),
                                                 bool binding, const QString &wanted, const void *extra)
{
    const int rows = m_table->rowCount();
    const int columns = m_table->columnCount();
    const qint64 cells = qint64(rows) * columns;
    if (cells == 0)
        return std::nullopt;
    // From the cell after the last one found, once round the whole table.
    qint64 start = qint64(std::max(0, m_last.first)) * columns + m_last.second + 1;
    for (qint64 i = 0; i < cells; ++i) {
        const qint64 at = (start + i) % cells;
        const int row = int(at / columns);
        const int column = int(at % columns);
        const QString cell = binding ? m_table->cellBindingText(row, column) : m_table->cellText(row, column);
        if (!cell.isEmpty() && matches(cell, wanted, extra))
            return Cell(row, column);
    }
    return std::nullopt;
}
