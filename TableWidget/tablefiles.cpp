#include "tablefiles.h"

#include "bindingtext.h"
#include "operatormessage.h"
#include "qeltapp.h"
#include "tablewidget.h"
#include "textfilelines.h"
#include "valueconversion.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QTextStream>

#include <algorithm>
#include <cmath>

using norvo_v0::QeltApp;

namespace {
constexpr int LongFormFields = 10;
constexpr int MaxRefusalWarnings = 10;

// The kinds a file tells apart: fewer than 4 fields is a text cell.
bool isTextCell(const QStringList &fields, const QString &binding)
{
    return binding.isEmpty() || fields.size() < 4;
}

bool isValueCell(const QStringList &fields)
{
    return fields.size() > 4 && fields.first() != QLatin1String("bit");
}

bool isBitCell(const QStringList &fields)
{
    return fields.size() >= 6 && fields.first() == QLatin1String("bit");
}

// The link of a value cell: field 9 of the long form, as the cell is registered with.
int linkOf(const BindingText &b)
{
    return b.fields.size() >= LongFormFields ? b.field(9) : 0;
}

// A text as one part of a line: what would end the part or the line becomes a blank.
QString inLine(QString text)
{
    for (QChar &c : text) {
        if (c == QLatin1Char('\t') || c == QLatin1Char('\n') || c == QLatin1Char('\r'))
            c = QLatin1Char(' ');
    }
    return text;
}
} // namespace

TableFiles::TableFiles(TableWidget *table, ReadCell readCell, MakeItem makeItem)
    : m_table(table)
    , m_readCell(std::move(readCell))
    , m_makeItem(std::move(makeItem))
{
}

QString TableFiles::valueText(double value, int width, int decimals)
{
    // Bounded, since both come from a form: a number needs neither more places nor more width.
    return QStringLiteral("%1").arg(value, std::clamp(width, 0, 64), 'f', std::clamp(decimals, 0, 16));
}

QString TableFiles::cellOutput(const QString &text, const QString &binding, QeltApp *app) const
{
    BindingText b;
    b.fields = binding.split(QLatin1Char('@'));
    if (isTextCell(b.fields, binding) || !app)
        return inLine(text);
    if (isValueCell(b.fields)) {
        const int raw = app->getData(BindingText::channelIndex(b.field(0)), QeltApp::DataClass(b.field(1)), b.field(2), linkOf(b));
        // In double precision, so that every 32-bit value comes back from the file as it was.
        const int decimals = b.field(4);
        return valueText(raw * std::pow(0.1, std::clamp(decimals, 0, 16)), b.field(3), decimals);
    }
    if (isBitCell(b.fields)) {
        const bool on = app->getBit(BindingText::channelIndex(b.field(1)), b.field(2), b.field(3), b.field(4), b.field(5));
        return on ? QStringLiteral("1") : QStringLiteral("0");
    }
    return inLine(text);
}

bool TableFiles::isShown(int row, int column) const
{
    if (m_table->isColumnHidden(column))
        return false;
    if (m_table->rowSpan(row, column) == 1 && m_table->columnSpan(row, column) == 1)
        return true;
    // A merged cell is drawn as its first cell; every other cell of it has its left or its upper
    // neighbour in the same merged cell, drawn in the same place.
    const auto place = [this](int r, int c) { return m_table->visualRect(m_table->model()->index(r, c)); };
    const QRect merged = place(row, column);
    return !(column > 0 && place(row, column - 1) == merged) && !(row > 0 && place(row - 1, column) == merged);
}

void TableFiles::save(QIODevice *file, QeltApp *app) const
{
    QTextStream out(file);
    TextFileLines::useUtf8(&out);
    QStringList parts;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        parts.clear();
        int used = 0; // the parts up to the last cell written
        for (int column = 0; column < m_table->columnCount(); ++column) {
            QString text, binding;
            if (!isShown(row, column) || !m_readCell(row, column, &text, &binding)) {
                parts.append(QString());
                continue;
            }
            parts.append(cellOutput(text, binding, app));
            used = column + 1;
        }
        out << parts.mid(0, used).join(QLatin1Char('\t')) << '\n';
    }
}

int TableFiles::load(QIODevice *file, QeltApp *app, const QString &fileName) const
{
    TextFileLines lines(file, TextFileLines::MaxLineBytes, MaxBytes);
    const qint64 maxRows = std::max<qint64>(m_table->rowCount(), MaxCells / std::max(1, m_table->columnCount()));
    int refused = 0;
    int row = 0;
    bool more = false;
    for (; !lines.atEnd(); ++row) {
        if (row >= maxRows) {
            more = true;
            break;
        }
        const QString line = lines.next();
        if (row >= m_table->rowCount())
            m_table->insertRow(row);
        const QStringList parts = line.split(QLatin1Char('\t'));
        const int columns = std::min(int(parts.size()), m_table->columnCount());
        for (int column = 0; column < columns; ++column) {
            if (!isShown(row, column))
                continue;
            QTableWidgetItem *item = m_makeItem(row, column);
            if (!item)
                continue;
            const QString binding = item->whatsThis();
            BindingText b;
            b.fields = binding.split(QLatin1Char('@'));
            if (isTextCell(b.fields, binding)) {
                item->setText(parts.at(column));
                continue;
            }
            if (!isValueCell(b.fields) || !app || parts.at(column).trimmed().isEmpty())
                continue;
            // The file holds what saving writes: a decimal number with the cell's decimal places,
            // whatever base the cell shows on screen. Within the cell's limits and its 32-bit word,
            // as from the keypad; anything else leaves the variable as it is.
            const double lowest = b.fields.size() >= 7 ? b.fields.at(5).trimmed().toDouble() : -1000000000.0;
            const double highest = b.fields.size() >= 7 ? b.fields.at(6).trimmed().toDouble() : 1000000000.0;
            const auto value = ValueConversion::fromKeypad(parts.at(column), 4, 10, b.field(4), lowest, highest);
            if (!value) {
                if (refused++ < MaxRefusalWarnings)
                    qWarning("%s \"%s\": \"%s\" line %d column %d: \"%s\" is not a value for %s; not written",
                             m_table->metaObject()->className(), qPrintable(m_table->objectName()),
                             qPrintable(fileName), row + 1, column + 1, qPrintable(parts.at(column).left(40)),
                             qPrintable(binding));
                continue;
            }
            app->setData(BindingText::channelIndex(b.field(0)), QeltApp::DataClass(b.field(1)), b.field(2), *value, linkOf(b));
        }
    }
    QStringList notWhole;
    if (more || lines.stoppedEarly())
        notWhole << QCoreApplication::translate("TableFiles", "Only its first %1 lines were read: a table file fills "
                                                              "at most %2 cells and is read up to %3 MiB.")
                        .arg(row)
                        .arg(MaxCells)
                        .arg(MaxBytes / (1024 * 1024));
    if (lines.cutLines() > 0)
        notWhole << QCoreApplication::translate("TableFiles", "%1 lines longer than %2 bytes were cut.")
                        .arg(lines.cutLines())
                        .arg(TextFileLines::MaxLineBytes);
    if (!notWhole.isEmpty())
        OperatorMessage::warning(m_table, QStringLiteral("TableWidget"),
                                 QStringLiteral("loadFormFile:File not read whole!\n") + notWhole.join(QLatin1Char('\n')));
    return refused;
}
