#include "tablefiles.h"

#include "bindingtext.h"
#include "ncview.h"
#include "qeltapp.h"
#include "tablewidget.h"
#include "textfilelines.h"
#include "valueconversion.h"

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

// The link of a value cell: field 9 only in the ten-field form.
int linkOf(const BindingText &b)
{
    return b.fields.size() == LongFormFields ? b.field(9) : 0;
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
        return text;
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
    return text;
}

void TableFiles::save(QIODevice *file, QeltApp *app) const
{
    QTextStream out(file);
    TextFileLines::useUtf8(&out);
    for (int row = 0; row < m_table->rowCount(); ++row) {
        QString line;
        for (int column = 0; column < m_table->columnCount(); ++column) {
            QString text, binding;
            if (!m_readCell(row, column, &text, &binding))
                continue;
            line += cellOutput(text, binding, app);
            line += QLatin1Char('\t');
        }
        line.chop(1);
        out << line << '\n';
    }
}

int TableFiles::load(QIODevice *file, QeltApp *app, const QString &fileName) const
{
    TextFileLines lines(file);
    int refused = 0;
    int row = 0;
    for (; !lines.atEnd(); ++row) {
        const QString line = lines.next();
        if (row >= NcView::MaxLines) {
            qWarning("%s \"%s\": \"%s\" has more than %d lines; the rest is not read", m_table->metaObject()->className(),
                     qPrintable(m_table->objectName()), qPrintable(fileName), NcView::MaxLines);
            break;
        }
        if (row >= m_table->rowCount())
            m_table->insertRow(row);
        const QStringList parts = line.split(QLatin1Char('\t'));
        const int columns = std::min(int(parts.size()), m_table->columnCount());
        for (int column = 0; column < columns; ++column) {
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
            if (!isValueCell(b.fields) || !app)
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
    if (lines.cutLines() > 0)
        qWarning("%s \"%s\": \"%s\": %d lines longer than %lld bytes were cut", m_table->metaObject()->className(),
                 qPrintable(m_table->objectName()), qPrintable(fileName), lines.cutLines(), TextFileLines::MaxLineBytes);
    return refused;
}
