// The table's files, its NC program view and its bit monitor, on a recording application: what a
// table file holds and what loading it writes (for generated tables as hmi-table writes them: every
// write the one its cell showed), the NC words and the exact write-back of programs, the monitor's
// cells and registrations, and the refusals for files an operator's USB stick brings.
#include "bitview.h"
#include "cellfile.h"
#include "ncprogram.h"
#include "ncview.h"
#include "norvointerface_z3.h"
#include "operatormessage.h"
#include "tabletestsupport.h"
#include "tablestore.h"

#include <QAbstractButton>
#include <QHeaderView>
#include <QMessageBox>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QTemporaryDir>

#include <sys/stat.h>

#include <cmath>

using namespace TableTest;

namespace {

QByteArray upperAscii(QByteArray bytes)
{
    for (char &c : bytes)
        c = c >= 'a' && c <= 'z' ? char(c - 32) : c;
    return bytes;
}

// Row 0: a name, a value with 2 places, a bit, a hex word (link 3, long form), nothing;
// row 1: a name, a value without limits, nothing after it.
QString binding(int r, int c)
{
    static const QString cells[2][5] = {
        {QString(), QStringLiteral("1@0@100@8@2@-1000@1000"), QStringLiteral("bit@1@0@30@5@0"),
         QStringLiteral("2@3@7@4@0@0@100000@3@1@3"), QString()},
        {QString(), QStringLiteral("1@1@9@6@0"), QString(), QString(), QString()}};
    return cells[r][c];
}

struct FilePanel : Panel
{
    QTemporaryDir dir;
    FilePanel()
        : Panel(2, 5, contents(2, 5, binding, [](QTableWidgetItem *item, int r, int c) {
            if (c == 0)
                item->setText(r == 0 ? QStringLiteral("Feed") : QStringLiteral("Speed"));
        }))
    {
        // Row 1 ends after its second cell: the cells after it have no items.
        show();
        for (int c = 2; c < 5; ++c)
            delete table->takeItem(1, c);
        delete table->takeItem(0, 4);
        app.clearCalls();
    }
    QString path(const char *name) const { return dir.filePath(QLatin1String(name)); }
};

QStringList ncCells(TableWidget *table, int row)
{
    QStringList out{table->verticalHeaderItem(row)->text() + QLatin1Char('|')
                    + table->verticalHeaderItem(row)->data(NcView::TrailingRole).toString()};
    for (int c = 0; c < table->columnCount(); ++c) {
        const QTableWidgetItem *item = table->item(row, c);
        out << (item ? item->text() + QLatin1Char('|') + item->data(NcView::TrailingRole).toString() : QStringLiteral("-"));
    }
    return out;
}

} // namespace

class TstTableFiles : public QObject
{
    Q_OBJECT

    QStringList told; // the operator's messages

private Q_SLOTS:
    void init()
    {
        NORVOInterface_Z3::initialization()->resetToDefaults();
        told.clear();
        OperatorMessage::setSink([this](OperatorMessage::Kind, QWidget *, const QString &title, const QString &text) {
            told << title + QLatin1String(": ") + text;
        });
    }

    void savedFile()
    {
        FilePanel p;
        p.app.memory().setWord(0, 0, 0, 100, -12345);
        p.app.memory().setBit(0, 0, 0, 30, 5, true);
        p.app.memory().setWord(3, 1, 3, 7, 0x46);
        p.app.memory().setWord(0, 0, 1, 9, 77);
        p.table->saveAsFile(p.path("t.txt"));
        // Values in decimal with the cell's width and places; the last cell of a row ends the line.
        QCOMPARE(readAll(p.path("t.txt")), QByteArray("Feed\t -123.45\t1\t  70\nSpeed\t    77\n"));
    }

