// A table cell typed through the simulated controller's keypad, and the operator screen as the panel
// runs it: every route to a widget under the operator's authority, and to the table the panel's search
// acts on.
#include "abstractbutton.h"
#include "formloader.h"
#include "formsession.h"
#include "functionbutton.h"
#include "inputwidget.h"
#include "keypaddialog.h"
#include "lastusedtable.h"
#include "norvointerface_z3.h"
#include "paneltables.h"
#include "recordingqeltapp.h"
#include "simulatedcontroller.h"
#include "tablecontents.h"
#include "tablewidget.h"
#include "tabwidget.h"

#include <QDialog>
#include <QTabBar>
#include <QTemporaryFile>
#include <QtTest>

#include <functional>

using norvo_v0::QeltApp;

namespace {
// The operator screen on a recording application whose keypad answers 100; its parameter table
// needs authority 2, as its door key, cycle start key and Program page do.
struct OperatorScreen
{
    RecordingQeltApp app;
    FormSession session{FormLoader().loadFile(QStringLiteral(HMI_FORMS_DIR "/operator.ui")), &app};
    QDialog *form = session.form();
    TabWidget *pages = find<TabWidget>("pages");
    QTabBar *bar = pages->tabBar();
    TableWidget *parameters = find<TableWidget>("parameterTable");
    LastUsedTable used; // from before the form opens
    QString note; // what a route found, for the outcome

    explicit OperatorScreen(int authority)
    {
        session.start();
        parameters->setOperationalAuthority(2);
        session.setAuthority(authority);
        app.setKeypadAnswer(QStringLiteral("100"), true);
        form->show();
        form->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(form));
        app.clearCalls();
    }
    template <typename T = QWidget>
    T *find(const char *name) const { return form->findChild<T *>(QLatin1String(name)); }
    void invoke(const char *widget, const char *method) { QMetaObject::invokeMethod(find(widget), method); }
    void clickCell()
    {
        QTest::mouseClick(parameters->viewport(), Qt::LeftButton, {},
                          parameters->visualItemRect(parameters->item(0, 1)).center());
    }
    // The table the panel's Find acts on after the operator clicked a text cell of a table (or none),
    // on the page shown. The status table has the focus from the start, unused.
    void search(const char *clicked, int page)
    {
        if (auto *table = clicked ? find<TableWidget>(clicked) : nullptr)
            QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualItemRect(table->item(0, 0)).center());
        pages->setCurrentIndex(page);
        note = PanelTables::searchTable(form, used.table())->objectName();
    }
};

struct Route
{
    const char *name;
    QString allowed; // the outcome at authority 2
    QString refused; // and at authority 3
    std::function<void(OperatorScreen &)> act;
};

