#include "ncview.h"

#include "textfilelines.h"

#include <QHeaderView>
#include <QTableWidget>

#include <algorithm>

NcView::NcView(QTableWidget *table)
    : m_table(table)
{
}

NcView::~NcView() = default;

int NcView::show(const QStringList &codeSigns, QIODevice *file, int *cutLines)
{
    m_program = std::make_unique<NcProgram>(codeSigns);
    m_lines.clear();
    m_made.clear();
    m_table->setRowCount(0);
    m_table->verticalHeader()->show();
    m_table->setColumnCount(m_program->columnCount());
    m_table->setHorizontalHeaderLabels(codeSigns.mid(0, m_program->columnCount()));
    TextFileLines lines(file);
    int over = 0;
    while (!lines.atEnd()) {
        const QString line = lines.next().toUpper();
        if (line.isEmpty())
            continue;
        if (m_lines.size() >= MaxLines) {
            ++over;
            continue;
        }
        m_lines.append(line);
    }
    if (cutLines)
        *cutLines = lines.cutLines();
    m_made.assign(size_t(m_lines.size()), false);
    m_table->setRowCount(int(m_lines.size()));
    return over;
}

void NcView::cover(int first, int last)
{
    if (!m_program)
        return;
    const int screen = std::max(1, last - first + 1);
    const int from = std::max(0, first - screen);
    const int to = std::min(int(m_made.size()) - 1, last + 2 * screen);
    for (int row = from; row <= to; ++row) {
        if (!m_made[size_t(row)])
            makeRow(row);
    }
}

void NcView::makeRow(int row)
{
    const NcProgram::Line line = m_program->parse(m_lines.at(row));
    auto *header = new QTableWidgetItem(QString::asprintf("%04d", row));
    header->setData(TrailingRole, line.lead);
    m_table->setVerticalHeaderItem(row, header);
    for (const NcProgram::Word &word : std::as_const(line.words)) {
        auto *item = new QTableWidgetItem(word.text);
        item->setData(TrailingRole, word.trailing);
        m_table->setItem(row, word.column, item);
    }
    // From now on the items hold the line.
    m_lines[row] = QString();
    m_made[size_t(row)] = true;
}

QString NcView::lineAt(int row) const
{
    if (!m_program || row < 0 || row >= int(m_made.size()))
        return QString();
    if (!m_made[size_t(row)])
        return m_lines.at(row);
    const QTableWidgetItem *header = m_table->verticalHeaderItem(row);
    QString out = header ? header->data(TrailingRole).toString() : QString();
    for (int column = 0; column < m_table->columnCount(); ++column) {
        const QTableWidgetItem *item = m_table->item(row, column);
        if (!item || item->text().isEmpty())
            continue;
        const QChar letter = column < m_program->columnCount() ? m_program->letter(column) : QChar();
        const QTableWidgetItem *label = m_table->horizontalHeaderItem(column);
        out += letter.isNull() ? (label ? label->text() : QString()) : QString(letter);
        out += item->text();
        out += item->data(TrailingRole).toString();
    }
    return out;
}
