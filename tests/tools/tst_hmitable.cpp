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

QStringList describe(const QVector<TableCells::Item> &items)
{
    QStringList out;
    for (const TableCells::Item &item : items)
        out << describe(item);
    return out;
}

QList<int> flatten(const QList<CellSpans::Span> &spans)
{
    QList<int> out;
    for (const CellSpans::Span &s : spans)
        out << s.row << s.column << s.rowSpan << s.columnSpan;
    return out;
}

QList<CellSpans::Span> spansOf(const QList<int> &numbers)
{
    QList<CellSpans::Span> spans;
    for (int i = 0; i + 3 < numbers.size(); i += 4)
        spans.append({numbers.at(i), numbers.at(i + 1), numbers.at(i + 2), numbers.at(i + 3)});
    return spans;
}

TableCells parsed(const QByteArray &text)
{
    TableCells table;
    Problem problem;
    if (!CellFile::parse(text, &table, &problem))
        qWarning("line %lld: %s", problem.line, qPrintable(problem.message));
    return table;
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
    void rows_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QList<QStringList>>("rows");
        QTest::addColumn<int>("columns");

        QTest::newRow("plain text cells") << QByteArray("Feed override\t%\nRapid\tmm/min\n")
                                          << QList<QStringList>{{"Feed override", "%"}, {"Rapid", "mm/min"}} << 2;
        QTest::newRow("value binding alone") << QByteArray("{1@0@100@8@2@0@9999}\n")
                                             << QList<QStringList>{{"<1@0@100@8@2@0@9999>"}} << 1;
        QTest::newRow("bit binding after text") << QByteArray("Coolant{bit@2@1@30@5@0}\n")
                                                << QList<QStringList>{{"Coolant<bit@2@1@30@5@0>"}} << 1;
        QTest::newRow("languages") << QByteArray("Spindle speed|Drehzahl\n")
                                   << QList<QStringList>{{"Spindle speed<multiTexts=Spindle speed" + Lang + "Drehzahl>"}} << 1;
        QTest::newRow("languages and binding")
            << QByteArray("Feed|Vorschub|Avance{1@0@100@8@2@0@9999}\n")
            << QList<QStringList>{{"Feed<1@0@100@8@2@0@9999" + Sep + "multiTexts=Feed" + Lang + "Vorschub" + Lang + "Avance>"}}
            << 1;
        QTest::newRow("empty languages kept") << QByteArray("|Drehzahl|\n")
                                              << QList<QStringList>{{"<multiTexts=" + Lang + "Drehzahl" + Lang + ">"}} << 1;
        QTest::newRow("bar inside a binding is plain") << QByteArray("a{x|y}\n") << QList<QStringList>{{"a<x|y>"}} << 1;
        QTest::newRow("empty braces: no binding") << QByteArray("a{}\n") << QList<QStringList>{{"a"}} << 1;
        QTest::newRow("escapes") << QByteArray("a\\\\b\\tc\\nd\\re\\|f\\{g\\}h\\#i\n")
                                 << QList<QStringList>{{"a\\b\\tc\\nd\\re|f{g}h#i"}} << 1;
        QTest::newRow("escapes inside a binding") << QByteArray("{a\\{b\\}c\\\\}\n") << QList<QStringList>{{"<a{b}c\\>"}} << 1;
        QTest::newRow("escaped hash starts a row") << QByteArray("\\#1\tfirst\n") << QList<QStringList>{{"#1", "first"}} << 2;
        QTest::newRow("hash later in a line is text") << QByteArray("a\t#b\n") << QList<QStringList>{{"a", "#b"}} << 2;
        QTest::newRow("CR-LF") << QByteArray("a\tb\r\nc\r\n") << QList<QStringList>{{"a", "b"}, {"c"}} << 2;
        QTest::newRow("no trailing newline") << QByteArray("a\nb") << QList<QStringList>{{"a"}, {"b"}} << 1;
        QTest::newRow("CR at the end of the file") << QByteArray("a\r") << QList<QStringList>{{"a"}} << 1;
        QTest::newRow("empty line is an empty row") << QByteArray("a\tb\n\nc\n") << QList<QStringList>{{"a", "b"}, {}, {"c"}} << 2;
        QTest::newRow("trailing empty cells count as columns") << QByteArray("a\t\t\n") << QList<QStringList>{{"a"}} << 3;
        QTest::newRow("empty cells in between") << QByteArray("\t\tx\n") << QList<QStringList>{{"", "", "x"}} << 3;
        QTest::newRow("a comment of any width") << QByteArray("#" + QByteArray(CellFile::MaxColumns + 5, '\t') + "\nx\n")
                                                << QList<QStringList>{{"x"}} << 1;
        QTest::newRow("comments are no rows") << QByteArray("# heading\na\n#\tstill a comment\n#column\tnot a directive\n")
                                              << QList<QStringList>{{"a"}} << 1;
        QTest::newRow("byte order mark skipped") << QByteArray("\xEF\xBB\xBF#columns\tA\nx\n") << QList<QStringList>{{"x"}} << 1;
        QTest::newRow("byte order mark at a later line is text")
            << QByteArray("a\n\xEF\xBB\xBFx\n") << QList<QStringList>{{"a"}, {QString(QChar(0xFEFF)) + "x"}} << 1;
        QTest::newRow("byte order marks: only the first is skipped")
            << QByteArray("\xEF\xBB\xBF\xEF\xBB\xBFx\n\xEF\xBB\xBF\xEF\xBB\xBFy\n")
            << QList<QStringList>{{QString(QChar(0xFEFF)) + "x"}, {QString(2, QChar(0xFEFF)) + "y"}} << 1;
        QTest::newRow("UTF-8") << QByteArray("K\xC3\xBChlmittel|\xE5\x86\xB7\xE5\x8D\xB4\n")
                               << QList<QStringList>{{QString::fromUtf8("K\xC3\xBChlmittel<multiTexts=K\xC3\xBChlmittel") + Lang
                                                      + QString::fromUtf8("\xE5\x86\xB7\xE5\x8D\xB4>")}}
                               << 1;
        QTest::newRow("empty file") << QByteArray() << QList<QStringList>{} << 0;
        QTest::newRow("only a newline: one empty row") << QByteArray("\n") << QList<QStringList>{{}} << 1;
    }

    void rows()
    {
        QFETCH(QByteArray, text);
        QFETCH(QList<QStringList>, rows);
        QFETCH(int, columns);
        const TableCells table = parsed(text);
        QCOMPARE(table.rows.size(), rows.size());
        for (int r = 0; r < rows.size(); ++r)
            QCOMPARE(describe(table.rows.at(r)), rows.at(r));
        QCOMPARE(table.columnCount, columns);
        verifyRoundTrip(table);
    }

    void directives_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("headers");
        QTest::addColumn<int>("columns");
        QTest::addColumn<QList<int>>("spans");

        QTest::newRow("labels") << QByteArray("#columns\tParameter\tValue\n") << QStringList{"Parameter", "Value"} << 2 << QList<int>{};
        QTest::newRow("languages and widths")
            << QByteArray("#columns\tAxis|Achse{80}\tValue{0}\tUnit|Einheit\n")
            << QStringList{"Axis<multiTexts=Axis" + Lang + "Achse" + Sep + "columnWidth=80>", "Value<columnWidth=0>",
                           "Unit<multiTexts=Unit" + Lang + "Einheit>"}
            << 3 << QList<int>{};
        QTest::newRow("markers the panel reads only at a section's start")
            << QByteArray("#columns\tcolumnWidth=5\tmultiTexts=|x\n")
            << QStringList{"columnWidth=5", "multiTexts=<multiTexts=multiTexts=" + Lang + "x>"} << 2 << QList<int>{};
        QTest::newRow("headers wider than the rows") << QByteArray("#columns\tA\tB\tC\nx\n") << QStringList{"A", "B", "C"} << 3
                                                     << QList<int>{};
        QTest::newRow("rows wider than the headers") << QByteArray("#columns\tA\nx\ty\tz\n") << QStringList{"A"} << 3 << QList<int>{};
        QTest::newRow("empty headers count as columns") << QByteArray("#columns\t\tB\t\t\n") << QStringList{"", "B"} << 4
                                                        << QList<int>{};
        QTest::newRow("escaped header") << QByteArray("#columns\tMin\\|Max\\{mm\\}\n") << QStringList{"Min|Max{mm}"} << 1
                                        << QList<int>{};
        QTest::newRow("spans, before and after the rows")
            << QByteArray("#span\t0\t0\t2\t1\na\tb\tc\nd\te\tf\n#span\t0\t1\t1\t2\n#span\t1\t1\t1\t1\n") << QStringList{} << 3
            << QList<int>{0, 0, 2, 1, 0, 1, 1, 2, 1, 1, 1, 1};
        QTest::newRow("span touching the last cell") << QByteArray("a\tb\nc\td\n#span\t0\t0\t2\t2\n") << QStringList{} << 2
                                                     << QList<int>{0, 0, 2, 2};
        QTest::newRow("columns without rows") << QByteArray("#columns\tA\t\n") << QStringList{"A"} << 2 << QList<int>{};
    }

    void directives()
    {
        QFETCH(QByteArray, text);
        QFETCH(QStringList, headers);
        QFETCH(int, columns);
        QFETCH(QList<int>, spans);
        const TableCells table = parsed(text);
        QCOMPARE(describe(table.headers), headers);
        QCOMPARE(table.columnCount, columns);
        QCOMPARE(flatten(table.spans), spans);
        verifyRoundTrip(table);
    }

    void refused_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<qint64>("line");
        QTest::addColumn<QString>("says");

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
        QTest::newRow("header text holding a width") << QByteArray("#columns\tx|AcolumnWidth=70{80}\n") << qint64(1)
                                                     << "header 1: a text holds";
        QTest::newRow("header text holding a section end") << QByteArray("a\n#columns\tA\tx|y##8!&*_z\n") << qint64(2)
                                                           << "header 2: a text holds";
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
        QTest::newRow("overlapping spans name both lines")
            << QByteArray("a\tb\tc\nd\te\tf\n#span\t0\t0\t2\t2\n#span\t1\t1\t1\t2\n") << qint64(4) << "line 3";
        QTest::newRow("later span overlapping an earlier one placed below")
            << QByteArray("a\tb\tc\nd\te\tf\n#span\t1\t1\t1\t2\n#span\t0\t2\t2\t1\n") << qint64(4) << "line 3";
    }

    void refused()
    {
        QFETCH(QByteArray, text);
        QFETCH(qint64, line);
        QFETCH(QString, says);
        TableCells table;
        Problem problem;
        QVERIFY(!CellFile::parse(text, &table, &problem));
        QCOMPARE(problem.line, line);
        QVERIFY2(problem.message.contains(says), qPrintable(problem.message));
        QVERIFY(table == TableCells());
    }

    void limits()
    {
        TableCells table;
        Problem problem;
        const QByteArray widest = QByteArray(CellFile::MaxColumns - 1, '\t') + "x\n";
        QVERIFY(CellFile::parse(widest, &table, &problem));
        QCOMPARE(table.columnCount, CellFile::MaxColumns);
        QVERIFY(!CellFile::parse("a\n" + QByteArray(CellFile::MaxColumns, '\t') + "\n", &table, &problem));
        QCOMPARE(problem.line, qint64(2));
        QVERIFY(!CellFile::parse("#columns" + QByteArray(CellFile::MaxColumns + 1, '\t') + "\n", &table, &problem));
        QCOMPARE(problem.line, qint64(1));

        const QByteArray longest(CellFile::MaxLineBytes, 'x');
        QVERIFY(CellFile::parse(longest + "\r\n", &table, &problem));
        QVERIFY(!CellFile::parse("a\n" + longest + "x\n", &table, &problem));
        QCOMPARE(problem.line, qint64(2));

        const QByteArray rows(CellFile::MaxRows, '\n');
        QVERIFY(CellFile::parse(rows + "# a comment is no row\n", &table, &problem));
        QCOMPARE(int(table.rows.size()), CellFile::MaxRows);
        QVERIFY(!CellFile::parse(rows + "x", &table, &problem));
        QCOMPARE(problem.line, qint64(CellFile::MaxRows) + 1);
        QVERIFY(table.rows.isEmpty());
    }

    // Empty cells cost memory too: a file of tabs is bounded by its cells, however few bytes it has.
    void cellLimit()
    {
        const QByteArray row = QByteArray(CellFile::MaxColumns - 1, '\t') + '\n';
        const int fitting = int(CellFile::MaxCells / CellFile::MaxColumns);
        TableCells table;
        Problem problem;
        QVERIFY(CellFile::parse(row.repeated(fitting), &table, &problem));
        QVERIFY(!CellFile::parse(row.repeated(fitting + 1), &table, &problem));
        QCOMPARE(problem.line, qint64(fitting) + 1);
        // The #columns line alone can make the rows too many cells.
        QVERIFY(!CellFile::parse("#columns\t" + row + QByteArray(fitting + 1, '\n'), &table, &problem));
        QCOMPARE(problem.line, qint64(fitting) + 2);
    }

    void format_data()
    {
        QTest::addColumn<TableCells>("table");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("notes");

        TableCells t;
        t.columnCount = 2;
        t.rows = {{{"Feed", "1@0@100@8@2@0@9999"}, {"%", ""}}};
        QTest::newRow("text and binding") << t << QByteArray("Feed{1@0@100@8@2@0@9999}\t%\n") << 0;

        t.rows = {{{"Feed", "1@0@100" + Sep + "multiTexts=Feed" + Lang + "Vorschub"}}};
        QTest::newRow("languages after a binding") << t << QByteArray("Feed|Vorschub{1@0@100}\t\n") << 0;

        t.rows = {{{"Speed", "multiTexts=Feed" + Lang + "Vorschub"}}};
        QTest::newRow("languages not starting with the text: kept whole")
            << t << QByteArray("Speed{multiTexts=Feed##!&*_Vorschub}\t\n") << 0;

        t.rows = {{{"Feed", "multiTexts=Feed"}}};
        QTest::newRow("one language: kept whole") << t << QByteArray("Feed{multiTexts=Feed}\t\n") << 0;

        t.rows = {{{"Feed", "multiTexts=Feed" + Lang + "Vorschub" + Sep + "1@0@100"}}};
        QTest::newRow("languages before the binding: kept whole")
            << t << QByteArray("Feed{multiTexts=Feed##!&*_Vorschub##8!&*_1@0@100}\t\n") << 0;

        t.rows = {{{"Feed", "multiTexts=Feed" + Lang + "V" + Sep + "multiTexts=Feed" + Lang + "W"}}};
        QTest::newRow("two language sections: kept whole")
            << t << QByteArray("Feed{multiTexts=Feed##!&*_V##8!&*_multiTexts=Feed##!&*_W}\t\n") << 0;

        t.rows = {{{"Feed", Sep + "multiTexts=Feed" + Lang + "V"}}};
        QTest::newRow("empty binding before the languages: kept whole")
            << t << QByteArray("Feed{##8!&*_multiTexts=Feed##!&*_V}\t\n") << 0;

        t.rows = {{{"a|b", ""}, {"#x", "{y}"}}, {{"#z", ""}}};
        QTest::newRow("bars, braces and hashes") << t << QByteArray("a\\|b\t#x{\\{y\\}}\n\\#z\t\n") << 0;

        t.rows = {{{"l1\nl2\tx\ry\\", ""}}};
        QTest::newRow("control characters") << t << QByteArray("l1\\nl2\\tx\\ry\\\\\t\n") << 0;

        t.rows = {{{QString(QChar(0xFEFF)) + "x", ""}}};
        QTest::newRow("first cell starting like a byte order mark")
            << t << QByteArray("#\n\xEF\xBB\xBFx\t\n") << 0;

        t.rows = {};
        t.columnCount = 3;
        t.headers = {};
        QTest::newRow("columns without rows or labels") << t << QByteArray("#columns\t\t\t\n") << 0;

        t.rows = {{}};
        t.headers = {{"", ""}, {"B", "multiTexts=B" + Lang + "Bb" + Sep + "columnWidth=70"}};
        QTest::newRow("headers") << t << QByteArray("#columns\t\tB|Bb{70}\t\n\t\t\n") << 0;

        t.headers = {{"A", "columnWidth=70" + Sep + "font=Sans"}};
        QTest::newRow("header with more than a width: label and width, noted") << t << QByteArray("#columns\tA{70}\t\t\n\t\t\n") << 1;

        t.headers = {{"A", "multiTexts=A" + Lang + "BcolumnWidth=70"}};
        QTest::newRow("header languages holding a width: label and the width a panel reads, noted")
            << t << QByteArray("#columns\tA{70}\t\t\n\t\t\n") << 1;

        t.headers = {{"A", "columnWidth=wide"}};
        QTest::newRow("header with a bad width: label, noted") << t << QByteArray("#columns\tA\t\t\n\t\t\n") << 1;

        t.headers = {{"A", "multiTexts=B" + Lang + "C"}};
        QTest::newRow("header languages not starting with its text: label, noted") << t << QByteArray("#columns\tA\t\t\n\t\t\n") << 1;

        t.headers = {};
        t.spans = {{0, 1, 1, 2}};
        QTest::newRow("spans last") << t << QByteArray("\t\t\n#span\t0\t1\t1\t2\n") << 0;
    }

    void format()
    {
        QFETCH(TableCells, table);
        QFETCH(QByteArray, text);
        QFETCH(int, notes);
        QStringList said;
        QCOMPARE(CellFile::format(table, &said), text);
        QCOMPARE(said.size(), notes);
        if (notes == 0) {
            QCOMPARE(parsed(text), table);
            verifyRoundTrip(table);
        }
    }

    void spans_data()
    {
        QTest::addColumn<QList<int>>("spans");
        QTest::addColumn<int>("fault");
        QTest::addColumn<int>("other");

        QTest::newRow("side by side") << QList<int>{0, 0, 2, 2, 0, 2, 2, 2, 2, 0, 1, 4} << -1 << -1;
        QTest::newRow("same first cell") << QList<int>{1, 1, 1, 2, 1, 1, 2, 1} << 1 << 0;
        QTest::newRow("one inside another") << QList<int>{0, 0, 4, 4, 1, 1, 1, 2} << 1 << 0;
        QTest::newRow("corner to corner") << QList<int>{0, 0, 2, 2, 1, 1, 2, 2} << 1 << 0;
        QTest::newRow("tall span met after short ones ended")
            << QList<int>{0, 0, 6, 1, 0, 1, 1, 2, 2, 1, 1, 1, 5, 0, 1, 2} << 3 << 0;
        QTest::newRow("ended spans do not hide an open one to their left")
            << QList<int>{0, 0, 6, 2, 0, 3, 1, 1, 0, 5, 1, 1, 4, 1, 1, 4} << 3 << 0;
        QTest::newRow("outside before overlap") << QList<int>{0, 0, 2, 2, 0, 0, 2, 2, 7, 0, 2, 1} << 2 << -1;
        QTest::newRow("zero-sized span is outside") << QList<int>{0, 0, 1, 0} << 0 << -1;
    }

    void spans()
    {
        QFETCH(QList<int>, spans);
        QFETCH(int, fault);
        QFETCH(int, other);
        const SpanLayout::Fault found = SpanLayout::check(spansOf(spans), 8, 8);
        QCOMPARE(found.index, fault);
        QCOMPARE(found.other, other);
    }

    // The sweep against comparing every pair, on many small random layouts.
    void spansAgainstEveryPair()
    {
        QRandomGenerator random(20240611);
        for (int round = 0; round < 3000; ++round) {
            QList<CellSpans::Span> spans;
            const int count = int(random.bounded(1, 10));
            for (int i = 0; i < count; ++i) {
                const int row = int(random.bounded(8)), column = int(random.bounded(8));
                spans.append({row, column, int(random.bounded(1, 9 - row)), int(random.bounded(1, 9 - column))});
            }
            auto overlap = [&](int a, int b) {
                const CellSpans::Span &x = spans.at(a), &y = spans.at(b);
                return x.row < y.row + y.rowSpan && y.row < x.row + x.rowSpan && x.column < y.column + y.columnSpan
                    && y.column < x.column + x.columnSpan;
            };
            bool any = false;
            for (int a = 0; a < count; ++a)
                for (int b = a + 1; b < count; ++b)
                    any = any || overlap(a, b);
            const SpanLayout::Fault found = SpanLayout::check(spans, 8, 8);
            QCOMPARE(found.index >= 0, any);
            if (any) {
                QVERIFY(found.other >= 0 && found.other < found.index);
                QVERIFY(overlap(found.other, found.index));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestHmiTable)
#include "tst_hmitable.moc"
