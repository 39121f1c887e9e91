#include "bitview.h"

#include "qeltapp.h"

#include <QHeaderView>
#include <QTableWidget>

#include <algorithm>
#include <limits>

namespace {
// Bit types from User_BIT on address bits inside data words; the PLC types before it count bits.
constexpr int FirstWordBitType = 7;
constexpr int BitsPerWord = 32;
} // namespace

const QStringList BitView::BitTypeNames = {
    QStringLiteral("I_BIT"),    QStringLiteral("O_BIT"),   QStringLiteral("C_BIT"),   QStringLiteral("S_BIT"),
    QStringLiteral("A_BIT"),    QStringLiteral("Cn_BIT"),  QStringLiteral("Tm_BIT"),  QStringLiteral("User_BIT"),
    QStringLiteral("Mcm_BIT"),  QStringLiteral("Sys_BIT"), QStringLiteral("Reg_BIT")};

BitView::BitView(QTableWidget *table)
    : m_table(table)
{
}

BitView::Result BitView::show(int channel, int bitType, int startAddress, int bitCount, int titleType)
{
    if (bitType < 0 || bitType >= BitTypeNames.size())
        return Unchanged;
    const qint64 count = std::clamp<qint64>(bitCount, 0, MaxBits);
    // Every cell's address and bit number must be a controller number.
    const qint64 lastBit = qint64(startAddress) * BitsPerWord + count;
    if (startAddress < 0 || lastBit > std::numeric_limits<int>::max()) {
        qWarning("%s \"%s\": no bit monitor from address %d for %d bits", m_table->metaObject()->className(),
                 qPrintable(m_table->objectName()), startAddress, bitCount);
        return Unchanged;
    }
    if (bitCount > MaxBits)
        qWarning("%s \"%s\": the bit monitor shows the first %d of %d bits", m_table->metaObject()->className(),
                 qPrintable(m_table->objectName()), MaxBits, bitCount);
    m_table->clear();
    m_table->setRowCount(0);
    if (titleType != 1 && titleType != 2) {
        m_table->setColumnCount(0);
        return Cleared;
    }
    m_table->setColumnCount(Columns);
    QStringList titles;
    for (int c = 0; c < Columns; ++c)
        titles << (titleType == 1 ? QString::asprintf("%02d", c) : QString::number(c, 16).toUpper());
    m_table->setHorizontalHeaderLabels(titles);
    m_table->setRowCount(int((count + Columns - 1) / Columns));
    m_table->verticalHeader()->show();
    m_table->verticalHeader()->setMinimumWidth(65);
    QHeaderView *header = m_table->horizontalHeader();
    header->setDefaultSectionSize(40);
    // All 16 bits of a row on screen at once, whatever the table's width: a monitor that hides its last
    // bits behind a scroll bar reads as if they did not exist. A digit stays readable.
    header->setMinimumSectionSize(m_table->fontMetrics().horizontalAdvance(QLatin1Char('0')) + 4);
    header->setSectionResizeMode(QHeaderView::Stretch);
    m_channel = channel > 1 ? channel - 1 : 0;
    m_bitType = bitType;
    m_start = startAddress;
    m_count = int(count);
    m_made.assign(size_t(m_table->rowCount()), false);
    m_active = true;
    return Shown;
}

int BitView::addressOf(int cell) const
{
    return m_bitType >= FirstWordBitType ? m_start + cell / BitsPerWord : m_start * BitsPerWord + cell;
}

int BitView::bitIndexOf(int cell) const
{
    return m_bitType >= FirstWordBitType ? cell % BitsPerWord : m_start * BitsPerWord + cell;
}

void BitView::cover(int first, int last)
{
    if (!m_active)
        return;
    const int screen = std::max(1, last - first + 1);
    const int from = std::max(0, first - screen);
    const int to = std::min(int(m_made.size()) - 1, last + 2 * screen);
    for (int row = from; row <= to; ++row) {
        if (!m_made[size_t(row)])
            makeRow(row);
    }
}

void BitView::makeRow(int row)
{
    m_table->setVerticalHeaderItem(row, new QTableWidgetItem(QString::asprintf("%04d", m_start * BitsPerWord + row * Columns)));
    for (int column = 0; column < Columns; ++column) {
        const int cell = row * Columns + column;
        if (cell >= m_count)
            break;
        auto *item = new QTableWidgetItem(QString::number(bitIndexOf(cell)));
        item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        item->setTextAlignment(Qt::AlignCenter);
        item->setData(AddressRole, addressOf(cell));
        item->setData(BitIndexRole, bitIndexOf(cell));
        item->setData(FlagRole, false);
        m_table->setItem(row, column, item);
    }
    m_made[size_t(row)] = true;
}

int BitView::registerRows(norvo_v0::QeltApp *app, QWidget *form, norvo_v0::UpdateVariableInterface *callback,
                          int first, int last) const
{
    if (!m_active || !app)
        return 0;
    first = std::max(0, first);
    last = std::min(last, m_table->rowCount() - 1);
    int made = 0;
    for (int row = first; row <= last; ++row) {
        for (int column = 0; column < Columns; ++column) {
            const int cell = row * Columns + column;
            if (cell >= m_count || m_table->isColumnHidden(column))
                continue;
            app->registerUIVariable(form, m_table, callback, row * m_table->columnCount() + column, 0, m_channel, 0,
                                    addressOf(cell), m_bitType, bitIndexOf(cell), 1, 10, 10, 0, 0, false);
            ++made;
        }
    }
    return made;
}
