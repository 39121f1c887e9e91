// hmi-table's form side: a table written into a real form holds its size, data, merged cells and
// headers and none of Designer's items, decodes with the table's own codecs to the same cells, loads
// through QUiLoader, reads back to the same cell file and writes again to the same bytes; the rest of
// the form stays byte for byte, but for the table's custom widget entry where the form lacks it;
// broken forms and stored data are refused with a reason.
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

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return file.readAll();
}

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
    void writeIntoForm()
    {
        const QByteArray form = fileBytes(QStringLiteral(HMI_TABLE_DATA "/panel.ui"));
        QByteArray written;
        Problem problem;
        QVERIFY2(writeTable(form, Cells, &written, &problem), qPrintable(problem.message));

        // Everything but the table's element is as it was, and the other table keeps its items.
        QCOMPARE(around(written, "params").first, around(form, "params").first);
        QCOMPARE(around(written, "params").second, around(form, "params").second);
        QCOMPARE(tableChildren(written, QStringLiteral("other")), tableChildren(form, QStringLiteral("other")));

        QCOMPARE(tableChildren(written, QStringLiteral("params")),
                 (QStringList{"property:channel", "property:rowCount", "property:columnCount", "property:data",
                              "property:mergeCells", "attribute:horizontalHeaderVisible", "column", "column", "column"}));

        StoredTable stored;
        QVERIFY(FormTableReader::read(written, QStringLiteral("params"), &stored, &problem));
        TableContents contents;
        QVERIFY(contents.load(stored.data));
        QCOMPARE(contents.rowCount(), 3);
        QCOMPARE(contents.columnCount(), 3);
        QList<TableContents::Roles> cells;
        QVERIFY(contents.readRow(0, 3, &cells)); // the text a panel shows, the binding and languages beside it
        QCOMPARE(TableContents::makeItem(cells.at(0))->text(), QStringLiteral("Feed override"));
        QCOMPARE(TableContents::makeItem(cells.at(0))->whatsThis(), QStringLiteral("multiTexts=Feed override##!&*_Vorschub-Override"));
        QCOMPARE(TableContents::makeItem(cells.at(1))->whatsThis(), QStringLiteral("1@0@100@8@2@0@9999"));
    }

    void readBackAndWriteAgain_data()
    {
        QTest::addColumn<QByteArray>("cells");
        QTest::newRow("languages, bindings, spans") << QByteArray(Cells);
        QTest::newRow("no headers, no spans: the old ones go") << QByteArray("a\tb\n\tc{x}\n");
        QTest::newRow("headers only") << QByteArray("#columns\tA\tB{10}\n");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("characters XML escapes") << QByteArray("#columns\t<&>\"'\na<&>\"'{b<&>}\n");
    }

    void readBackAndWriteAgain()
    {
        QFETCH(QByteArray, cells);
        QByteArray form, written, again;
        Problem problem;
        QVERIFY(writeTable(fileBytes(QStringLiteral(HMI_TABLE_DATA "/panel.ui")), Cells, &form, &problem)); // over another table
        QVERIFY2(writeTable(form, cells, &written, &problem), qPrintable(problem.message));
        const QByteArray text = readTable(written);
        TableCells expected;
        QVERIFY(CellFile::parse(cells, &expected, &problem));
        QCOMPARE(text, CellFile::format(expected));
        QVERIFY2(writeTable(written, text, &again, &problem), qPrintable(problem.message));
        QCOMPARE(again, written);
    }

    // Without the widget's plugin QUiLoader builds the class it extends; the stored properties still
    // arrive as byte arrays and the headers as header items.
    void loadsThroughUiLoader()
    {
        const QByteArray form = fileBytes(QStringLiteral(HMI_TABLE_DATA "/panel.ui"));
        QByteArray written;
        Problem problem;
        QVERIFY(writeTable(form, Cells, &written, &problem));
        StoredTable stored;
        QVERIFY(FormTableReader::read(written, QStringLiteral("params"), &stored, &problem));

        QBuffer buffer(&written);
        QUiLoader loader;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("TableWidget.*defaulting to base class")));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("TableWidget.*defaulting to base class")));
        std::unique_ptr<QWidget> root(loader.load(&buffer));
        QVERIFY2(root, qPrintable(loader.errorString()));
        auto *table = root->findChild<QTableWidget *>(QStringLiteral("params"));
        QVERIFY(table);
        QCOMPARE(table->property("data").userType(), int(QMetaType::QByteArray));
        QCOMPARE(table->property("data").toByteArray(), stored.data);
        QCOMPARE(table->property("mergeCells").toByteArray(), stored.mergeCells);
        QCOMPARE(table->rowCount(), 3);
        QCOMPARE(table->columnCount(), 3);
        QVERIFY(!table->item(0, 0)); // the cells are in data alone
        QCOMPARE(table->horizontalHeaderItem(1)->text(), QStringLiteral("Value"));
        QCOMPARE(table->horizontalHeaderItem(1)->whatsThis(), QStringLiteral("multiTexts=Value##!&*_Wert"));
        auto *other = root->findChild<QTableWidget *>(QStringLiteral("other"));
        QVERIFY(other && other->item(0, 0));
        QCOMPARE(other->item(0, 0)->text(), QStringLiteral("kept"));
    }

    // Tables as hand-edited forms have them: the new children follow the element's indentation.
    void tableShapes_data()
    {
        QTest::addColumn<QByteArray>("table");
        QTest::addColumn<QStringList>("children");
        QTest::newRow("empty element") << QByteArray("  <widget class=\"TableWidget\" name=\"params\"/>")
                                       << QStringList{"property:rowCount", "property:columnCount", "property:data", "column", "column"};
        QTest::newRow("items only") << QByteArray("  <widget class=\"TableWidget\" name=\"params\">\n   <item row=\"0\" column=\"0\"/>\n  </widget>")
                                    << QStringList{"property:rowCount", "property:columnCount", "property:data", "column", "column"};
        QTest::newRow("tab indented, old data after other properties")
            << QByteArray("\t<widget class=\"TableWidget\" name=\"params\">\n\t\t<property name=\"channel\"><number>1</number></property>\n"
                          "\t\t<property name=\"data\"><cstring>00</cstring></property>\n\t\t<zorder>x</zorder>\n\t</widget>")
            << QStringList{"property:channel", "property:rowCount", "property:columnCount", "property:data", "zorder", "column", "column"};
    }

    void tableShapes()
    {
        QFETCH(QByteArray, table);
        QFETCH(QStringList, children);
        const QByteArray form = formWith(table);
        QByteArray written;
        Problem problem;
        QVERIFY2(writeTable(form, "#columns\tA\tB\nx\ty\n", &written, &problem), qPrintable(problem.message));
        QCOMPARE(::tableChildren(written, QStringLiteral("params")), children);
        QCOMPARE(readTable(written), QByteArray("#columns\tA\tB\nx\ty\n"));
        QVERIFY(written.startsWith(form.left(form.indexOf("<widget class=\"TableWidget\""))));
        QVERIFY(written.endsWith("\n </widget>\n" + List + "</ui>\n"));
        // Every line the editor adds is indented one level below the table.
        const QByteArray indent = table.left(table.indexOf('<'));
        const QByteArray unit = indent.startsWith('\t') ? "\t" : " ";
        QVERIFY2(written.contains("\n" + indent + unit + "<property name=\"rowCount\">\n" + indent + unit + unit + "<number>1</number>"),
                 written.constData());
    }

    // The root's children after the form's widget, as given and as written.
    void declaration_data()
    {
        QTest::addColumn<QByteArray>("tail");
        QTest::addColumn<QByteArray>("written");
        const QByteArray rest = " <resources/>\n <connections/>\n";
        QTest::newRow("nothing after the widget") << QByteArray() << List;
        QTest::newRow("before the resources") << rest << List + rest;
        QTest::newRow("before the tab stops") << " <tabstops/>\n" + rest << List + " <tabstops/>\n" + rest;
        QTest::newRow("at the end of a list of other widgets") << " <customwidgets>\n" + GaugeEntry + " </customwidgets>\n" + rest
                                                               << " <customwidgets>\n" + GaugeEntry + Entry + " </customwidgets>\n" + rest;
        QTest::newRow("in an empty list") << " <customwidgets/>\n" + rest << List + rest;
        QTest::newRow("in a list after the resources") << rest + " <customwidgets>\n" + GaugeEntry + " </customwidgets>\n"
                                                       << rest + " <customwidgets>\n" + GaugeEntry + Entry + " </customwidgets>\n";
        QTest::newRow("declared among others: kept") << " <customwidgets>\n" + Entry + GaugeEntry + " </customwidgets>\n" + rest
                                                     << " <customwidgets>\n" + Entry + GaugeEntry + " </customwidgets>\n" + rest;
        const QByteArray otherBase = QByteArray(List).replace("QTableWidget", "QWidget");
        QTest::newRow("declared on another base: kept") << otherBase + rest << otherBase + rest;
    }

    void declaration()
    {
        QFETCH(QByteArray, tail);
        QFETCH(QByteArray, written);
        const QByteArray form = formWith("  <widget class=\"TableWidget\" name=\"params\"/>").replace("</ui>\n", tail + "</ui>\n");
        QByteArray out, again;
        Problem problem;
        QVERIFY2(writeTable(form, "#columns\tA\tB\nx\ty\n", &out, &problem), qPrintable(problem.message));
        QCOMPARE(around(out, "params").first, around(form, "params").first);
        QCOMPARE(around(out, "params").second, "\n </widget>\n" + written + "</ui>\n");
        QCOMPARE(readTable(out), QByteArray("#columns\tA\tB\nx\ty\n"));
        QVERIFY(writeTable(out, "#columns\tA\tB\nx\ty\n", &again, &problem));
        QCOMPARE(again, out);
    }

    void refusedForms_data()
    {
        QTest::addColumn<QByteArray>("form");
        QTest::addColumn<QString>("table");
        QTest::addColumn<qint64>("line");
        QTest::addColumn<QString>("says");
        const QByteArray table = "  <widget class=\"TableWidget\" name=\"params\"/>";
        QTest::newRow("not XML") << QByteArray("<ui>\n <widget class=\"TableWidget\" name=\"params\">\n</ui>\n") << "params"
                                 << qint64(3) << "well-formed";
        QTest::newRow("no such table") << formWith(table) << "tabel" << qint64(0) << "\"params\"";
        QTest::newRow("not a table") << formWith("  <widget class=\"QLabel\" name=\"params\"/>") << "params" << qint64(4)
                                     << "QLabel";
        QTest::newRow("two of the name") << formWith(table + "\n" + table) << "params" << qint64(5) << "second";
        QTest::newRow("data as a string")
            << formWith("  <widget class=\"TableWidget\" name=\"params\">\n   <property name=\"data\">\n    <string>00</string>\n"
                        "   </property>\n  </widget>")
            << "params" << qint64(6) << "<cstring>";
    }

    void refusedForms()
    {
        QFETCH(QByteArray, form);
        QFETCH(QString, table);
        QFETCH(qint64, line);
        QFETCH(QString, says);
        StoredTable stored;
        Problem problem;
        QVERIFY(!FormTableReader::read(form, table, &stored, &problem));
        QCOMPARE(problem.line, line);
        QVERIFY2(problem.message.contains(says), qPrintable(problem.message));
        QByteArray written;
        QVERIFY(!writeTable(form, "a\n", &written, &problem, table));
        QCOMPARE(problem.line, line);
        QVERIFY(written.isEmpty());
    }

    void refusedData_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QByteArray>("mergeCells");
        QTest::addColumn<QString>("says");
        QTableWidgetItem item(QStringLiteral("x"));
        const QList<QList<const QTableWidgetItem *>> rows{{&item, &item}, {&item, &item}};
        const QByteArray whole = TableContents::encode(2, 2, rows);
        QByteArray stream;
        QVERIFY(HexFrame::decode(whole, &stream));
        QTest::newRow("not hex") << QByteArray("zz") << QByteArray() << "data";
        QTest::newRow("cut after the first row") << HexFrame::encode(stream.left(stream.size() - 2 * (stream.size() - 8) / 4))
                                                 << QByteArray() << "row 2";
        QTest::newRow("merged cells not hex") << whole << QByteArray("0g") << "mergeCells";
    }

    void refusedData()
    {
        QFETCH(QByteArray, data);
        QFETCH(QByteArray, mergeCells);
        QFETCH(QString, says);
        StoredTable stored;
        stored.data = data;
        stored.mergeCells = mergeCells;
        TableCells cells;
        QString error;
        QStringList notes;
        QVERIFY(!TableStore::load(stored, &cells, &error, &notes));
        QVERIFY2(error.contains(says), qPrintable(error));
    }

    // Items Designer stored with flags and other roles read as their text and binding, with a note.
    void richerItemsRead()
    {
        QTableWidgetItem flagged(QStringLiteral("Feed"));
        flagged.setFlags(Qt::ItemIsEnabled);
        flagged.setData(Qt::WhatsThisRole, QStringLiteral("1@0@100@8@2@0@9999"));
        flagged.setData(Qt::StatusTipRole, QByteArray("\x00\x01\xff", 3));
        QTableWidgetItem font(QStringLiteral("Rapid"));
        font.setFont(QFont(QStringLiteral("Sans"), 14));
        QTableWidgetItem plain(QStringLiteral("%"));
        StoredTable stored;
        stored.data = TableContents::encode(2, 2, {{&flagged, &plain}, {&font, nullptr}});
        TableCells cells;
        QString error;
        QStringList notes;
        QVERIFY2(TableStore::load(stored, &cells, &error, &notes), qPrintable(error));
        QCOMPARE(CellFile::format(cells), QByteArray("Feed{1@0@100@8@2@0@9999}\t%\nRapid\t\n"));
        QCOMPARE(notes.size(), 1);
        QVERIFY2(notes.at(0).startsWith(QLatin1String("2 cells")), qPrintable(notes.at(0)));
    }

    void notesOnDesignerItems()
    {
        QStringList notes;
        QCOMPARE(readTable(fileBytes(QStringLiteral(HMI_TABLE_DATA "/panel.ui")), QStringLiteral("other"), &notes), QByteArray());
        QCOMPARE(notes.size(), 1);
        QVERIFY(notes.at(0).contains(QLatin1String("<item>")));
    }

    void headerAFormCannotHold()
    {
        const QByteArray form = formWith("  <widget class=\"TableWidget\" name=\"params\"/>");
        QByteArray written;
        Problem problem;
        QVERIFY(!writeTable(form, "#columns\tA\tB\\rC\n", &written, &problem));
        QVERIFY2(problem.message.contains(QLatin1String("header 2")), qPrintable(problem.message));
        QVERIFY(writeTable(form, "#columns\tA\tB\\nC\\tD\n", &written, &problem));
        QCOMPARE(readTable(written), QByteArray("#columns\tA\tB\\nC\\tD\n"));
    }
};

QTEST_MAIN(TestHmiTableForm)
#include "tst_hmitableform.moc"
