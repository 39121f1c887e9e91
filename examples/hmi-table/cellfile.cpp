#include "cellfile.h"

#include "cellfield.h"
#include "sectiontext.h"
#include "spanlayout.h"
#include "tablesections.h"
#include "textdata.h"

#include <QVector>

#include <algorithm>
#include <cstring>

namespace {

const char Bom[] = "\xEF\xBB\xBF";
constexpr QChar BomChar(0xFEFF);

// A line's text. fromUtf8 drops a byte order mark at the start of what it converts; here every
// character counts, so leading marks are converted by hand.
QString decode(const char *bytes, qsizetype size)
{
    qsizetype marks = 0;
    while (size - 3 * marks >= 3 && std::memcmp(bytes + 3 * marks, Bom, 3) == 0)
        ++marks;
    return QString(int(marks), BomChar) + QString::fromUtf8(bytes + 3 * marks, int(size - 3 * marks));
}

// The fields of a line between tabs; false when there are more than max.
bool splitFields(const QString &line, QVector<QStringView> *fields, int max)
{
    fields->clear();
    const QStringView view(line);
    qsizetype from = 0;
    for (;;) {
        if (fields->size() == max)
            return false;
        const qsizetype tab = line.indexOf(QLatin1Char('\t'), from);
        fields->append(view.mid(from, (tab < 0 ? line.size() : tab) - from));
        if (tab < 0)
            return true;
        from = tab + 1;
    }
}

// What a text role adds to the stored table besides its UTF-16 text: role, type, null flag, length.
constexpr qint64 RoleOverhead = 13;
constexpr qint64 ItemOverhead = 4; // its role count

qint64 storedSize(const TableCells::Item &item)
{
    qint64 size = 0;
    if (!item.text.isEmpty())
        size += RoleOverhead + 2 * qint64(item.text.size());
    if (!item.whatsThis.isEmpty())
        size += RoleOverhead + 2 * qint64(item.whatsThis.size());
    return size;
}

class Parser
{
public:
    explicit Parser(TableCells *table) : m_table(table) {}

    bool line(qint64 number, const QString &text, Problem *problem)
    {
        m_number = number;
        m_problem = problem;
        // A #columns line has one field more than it has columns; a comment may have any number.
        const bool whole = splitFields(text, &m_fields, CellFile::MaxColumns + 1);
        const bool directive = text.startsWith(QLatin1Char('#'));
        if (!whole && (!directive || m_fields.at(0) == QLatin1String("#columns")))
            return fail(QStringLiteral("more than %1 columns").arg(CellFile::MaxColumns));
        return directive ? this->directive() : row();
    }

    bool finish(Problem *problem)
    {
        m_problem = problem;
        const SpanLayout::Fault fault = SpanLayout::check(m_table->spans, int(m_table->rows.size()), m_table->columnCount);
        if (fault.index < 0)
            return true;
        m_number = m_spanLines.at(fault.index);
        if (fault.other < 0)
            return fail(QStringLiteral("a merged cell outside the table of %1 rows and %2 columns")
                            .arg(m_table->rows.size())
                            .arg(m_table->columnCount));
        return fail(QStringLiteral("a merged cell sharing cells with the one on line %1").arg(m_spanLines.at(fault.other)));
    }

private:
    bool fail(const QString &message)
    {
        *m_problem = {m_number, message};
        return false;
    }

    bool directive()
    {
        const QStringView keyword = m_fields.at(0);
        for (const QLatin1String known : {QLatin1String("#columns"), QLatin1String("#span")}) {
            if (keyword != known && keyword.startsWith(known) && keyword.at(known.size()).isSpace())
                return fail(QStringLiteral("separate the fields of %1 with tabs").arg(known));
        }
        if (keyword == QLatin1String("#columns"))
            return columns();
        if (keyword == QLatin1String("#span"))
            return span();
        return true; // a comment
    }

