// How an operator changes the parameter table, on a recording application: the numbers the keypad
// and the input line turn into (and the ones they refuse), what is written where, the drive's
// follow-up for bus parameters, the authority check, the free-entry mode, navigation over hidden
// and unselectable cells, and the keypad settings.
#include "currentcell.h"
#include "inputwidget.h"
#include "keypaddescription.h"
#include "keypadplacement.h"
#include "norvointerface_z3.h"
#include "tabletestsupport.h"
#include "valueconversion.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <limits>

using namespace TableTest;

namespace {

constexpr double Big = 1000000000.0;

// A 3 x 2 table whose cell (1, 1) carries binding and shows "7", current and with the keypad on.
struct EditPanel : Panel
{
    InputWidget input;

    explicit EditPanel(const QString &binding, int rows = 3)
        : Panel(rows, 2, contents(rows, 2, [&](int r, int c) { return r == 1 && c == 1 ? binding : QString(); },
                                  [](QTableWidgetItem *item, int, int) { item->setText(QStringLiteral("7")); }))
    {
        table->setSoftKeypad(true);
        table->setInputWidget(&input);
        show();
        table->setCurrentCell(1, 1);
        app.clearCalls();
    }
    void click() { table->writeData(table->item(1, 1)); }
    void typeAndReturn(const QString &text)
    {
        input.setText(text);
        QTest::keyClick(table, Qt::Key_Return);
    }
};

} // namespace

