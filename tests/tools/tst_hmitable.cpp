// The cell file of hmi-table: rows, escapes, languages, bindings, directives and line endings read as
// a panel builder means them; bad lines are refused with their line; what format() writes reads back
// as the same table; merged cells that leave the table or overlap are found, however many there are.
#include "cellfile.h"
#include "spanlayout.h"

#include <QRandomGenerator>
#include <QtTest>

Q_DECLARE_METATYPE(TableCells)

namespace {

// A cell as "text" or "text<whatsThis>", control characters shown as escapes.
QString describe(const TableCells::Item &item)
{
    auto shown = [](QString s) {
        return s.replace(QLatin1Char('\t'), QLatin1String("\\t")).replace(QLatin1Char('\n'), QLatin1String("\\n"))
            .replace(QLatin1Char('\r'), QLatin1String("\\r"));
    };
    return item.whatsThis.isEmpty() ? shown(item.text) : shown(item.text) + QLatin1Char('<') + shown(item.whatsThis) + QLatin1Char('>');
}

// A table as a file of described cells: the #columns line, the rows, the #span lines, each ended.
QString describe(const TableCells &table)
{
    const auto line = [](const QVector<TableCells::Item> &items) {
        QStringList out;
        for (const TableCells::Item &item : items)
            out << describe(item);
        return out.join(QLatin1Char('\t')) + QLatin1Char('\n');
    };
    QString out = table.headers.isEmpty() ? QString() : QLatin1String("#columns\t") + line(table.headers);
    for (const auto &row : table.rows)
        out += line(row);
    for (const CellSpans::Span &s : table.spans)
        out += QStringLiteral("#span\t%1\t%2\t%3\t%4\n").arg(s.row).arg(s.column).arg(s.rowSpan).arg(s.columnSpan);
    return out;
}

QList<CellSpans::Span> spansOf(const QList<int> &numbers)
{
    QList<CellSpans::Span> spans;
    for (int i = 0; i + 3 < numbers.size(); i += 4)
        spans.append({numbers.at(i), numbers.at(i + 1), numbers.at(i + 2), numbers.at(i + 3)});
    return spans;
}

// What format() writes must read back as the very same table.
void verifyRoundTrip(const TableCells &table)
{
    const QByteArray text = CellFile::format(table);
    TableCells again;
    Problem problem;
    QVERIFY2(CellFile::parse(text, &again, &problem), qPrintable(problem.message + QLatin1String(" in:\n") + text));
    QVERIFY2(again == table, text.constData());
    QCOMPARE(CellFile::format(again), text);
}

const QString Sep = QStringLiteral("##8!&*_");
const QString Lang = QStringLiteral("##!&*_");

} // namespace

class TestHmiTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // What a file reads as (described as a file again, see describe()) and its column count.
    void read_data()
    {
        QTest::addColumn<QByteArray>("text"); QTest::addColumn<QString>("table"); QTest::addColumn<int>("columns");
        const QString u = QString::fromUtf8("K\xC3\xBChlmittel"), bom(QChar(0xFEFF));
        QTest::newRow("value binding alone") << QByteArray("{1@0@100@8@2@0@9999}\n") << "<1@0@100@8@2@0@9999>\n" << 1;
        QTest::newRow("languages") << QByteArray("Spindle speed|Drehzahl\n") << "Spindle speed<multiTexts=Spindle speed" + Lang + "Drehzahl>\n" << 1;
        QTest::newRow("languages and binding") << QByteArray("Feed|Vorschub|Avance{1@0@100@8@2@0@9999}\n")
                                               << "Feed<1@0@100@8@2@0@9999" + Sep + "multiTexts=Feed" + Lang + "Vorschub" + Lang + "Avance>\n" << 1;
        QTest::newRow("empty languages kept") << QByteArray("|Drehzahl|\n") << "<multiTexts=" + Lang + "Drehzahl" + Lang + ">\n" << 1;
        QTest::newRow("bar inside a binding is plain") << QByteArray("a{x|y}\n") << "a<x|y>\n" << 1;
        QTest::newRow("empty braces: no binding") << QByteArray("a{}\n") << "a\n" << 1;
        QTest::newRow("escapes") << QByteArray("a\\\\b\\tc\\nd\\re\\|f\\{g\\}h\\#i\n") << "a\\b\\tc\\nd\\re|f{g}h#i\n" << 1;
        QTest::newRow("escapes inside a binding") << QByteArray("{a\\{b\\}c\\\\}\n") << "<a{b}c\\>\n" << 1;
        QTest::newRow("escaped hash starts a row") << QByteArray("\\#1\tfirst\n") << "#1\tfirst\n" << 2;
        QTest::newRow("hash later in a line is text") << QByteArray("a\t#b\n") << "a\t#b\n" << 2;
        QTest::newRow("CR-LF") << QByteArray("a\tb\r\nc\r\n") << "a\tb\nc\n" << 2;
        QTest::newRow("no trailing newline") << QByteArray("a\nb") << "a\nb\n" << 1;
        QTest::newRow("CR at the end of the file") << QByteArray("a\r") << "a\n" << 1;
        QTest::newRow("empty line is an empty row") << QByteArray("a\tb\n\nc\n") << "a\tb\n\nc\n" << 2;
        QTest::newRow("trailing empty cells count as columns") << QByteArray("a\t\t\n") << "a\n" << 3;
        QTest::newRow("empty cells in between") << QByteArray("\t\tx\n") << "\t\tx\n" << 3;
        QTest::newRow("a comment of any width") << QByteArray("#" + QByteArray(CellFile::MaxColumns + 5, '\t') + "\nx\n") << "x\n" << 1;
        QTest::newRow("comments are no rows") << QByteArray("# heading\na\n#\tstill a comment\n#column\tnot a directive\n") << "a\n" << 1;
        QTest::newRow("byte order mark skipped") << QByteArray("\xEF\xBB\xBF#columns\tA\nx\n") << "#columns\tA\nx\n" << 1;
        QTest::newRow("byte order marks: only the first is skipped") << QByteArray("\xEF\xBB\xBF\xEF\xBB\xBFx\n\xEF\xBB\xBF\xEF\xBB\xBFy\n")
                                                                     << bom + "x\n" + bom + bom + "y\n" << 1;
        QTest::newRow("UTF-8") << QByteArray("K\xC3\xBChlmittel|\xE5\x86\xB7\xE5\x8D\xB4\n")
                               << u + "<multiTexts=" + u + Lang + QString::fromUtf8("\xE5\x86\xB7\xE5\x8D\xB4>\n") << 1;
        QTest::newRow("empty file") << QByteArray() << "" << 0;
        QTest::newRow("only a newline: one empty row") << QByteArray("\n") << "\n" << 1;
        QTest::newRow("languages and widths") << QByteArray("#columns\tAxis|Achse{80}\tValue{0}\tUnit|Einheit\n")
                                              << "#columns\tAxis<multiTexts=Axis" + Lang + "Achse" + Sep + "columnWidth=80>\tValue<columnWidth=0>\t"
                                                 "Unit<multiTexts=Unit" + Lang + "Einheit>\n" << 3;
        QTest::newRow("markers the panel reads only at a section's start") << QByteArray("#columns\tcolumnWidth=5\tmultiTexts=|x\n")
                                                                           << "#columns\tcolumnWidth=5\tmultiTexts=<multiTexts=multiTexts=" + Lang + "x>\n" << 2;
        QTest::newRow("headers wider than the rows") << QByteArray("#columns\tA\tB\tC\nx\n") << "#columns\tA\tB\tC\nx\n" << 3;
        QTest::newRow("rows wider than the headers") << QByteArray("#columns\tA\nx\ty\tz\n") << "#columns\tA\nx\ty\tz\n" << 3;
        QTest::newRow("empty headers count as columns") << QByteArray("#columns\t\tB\t\t\n") << "#columns\t\tB\n" << 4;
        QTest::newRow("escaped header") << QByteArray("#columns\tMin\\|Max\\{mm\\}\n") << "#columns\tMin|Max{mm}\n" << 1;
        QTest::newRow("spans, before and after the rows") << QByteArray("#span\t0\t0\t2\t1\na\tb\tc\nd\te\tf\n#span\t0\t1\t1\t2\n#span\t1\t1\t1\t1\n")
                                                          << "a\tb\tc\nd\te\tf\n#span\t0\t0\t2\t1\n#span\t0\t1\t1\t2\n#span\t1\t1\t1\t1\n" << 3;
        QTest::newRow("span touching the last cell") << QByteArray("a\tb\nc\td\n#span\t0\t0\t2\t2\n") << "a\tb\nc\td\n#span\t0\t0\t2\t2\n" << 2;
        QTest::newRow("columns without rows") << QByteArray("#columns\tA\t\n") << "#columns\tA\n" << 2;
    }
    void read()
    {
        QFETCH(QByteArray, text); QFETCH(QString, table); QFETCH(int, columns);
        TableCells cells;
        Problem problem;
        QVERIFY2(CellFile::parse(text, &cells, &problem), qPrintable(problem.message));
        QCOMPARE(describe(cells), table);
        QCOMPARE(cells.columnCount, columns);
        verifyRoundTrip(cells);
    }

    // The line a file is refused at and what the problem says; line 0: read, at the limits.
    void refused_data()
    {
        QTest::addColumn<QByteArray>("text"); QTest::addColumn<qint64>("line"); QTest::addColumn<QString>("says");
        const QByteArray wide(CellFile::MaxColumns, '\t'), longest(CellFile::MaxLineBytes, 'x'), rows(CellFile::MaxRows, '\n');
        QTest::newRow("unknown escape") << QByteArray("a\n\\x\n") << qint64(2) << "\\x";
        QTest::newRow("a million rows") << QByteArray(1000000, '\n') << qint64(CellFile::MaxRows + 1) << "rows";
        QTest::newRow("lone backslash at the end") << QByteArray("a\\\tb\n") << qint64(1) << "lone";
        QTest::newRow("unclosed binding") << QByteArray("a{1@2\n") << qint64(1) << "not closed";
        QTest::newRow("closing brace alone") << QByteArray("a}\n") << qint64(1) << "without";
        QTest::newRow("text after the binding") << QByteArray("a{b}c\n") << qint64(1) << "after";
        QTest::newRow("brace inside a binding") << QByteArray("{a{b}\n") << qint64(1) << "inside";
        QTest::newRow("eleven languages") << QByteArray("1|2|3|4|5|6|7|8|9|10|11\n") << qint64(1) << "languages";
        QTest::newRow("languages twice") << QByteArray("a|b{1@2##8!&*_multiTexts=c##!&*_d}\n") << qint64(1) << "multiTexts";
        QTest::newRow("bad cell names its column") << QByteArray("a\tb\tc}\n") << qint64(1) << "column 3";
        QTest::newRow("header text holding a width") << QByteArray("#columns\tx|AcolumnWidth=70{80}\n") << qint64(1) << "header 1: a text holds";
        QTest::newRow("header text holding a section end") << QByteArray("a\n#columns\tA\tx|y##8!&*_z\n") << qint64(2) << "header 2: a text holds";
        QTest::newRow("width not a number") << QByteArray("#columns\tA{wide}\n") << qint64(1) << "width";
        QTest::newRow("negative width") << QByteArray("#columns\tA{-5}\n") << qint64(1) << "width";
        QTest::newRow("second #columns") << QByteArray("#columns\tA\nx\n#columns\tB\n") << qint64(3) << "line 1";
        QTest::newRow("directive with spaces") << QByteArray("#span 0 0 1 2\n") << qint64(1) << "tabs";
        QTest::newRow("span with three numbers") << QByteArray("a\tb\n#span\t0\t0\t2\n") << qint64(2) << "four";
        QTest::newRow("span not a number") << QByteArray("a\tb\n#span\t0\tx\t1\t2\n") << qint64(2) << "\"x\"";
        QTest::newRow("span of no rows") << QByteArray("a\tb\n#span\t0\t0\t0\t2\n") << qint64(2) << "from 1";
        QTest::newRow("negative span row") << QByteArray("a\tb\n#span\t-1\t0\t1\t2\n") << qint64(2) << "from 0";
        QTest::newRow("span below the last row") << QByteArray("#span\t2\t0\t1\t2\na\tb\nc\td\n") << qint64(1) << "outside";
        QTest::newRow("span past the last column") << QByteArray("a\tb\n\n#span\t0\t1\t1\t2\n") << qint64(3) << "outside";
        QTest::newRow("overlapping spans name both lines") << QByteArray("a\tb\tc\nd\te\tf\n#span\t0\t0\t2\t2\n#span\t1\t1\t1\t2\n") << qint64(4) << "line 3";
        QTest::newRow("later span overlapping an earlier one placed below")
            << QByteArray("a\tb\tc\nd\te\tf\n#span\t1\t1\t1\t2\n#span\t0\t2\t2\t1\n") << qint64(4) << "line 3";
        QTest::newRow("widest row") << wide.left(CellFile::MaxColumns - 1) + "x\n" << qint64(0) << "";
        QTest::newRow("a column too many") << "a\n" + wide + "\n" << qint64(2) << "columns";
        QTest::newRow("#columns a column too many") << "#columns\t" + wide + "\n" << qint64(1) << "columns";
        QTest::newRow("longest line") << longest + "\r\n" << qint64(0) << "";
        QTest::newRow("a byte too long") << "a\n" + longest + "x\n" << qint64(2) << "longer";
        QTest::newRow("most rows and a comment") << rows + "# a comment is no row\n" << qint64(0) << "";
        QTest::newRow("a row too many") << rows + "x" << qint64(CellFile::MaxRows + 1) << "rows";
        // Empty cells cost memory too: a file of tabs is bounded by its cells, however few bytes it has.
        const QByteArray row = wide.left(CellFile::MaxColumns - 1) + '\n';
        const int fitting = int(CellFile::MaxCells / CellFile::MaxColumns);
        QTest::newRow("most cells") << row.repeated(fitting) << qint64(0) << "";
        QTest::newRow("a row of cells too many") << row.repeated(fitting + 1) << qint64(fitting + 1) << "cells";
        QTest::newRow("#columns makes the rows too many cells") << "#columns\t" + row + QByteArray(fitting + 1, '\n') << qint64(fitting + 2) << "cells";
    }
    void refused()
    {
        QFETCH(QByteArray, text); QFETCH(qint64, line); QFETCH(QString, says);
        TableCells table;
        Problem problem;
        const bool read = CellFile::parse(text, &table, &problem);
        QCOMPARE(read ? 0 : problem.line, line);
        QVERIFY2(problem.message.contains(says), qPrintable(problem.message));
        QVERIFY(read || table == TableCells());
    }

    void format_data()
    {
        QTest::addColumn<TableCells>("table"); QTest::addColumn<QByteArray>("text"); QTest::addColumn<int>("notes");
        const auto cell = [](const QString &text, const QString &whatsThis) {
            TableCells t;
            t.columnCount = 2;
            t.rows = {{{text, whatsThis}}};
            return t;
        };
        const auto headed = [](const QVector<TableCells::Item> &headers, const QList<CellSpans::Span> &spans = {}) {
            TableCells t;
            t.columnCount = 3;
            t.rows = {{}};
            t.headers = headers;
            t.spans = spans;
            return t;
        };
        TableCells t = cell("Feed", "1@0@100@8@2@0@9999");
        t.rows[0].append(TableCells::Item{"%", ""});
        QTest::newRow("text and binding") << t << QByteArray("Feed{1@0@100@8@2@0@9999}\t%\n") << 0;
        QTest::newRow("languages after a binding") << cell("Feed", "1@0@100" + Sep + "multiTexts=Feed" + Lang + "Vorschub")
                                                   << QByteArray("Feed|Vorschub{1@0@100}\t\n") << 0;
        // Languages the file cannot say as "Text|Text2{binding}" are kept whole.
        QTest::newRow("languages not starting with the text") << cell("Speed", "multiTexts=Feed" + Lang + "Vorschub")
                                                              << QByteArray("Speed{multiTexts=Feed##!&*_Vorschub}\t\n") << 0;
        QTest::newRow("one language") << cell("Feed", "multiTexts=Feed") << QByteArray("Feed{multiTexts=Feed}\t\n") << 0;
        QTest::newRow("languages before the binding") << cell("Feed", "multiTexts=Feed" + Lang + "Vorschub" + Sep + "1@0@100")
                                                      << QByteArray("Feed{multiTexts=Feed##!&*_Vorschub##8!&*_1@0@100}\t\n") << 0;
        QTest::newRow("two language sections") << cell("Feed", "multiTexts=Feed" + Lang + "V" + Sep + "multiTexts=Feed" + Lang + "W")
                                               << QByteArray("Feed{multiTexts=Feed##!&*_V##8!&*_multiTexts=Feed##!&*_W}\t\n") << 0;
        QTest::newRow("empty binding before the languages") << cell("Feed", Sep + "multiTexts=Feed" + Lang + "V")
                                                            << QByteArray("Feed{##8!&*_multiTexts=Feed##!&*_V}\t\n") << 0;
        QTest::newRow("first cell starting like a byte order mark") << cell(QString(QChar(0xFEFF)) + "x", "") << QByteArray("#\n\xEF\xBB\xBFx\t\n") << 0;
        t = headed({});
        t.rows = {};
        QTest::newRow("columns without rows or labels") << t << QByteArray("#columns\t\t\t\n") << 0;
        QTest::newRow("headers") << headed({{"", ""}, {"B", "multiTexts=B" + Lang + "Bb" + Sep + "columnWidth=70"}}) << QByteArray("#columns\t\tB|Bb{70}\t\n\t\t\n") << 0;
        QTest::newRow("header with more than a width: label and width, noted") << headed({{"A", "columnWidth=70" + Sep + "font=Sans"}})
                                                                               << QByteArray("#columns\tA{70}\t\t\n\t\t\n") << 1;
        QTest::newRow("header languages holding a width: label and the width a panel reads, noted")
            << headed({{"A", "multiTexts=A" + Lang + "BcolumnWidth=70"}}) << QByteArray("#columns\tA{70}\t\t\n\t\t\n") << 1;
        QTest::newRow("header with a bad width: label, noted") << headed({{"A", "columnWidth=wide"}}) << QByteArray("#columns\tA\t\t\n\t\t\n") << 1;
        QTest::newRow("header languages not starting with its text: label, noted") << headed({{"A", "multiTexts=B" + Lang + "C"}})
                                                                                   << QByteArray("#columns\tA\t\t\n\t\t\n") << 1;
        QTest::newRow("spans last") << headed({}, {{0, 1, 1, 2}}) << QByteArray("\t\t\n#span\t0\t1\t1\t2\n") << 0;
    }
    void format()
    {
        QFETCH(TableCells, table); QFETCH(QByteArray, text); QFETCH(int, notes);
        QStringList said;
        QCOMPARE(CellFile::format(table, &said), text);
        QCOMPARE(said.size(), notes);
        if (notes == 0)
            verifyRoundTrip(table);
    }

    // Layouts the random ones below rarely make: spans outside, a sweep past spans that ended.
    void spans_data()
    {
        QTest::addColumn<QList<int>>("spans"); QTest::addColumn<int>("fault"); QTest::addColumn<int>("other");
        QTest::newRow("tall span met after short ones ended")
            << QList<int>{0, 0, 6, 1, 0, 1, 1, 2, 2, 1, 1, 1, 5, 0, 1, 2} << 3 << 0;
        QTest::newRow("ended spans do not hide an open one to their left")
            << QList<int>{0, 0, 6, 2, 0, 3, 1, 1, 0, 5, 1, 1, 4, 1, 1, 4} << 3 << 0;
        QTest::newRow("outside before overlap") << QList<int>{0, 0, 2, 2, 0, 0, 2, 2, 7, 0, 2, 1} << 2 << -1;
        QTest::newRow("zero-sized span is outside") << QList<int>{0, 0, 1, 0} << 0 << -1;
    }

    void spans()
    {
        QFETCH(QList<int>, spans); QFETCH(int, fault); QFETCH(int, other);
        const SpanLayout::Fault found = SpanLayout::check(spansOf(spans), 8, 8);
        QCOMPARE((QList<int>{found.index, found.other}), (QList<int>{fault, other}));
    }

    // The sweep against comparing every pair, on many small random layouts.
    void spansAgainstEveryPair()
    {
        QRandomGenerator random(20240611);
        for (int round = 0; round < 3000; ++round) {
            QList<CellSpans::Span> spans;
            for (int i = int(random.bounded(1, 10)); i > 0; --i) {
                const int row = int(random.bounded(8)), column = int(random.bounded(8));
                spans.append({row, column, int(random.bounded(1, 9 - row)), int(random.bounded(1, 9 - column))});
            }
            const auto rect = [&](int i) { return QRect(spans.at(i).column, spans.at(i).row, spans.at(i).columnSpan, spans.at(i).rowSpan); };
            bool any = false;
            for (int b = 0; b < spans.size(); ++b)
                for (int a = 0; a < b; ++a)
                    any = any || rect(a).intersects(rect(b));
            const SpanLayout::Fault found = SpanLayout::check(spans, 8, 8);
            QCOMPARE(found.index >= 0, any);
            QVERIFY(!any || (found.other >= 0 && found.other < found.index && rect(found.other).intersects(rect(found.index))));
        }
    }
};

QTEST_GUILESS_MAIN(TestHmiTable)
#include "tst_hmitable.moc"
