#include "ncview.h"

#include "textfilelines.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QIODevice>
#include <QTableWidget>

#include <algorithm>

namespace {

void upperAscii(QByteArray *bytes)
{
    for (char &c : *bytes) {
        if (c >= 'a' && c <= 'z')
            c = char(c - 'a' + 'A');
    }
}

QString tr(const char *text)
{
    return QCoreApplication::translate("NcView", text);
}

} // namespace

NcView::NcView(QTableWidget *table)
    : m_table(table)
{
}

NcView::~NcView() = default;

void NcView::show(const QStringList &codeSigns, QIODevice *file)
{
    m_program = std::make_unique<NcProgram>(codeSigns);
    m_lines.clear();
    m_made.clear();
    m_latin1 = false;
    m_notWhole.clear();
    m_table->setRowCount(0);
    m_table->verticalHeader()->show();
    m_table->setColumnCount(m_program->columnCount());
    m_table->setHorizontalHeaderLabels(codeSigns.mid(0, m_program->columnCount()));
    TextFileLines lines(file, TextFileLines::MaxLineBytes, MaxBytes);
    bool more = false;
    while (!lines.atEnd()) {
        QByteArray bytes = lines.nextBytes();
        if (bytes.isEmpty())
            continue;
        if (m_lines.size() >= MaxLines) {
            more = true;
            break;
        }
        upperAscii(&bytes);
        QString line = m_latin1 ? QString::fromLatin1(bytes) : QString::fromUtf8(bytes);
        // Text that UTF-8 does not give back byte for byte makes the whole program Latin-1, where
        // every byte is one character: the lines so far are re-read so.
        if (!m_latin1 && line.toUtf8() != bytes) {
            m_latin1 = true;
            for (QString &earlier : m_lines)
                earlier = QString::fromLatin1(earlier.toUtf8());
            line = QString::fromLatin1(bytes);
        }
        m_lines.append(line);
    }
    m_lineEnd = lines.lineEnd();
    if (more || lines.stoppedEarly())
        m_notWhole = tr("Only its first %1 lines are shown: a program view holds %2 lines and %3 MiB.")
                         .arg(m_lines.size())
                         .arg(MaxLines)
                         .arg(MaxBytes / (1024 * 1024));
    else if (lines.cutLines() > 0)
        m_notWhole = tr("%1 lines longer than %2 bytes were cut.").arg(lines.cutLines()).arg(TextFileLines::MaxLineBytes);
    m_made.assign(size_t(m_lines.size()), false);
    m_table->setRowCount(int(m_lines.size()));
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

bool NcView::write(QIODevice *file) const
{
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const QString line = lineAt(row);
        const QByteArray bytes = (m_latin1 ? line.toLatin1() : line.toUtf8()) + m_lineEnd;
        if (file->write(bytes) != bytes.size())
            return false;
    }
    return true;
}
