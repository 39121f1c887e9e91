// Finding parameters in a long table: the text search with its wrap-around box, the jump dialog's
// patterns (fields and short forms), its five methods over rows not made yet, its labels, keys and
// offered methods, and the soft-key bar it borrows while open.
#include "buttongroup.h"
#include "functionbutton.h"
#include "jumppattern.h"
#include "jumpsearch.h"
#include "jumptodialog.h"
#include "norvointerface_z3.h"
#include "tabletestsupport.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <functional>

using namespace TableTest;

namespace {

// Answers the modal windows the table opens as they come: message boxes are counted and closed,
// the jump dialog is handed to the step (or rejected when there is none).
class ModalDriver
{
public:
    explicit ModalDriver(std::function<void(JumpToDialog *)> step = {})
        : m_step(std::move(step))
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            QWidget *modal = QApplication::activeModalWidget();
            if (auto *box = qobject_cast<QMessageBox *>(modal)) {
                ++boxes;
                box->accept();
            } else if (auto *dialog = qobject_cast<JumpToDialog *>(modal); dialog && dialog->isActiveWindow()) {
                m_step ? std::exchange(m_step, nullptr)(dialog) : dialog->reject();
            }
        });
        m_timer.start(5);
    }
    int boxes = 0;

private:
    QTimer m_timer;
    std::function<void(JumpToDialog *)> m_step;
};

// Rows: "Name r" in column 0, the row number in column 1, a bound cell in column 2.
QString bindingOf(int r, int c)
{
    if (c != 2)
        return QString();
    if (r == 40)
        return QStringLiteral("1@3@200@8@0@0@99@4@0@0"); // register 200
    if (r == 70)
        return QStringLiteral("bit@1@10@5@3@0"); // register 5, bit 3
    if (r == 90)
        return QStringLiteral("bit@2@1@12@0@1"); // output bit 12 on channel 2, link 1
    if (r == 4500)
        return QStringLiteral("1@0@100@8@2@0@9999@4@0@0"); // user word 100, far down
    return QStringLiteral("1@0@%1@8@0@0@9").arg(1000 + r);
}

struct SearchPanel : Panel
{
    explicit SearchPanel(int rows = 5000)
        : Panel(rows, 3, contents(rows, 3, bindingOf, [](QTableWidgetItem *item, int r, int c) {
            if (c < 2)
                item->setText(c == 0 ? QStringLiteral("Name %1").arg(r) : QString::number(r % 50));
        }))
    {
        show();
        table->setCurrentCell(0, 0);
    }
    QPoint current() const { return QPoint(table->currentRow(), table->currentColumn()); }
};

template<typename T>
T *child(QWidget *dialog, const char *name)
{
    return dialog->findChild<T *>(QLatin1String(name));
}

} // namespace

class TstTableSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    void patterns_data()
    {
        QTest::addColumn<int>("method"); QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("fields"); // class index, channel, address, bit index, link
        QTest::addColumn<QString>("pattern");    // empty: refused
        const QString any = QStringLiteral("\\S+");
        const QString value = QStringLiteral("%1@%2@%3@\\S+@\\S+@\\S+@\\S+@\\S+@\\S+@%4");
        const QString bit = QStringLiteral("bit@%1@%2@%3@%4@%5");
        QTest::newRow("row") << 0 << "12" << QStringList{} << "12";
        QTest::newRow("row not a number") << 0 << "x" << QStringList{} << "";
        QTest::newRow("number") << 1 << " 7 " << QStringList{} << "7";
        QTest::newRow("text") << 2 << "Feed" << QStringList{} << "Feed";
        QTest::newRow("empty text") << 2 << "" << QStringList{} << "";
        QTest::newRow("exact value") << 3 << "" << QStringList{"3", "1", "200", "", "0"} << value.arg("1", "3", "200", "0");
        QTest::newRow("exact bit") << 3 << "" << QStringList{"16", "1", "5", "03", "0"} << bit.arg("1", "10", "5", "3", "0");
        QTest::newRow("exact, address not a number") << 3 << "" << QStringList{"0", "1", "2+", "", "0"} << "";
        QTest::newRow("exact bit without its index") << 3 << "" << QStringList{"7", "1", "5", "", "0"} << "";
        QTest::newRow("U100") << 4 << "U100" << QStringList{} << value.arg(any, "0", "100", any);
        QTest::newRow("R5.3") << 4 << "R5.3" << QStringList{} << bit.arg(any, "10", "5", "3", any);
        QTest::newRow("IB12 on channel 2, link 1") << 4 << "Z2 IB12T1" << QStringList{} << bit.arg("2", "0", "12", any, "1");
        QTest::newRow("CnB3") << 4 << "CnB3" << QStringList{} << bit.arg(any, "5", "3", any, any);
        QTest::newRow("TmB4 is no T") << 4 << "TmB4" << QStringList{} << bit.arg(any, "6", "4", any, any);
        QTest::newRow("B alone is the bus") << 4 << "B7" << QStringList{} << value.arg(any, "4", "7", any);
        QTest::newRow("B never inside IB") << 4 << "IB7" << QStringList{} << bit.arg(any, "0", "7", any, any);
        QTest::newRow("left over") << 4 << "U100X" << QStringList{} << "";
        QTest::newRow("two variables") << 4 << "U100 R5" << QStringList{} << "";
        QTest::newRow("no variable") << 4 << "Z1" << QStringList{} << "";
        QTest::newRow("fractional channel") << 4 << "U1Z1.5" << QStringList{} << "";
        QTest::newRow("address past the word") << 4 << "U99999999999" << QStringList{} << "";
        QTest::newRow("lower case") << 4 << "u100" << QStringList{} << "";
    }
    void patterns()
    {
        QFETCH(int, method); QFETCH(QString, text); QFETCH(QStringList, fields); QFETCH(QString, pattern);
        const auto built = JumpPattern::build({method, text, fields.value(0).toInt(), fields.value(1), fields.value(2), fields.value(3), fields.value(4)});
        QCOMPARE(built.value_or(QString()), pattern);
    }

    void jumpMethods_data()
    {
        QTest::addColumn<int>("method"); QTest::addColumn<QString>("pattern");
        QTest::addColumn<QList<QPoint>>("hits"); // successive searches; (-1, -1): not found
        const QPoint none(-1, -1);
        QTest::newRow("row 0") << 0 << "0" << QList<QPoint>{none};
        QTest::newRow("row past the end") << 0 << "5001" << QList<QPoint>{none};
        QTest::newRow("row at the smallest int") << 0 << "-2147483648" << QList<QPoint>{none};
        QTest::newRow("row far down") << 0 << "4321" << QList<QPoint>{QPoint(4320, 0)};
        QTest::newRow("number, then the next one") << 1 << "7" << QList<QPoint>{QPoint(7, 0), QPoint(57, 0)};
        QTest::newRow("text, once round") << 2 << "Name 4999" << QList<QPoint>{QPoint(4999, 0), QPoint(4999, 0)};
        QTest::newRow("text missing") << 2 << "Name" << QList<QPoint>{none};
        QTest::newRow("exact register word") << 3 << JumpPattern::valuePattern("1", "3", "200", "0") << QList<QPoint>{QPoint(40, 2)};
        QTest::newRow("short form, far down")
            << 4 << JumpPattern::build({4, "U100", 0, {}, {}, {}, {}}).value() << QList<QPoint>{QPoint(4500, 2)};
    }
    void jumpMethods()
    {
        QFETCH(int, method); QFETCH(QString, pattern); QFETCH(QList<QPoint>, hits);
        SearchPanel p;
        JumpSearch search(p.table);
        for (const QPoint &hit : hits) {
            const auto found = search.search(method, pattern, 1);
            QCOMPARE(found ? QPoint(found->first, found->second) : QPoint(-1, -1), hit);
            if (found)
                p.table->jumpToCell(found->first, found->second);
        }
        // The cell found is made and shown even where the list had not been made yet.
        if (hits.last().x() >= 0) {
            QVERIFY(p.table->item(hits.last().x(), hits.last().y()));
            QCOMPARE(p.current(), hits.last());
        }
    }

    // The jump search goes on from its last hit while the pattern stays and starts again with a new
    // one. The text search over "Name 29" finds rows 29, 290 ... 299 and 2900 ... 2999; past the first
    // or the last it shows the box, then goes on from the other end.
    void searchesGoOnAndWrap()
    {
        SearchPanel p;
        JumpSearch search(p.table);
        ModalDriver driver;
        // Only the long form has the fields a variable pattern asks for: rows 40 and 4500.
        const QString word = JumpPattern::valuePattern("1", QString(), QString(), QString());
        QStringList seen;
        for (const QString &pattern : {word, word, word, QStringLiteral("Name 3"), word})
            seen << QString::number(search.search(pattern == word ? 3 : 2, pattern, 0)->first);
        const auto see = [&] { seen << QStringLiteral("%1 %2").arg(p.table->currentRow()).arg(driver.boxes); };
        p.table->find(QStringLiteral("Name 29"));
        see();
        p.table->findNext();
        see();
        p.table->findPrevious();
        p.table->findPrevious();
        see();
        p.table->findNext();
        see();
        p.table->find(QStringLiteral("nowhere"));
        see();
        QCOMPARE(seen, (QStringList{"40", "4500", "40", "3", "40", "29 0", "290 0", "2999 1", "29 2", "29 3"}));
    }

    // The dialog opens with the methods offered and the one preselected, the focus on its first input,
    // no error shown; while it is open the soft keys are its own and act as no shortcuts. A text given
    // is typed and confirmed: a refusal or a miss shows its label and keeps the dialog open. Made for
    // panels without a keyboard: the arrow keys and F1 move the focus, F3 confirms, a click on an
    // enabled line opens the soft keypad.
    void dialog_data()
    {
        QTest::addColumn<int>("method"); QTest::addColumn<int>("mask"); QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("seen"); QTest::addColumn<QPoint>("current");
        QTest::addColumn<bool>("byKeys"); // moved by keys, the row method chosen, the line's keypad answered "42"
        const QStringList all{"row", "no", "text", "var", "varm"};
        QTest::newRow("all methods, by row") << 0 << -1 << "" << all + QStringList{"lineEdit_text", "0"} << QPoint(0, 0) << false;
        QTest::newRow("row and text") << 2 << 5 << "" << QStringList{"row", "text", "lineEdit_text", "2"} << QPoint(0, 0) << false;
        QTest::newRow("exact variable") << 3 << 0b1001 << "" << QStringList{"row", "var", "lineEdit_address", "3"} << QPoint(0, 0) << false;
        QTest::newRow("found") << 4 << -1 << "R5.3" << all + QStringList{"lineEdit_text", "4"} << QPoint(70, 2) << false;
        QTest::newRow("refused input") << 4 << -1 << "R5.3Q" << all + QStringList{"lineEdit_text", "4", "label_error"} << QPoint(0, 0) << false;
        QTest::newRow("not found") << 4 << -1 << "U77777" << all + QStringList{"lineEdit_text", "4", "label_error_2"} << QPoint(0, 0) << false;
        QTest::newRow("keys and keypad") << 2 << -1 << ""
                                         << all + QStringList{"lineEdit_text", "2", "radioButton_varm", "pushButton_ok", "lineEdit_text", "42"}
                                         << QPoint(41, 0) << true;
    }
    void dialog()
    {
        QFETCH(int, method); QFETCH(int, mask); QFETCH(QString, text); QFETCH(QStringList, seen); QFETCH(QPoint, current); QFETCH(bool, byKeys);
        SearchPanel p(200);
        p.table->setSoftKeypad(true);
        p.app.setKeypadAnswer(QStringLiteral("42"), true);
        auto *bar = new ButtonGroup(&p.form);
        bar->setButtonCount(6);
        bar->resize(600, 40);
        bar->show();
        QTRY_VERIFY(bar->isBuilt());
        const auto keys = [bar] {
            QStringList list{bar->shortcutEnabled() ? "shortcuts" : "no shortcuts"};
            for (FunctionButton *b : bar->shownButtons())
                list << b->text() + (b->isEnabled() ? "" : "-");
            return list.join(QLatin1Char(' '));
        };
        const QString before = keys();
        QStringList got;
        QString during;
        ModalDriver driver([&](JumpToDialog *d) {
            for (const char *name : {"row", "no", "text", "var", "varm"})
                if (child<QRadioButton>(d, qPrintable(QStringLiteral("radioButton_") + QLatin1String(name)))->isVisible())
                    got << name;
            got << QApplication::focusWidget()->objectName() << QString::number(d->method());
            during = keys();
            const auto press = [](Qt::Key key) {
                QTest::keyClick(QApplication::focusWidget(), key);
                return QApplication::focusWidget()->objectName();
            };
            if (byKeys) { // up to the last radio button, down over the disabled variable fields, up again
                got << press(Qt::Key_Up);
                press(Qt::Key_Down);
                got << press(Qt::Key_Down) << press(Qt::Key_F1);
                child<QRadioButton>(d, "radioButton_row")->setChecked(true);
                QTest::mouseClick(child<QLineEdit>(d, "lineEdit_address"), Qt::LeftButton); // disabled: no keypad
                QTest::mouseClick(child<QLineEdit>(d, "lineEdit_text"), Qt::LeftButton);
                got << child<QLineEdit>(d, "lineEdit_text")->text();
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_F3);
            } else if (!text.isEmpty()) {
                child<QLineEdit>(d, "lineEdit_text")->setText(text);
                child<QPushButton>(d, "pushButton_ok")->click();
            }
            for (const char *label : {"label_error", "label_error_2"})
                if (child<QLabel>(d, label)->isVisible())
                    got << label;
            if (d->isVisible())
                d->reject();
        });
        auto *unopened = p.table->findChild<JumpToDialog *>(QStringLiteral("JumpToDialog"));
        QVERIFY(unopened && unopened->findChildren<QWidget *>().isEmpty()); // its inputs made when first opened
        p.table->updateData(-1001, method);
        p.table->updateData(-1002, mask);
        p.table->jumpTo(1);
        QCOMPARE(got, seen);
        QCOMPARE(p.current(), current);
        QCOMPARE(p.app.callsNamed(QStringLiteral("showKeypad")).size(), int(byKeys));
        QCOMPARE(during, QString::fromUtf8("no shortcuts <<- 焦点上移 焦点下移 确定 取消 - - >>-"));
        QCOMPARE(keys(), before);
        QVERIFY(before.startsWith(QLatin1String("shortcuts")));
    }
};

QTEST_MAIN(TstTableSearch)
#include "tst_tablesearch.moc"