class TstTableEditing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    void keypadConversion_data()
    {
        QTest::addColumn<QString>("text"); QTest::addColumn<int>("sizeCode"); QTest::addColumn<int>("radix");
        QTest::addColumn<int>("decimals"); QTest::addColumn<double>("lowest"); QTest::addColumn<double>("highest");
        QTest::addColumn<QVariant>("word"); // invalid: refused
        const QVariant refused;
        QTest::newRow("decimal, 2 places") << "12.345" << 4 << 10 << 2 << -Big << Big << QVariant(1234);
        QTest::newRow("decimal, toward zero") << "-0.005" << 4 << 10 << 2 << -Big << Big << QVariant(0);
        QTest::newRow("decimal zero") << "0" << 4 << 10 << 2 << -Big << Big << QVariant(0);
        QTest::newRow("decimal, negative") << "-1.239" << 4 << 10 << 2 << -Big << Big << QVariant(-124);
        QTest::newRow("decimal past the word") << "30000000" << 4 << 10 << 2 << -Big << Big << refused;
        QTest::newRow("exponent past every range") << "1e300" << 4 << 10 << 0 << -Big << Big << refused;
        QTest::newRow("sign alone") << "-" << 4 << 10 << 0 << -Big << Big << refused;
        QTest::newRow("above the cell's range") << "10.5" << 4 << 10 << 1 << 0.0 << 10.0 << refused;
        QTest::newRow("signed hex") << "-1A" << 0 << 16 << 0 << -Big << Big << QVariant(-26);
        QTest::newRow("signed binary") << "101" << 1 << 2 << 0 << -Big << Big << QVariant(5);
        QTest::newRow("signed past 32 bits") << "2147483648" << 1 << 10 << 0 << -1e12 << 1e12 << refused;
        QTest::newRow("hex digit out of range") << "1G" << 0 << 16 << 0 << -Big << Big << refused;
        QTest::newRow("octal digit out of range") << "18" << 2 << 8 << 0 << -Big << Big << refused;
        QTest::newRow("binary digit out of range") << "102" << 3 << 2 << 0 << -Big << Big << refused;
        QTest::newRow("unsigned octal") << "17" << 2 << 8 << 0 << -Big << Big << QVariant(15);
        QTest::newRow("unsigned full word, bit for bit") << "FFFFFFFF" << 3 << 16 << 0 << 0.0 << 5e9 << QVariant(-1);
        QTest::newRow("unsigned past 32 bits") << "100000000" << 3 << 16 << 0 << 0.0 << 1e12 << refused;
        QTest::newRow("unsigned negative") << "-1" << 2 << 10 << 0 << -Big << Big << refused;
        QTest::newRow("unknown size code") << "55" << 9 << 10 << 0 << -Big << Big << QVariant(0);
    }
    void keypadConversion()
    {
        QFETCH(QString, text); QFETCH(int, sizeCode); QFETCH(int, radix); QFETCH(int, decimals); QFETCH(double, lowest);
        QFETCH(double, highest); QFETCH(QVariant, word);
        const auto value = ValueConversion::fromKeypad(text, sizeCode, radix, decimals, lowest, highest);
        QCOMPARE(value.has_value(), word.isValid());
        if (value)
            QCOMPARE(*value, word.toInt());
    }

    void currentCellRecord_data()
    {
        QTest::addColumn<QString>("binding"); QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("record"); // bound, value, bit, channel, class/type, address, bit, decimals, lowest, highest, size, radix, link
        QTest::newRow("value, short") << "2@3@200@8@2@-5@99" << 0 << "true true false 1 3 200 0 2 -5 99 4 10 0";
        QTest::newRow("value, long form") << "1@0@7@4@0@0@255@2@1@3" << 0 << "true true false 0 0 7 0 0 0 255 2 16 3";
        QTest::newRow("value without limits") << "1@1@9@8@1" << 0 << "true true false 0 1 9 0 1 -1000000000 1000000000 4 10 0";
        QTest::newRow("bit") << "bit@2@1@30@5@4" << 0 << "true false true 1 1 30 5 0 0 1 3 2 4";
        QTest::newRow("channels at the smallest int") << "-2147483648@0@7@8@0" << 0 << "true true false 0 0 7 0 0 -1000000000 1000000000 4 10 0";
        QTest::newRow("short number entry") << "3" << 0 << "false false false 0 -1 0 0 3 -99999999 99999999 4 10 0";
        QTest::newRow("short value") << "1" << 0 << "true true false 0 -1 0 0 0 -1000000000 1000000000 4 10 0";
        QTest::newRow("text") << "Feed" << 0 << "false false false 0 -1 0 0 0 -1000000000 1000000000 4 10 0";
        QTest::newRow("free entry") << "Feed" << 1 << "true false false 0 -1 0 0 0 -1000000000 1000000000 4 10 0";
    }
    void currentCellRecord()
    {
        QFETCH(QString, binding); QFETCH(int, mode); QFETCH(QString, record);
        QTableWidgetItem item;
        item.setWhatsThis(binding);
        const CurrentCell c = CurrentCell::of(&item, mode);
        QStringList got;
        for (const QVariant &v : QVariantList{c.bound, c.isValue, c.isBit, c.channel, c.isBit ? c.bitType : c.dataClass, c.address, c.bitIndex,
                                              c.decimals, QString::number(c.lowest, 'g', 12), QString::number(c.highest, 'g', 12), c.sizeCode, c.radix, c.comId})
            got << v.toString();
        QCOMPARE(got.join(QLatin1Char(' ')), record);
        item.setFlags(item.flags() & ~Qt::ItemIsEditable);
        QCOMPARE(CurrentCell::of(&item, 0).bound, false);
    }

    // What the keypad's answer or the input line writes, and where: the cell's variable, the drive's
    // follow-up for bus parameters, a text cell's text; refused numbers write nothing.
    void writes_data()
    {
        QTest::addColumn<int>("route"); // 0 keypad, 1 keypad cancelled, 2 input line, 3 keypad after new contents
        QTest::addColumn<QString>("binding"); QTest::addColumn<QString>("typed"); QTest::addColumn<int>("bus"); // 1 general, 2 device
        QTest::addColumn<QStringList>("writes"); QTest::addColumn<QString>("cell"); // the cell's text afterwards if changed
        const QString v2 = QStringLiteral("1@0@100@8@2@-100@100"), v3 = QStringLiteral("1@0@100@8@3@-100@100");
        const QStringList none;
        QTest::newRow("keypad: value") << 0 << "1@0@100@8@2@0@9999" << "12.345" << 0 << QStringList{"setData(0,0,100,1234,0)"} << "";
        QTest::newRow("keypad: hex word on a link") << 0 << "2@3@7@4@0@0@1000@2@1@3" << "FF" << 0 << QStringList{"setData(1,3,7,255,3)"} << "";
        QTest::newRow("keypad: bit on") << 0 << "bit@2@1@30@5@0" << "1" << 0 << QStringList{"setBit(1,1,30,5,true,0)"} << "";
        QTest::newRow("keypad: bit off") << 0 << "bit@1@0@4@0@2" << "0" << 0 << QStringList{"setBit(0,0,4,0,false,2)"} << "";
        QTest::newRow("keypad: cancelled") << 1 << "1@0@100@8@2@0@9999" << "5" << 0 << none << "";
        QTest::newRow("keypad: outside the range") << 0 << "1@0@100@8@2@0@10" << "11" << 0 << none << "";
        QTest::newRow("keypad: new contents") << 3 << "1@0@200@8@0@0@99" << "5" << 0 << QStringList{"setData(0,0,200,5,0)"} << "";
        QTest::newRow("keypad: text cell, no keypad") << 0 << "Feed" << "5" << 0 << none << "";
        QTest::newRow("keypad: bus word") << 0 << "1@4@4010@8@0@0@99999@4@0@2" << "5" << 1
                                          << QStringList{"setData(0,4,4010,5,2)", "setData(0,4,3,10,0)", "setData(0,4,2,7,2)"} << "";
        QTest::newRow("keypad: bus word of a device") << 0 << "2@4@4205@8@0@0@99999" << "5" << 2
                                                      << QStringList{"setData(1,4,4205,5,0)", "setData(1,4,3,5,0)", "setData(1,4,2,107,0)"} << "";
        QTest::newRow("keypad: not a bus word") << 0 << "1@0@4010@8@0@0@99999" << "5" << 1 << QStringList{"setData(0,0,4010,5,0)"} << "";
        QTest::newRow("keypad: bus word, normal table") << 0 << "1@4@4010@8@0@0@99999" << "5" << 0 << QStringList{"setData(0,4,4010,5,0)"} << "";
        QTest::newRow("line: value, 2 places") << 2 << v2 << "12.34" << 0 << QStringList{"setData(0,0,100,1234,0)"} << "";
        QTest::newRow("line: more places than the cell, negative") << 2 << v3 << "-0.0001" << 0 << none << "";
        QTest::newRow("line: value, 3 places") << 2 << v3 << "-0.005" << 0 << QStringList{"setData(0,0,100,-5,0)"} << "";
        QTest::newRow("line: more places than the cell") << 2 << v2 << "12.345" << 0 << none << "";
        QTest::newRow("line: value above range") << 2 << v2 << "100.01" << 0 << none << "";
        QTest::newRow("line: value with exponent") << 2 << "1@0@100@8@0@-1e9@1e9" << "1e3" << 0 << none << "";
        QTest::newRow("line: value past the word") << 2 << "1@0@100@8@2@-1e9@1e9" << "30000000" << 0 << none << "";
        QTest::newRow("line: bit 1") << 2 << "bit@1@0@4@2@0" << "1" << 0 << QStringList{"setBit(0,0,4,2,true,0)"} << "";
        QTest::newRow("line: bit 0") << 2 << "bit@1@0@4@2@0" << "0" << 0 << QStringList{"setBit(0,0,4,2,false,0)"} << "";
        QTest::newRow("line: bit 2 refused") << 2 << "bit@1@0@4@2@0" << "2" << 0 << none << "";
        QTest::newRow("line: bit fraction refused") << 2 << "bit@1@0@4@2@0" << "0.5" << 0 << none << "";
        QTest::newRow("line: text cell takes the text") << 2 << "Feed" << "Fast" << 0 << none << "Fast";
    }
    void writes()
    {
        QFETCH(int, route); QFETCH(QString, binding); QFETCH(QString, typed); QFETCH(int, bus); QFETCH(QStringList, writes); QFETCH(QString, cell);
        EditPanel p(route == 3 ? QStringLiteral("1@0@100@8@0@0@99") : binding);
        if (route == 3) // the current cell's record follows
            p.table->setData(contents(3, 2, [&](int r, int c) { return r == 1 && c == 1 ? binding : QString(); }));
        const QString before = p.table->item(1, 1)->text();
        p.table->setParameterType(bus ? TableWidget::M3 : TableWidget::Normal);
        p.table->setBusServoParameterType(bus == 2 ? TableWidget::Device : TableWidget::General);
        QSignalSpy finished(p.table, &TableWidget::editingFinished);
        if (route == 2) {
            p.typeAndReturn(typed);
        } else {
            p.app.setKeypadAnswer(typed, route != 1);
            p.click();
        }
        QCOMPARE(p.app.writes(), writes);
        QCOMPARE(p.table->item(1, 1)->text(), cell.isEmpty() ? before : cell);
        const bool accepted = !writes.isEmpty() || !cell.isEmpty();
        QCOMPARE(finished.count(), accepted ? 1 : 0);
        if (route == 2) {
            QCOMPARE(p.input.toolTip(), accepted ? QString() : QStringLiteral("invalid inputs!"));
            QVERIFY(p.input.text().isEmpty());
        } else {
            QCOMPARE(p.app.callsNamed(QStringLiteral("showKeypad")).size(), binding == QLatin1String("Feed") ? 0 : 1);
        }
    }

    void keypadArguments()
    {
        EditPanel p(QStringLiteral("1@0@100@8@2@-5@99@4@1@0"));
        p.table->setSoftKeypadAutoAdjust(false);
        p.table->setSoftKeypadGeometry(QRect(10, 20, 300, 200));
        p.table->setColumnCount(4); // the parameter's name left of the value, its unit right of it
        p.table->item(1, 0)->setText(QStringLiteral("Feed"));
        p.table->setItem(1, 3, new QTableWidgetItem(QStringLiteral("mm/min")));
        KeypadDescription described;
        const auto itemRect = [&p] { return p.app.callsNamed(QStringLiteral("showKeypad")).value(0).args.value(4).toRect(); };
        p.app.setKeypadAnswer(QString(), false, [&] { described = KeypadDescription::at(itemRect()); });
        p.click();
        QCOMPARE((QStringList{described.name, described.unit, KeypadDescription::at(itemRect()).name}),
                 (QStringList{"Feed", "mm/min", QString()})); // said while the keypad is open only
        const QVariantList args = p.app.callsNamed(QStringLiteral("showKeypad")).value(0).args;
        QCOMPARE(args.size(), 11);
        const QRect cell = p.table->visualItemRect(p.table->item(1, 1));
        const QPoint topLeft = p.table->mapToGlobal(cell.topLeft() + QPoint(p.table->verticalHeader()->width(), p.table->horizontalHeader()->height()));
        QCOMPARE((QList<QRect>{args.at(3).toRect(), args.at(4).toRect(), args.at(5).toRect()}),
                 (QList<QRect>{QRect(10, 20, 300, 200), QRect(topLeft, cell.size()), p.form.geometry()}));
        QCOMPARE((QStringList{args.at(0).toString(), args.at(1).toString(), args.at(2).toString(), args.at(6).toString(), args.at(7).toString(),
                              args.at(8).toString(), args.at(9).toString(), args.at(10).toString()}),
                 (QStringList{"16", p.table->item(1, 1)->text(), QString::number(TableWidget::Custom), "0", "20", "2", "-5", "99"}));
    }

    // The operator's authority is checked on every way a cell is written, and again when the keypad
    // returns: the operator may have logged out meanwhile. Without the soft keypad no keypad opens.
    void authority_data()
    {
        QTest::addColumn<int>("route"); // 0 keypad, 1 input line, 2 table file, 3 keypad while the operator logs out
        QTest::addColumn<int>("authority"); QTest::addColumn<int>("level"); QTest::addColumn<bool>("softKeypad");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("keypad, level above") << 0 << 5 << 7 << true << "refused 5";
        QTest::newRow("keypad, level equal") << 0 << 5 << 5 << true << "keypad written";
        QTest::newRow("keypad, no authority asked") << 0 << 0 << 9 << true << "keypad written";
        QTest::newRow("keypad off") << 0 << 0 << 0 << false << "";
        QTest::newRow("input line, level above") << 1 << 5 << 7 << false << "refused 5";
        QTest::newRow("input line, level below") << 1 << 5 << 3 << false << "written";
        QTest::newRow("table file, level above") << 2 << 5 << 7 << false << "refused 5";
        QTest::newRow("table file, level below") << 2 << 5 << 3 << false << "written";
        QTest::newRow("logged out while the keypad is open") << 3 << 5 << 3 << true << "keypad refused 5";
    }
    void authority()
    {
        QFETCH(int, route); QFETCH(int, authority); QFETCH(int, level); QFETCH(bool, softKeypad); QFETCH(QString, outcome);
        EditPanel p(QStringLiteral("1@0@100@8@0@0@99"));
        QSignalSpy refused(NORVOInterface_Z3::initialization(), &NORVOInterface_Z3::authorityRefused);
        p.table->setOperationalAuthority(authority);
        p.table->updateAuthority(level);
        p.table->setSoftKeypad(softKeypad);
        p.app.setKeypadAnswer(QStringLiteral("5"), true, [&] {
            if (route == 3)
                p.table->updateAuthority(7);
        });
        QTemporaryDir dir;
        QVERIFY(writeFile(dir.filePath(QStringLiteral("t.txt")), "a\tb\nc\t5\n"));
        if (route == 1)
            p.typeAndReturn(QStringLiteral("5"));
        else if (route == 2)
            p.table->loadFormFile(dir.filePath(QStringLiteral("t.txt")));
        else
            p.click();
        QStringList seen;
        if (!p.app.callsNamed(QStringLiteral("showKeypad")).isEmpty())
            seen << QStringLiteral("keypad");
        if (p.app.writes() == QStringList{"setData(0,0,100,5,0)"})
            seen << QStringLiteral("written");
        else if (!p.app.writes().isEmpty())
            seen << p.app.writes();
        for (const QList<QVariant> &refusal : std::as_const(refused))
            seen << QStringLiteral("refused %1").arg(refusal.first().toInt());
        QCOMPARE(seen.join(QLatin1Char(' ')), outcome);
    }

    void freeEntryMode()
    {
        EditPanel p(QStringLiteral("Feed"));
        QSignalSpy finished(p.table, &TableWidget::editingFinished);
        p.table->setMode(1);
        p.table->setCurrentCell(1, 0);
        p.table->setCurrentCell(1, 1);
        p.app.setKeypadAnswer(QStringLiteral("Hello"), true);
        p.click(); // column not marked editable
        QCOMPARE(p.app.callsNamed(QStringLiteral("showKeypad")).size(), 0);
        p.table->setColumnEditable(1, true);
        p.click();
        const QVariantList args = p.app.callsNamed(QStringLiteral("showKeypad")).value(0).args; // decimal, 3 places, any int
        QCOMPARE((QVariantList{args.value(0), args.value(8), args.value(9), args.value(10)}), (QVariantList{10, 3, -2147483648.0, 2147483647.0}));
        QCOMPARE(p.table->item(1, 1)->text() + QString::number(finished.count()), QStringLiteral("Hello1"));
        p.typeAndReturn(QStringLiteral("Typed"));
        QCOMPARE(p.table->item(1, 1)->text(), QStringLiteral("Typed"));
        p.table->setItemEditable(1, 1, false);
        p.click();
        QCOMPARE(p.app.callsNamed(QStringLiteral("showKeypad")).size(), 1);
        p.typeAndReturn(QStringLiteral("Refused"));
        QCOMPARE(p.input.toolTip() + p.table->item(1, 1)->text() + p.input.text(), QStringLiteral("Invilid InputTyped"));
        QVERIFY(p.app.writes().isEmpty());
    }

    // Keys on the table: the arrows, Home and End move over disabled rows, hidden columns and cells
    // that cannot be selected; what is typed reaches the input line as far as the current cell takes it.
    void keys_data()
    {
        QTest::addColumn<int>("mode"); QTest::addColumn<QPoint>("start"); // row, column
        QTest::addColumn<QString>("typed"); QTest::addColumn<int>("key"); // pressed after the typing
        QTest::addColumn<QString>("seen"); // the current cell, the input line's text and tip
        const int none = 0, value = 1, text = 3; // the columns of row 1's value with 2 places and its text cell
        QTest::newRow("digits and point") << 0 << QPoint(1, value) << "12.5" << none << "1,1 12.5";
        QTest::newRow("letters stay out") << 0 << QPoint(1, value) << "1a2" << none << "1,1 12";
        QTest::newRow("minus goes in front") << 0 << QPoint(1, value) << "5-" << none << "1,1 -5";
        QTest::newRow("minus again removes it") << 0 << QPoint(1, value) << "5--" << none << "1,1 5";
        QTest::newRow("plus stays out") << 0 << QPoint(1, value) << "+5" << none << "1,1 5";
        QTest::newRow("second point refused") << 0 << QPoint(1, value) << "1..2" << none << "1,1 1.2 Invilid Input!";
        QTest::newRow("backspace") << 0 << QPoint(1, value) << "123" << int(Qt::Key_Backspace) << "1,1 12";
        QTest::newRow("text cell takes nothing") << 0 << QPoint(1, text) << "12" << none << "1,3";
        QTest::newRow("free entry: any character") << 1 << QPoint(1, text) << "ab+c" << none << "1,3 ab+c";
        QTest::newRow("free entry: sign toggles") << 1 << QPoint(1, text) << "x-y-" << none << "1,3 xy";
        QTest::newRow("free entry: plus removes minus") << 1 << QPoint(1, text) << "-4+" << none << "1,3 4";
        QTest::newRow("down over a disabled row") << 0 << QPoint(1, 1) << "" << int(Qt::Key_Down) << "3,1";
        QTest::newRow("up over a disabled row") << 0 << QPoint(3, 1) << "" << int(Qt::Key_Up) << "1,1";
        QTest::newRow("up at the top") << 0 << QPoint(0, 1) << "" << int(Qt::Key_Up) << "0,1";
        QTest::newRow("down at the bottom") << 0 << QPoint(5, 1) << "" << int(Qt::Key_Down) << "5,1";
        QTest::newRow("right over a hidden column") << 0 << QPoint(0, 1) << "" << int(Qt::Key_Right) << "0,3";
        QTest::newRow("left over a hidden column") << 0 << QPoint(0, 3) << "" << int(Qt::Key_Left) << "0,1";
        QTest::newRow("right over an unselectable cell") << 0 << QPoint(4, 0) << "" << int(Qt::Key_Right) << "4,3";
        QTest::newRow("left at column 0") << 0 << QPoint(0, 0) << "" << int(Qt::Key_Left) << "0,0";
        QTest::newRow("right at the last column") << 0 << QPoint(0, 3) << "" << int(Qt::Key_Right) << "0,3";
        QTest::newRow("home skips the disabled row") << 0 << QPoint(5, 0) << "" << int(Qt::Key_Home) << "0,0";
        QTest::newRow("end") << 0 << QPoint(0, 1) << "" << int(Qt::Key_End) << "5,1";
    }
    void keys()
    {
        QFETCH(int, mode); QFETCH(QPoint, start); QFETCH(QString, typed); QFETCH(int, key); QFETCH(QString, seen);
        // Row 2 is disabled, cell (4, 1) is enabled but not selectable, column 2 is hidden.
        Panel p(6, 4, contents(6, 4, [](int r, int c) {
            return r != 1 ? QString() : c == 1 ? QStringLiteral("1@0@1@8@2@0@99") : c == 3 ? QStringLiteral("Feed") : QString();
        }, [](QTableWidgetItem *item, int r, int c) {
            item->setText(QStringLiteral("%1,%2").arg(r).arg(c));
            if (r == 2)
                item->setFlags(Qt::NoItemFlags);
            if (r == 4 && c == 1)
                item->setFlags(Qt::ItemIsEnabled);
        }));
        InputWidget input;
        p.table->setInputWidget(&input);
        p.show();
        p.table->setColumnHidden(2, true);
        p.table->setMode(mode);
        p.table->setCurrentCell(start.x(), start.y());
        QTest::keyClicks(p.table, typed);
        if (key)
            QTest::keyClick(p.table, Qt::Key(key));
        const QString cell = QStringLiteral("%1,%2").arg(p.table->currentRow()).arg(p.table->currentColumn());
        QCOMPARE(QStringList({cell, input.text(), input.toolTip()}).join(QLatin1Char(' ')).trimmed(), seen);
        QVERIFY(p.app.writes().isEmpty());
    }

    void scrollingAtTheEdgesAndPages()
    {
        Panel p(200, 30, contents(200, 30, [](int, int) { return QString(); },
                                  [](QTableWidgetItem *item, int, int) { item->setText(QStringLiteral("x")); }));
        p.show();
        QScrollBar *horizontal = p.table->horizontalScrollBar();
        QScrollBar *vertical = p.table->verticalScrollBar();
        p.table->setCurrentCell(0, 0);
        horizontal->setValue(horizontal->maximum());
        p.table->moveLeft();
        QCOMPARE(horizontal->value(), horizontal->minimum());
        QCOMPARE(p.table->currentColumn(), 0);
        p.table->setCurrentCell(0, 29);
        horizontal->setValue(horizontal->minimum());
        p.table->moveRight();
        QCOMPARE(horizontal->value(), horizontal->maximum());
        const int first = p.table->rowAt(0);
        const int last = p.table->rowAt(p.table->viewport()->height());
        p.table->pageDown();
        QCOMPARE(vertical->pageStep(), last - first);
        QCOMPARE(vertical->value(), last - first);
        p.table->pageUp();
        QCOMPARE(vertical->value(), 0);
        p.table->pageRight();
        QVERIFY(horizontal->value() > 0);
    }

    void keypadSettings()
    {
        NORVOInterface_Z3::initialization()->setKeypadModeSize(5);
        TableWidget t; // a table resets the keypad's mode size, and so does reading its record
        QCOMPARE(NORVOInterface_Z3::initialization()->keypadModeSize(), 3);
        NORVOInterface_Z3::initialization()->setKeypadModeSize(5);
        t.keyPad();
        QCOMPARE(NORVOInterface_Z3::initialization()->keypadModeSize(), 3);
        t.setSoftKeypad(true);
        t.setSoftKeypad(false);
        QCOMPARE(t.keyPad().enabled, 1); // only the first call reaches the record
        // Rectangles from forms stay within screen coordinates, also one too wide for QRect's width().
        const int most = std::numeric_limits<int>::max(), far = KeypadPlacement::MaxCoordinate;
        for (int i = 0; i < 2; ++i)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("\"(softKeypadGeometry|keyPad)\": out of range")));
        t.setSoftKeypadGeometry(QRect(QPoint(most, 5), QPoint(-most - 1, 8)));
        QCOMPARE(t.softKeypadGeometry(), QRect(far, 5, 0, 4));
        NKeyPadStruct wide;
        wide.x = wide.width = most;
        wide.position = 7;
        t.setKeyPad(wide);
        QCOMPARE(t.keyPad().geometry(), QRect(far, 0, far, 0));
        QCOMPARE(t.keyPad().position, 0);
        // A record set keeps its other fields; the soft keypad switch no longer reaches it.
        TableWidget other;
        NKeyPadStruct mine;
        mine.flag1 = 'a';
        mine.text = QStringLiteral("kept");
        other.setKeyPad(mine);
        other.setSoftKeypad(true);
        QCOMPARE(other.keyPad(), mine);
    }

    // Changed texts are told (the current cell's also as such); the current row grows to its cells'
    // contents (not only its header label's), back when left.
    void changedContents()
    {
        EditPanel p(QStringLiteral("Feed"));
        QSignalSpy changed(p.table, &TableWidget::cellItemChanged);
        QSignalSpy current(p.table, &TableWidget::currentCellTextChanged);
        p.table->item(0, 0)->setText(QStringLiteral("a"));
        p.table->item(1, 1)->setText(QStringLiteral("a\nb\nc"));
        QCOMPARE((QList<int>{int(changed.count()), int(current.count())}), (QList<int>{2, 1}));
        QCOMPARE(changed.at(1) + current.first(), (QList<QVariant>{1, 1, QStringLiteral("a\nb\nc"), QStringLiteral("a\nb\nc")}));
        p.table->setCurrentCell(0, 0);
        p.table->setCurrentCell(1, 1);
        const int height = p.table->rowsHeight();
        QVERIFY(p.table->rowHeight(1) > height);
        p.table->setResizeToContents(false);
        QCOMPARE(p.table->rowHeight(1), height);
        p.table->setResizeToContents(true);
        QVERIFY(p.table->rowHeight(1) > height);
        p.table->setCurrentCell(0, 0);
        QCOMPARE(p.table->rowHeight(1), height);
    }
};

QTEST_MAIN(TstTableEditing)
#include "tst_tableediting.moc"