    bool columns()
    {
        if (m_columnsLine > 0)
            return fail(QStringLiteral("a second #columns line (the first is line %1)").arg(m_columnsLine));
        m_columnsLine = m_number;
        const int count = int(m_fields.size()) - 1;
        for (int c = 0; c < count; ++c) {
            CellField field;
            QString error;
            if (!CellField::parse(m_fields.at(c + 1), &field, &error))
                return fail(QStringLiteral("header %1: %2").arg(c + 1).arg(error));
            if (field.languages.size() > TextData::MaxLanguages)
                return fail(QStringLiteral("header %1: more than %2 languages").arg(c + 1).arg(TextData::MaxLanguages));
            int width = -1;
            if (field.braced) {
                bool ok = false;
                width = field.braces.toInt(&ok);
                if (!ok || width < 0 || width > SectionText::MaxColumnWidth)
                    return fail(QStringLiteral("header %1: the column width {%2} is not a number of pixels from 0 to %3")
                                    .arg(c + 1)
                                    .arg(field.braces.left(40))
                                    .arg(SectionText::MaxColumnWidth));
            }
            const TableCells::Item header = SectionText::header(field.languages, width);
            // The panel finds a width or the end of the texts anywhere in them; what it would read
            // must be what the line says.
            QStringList languages;
            int shownWidth = -1;
            if (!SectionText::splitHeader(header, &languages, &shownWidth) || languages != field.languages
                || shownWidth != width)
                return fail(QStringLiteral("header %1: a text holds \"columnWidth=\" or \"%2\", which a panel reads "
                                           "as a width or the end of the texts")
                                .arg(c + 1)
                                .arg(TableSections::SectionSeparator));
            m_table->headers.append(header);
        }
        TableCells::trim(&m_table->headers);
        m_table->columnCount = std::max(m_table->columnCount, count);
        return fits();
    }

    bool span()
    {
        if (m_fields.size() != 5)
            return fail(QStringLiteral("#span takes four numbers: first row, first column (both from 0), rows, columns"));
        if (m_table->spans.size() >= CellSpans::MaxSpans)
            return fail(QStringLiteral("more than %1 merged cells").arg(CellSpans::MaxSpans));
        int numbers[4] = {};
        for (int i = 0; i < 4; ++i) {
            bool ok = false;
            numbers[i] = m_fields.at(i + 1).toString().toInt(&ok);
            const int lowest = i < 2 ? 0 : 1;
            if (!ok || numbers[i] < lowest)
                return fail(QStringLiteral("#span: \"%1\" is not a number from %2")
                                .arg(m_fields.at(i + 1).toString().left(40))
                                .arg(lowest));
        }
        m_table->spans.append({numbers[0], numbers[1], numbers[2], numbers[3]});
        m_spanLines.append(m_number);
        return true;
    }

    bool row()
    {
        if (m_table->rows.size() >= CellFile::MaxRows)
            return fail(QStringLiteral("more than %1 rows").arg(CellFile::MaxRows));
        if (m_fields.size() > CellFile::MaxColumns)
            return fail(QStringLiteral("more than %1 columns").arg(CellFile::MaxColumns));
        TableCells::Row cells;
        int empty = 0; // empty cells not yet stored: only those before a non-empty one ever are
        for (int c = 0; c < m_fields.size(); ++c) {
            if (m_fields.at(c).isEmpty()) { // most cells of a wide, sparse table
                ++empty;
                continue;
            }
            CellField field;
            QString error;
            if (!CellField::parse(m_fields.at(c), &field, &error))
                return fail(QStringLiteral("column %1: %2").arg(c + 1).arg(error));
            if (field.languages.size() > TextData::MaxLanguages)
                return fail(QStringLiteral("column %1: more than %2 languages").arg(c + 1).arg(TextData::MaxLanguages));
            // A panel reads the first multiTexts section: the languages would not be the ones shown.
            if (field.languages.size() > 1 && !TableSections::multiTexts(field.braces).isEmpty())
                return fail(QStringLiteral("column %1: texts in languages and a binding that has its own multiTexts").arg(c + 1));
            const TableCells::Item item = SectionText::cell(field.languages, field.braces);
            if (item.isEmpty()) {
                ++empty;
                continue;
            }
            cells.resize(cells.size() + empty);
            empty = 0;
            cells.append(item);
            m_textBytes += storedSize(item);
        }
        cells.squeeze();
        m_table->rows.append(cells);
        m_table->columnCount = std::max(m_table->columnCount, int(m_fields.size()));
        return fits();
    }

