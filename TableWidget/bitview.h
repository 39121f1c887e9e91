#ifndef BITVIEW_H
#define BITVIEW_H

#include "hmiwidgets_export.h"

#include <QStringList>

#include <vector>

class QTableWidget;
class QWidget;
namespace norvo_v0 {
class QeltApp;
class UpdateVariableInterface;
} // namespace norvo_v0

// The table as a bit monitor: 16 bits a row from a start address, each cell one bit coloured by its
// value. Cells are made when their row comes near the screen and only the rows on screen are
// registered, so a monitor of a million bits scrolls like one of a hundred.
class HMIWIDGETS_EXPORT BitView
{
public:
    static constexpr int AddressRole = 1033;
    static constexpr int BitIndexRole = 1034;
    static constexpr int FlagRole = 1035;
    static constexpr int Columns = 16;
    // A megabit: more than any controller's bit area.
    static constexpr int MaxBits = 1 << 20;
    static const QStringList BitTypeNames;

    enum Result { Unchanged, Cleared, Shown };

    explicit BitView(QTableWidget *table);

    bool isActive() const { return m_active; }
    // Turns the table into the monitor; a bit type outside the names or an address range beyond
    // the controller's numbers leaves it Unchanged, a title type other than 1 and 2 Cleared.
    Result show(int channel, int bitType, int startAddress, int bitCount, int titleType);
    // The name of the monitor's bit type, for the corner.
    QString bitTypeName() const { return BitTypeNames.value(m_bitType); }
    void cover(int first, int last);
    // Registers the cells of rows first ... last; returns how many.
    int registerRows(norvo_v0::QeltApp *app, QWidget *form, norvo_v0::UpdateVariableInterface *callback, int first,
                     int last) const;

private:
    void makeRow(int row);
    int addressOf(int cell) const;
    int bitIndexOf(int cell) const;

    QTableWidget *const m_table;
    bool m_active = false;
    int m_channel = 0;
    int m_bitType = 0;
    int m_start = 0;
    int m_count = 0;
    std::vector<bool> m_made;
};

#endif
