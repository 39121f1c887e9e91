// hmi-table's form side: a table written into a real form holds its size, data, merged cells and
// headers and none of Designer's items, decodes with the table's own codecs to the same cells, loads
// through QUiLoader, reads back to the same cell file and writes again to the same bytes; the rest of
// the form stays byte for byte, but for the table's custom widget entry where the form lacks it;
// broken forms and stored data are refused with a reason.
#include "../table/tabletestsupport.h"
#include "cellfile.h"
#include "formtableeditor.h"
#include "formtablereader.h"
#include "tablecontents.h"
#include "tablestore.h"

#include <QBuffer>
#include <QRegularExpression>
#include <QTableWidget>
#include <QTableWidgetItem>
#include <QUiLoader>
#include <QXmlStreamReader>
#include <QtTest>

#include <memory>

namespace {

// The form's text before and after the element of the widget named name.
std::pair<QByteArray, QByteArray> around(const QByteArray &form, const QByteArray &name)
{
    const int start = form.lastIndexOf('\n', form.indexOf("name=\"" + name + "\"")) + 1;
    const QByteArray indent = form.mid(start, form.indexOf('<', start) - start);
    const int end = form.indexOf("\n" + indent + "</widget>", start) + 1;
    return {form.left(start), form.mid(end + indent.size() + int(qstrlen("</widget>")))};
}

// The names of the table element's children and its property names, in order.
QStringList tableChildren(const QByteArray &form, const QString &name)
{
    QXmlStreamReader xml(form);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != QLatin1String("widget")
            || xml.attributes().value(QLatin1String("name")) != name)
            continue;
        QStringList out;
        while (xml.readNextStartElement()) {
            const QString property = xml.attributes().value(QLatin1String("name")).toString();
            out << (property.isEmpty() ? xml.name().toString() : xml.name().toString() + QLatin1Char(':') + property);
            xml.skipCurrentElement();
        }
        return out;
    }
    return {};
}

bool writeTable(const QByteArray &form, const QByteArray &cellText, QByteArray *out, Problem *problem,
                const QString &name = QStringLiteral("params"))
{
    TableCells cells;
    if (!CellFile::parse(cellText, &cells, problem))
        return false;
    StoredTable stored;
    if (!TableStore::store(cells, &stored, &problem->message))
        return false;
    return FormTableEditor::write(form, name, stored, out, problem);
}

QByteArray readTable(const QByteArray &form, const QString &name = QStringLiteral("params"), QStringList *notes = nullptr)
{
    StoredTable stored;
    Problem problem;
    QStringList said;
    TableCells cells;
    QString error;
    if (!FormTableReader::read(form, name, &stored, &problem, &said) || !TableStore::load(stored, &cells, &error, &said)) {
        qWarning("%s%s", qPrintable(problem.message), qPrintable(error));
        return "unreadable";
    }
    const QByteArray text = CellFile::format(cells, &said);
    if (notes)
        *notes = said;
    return text;
}

// A form whose only table is given as the element's text.
QByteArray formWith(const QByteArray &table)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\">\n <widget class=\"QWidget\" name=\"Form\">\n"
        + table + "\n </widget>\n</ui>\n";
}

// The custom widget entry uic needs to build the table's headers, as Designer writes it.
const QByteArray Entry = "  <customwidget>\n   <class>TableWidget</class>\n   <extends>QTableWidget</extends>\n"
                         "   <header>tablewidget.h</header>\n  </customwidget>\n";
const QByteArray List = " <customwidgets>\n" + Entry + " </customwidgets>\n";
const QByteArray GaugeEntry = "  <customwidget>\n   <class>Gauge</class>\n   <extends>QWidget</extends>\n"
                              "   <header>gauge.h</header>\n  </customwidget>\n";

const char Cells[] = "#columns\tParameter|Parameter{160}\tValue|Wert\n"
                     "Feed override|Vorschub-Override\t{1@0@100@8@2@0@9999}\t%\n"
                     "Spindle speed\tSoll{1@0@102@8@0@0@24000}\n"
                     "\n"
                     "#span\t2\t0\t1\t3\n";

} // namespace