    // Generated tables as hmi-table writes them into a form (text, value, bit and empty cells, a
    // hidden column, a merged cell), shown, saved and loaded into a fresh table: every write goes to
    // the variable a shown value cell showed, with its value, and bits are not written.
    void savedFileWritesWhatWasShown()
    {
        QRandomGenerator random(20261125);
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("t.txt"));
        for (int round = 0; round < 200; ++round) {
            const int rows = random.bounded(1, 30), columns = random.bounded(1, 7);
            TableCells cells;
            cells.columnCount = columns;
            const int r0 = random.bounded(rows), c0 = random.bounded(columns);
            if (random.bounded(2))
                cells.spans = {{r0, c0, random.bounded(1, std::min(4, rows - r0 + 1)), random.bounded(1, columns - c0 + 1)}};
            const quint32 shownColumns = random.generate() | random.generate();
            Panel before(rows, columns), after(rows, columns);
            QStringList writes;
            for (int r = 0; r < rows; ++r) {
                cells.rows.append(TableCells::Row(columns));
                for (int c = 0; c < columns; ++c) {
                    const bool covered = !cells.spans.isEmpty() && r >= r0 && r < r0 + cells.spans[0].rowSpan && c >= c0
                        && c < c0 + cells.spans[0].columnSpan && (r != r0 || c != c0);
                    const bool shown = !covered && (shownColumns >> c & 1);
                    TableCells::Item &item = cells.rows.last()[c];
                    const int kind = random.bounded(4), address = 100 + r * 8 + c;
                    if (kind == 1) {
                        for (int k = random.bounded(6); k > 0; --k)
                            item.text += QStringLiteral("ab \t\n%#").at(random.bounded(7));
                    } else if (kind == 2) {
                        const int fields = QList<int>{6, 7, 10, 11}.at(random.bounded(4)), decimals = random.bounded(5);
                        const int channel = random.bounded(2), dataClass = random.bounded(6), link = fields >= 10 ? random.bounded(3) : 0;
                        const qint32 value = fields == 6 ? random.bounded(-1000000, 1000000) : qint32(random.generate());
                        const double x = value / std::pow(10.0, decimals);
                        item.whatsThis = QStringLiteral("%1@%2@%3@%4@%5@%6@%7@%8@%9@%10@0").arg(channel + 1).arg(dataClass)
                                             .arg(address).arg(random.bounded(12)).arg(decimals).arg(qint64(std::floor(x)) - 2)
                                             .arg(qint64(std::ceil(x)) + 2).arg(random.bounded(5)).arg(random.bounded(4)).arg(link)
                                             .section(QLatin1Char('@'), 0, fields - 1);
                        before.app.memory().setWord(link, channel, dataClass, address, value);
                        if (shown)
                            writes << QStringLiteral("setData(%1,%2,%3,%4,%5)").arg(channel).arg(dataClass).arg(address).arg(value).arg(link);
                    } else if (kind == 3) {
                        item.whatsThis = QStringLiteral("bit@1@%1@%2@%3@0").arg(random.bounded(13)).arg(address).arg(random.bounded(32));
                    }
                }
                TableCells::trim(&cells.rows.last());
            }
            const QByteArray cellText = CellFile::format(cells);
            TableCells parsed;
            Problem problem;
            StoredTable stored;
            QString error;
            QVERIFY(CellFile::parse(cellText, &parsed, &problem) && TableStore::store(parsed, &stored, &error));

            for (Panel *p : {&before, &after}) {
                p->table->setData(stored.data);
                p->table->setMergeCells(stored.mergeCells);
                p->table->setDataClass(TableWidget::User);
                p->table->setAddress({QStringLiteral("900")});
                p->app.memory().setWord(0, 0, 0, 900, qint32(shownColumns));
                p->show();
            }
            before.table->saveAsFile(file);
            after.app.clearCalls();
            after.table->loadFormFile(file);
            QCOMPARE(after.app.writes(), writes);
        }
        QVERIFY(told.isEmpty());
    }

    void loadedValuesAreChecked_data()
    {
        QTest::addColumn<QByteArray>("file"); QTest::addColumn<QStringList>("writes");
        QTest::newRow("more places than the cell: cut") << QByteArray("x\t1.236") << QStringList{"setData(0,0,100,123,0)"};
        QTest::newRow("outside the limits") << QByteArray("x\t1000.01") << QStringList{};
        QTest::newRow("hex text") << QByteArray("x\t2E") << QStringList{};
        QTest::newRow("empty") << QByteArray("x\t") << QStringList{};
        QTest::newRow("no limits, past the word") << QByteArray("x\t0\t0\t0\ny\t99999999999") << QStringList{"setData(0,0,100,0,0)", "setData(1,3,7,0,3)"};
        QTest::newRow("CR-LF, the last line without") << QByteArray("x\t5\r\ny\t6") << QStringList{"setData(0,0,100,500,0)", "setData(0,1,9,6,0)"};
        QTest::newRow("CR alone") << QByteArray("x\t5\ry\t6\r") << QStringList{"setData(0,0,100,500,0)", "setData(0,1,9,6,0)"};
        QTest::newRow("more parts than columns") << QByteArray("x\t5\t0\t1\t2\t3\t4\t5") << QStringList{"setData(0,0,100,500,0)", "setData(1,3,7,1,3)"};
        QTest::newRow("not UTF-8, binary") << QByteArray("\xff\xfe\x00\x01\t\x80\x81\n\x00\t4", 11) << QStringList{"setData(0,1,9,4,0)"};
    }
    void loadedValuesAreChecked()
    {
        QFETCH(QByteArray, file); QFETCH(QStringList, writes);
        FilePanel p;
        QVERIFY(writeFile(p.path("t.txt"), file));
        p.table->loadFormFile(p.path("t.txt"));
        QCOMPARE(p.app.writes(), writes);
    }

    void longerFilesInsertRows()
    {
        FilePanel p;
        p.table->setColumnTextAlignment(4, Qt::AlignCenter);
        QVERIFY(writeFile(p.path("t.txt"), QByteArray("a\n\nc\t\t\t\tfour\nd")));
        p.table->loadFormFile(p.path("t.txt"));
        // An empty line empties the first cell; rows made for the file take the column settings.
        QCOMPARE((QStringList{QString::number(p.table->rowCount()), p.table->item(1, 0)->text(), p.table->item(2, 0)->text(),
                              p.table->item(2, 4)->text(), p.table->item(3, 0)->text()}), (QStringList{"4", "", "c", "four", "d"}));
        QCOMPARE(p.table->item(3, 4)->textAlignment(), int(Qt::AlignCenter));
    }

    // Only regular files are opened (a named pipe would block open() for ever, a device never ends), a
    // file longer than a table or a program view holds is read up to the limit, and the operator is told
    // why; a program not read whole is never written back over its file.
    void filesRefused_data()
    {
        QTest::addColumn<int>("operation"); // load, save, show program, save program
        QTest::addColumn<QString>("file");  // in the panel's folder unless absolute; "pipe" is a named pipe
        QTest::addColumn<QByteArray>("line"); QTest::addColumn<int>("count"); // the file written, when count > 0
        QTest::addColumn<int>("rows");   // afterwards; -1: fewer than count, -2: as before
        QTest::addColumn<QString>("message");
        const QString nowhere = QStringLiteral("no/such/folder/file.txt");
        const QByteArray longLine = "Feed\tX" + QByteArray(3 << 19, '1');
        QTest::newRow("load") << 0 << nowhere << QByteArray() << 0 << -2 << "loadFormFile:Cannot read file!\n";
        QTest::newRow("save") << 1 << nowhere << QByteArray() << 0 << -2 << "saveAsFile:Cannot write file!\n";
        QTest::newRow("program") << 2 << nowhere << QByteArray() << 0 << -2 << "showAsNCCode:Cannot read file!\n";
        QTest::newRow("save program") << 3 << nowhere << QByteArray() << 0 << -2 << "saveAsNCCode:Cannot write file!\n";
        QTest::newRow("load a named pipe") << 0 << "pipe" << QByteArray() << 0 << -2 << "loadFormFile:Cannot read file!\n";
        QTest::newRow("load a device") << 0 << "/dev/zero" << QByteArray() << 0 << -2 << "loadFormFile:Cannot read file!\n";
        QTest::newRow("save into a named pipe") << 1 << "pipe" << QByteArray() << 0 << -2 << "saveAsFile:Cannot write file!\n";
        QTest::newRow("program from a named pipe") << 2 << "pipe" << QByteArray() << 0 << -2 << "showAsNCCode:Cannot read file!\n";
        QTest::newRow("save program into a device") << 3 << "/dev/null" << QByteArray() << 0 << -2 << "saveAsNCCode:Cannot write file!\n";
        QTest::newRow("table: a line over 1 MiB") << 0 << "big.txt" << longLine << 2 << 2 << "loadFormFile:File not read whole!\n";
        QTest::newRow("table: over 16 MiB") << 0 << "big.txt" << QByteArray(600 << 10, 'x') << 30 << -1 << "loadFormFile:File not read whole!\n";
        QTest::newRow("program: a line over 1 MiB") << 2 << "big.txt" << longLine << 2 << 2 << "showAsNCCode:Program not read whole";
        QTest::newRow("program: more lines than a view holds") << 2 << "big.txt" << QByteArray("G1") << NcView::MaxLines + 1 << NcView::MaxLines
                                                               << "showAsNCCode:Program not read whole";
        QTest::newRow("program: over 16 MiB") << 2 << "big.txt" << QByteArray(100 << 10, 'x') << 170 << -1 << "showAsNCCode:Program not read whole";
    }
    void filesRefused()
    {
        QFETCH(int, operation); QFETCH(QString, file); QFETCH(QByteArray, line); QFETCH(int, count); QFETCH(int, rows); QFETCH(QString, message);
        FilePanel p;
        QCOMPARE(mkfifo(QFile::encodeName(p.path("pipe")).constData(), 0600), 0);
        const QString path = QDir::isAbsolutePath(file) ? file : p.path(qPrintable(file));
        if (count > 0)
            QVERIFY(writeFile(path, (line + '\n').repeated(count)));
        const QStringList before{p.table->item(0, 0)->text(), QString::number(p.table->rowCount())};
        switch (operation) {
        case 0: p.table->loadFormFile(path); break;
        case 1: p.table->saveAsFile(path); break;
        case 2: p.table->showAsNCCode(path, QStringLiteral("G,X")); break;
        default: p.table->saveAsNCCode(path); break;
        }
        QCOMPARE(told.size(), 1);
        QVERIFY2(told.first().startsWith("TableWidget: " + message) && !told.first().endsWith(message), qPrintable(told.first()));
        if (rows == -2) {
            QCOMPARE((QStringList{p.table->item(0, 0)->text(), QString::number(p.table->rowCount())}), before);
            QVERIFY(p.app.writes().isEmpty());
        } else {
            QVERIFY2(rows < 0 ? p.table->rowCount() < count : p.table->rowCount() == rows, qPrintable(QString::number(p.table->rowCount())));
        }
        if (operation != 2 || count == 0)
            return;
        p.table->saveAsNCCode(path);
        QCOMPARE(told.size(), 2);
        QVERIFY(told.last().startsWith("TableWidget: saveAsNCCode:Program not read whole, not saved!\n"));
        QCOMPARE(QFileInfo(path).size(), qint64(line.size() + 1) * count);
    }

    void ncWords_data()
    {
        QTest::addColumn<QString>("line"); QTest::addColumn<QStringList>("cells"); // header|lead, then G, X, Y, F as text|trailing or -
        QTest::newRow("words and blanks") << "G01 X10.5 Y-3" << QStringList{"0000|", "01| ", "10.5| ", "-3|", "-"};
        QTest::newRow("lower case") << "g01 x10.5" << QStringList{"0000|", "01| ", "10.5|", "-", "-"};
        QTest::newRow("text before the first word") << "N10 G00" << QStringList{"0000|N10 ", "00|", "-", "-", "-"};
        QTest::newRow("comment") << "G01 (X AXIS ONLY) F200" << QStringList{"0000|", "01| (X AXIS ONLY) ", "-", "-", "200|"};
        QTest::newRow("comment to the end") << "X1 ;Y2" << QStringList{"0000|", "-", "1| ;Y2", "-", "-"};
        QTest::newRow("letters next to each other") << "G1X2Y3F4" << QStringList{"0000|", "1|", "2|", "3|", "4|"};
        QTest::newRow("a letter repeated") << "G90 G01 X1" << QStringList{"0000|", "90| G01 ", "1|", "-", "-"};
        QTest::newRow("out of column order") << "X5 G01" << QStringList{"0000|", "-", "5| G01", "-", "-"};
        QTest::newRow("a letter without value") << "G X10" << QStringList{"0000|G ", "-", "10|", "-", "-"};
        QTest::newRow("only blanks") << "   " << QStringList{"0000|   ", "-", "-", "-", "-"};
    }
    void ncWords()
    {
        QFETCH(QString, line); QFETCH(QStringList, cells);
        Panel p(2, 2, contents(2, 2, [](int, int) { return QStringLiteral("1@0@5@8@0@0@9"); }));
        p.show();
        QTemporaryDir dir;
        QVERIFY(writeFile(dir.filePath(QStringLiteral("p.nc")), line.toUtf8() + "\n\n"));
        p.table->showAsNCCode(dir.filePath(QStringLiteral("p.nc")), QStringLiteral("G,X,Y,f"));
        QVERIFY(p.app.registrations().isEmpty()); // the designed contents stop
        // One row (the empty line does not count), a column per letter, "n" in the corner.
        QCOMPARE((QStringList{QString::number(p.table->rowCount()), QString::number(p.table->columnCount()), p.table->horizontalHeaderItem(3)->text(),
                              p.table->findChild<QAbstractButton *>(QString(), Qt::FindDirectChildrenOnly)->text()}), (QStringList{"1", "4", "f", "n"}));
        QCOMPARE(ncCells(p.table, 0), cells);
        p.table->saveAsNCCode(dir.filePath(QStringLiteral("out.nc")));
        QCOMPARE(readAll(dir.filePath(QStringLiteral("out.nc"))), line.toUpper().toUtf8() + "\n");
        if (p.table->item(0, 0)) { // the application still may write cells
            p.table->updateData(0, QStringLiteral("99"));
            QCOMPARE(p.table->item(0, 0)->text() + QString::number(p.app.registrations().size()), QStringLiteral("990"));
        }
    }

    // Generated programs of every kind of line, ended by CR alone and not UTF-8, come back exactly,
    // a-z upper-cased, with their line ends and their bytes, whether the rows were made on screen or not.
    void programsWrittenBackExactly()
    {
        QRandomGenerator random(20261124);
        QByteArrayList alphabet{"\xb5", "\xe9", "\xff", "\xc3"};
        for (char c : QByteArray("GXYZFSTMNIJKgxyz0123456789.-+ ()%;/#=*\t"))
            alphabet << QByteArray(1, c);
        QByteArray program, expected;
        for (int i = 0; i < 3000; ++i) {
            QByteArray line;
            const int length = random.bounded(0, 40);
            for (int k = 0; k < length; ++k)
                line += alphabet.at(random.bounded(int(alphabet.size())));
            program += line + '\r';
            if (!line.isEmpty())
                expected += upperAscii(line) + '\r';
        }
        Panel p(1, 1);
        p.show();
        QTemporaryDir dir;
        QVERIFY(writeFile(dir.filePath(QStringLiteral("p.nc")), program));
        p.table->showAsNCCode(dir.filePath(QStringLiteral("p.nc")), QStringLiteral("G,X,Y,Z,F,S,T,M"));
        QCoreApplication::processEvents(); // the view lays out its new rows
        p.table->verticalScrollBar()->setValue(1500); // some rows made, most not
        p.table->saveAsNCCode(dir.filePath(QStringLiteral("out.nc")));
        QCOMPARE(readAll(dir.filePath(QStringLiteral("out.nc"))), expected);
        QVERIFY(p.table->item(1500, 0) || p.table->verticalHeaderItem(1500));
        QVERIFY(!p.table->verticalHeaderItem(200) && !p.table->verticalHeaderItem(2800));
        QVERIFY(told.isEmpty());
    }

    // The bit monitor: rows of 16 bits titled by their first bit's number, the bit type in the corner;
    // the cells on screen are made and registered as their bits (rows far off are not), updates colour
    // them; all 16 columns fit the table's width. A type or an address it cannot show leaves the table as
    // it was; an unknown title type clears it.
    void bitMonitor_data()
    {
        QTest::addColumn<QList<int>>("call"); // channel, bit type, start address, bits, title type, row scrolled to
        QTest::addColumn<QString>("shown");   // rows x columns, titles 0 and 15, corner | the row title, address.bit and registered channel of cell 3 two rows below the top
        QTest::newRow("output bits") << QList<int>{2, 1, 2, 40, 1, 0} << "3x16 00 15 O_BIT | 0096 99.99 1";
        QTest::newRow("register bits, channel at the smallest int") << QList<int>{-2147483647 - 1, 10, 7, 40, 2, 0} << "3x16 0 F Reg_BIT | 0256 8.3 0";
        QTest::newRow("scrolled far down") << QList<int>{1, 0, 0, 100000, 1, 3000} << "6250x16 00 15 I_BIT | 48032 48035.48035 0";
        QTest::newRow("bit type past the names") << QList<int>{1, 11, 0, 40, 1, 0} << "2x2 kept";
        QTest::newRow("negative bit type") << QList<int>{1, -1, 0, 40, 1, 0} << "2x2 kept";
        QTest::newRow("negative address") << QList<int>{1, 0, -1, 40, 1, 0} << "2x2 kept";
        QTest::newRow("address past the numbers") << QList<int>{1, 0, 100000000, 40, 1, 0} << "2x2 kept";
        QTest::newRow("title type 3: cleared") << QList<int>{1, 0, 0, 40, 3, 0} << "0x0 ";
    }
    void bitMonitor()
    {
        QFETCH(QList<int>, call); QFETCH(QString, shown);
        Panel p(2, 2, contents(2, 2, [](int, int) { return QString(); },
                               [](QTableWidgetItem *item, int, int) { item->setText(QStringLiteral("kept")); }));
        p.show();
        p.app.clearCalls();
        p.table->showAsCNCBit(call.at(0), call.at(1), call.at(2), call.at(3), call.at(4));
        const int top = call.at(5), index = (top + 2) * 16 + 3;
        p.table->verticalScrollBar()->setValue(top);
        QString got = QStringLiteral("%1x%2 ").arg(p.table->rowCount()).arg(p.table->columnCount());
        if (p.table->columnCount() != 16) {
            QCOMPARE(got + (p.table->item(1, 1) ? p.table->item(1, 1)->text() : QString()), shown);
            return;
        }
        const QList<UiRegistration> regs = p.app.registrations();
        const QTableWidgetItem *cell = p.table->item(top + 2, 3);
        const UiRegistration reg = regs.value(index - top * 16);
        got += QStringList{p.table->horizontalHeaderItem(0)->text(), p.table->horizontalHeaderItem(15)->text(),
                           p.table->findChild<QAbstractButton *>(QString(), Qt::FindDirectChildrenOnly)->text(), "|",
                           p.table->verticalHeaderItem(top + 2)->text(), cell->text().prepend(QString::number(reg.address) + '.'),
                           QString::number(reg.channel)}.join(QLatin1Char(' '));
        QCOMPARE(got, shown);
        QVERIFY(p.table->horizontalHeader()->length() <= p.table->viewport()->width()); // the last column on screen
        QCOMPARE((QList<int>{reg.index, reg.bitType, reg.bitIndex, cell->data(BitView::AddressRole).toInt(), int(cell->flags())}),
                 (QList<int>{index, call.at(1), cell->text().toInt(), reg.address, int(Qt::ItemIsSelectable | Qt::ItemIsEnabled)}));
        QCOMPARE(regs.size(), std::min(call.at(3) - top * 16, p.visibleRows() * 16));
        QVERIFY(!p.table->item(top + 100, 0) && !p.table->item(p.table->rowCount() - 1, call.at(3) % 16)); // the last row ends at the last bit
        QVERIFY(p.app.callNames().indexOf(QStringLiteral("stopUpdateUI")) < p.app.callNames().indexOf(QStringLiteral("registerUIVariable")));
        QCOMPARE(p.app.callNames().last(), QStringLiteral("startUpdateUI"));
        p.app.deliver(p.table, index, 1);
        QCOMPARE((QVariantList{cell->background().color(), cell->text()}), (QVariantList{QColor(255, 50, 50), QString::number(reg.bitIndex)}));
        p.app.deliver(p.table, index, 0);
        QCOMPARE(cell->background().color(), QColor(Qt::white));
    }
};

QTEST_MAIN(TstTableFiles)
#include "tst_tablefiles.moc"