const QList<Route> &routes()
{
    const QString door = QStringLiteral("setBit(0,7,108,0,true,0)");
    const QString cycle = QStringLiteral("setBit(0,7,105,0,true,0)");
    const QString feed = QStringLiteral("setData(0,0,3101,100,0)");
    const QString pageKey = QStringLiteral("setBit(0,-1,0,0,true,0) "); // the page keys have no write bit (type -1)
    static const QList<Route> list{
        {"door key: mouse", door, "", [](OperatorScreen &s) { QTest::mouseClick(s.find("doorButton"), Qt::LeftButton); }},
        {"door key: Space", door, "", [](OperatorScreen &s) {
             s.find("doorButton")->setFocusPolicy(Qt::StrongFocus);
             s.find("doorButton")->setFocus();
             QTest::keyClick(s.find("doorButton"), Qt::Key_Space);
         }},
        {"door key: click()", door, "", [](OperatorScreen &s) { s.invoke("doorButton", "click"); }},
        {"door key: mouse after the panel enabled it", door, "", [](OperatorScreen &s) {
             QMetaObject::invokeMethod(s.find("doorButton"), "setEnabled", Q_ARG(bool, true));
             QTest::mouseClick(s.find("doorButton"), Qt::LeftButton);
         }},
        {"door key: slotPressed()", door, "", [](OperatorScreen &s) { s.invoke("doorButton", "slotPressed"); }},
        {"hidden door key: animateClick()", "", "", [](OperatorScreen &s) {
             s.find("doorButton")->hide();
             s.invoke("doorButton", "animateClick");
         }},
        {"cycle start key: F4", cycle, "", [](OperatorScreen &s) { QTest::keyClick(s.form, Qt::Key_F4); }},
        {"cycle start key: slotPressed()", cycle, "", [](OperatorScreen &s) { s.invoke("functionButton0104", "slotPressed"); }},
        {"Program page: soft key", pageKey + "page 2", pageKey + "refused 2",
         [](OperatorScreen &s) { QTest::mouseClick(s.find("functionButton0103"), Qt::LeftButton); }},
        {"Program page: F3", pageKey + "page 2", pageKey + "refused 2", [](OperatorScreen &s) {
             QTest::keyClick(s.form, Qt::Key_F3); // an animated click of the soft key
             QTRY_VERIFY(!s.find<AbstractButton>("functionButton0103")->isDown());
         }},
        {"Program page: setCurrentIndex()", "page 2", "refused 2", [](OperatorScreen &s) { s.pages->setCurrentIndex(2); }},
        {"Program page: showTab()", "page 2", "refused 2", [](OperatorScreen &s) { s.pages->showTab(2); }},
        {"Program page: the tab bar's setCurrentIndex()", "page 2", "refused 2",
         [](OperatorScreen &s) { s.bar->setCurrentIndex(2); }},
        {"Program page: tab bar click", "page 2", "",
         [](OperatorScreen &s) { QTest::mouseClick(s.bar, Qt::LeftButton, {}, s.bar->tabRect(2).center()); }},
        {"Program page: Right from Inputs", "page 2", "page 1", [](OperatorScreen &s) {
             s.pages->setCurrentIndex(1);
             QTest::keyClick(s.bar, Qt::Key_Right);
         }},
        {"Program page: Ctrl+Tab from Inputs", "page 2", "", [](OperatorScreen &s) {
             s.pages->setCurrentIndex(1);
             QTest::keyClick(s.bar, Qt::Key_Tab, Qt::ControlModifier);
         }},
        {"parameter: keypad", feed, "refused 2", [](OperatorScreen &s) { s.clickCell(); }},
        {"parameter: input line", feed, "refused 2", [](OperatorScreen &s) {
             auto *input = new InputWidget(s.form);
             input->setText(QStringLiteral("100"));
             s.parameters->setInputWidget(input);
             s.parameters->setCurrentCell(0, 1);
             QTest::keyClick(s.parameters, Qt::Key_Return);
         }},
        {"parameter: table file", feed, "refused 2", [](OperatorScreen &s) {
             QTemporaryFile file;
             QVERIFY(file.open() && file.write("Feed\t100\n") > 0 && file.flush());
             s.parameters->loadFormFile(file.fileName());
         }},
        {"parameter: keypad open while the operator logs out", "refused 2", "refused 2", [](OperatorScreen &s) {
             s.app.setKeypadAnswer(QStringLiteral("100"), true, [&s] { s.session.setAuthority(3); });
             s.clickCell();
         }},
        // The panel's search, whatever the authority, goes to a table on screen, never the form's first
        // ("Backlash X" is in the parameter table, the statusTable comes first).
        {"Find: no table used yet", "parameterTable", "parameterTable", [](OperatorScreen &s) { s.search(nullptr, 0); }},
        {"Find: the table last used", "statusTable", "statusTable", [](OperatorScreen &s) { s.search("statusTable", 0); }},
        {"Find: last used on a page turned away", "inputMonitor page 1", "inputMonitor page 1",
         [](OperatorScreen &s) { s.search("parameterTable", 1); }},
    };
    return list;
}
} // namespace

