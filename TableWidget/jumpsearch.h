#ifndef JUMPSEARCH_H
#define JUMPSEARCH_H

#include "hmiwidgets_export.h"

#include <QString>

#include <optional>
#include <utility>

class TableWidget;

// Finds the cell the jump dialog asks for. Asking for the same thing again goes on after the last
// cell found; asking for something new starts again at the top. The whole list is searched, also
// the rows whose items have not been made yet.
class HMIWIDGETS_EXPORT JumpSearch
{
public:
    using Cell = std::pair<int, int>; // row, column

    explicit JumpSearch(TableWidget *table);

    // A method of JumpPattern with the text it built; the found cell, remembered as the last one.
    std::optional<Cell> search(int method, const QString &pattern, int searchColumn);
    void reset();
    Cell lastFound() const { return m_last; }

private:
    std::optional<Cell> scan(bool (*matches)(const QString &cell, const QString &wanted, const void *extra),
                             bool binding, const QString &wanted, const void *extra);

    TableWidget *const m_table;
    QString m_previous;
    int m_previousMethod = -1;
    Cell m_last{0, -1};
};

#endif