class TestHmiTableForm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // A table written into a real form loads through QUiLoader: without the widget's plugin it builds
    // the class it extends, with the stored size, data, merged cells and the headers as header items.
    // Another table's Designer items are noted, not read.
    void writeIntoForm()
    {
        const QByteArray form = TableTest::readAll(QStringLiteral(HMI_TABLE_DATA "/panel.ui"));
        QByteArray written;
        Problem problem;
        QVERIFY2(writeTable(form, Cells, &written, &problem), qPrintable(problem.message));
        QStringList notes; // the other table's Designer items are noted, not read
        QCOMPARE(readTable(form, QStringLiteral("other"), &notes), QByteArray());
        QVERIFY(notes.size() == 1 && notes.at(0).contains(QLatin1String("<item>")));

        QBuffer buffer(&written);
        QUiLoader loader;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("TableWidget.*defaulting to base class")));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("TableWidget.*defaulting to base class")));
        std::unique_ptr<QWidget> root(loader.load(&buffer));
        QVERIFY2(root, qPrintable(loader.errorString()));
        auto *table = root->findChild<QTableWidget *>(QStringLiteral("params"));
        StoredTable stored;
        QVERIFY(table && FormTableReader::read(written, QStringLiteral("params"), &stored, &problem));
        QCOMPARE((QList<QByteArray>{table->property("data").toByteArray(), table->property("mergeCells").toByteArray()}),
                 (QList<QByteArray>{stored.data, stored.mergeCells}));
        QCOMPARE((QList<int>{table->rowCount(), table->columnCount()}), (QList<int>{3, 3}));
        QVERIFY(!table->item(0, 0)); // the cells are in data alone
        QCOMPARE(table->horizontalHeaderItem(1)->whatsThis(), QStringLiteral("multiTexts=Value##!&*_Wert"));
        // The stored cells hold the text a panel shows, the binding and languages beside it.
        TableContents contents;
        QList<TableContents::Roles> cells;
        QVERIFY(contents.load(stored.data) && contents.readRow(0, 3, &cells));
        QCOMPARE((QStringList{TableContents::makeItem(cells.at(0))->text(), TableContents::makeItem(cells.at(0))->whatsThis(),
                              TableContents::makeItem(cells.at(1))->whatsThis()}),
                 (QStringList{"Feed override", "multiTexts=Feed override##!&*_Vorschub-Override", "1@0@100@8@2@0@9999"}));
    }

    // Written, the table reads back as the cells given and writes again to the same bytes; the rest of
    // the form stays. Over an earlier table: its headers and spans go when the new cells have none.
    // Tables as hand-edited forms have them, and the root's children after the form's widget: the new
    // children follow the element's indentation, the custom widget entry uic needs is added where the
    // form lacks it.
    void writtenAndReadBack_data()
    {
        QTest::addColumn<QByteArray>("form"); QTest::addColumn<QByteArray>("cells");
        QTest::addColumn<QStringList>("children"); QTest::addColumn<QByteArray>("after"); // the table's children, and what follows it
        const QByteArray original = TableTest::readAll(QStringLiteral(HMI_TABLE_DATA "/panel.ui"));
        QByteArray panel;
        Problem problem;
        QVERIFY(writeTable(original, Cells, &panel, &problem));
        const QStringList plain{"property:channel", "property:rowCount", "property:columnCount", "property:data"};
        const QStringList spanned = plain + QStringList{"property:mergeCells", "attribute:horizontalHeaderVisible", "column", "column", "column"};
        QTest::newRow("into the panel's form") << original << QByteArray(Cells) << spanned << around(original, "params").second;
        const auto over = [&](const char *name, const QByteArray &cells, const QStringList &children) {
            QTest::newRow(name) << panel << cells << children << around(panel, "params").second;
        };
        const auto headed = [&](int columns) { return plain + QStringList{"attribute:horizontalHeaderVisible", "column", "column"}.mid(0, 1 + columns); };
        over("languages, bindings, spans", Cells, spanned);
        over("no headers, no spans: the old ones go", "a\tb\n\tc{x}\n", headed(0));
        over("headers only", "#columns\tA\tB{10}\n", headed(2));
        over("nothing", QByteArray(), headed(0));
        over("characters XML escapes", "#columns\t<&>\"'\na<&>\"'{b<&>}\n", headed(1));
        over("header with a newline and a tab", "#columns\tA\tB\\nC\\tD\n", headed(2));

        const auto shape = [](const char *name, const QByteArray &table, const QByteArray &tail, const QByteArray &declared,
                              const QStringList &children = {"property:rowCount", "property:columnCount", "property:data", "column", "column"}) {
            QTest::newRow(name) << formWith(table).replace("</ui>\n", tail + "</ui>\n") << QByteArray("#columns\tA\tB\nx\ty\n") << children
                                << "\n </widget>\n" + declared + "</ui>\n";
        };
        const QByteArray empty = "  <widget class=\"TableWidget\" name=\"params\"/>", rest = " <resources/>\n <connections/>\n";
        shape("empty element", empty, {}, List);
        shape("items only", "  <widget class=\"TableWidget\" name=\"params\">\n   <item row=\"0\" column=\"0\"/>\n  </widget>", {}, List);
        shape("tab indented, old data after other properties",
              "\t<widget class=\"TableWidget\" name=\"params\">\n\t\t<property name=\"channel\"><number>1</number></property>\n"
              "\t\t<property name=\"data\"><cstring>00</cstring></property>\n\t\t<zorder>x</zorder>\n\t</widget>", {}, List,
              {"property:channel", "property:rowCount", "property:columnCount", "property:data", "zorder", "column", "column"});
        shape("before the resources", empty, rest, List + rest);
        shape("before the tab stops", empty, " <tabstops/>\n" + rest, List + " <tabstops/>\n" + rest);
        shape("at the end of a list of other widgets", empty, " <customwidgets>\n" + GaugeEntry + " </customwidgets>\n" + rest,
              " <customwidgets>\n" + GaugeEntry + Entry + " </customwidgets>\n" + rest);
        shape("in an empty list", empty, " <customwidgets/>\n" + rest, List + rest);
        shape("in a list after the resources", empty, rest + " <customwidgets>\n" + GaugeEntry + " </customwidgets>\n",
              rest + " <customwidgets>\n" + GaugeEntry + Entry + " </customwidgets>\n");
        const QByteArray among = " <customwidgets>\n" + Entry + GaugeEntry + " </customwidgets>\n" + rest;
        shape("declared among others: kept", empty, among, among);
        const QByteArray otherBase = QByteArray(List).replace("QTableWidget", "QWidget");
        shape("declared on another base: kept", empty, otherBase + rest, otherBase + rest);
    }
    void writtenAndReadBack()
    {
        QFETCH(QByteArray, form); QFETCH(QByteArray, cells); QFETCH(QStringList, children); QFETCH(QByteArray, after);
        QByteArray written, again;
        Problem problem;
        QVERIFY2(writeTable(form, cells, &written, &problem), qPrintable(problem.message));
        TableCells expected;
        QVERIFY(CellFile::parse(cells, &expected, &problem));
        const QByteArray text = readTable(written);
        QCOMPARE(text, CellFile::format(expected));
        QVERIFY2(writeTable(written, text, &again, &problem), qPrintable(problem.message));
        QCOMPARE(again, written);
        QCOMPARE(tableChildren(written, QStringLiteral("params")), children);
        QCOMPARE(around(written, "params").first, around(form, "params").first);
        QCOMPARE(around(written, "params").second, after);
        // Every line the editor adds is indented one level below the table.
        const int start = form.lastIndexOf('\n', form.indexOf("name=\"params\"")) + 1;
        const QByteArray indent = form.mid(start, form.indexOf('<', start) - start), unit = indent.startsWith('\t') ? "\t" : " ";
        QVERIFY2(written.contains("\n" + indent + unit + "<property name=\"rowCount\">\n" + indent + unit + unit + "<number>"), written.constData());
    }

    // Refused with the line and the reason, by the reader and the writer alike; cells given: only the
    // writer is asked.
    void refusedForms_data()
    {
        QTest::addColumn<QByteArray>("form"); QTest::addColumn<QString>("table"); QTest::addColumn<QByteArray>("cells");
        QTest::addColumn<qint64>("line"); QTest::addColumn<QString>("says");
        const QByteArray table = "  <widget class=\"TableWidget\" name=\"params\"/>";
        QTest::newRow("not XML") << QByteArray("<ui>\n <widget class=\"TableWidget\" name=\"params\">\n</ui>\n") << "params" << QByteArray()
                                 << qint64(3) << "well-formed";
        QTest::newRow("no such table") << formWith(table) << "tabel" << QByteArray() << qint64(0) << "\"params\"";
        QTest::newRow("not a table") << formWith("  <widget class=\"QLabel\" name=\"params\"/>") << "params" << QByteArray() << qint64(4) << "QLabel";
        QTest::newRow("two of the name") << formWith(table + "\n" + table) << "params" << QByteArray() << qint64(5) << "second";
        QTest::newRow("data as a string") << formWith("  <widget class=\"TableWidget\" name=\"params\">\n   <property name=\"data\">\n"
                                                      "    <string>00</string>\n   </property>\n  </widget>")
                                          << "params" << QByteArray() << qint64(6) << "<cstring>";
        QTest::newRow("header a form cannot hold") << formWith(table) << "params" << QByteArray("#columns\tA\tB\\rC\n") << qint64(0) << "header 2";
    }
    void refusedForms()
    {
        QFETCH(QByteArray, form); QFETCH(QString, table); QFETCH(QByteArray, cells); QFETCH(qint64, line); QFETCH(QString, says);
        StoredTable stored;
        Problem problem;
        if (cells.isEmpty()) {
            QVERIFY(!FormTableReader::read(form, table, &stored, &problem));
            QCOMPARE(problem.line, line);
            QVERIFY2(problem.message.contains(says), qPrintable(problem.message));
        }
        QByteArray written;
        QVERIFY(!writeTable(form, cells.isEmpty() ? "a\n" : cells, &written, &problem, table));
        QCOMPARE(problem.line, line);
        QVERIFY2(problem.message.contains(says), qPrintable(problem.message));
        QVERIFY(written.isEmpty());
    }

    // Stored contents as the cell file they read as, or what their refusal says; items Designer stored
    // with flags and other roles read as their text and binding, with a note.
    void storedTables_data()
    {
        QTest::addColumn<QByteArray>("data"); QTest::addColumn<QByteArray>("mergeCells"); QTest::addColumn<bool>("loads");
        QTest::addColumn<QString>("says"); QTest::addColumn<QString>("note"); // how the only note starts
        QTableWidgetItem item(QStringLiteral("x"));
        const QByteArray whole = TableContents::encode(2, 2, {{&item, &item}, {&item, &item}});
        QByteArray stream;
        QVERIFY(HexFrame::decode(whole, &stream));
        QTest::newRow("not hex") << QByteArray("zz") << QByteArray() << false << "data" << "";
        QTest::newRow("cut after the first row") << HexFrame::encode(stream.left(stream.size() - 2 * (stream.size() - 8) / 4))
                                                 << QByteArray() << false << "row 2" << "";
        QTest::newRow("merged cells not hex") << whole << QByteArray("0g") << false << "mergeCells" << "";
        QTableWidgetItem flagged(QStringLiteral("Feed"));
        flagged.setFlags(Qt::ItemIsEnabled);
        flagged.setData(Qt::WhatsThisRole, QStringLiteral("1@0@100@8@2@0@9999"));
        flagged.setData(Qt::StatusTipRole, QByteArray("\x00\x01\xff", 3));
        QTableWidgetItem font(QStringLiteral("Rapid"));
        font.setFont(QFont(QStringLiteral("Sans"), 14));
        QTableWidgetItem plain(QStringLiteral("%"));
        QTest::newRow("richer items") << TableContents::encode(2, 2, {{&flagged, &plain}, {&font, nullptr}}) << QByteArray() << true
                                      << "Feed{1@0@100@8@2@0@9999}\t%\nRapid\t\n" << "2 cells";
    }
    void storedTables()
    {
        QFETCH(QByteArray, data); QFETCH(QByteArray, mergeCells); QFETCH(bool, loads); QFETCH(QString, says); QFETCH(QString, note);
        StoredTable stored;
        stored.data = data;
        stored.mergeCells = mergeCells;
        TableCells cells;
        QString error;
        QStringList notes;
        QCOMPARE(TableStore::load(stored, &cells, &error, &notes), loads);
        const QString got = loads ? QString::fromUtf8(CellFile::format(cells)) : error;
        QVERIFY2(loads ? got == says : got.contains(says), qPrintable(got));
        if (loads)
            QVERIFY2(notes.size() == 1 && notes.at(0).startsWith(note), qPrintable(notes.join(QLatin1Char('\n'))));
    }
};

QTEST_MAIN(TestHmiTableForm)
#include "tst_hmitableform.moc"