class TestEndToEnd : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    // A soft key follows its enable bit. The operator clicks a cell bound to user word 100 (two decimals, at
    // most 9999), reads on the keypad what it is for, types and confirms; a value beyond the limit is
    // refused by the keypad, and the operator gives up.
    void formOnTheSimulatedController()
    {
        SimulatedController controller;
        QDialog form;
        form.setProperty("QeltApp", QeltApp::toVariant(&controller));
        auto *button = new FunctionButton(&form);
        button->SetEnabledBitType(FunctionButton::O_BIT);
        button->SetEnabledAddress(1);
        button->setQeltAppAndFormPtr(static_cast<QeltApp *>(&controller), &form);
        auto *table = new TableWidget(&form);
        QTableWidgetItem name(QStringLiteral("Feed override")), value, unit(QStringLiteral("%"));
        value.setWhatsThis(QStringLiteral("1@0@100@8@2@0@9999"));
        table->setData(TableContents::encode(3, 3, {{}, {&name, &value, &unit}, {}}));
        table->setSoftKeypad(true);
        table->resize(400, 300);
        controller.setData(0, QeltApp::User, 100, 4200, 0);
        form.move(0, 0); // room below the cell for the keypad on an 800 x 600 screen, whichever font it has
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        controller.startUpdateUI(&form);
        QTRY_VERIFY(!button->QWidget::isEnabled());
        controller.setBit(0, QeltApp::O_BIT, 1, 0, true, 0);
        QTRY_VERIFY(button->QWidget::isEnabled());
        const QRect cell = table->visualItemRect(table->item(1, 1));
        QString described;
        const auto type = [&](const QString &entry) {
            controller.setKeypadDriver([entry, &described](KeypadDialog &keypad) {
                described = keypad.description();
                for (const QString &key : QStringList{QStringLiteral("CLR")} + entry.split(QString(), Qt::SkipEmptyParts))
                    keypad.typeKey(key);
                keypad.accept();
                if (keypad.isVisible())
                    keypad.reject();
            });
            QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell.center());
            controller.flushUpdates();
            return QStringLiteral("%1 %2").arg(controller.getData(0, QeltApp::User, 100, 0)).arg(table->item(1, 1)->text());
        };
        QCOMPARE((QStringList{table->item(1, 1)->text(), type(QStringLiteral("12.5")), type(QStringLiteral("99999")), described}),
                 (QStringList{"42.00", "1250 12.50", "1250 12.50", "Feed override [%]\nAllowed: 0 ... 9999"}));
        // Opened next to the cell: below it, or above it where the screen has no room below.
        const QRect global(table->viewport()->mapToGlobal(cell.topLeft()), cell.size());
        const QRect keypad = controller.lastKeypadGeometry();
        const int below = keypad.top() - global.bottom(), above = global.top() - keypad.bottom(); // the table's frame aside
        QVERIFY2((below >= 0 && below < 40) || (above >= 0 && above < 40),
                 qPrintable(QStringLiteral("keypad %1,%2 %3x%4, cell %5,%6 %7x%8").arg(keypad.x()).arg(keypad.y()).arg(keypad.width())
                                .arg(keypad.height()).arg(global.x()).arg(global.y()).arg(global.width()).arg(global.height())));
        bool ok = true; // the refused entry ends as a cancel
        QCOMPARE(controller.showKeypad(&ok, 10, QString(), 0, QRect(), QRect(), QRect(), nullptr, 20, 0, 0, 9), QString());
        QVERIFY(!ok);
    }

    void authorityOnEveryRoute_data()
    {
        QTest::addColumn<int>("route");
        QTest::addColumn<int>("authority");
        QTest::addColumn<QString>("outcome"); // the writes, the page other than the first, the refusals said
        for (int i = 0; i < routes().size(); ++i) {
            const Route &r = routes().at(i);
            QTest::newRow(qPrintable(QStringLiteral("%1, operator 2").arg(QLatin1String(r.name)))) << i << 2 << r.allowed;
            QTest::newRow(qPrintable(QStringLiteral("%1, operator 3").arg(QLatin1String(r.name)))) << i << 3 << r.refused;
        }
    }

    // What a widget refuses to a click it refuses on every other route: keys, soft keys, F keys, slots
    // called by name, the tab bar, the table's keypad, input line and files.
    void authorityOnEveryRoute()
    {
        QFETCH(int, route);
        QFETCH(int, authority);
        QFETCH(QString, outcome);
        OperatorScreen screen(authority);
        QSignalSpy refusals(NORVOInterface_Z3::initialization(), &NORVOInterface_Z3::authorityRefused);
        routes().at(route).act(screen);
        QStringList seen = screen.app.writes();
        if (!screen.note.isEmpty())
            seen << screen.note;
        if (screen.pages->currentIndex() != 0)
            seen << QStringLiteral("page %1").arg(screen.pages->currentIndex());
        for (const QList<QVariant> &refusal : std::as_const(refusals))
            seen << QStringLiteral("refused %1").arg(refusal.first().toInt());
        QCOMPARE(seen.join(QLatin1Char(' ')), outcome);
    }
};

QTEST_MAIN(TestEndToEnd)
#include "tst_endtoend.moc"