    bool fits()
    {
        const qint64 cells = qint64(m_table->rows.size()) * m_table->columnCount;
        if (cells > CellFile::MaxCells)
            return fail(QStringLiteral("more than %1 cells (rows x columns)").arg(CellFile::MaxCells));
        if (8 + cells * ItemOverhead + m_textBytes > TableContents::ExpansionLimit)
            return fail(QStringLiteral("the table would take more than %1 MiB stored, more than a panel reads")
                            .arg(TableContents::ExpansionLimit / (1024 * 1024)));
        return true;
    }

    TableCells *m_table;
    Problem *m_problem = nullptr;
    qint64 m_number = 0;
    qint64 m_columnsLine = 0;
    qint64 m_textBytes = 0;
    QVector<QStringView> m_fields;
    QVector<qint64> m_spanLines;
};

} // namespace

bool CellFile::parse(const QByteArray &text, TableCells *table, Problem *problem)
{
    *table = TableCells();
    *problem = Problem();
    Parser parser(table);
    qsizetype pos = 0;
    for (qint64 number = 1; pos < text.size(); ++number) {
        qsizetype end = text.indexOf('\n', pos);
        const qsizetype next = end < 0 ? text.size() : end + 1;
        if (end < 0)
            end = text.size();
        if (end > pos && text.at(end - 1) == '\r')
            --end;
        if (end - pos > MaxLineBytes) {
            *problem = {number, QStringLiteral("a line longer than %1 bytes").arg(MaxLineBytes)};
            *table = TableCells();
            return false;
        }
        QString line = decode(text.constData() + pos, end - pos);
        if (number == 1 && line.startsWith(BomChar))
            line.remove(0, 1); // the byte order mark; on any other line it is the first cell's text
        if (!parser.line(number, line, problem)) {
            *table = TableCells();
            return false;
        }
        pos = next;
    }
    if (!parser.finish(problem)) {
        *table = TableCells();
        return false;
    }
    return true;
}

namespace {

QString cellField(const TableCells::Item &item, bool startsLine)
{
    QStringList languages;
    QString binding;
    SectionText::splitCell(item, &languages, &binding);
    QStringList texts;
    for (int i = 0; i < languages.size(); ++i)
        texts << CellField::escapeText(languages.at(i), startsLine && i == 0);
    QString field = texts.join(QLatin1Char('|'));
    if (!binding.isEmpty())
        field += QLatin1Char('{') + CellField::escapeBraces(binding) + QLatin1Char('}');
    return field;
}

QString headerField(const TableCells::Item &item, int column, QStringList *notes)
{
    QStringList languages;
    int width = -1;
    if (!SectionText::splitHeader(item, &languages, &width) && notes)
        *notes << QStringLiteral("header %1 keeps only its label and width: its what's-this text \"%2\" holds more")
                      .arg(column + 1)
                      .arg(item.whatsThis.left(80));
    QStringList texts;
    for (const QString &language : languages)
        texts << CellField::escapeText(language, false);
    QString field = texts.join(QLatin1Char('|'));
    if (width >= 0)
        field += QLatin1Char('{') + QString::number(width) + QLatin1Char('}');
    return field;
}

} // namespace

QByteArray CellFile::format(const TableCells &table, QStringList *notes)
{
    QString out;
    const bool labelled = std::any_of(table.headers.cbegin(), table.headers.cend(),
                                      [](const TableCells::Item &h) { return !h.isEmpty(); });
    // Without rows only the #columns line keeps the column count.
    if (labelled || (table.rows.isEmpty() && table.columnCount > 0)) {
        out += QLatin1String("#columns");
        const int count = std::max(table.columnCount, int(table.headers.size()));
        for (int c = 0; c < count; ++c)
            out += QLatin1Char('\t') + headerField(table.headers.value(c), c, notes);
        out += QLatin1Char('\n');
    }
    for (const TableCells::Row &row : table.rows) {
        for (int c = 0; c < table.columnCount; ++c) {
            if (c > 0)
                out += QLatin1Char('\t');
            out += cellField(row.value(c), c == 0);
        }
        out += QLatin1Char('\n');
    }
    for (const CellSpans::Span &s : table.spans)
        out += QStringLiteral("#span\t%1\t%2\t%3\t%4\n").arg(s.row).arg(s.column).arg(s.rowSpan).arg(s.columnSpan);
    // A first cell starting with U+FEFF would read as a byte order mark: a comment line goes first.
    if (out.startsWith(BomChar))
        out.prepend(QLatin1String("#\n"));
    return out.toUtf8();
}
