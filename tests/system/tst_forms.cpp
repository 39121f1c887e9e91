// The shipped forms as a panel builder gets them: compiled by uic, loaded at run time, and written
// the way Designer writes them.
#include "bitbutton.h"
#include "buttongroup.h"
#include "demoscenario.h"
#include "dynamicimage.h"
#include "formloader.h"
#include "formsession.h"
#include "functionbutton.h"
#include "gridsplitter.h"
#include "mdiarea.h"
#include "norvointerface_z3.h"
#include "paneltables.h"
#include "PictureButton.h"
#include "recordingqeltapp.h"
#include "simulatedcontroller.h"
#include "subwindow.h"
#include "tablewidget.h"
#include "tabwidget.h"
#include "widgetfactory.h"
#include "ui_operator.h"
#include "ui_parameters.h"
#include "ui_pictures.h"
#include "ui_program.h"
#include "ui_screens.h"
#include "ui_softkeys.h"
#include "ui_tabs.h"

#include <QDialog>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QLineEdit>
#include <QMetaProperty>
#include <QtTest>

#include <climits>
#include <memory>

namespace {

template<class Ui>
QWidget *compiled()
{
    auto *dialog = new QDialog;
    Ui().setupUi(dialog);
    return dialog;
}

// A sample form as uic compiles it or as the panel loads it; the samples' folder is the current one
// (their pictures and programs are named relative to it).
std::unique_ptr<QWidget> sample(const QString &name)
{
    static const QHash<QString, QWidget *(*)()> uic{
        {QStringLiteral("softkeys"), &compiled<Ui::SoftKeyPanel>}, {QStringLiteral("parameters"), &compiled<Ui::ParameterScreen>},
        {QStringLiteral("program"), &compiled<Ui::ProgramScreen>}, {QStringLiteral("tabs"), &compiled<Ui::TabScreen>},
        {QStringLiteral("pictures"), &compiled<Ui::PictureScreen>}, {QStringLiteral("screens"), &compiled<Ui::ScreenPanel>},
        {QStringLiteral("operator"), &compiled<Ui::OperatorPanel>}};
    QFETCH(bool, compiledByUic);
    if (compiledByUic)
        return std::unique_ptr<QWidget>(uic.value(name)());
    FormLoader loader;
    std::unique_ptr<QWidget> root(loader.loadFile(name + QStringLiteral(".ui")));
    if (!root)
        qWarning("%s", qPrintable(loader.problem()));
    return root;
}

void compiledOrLoaded()
{
    QTest::addColumn<bool>("compiledByUic");
    QTest::newRow("uic") << true;
    QTest::newRow("loaded") << false;
}

} // namespace

class TestForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QDir::setCurrent(QStringLiteral(HMI_FORMS_DIR)); }
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }
    void stdsetAsDesignerWrites_data();
    void stdsetAsDesignerWrites();
    void softKeyForm_data() { compiledOrLoaded(); }
    void softKeyForm();
    void formsThatCannotRunWhole_data();
    void formsThatCannotRunWhole();
    void parameterForm_data() { compiledOrLoaded(); }
    void parameterForm();
    void programForm_data() { compiledOrLoaded(); }
    void programForm();
    void tabForm_data() { compiledOrLoaded(); }
    void tabForm();
    void pictureForm_data() { compiledOrLoaded(); }
    void pictureForm();
    void screensForm_data() { compiledOrLoaded(); }
    void screensForm();
    void operatorScreen_data() { compiledOrLoaded(); }
    void operatorScreen();
    void unknownEnumValuesRefused_data();
    void unknownEnumValuesRefused();
};

void TestForms::stdsetAsDesignerWrites_data()
{
    QTest::addColumn<QString>("fileName");
    const QStringList forms = QDir(QStringLiteral(HMI_FORMS_DIR)).entryList({QStringLiteral("*.ui")});
    for (const QString &f : forms)
        QTest::newRow(qPrintable(f)) << QStringLiteral(HMI_FORMS_DIR "/") + f;
}

void TestForms::stdsetAsDesignerWrites()
{
    QFETCH(QString, fileName);
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QDomDocument doc;
    QVERIFY(doc.setContent(&file));
    QHash<QString, const QMetaObject *> classes;
    for (const QString &name : WidgetFactory::classNames())
        classes.insert(name, std::unique_ptr<QWidget>(WidgetFactory::create(name, nullptr))->metaObject());
    int checked = 0;
    const QDomNodeList widgets = doc.elementsByTagName(QStringLiteral("widget"));
    for (int i = 0; i < widgets.size(); ++i) {
        const QDomElement widget = widgets.at(i).toElement();
        const QMetaObject *meta = classes.value(widget.attribute(QStringLiteral("class")));
        if (!meta)
            continue;
        for (QDomElement p = widget.firstChildElement(QStringLiteral("property")); !p.isNull();
             p = p.nextSiblingElement(QStringLiteral("property"))) {
            const QString name = p.attribute(QStringLiteral("name"));
            const int index = meta->indexOfProperty(name.toLatin1().constData());
            const bool marked = p.attribute(QStringLiteral("stdset")) == QLatin1String("0");
            if (index < 0) { // a dynamic property, for the application
                QVERIFY2(marked, qPrintable(name));
                continue;
            }
            QVERIFY2(marked == !meta->property(index).hasStdCppSet(),
                     qPrintable(widget.attribute(QStringLiteral("name")) + QLatin1Char('.') + name));
            ++checked;
        }
    }
    QVERIFY(checked > 0);
}

// The soft-key sample: the bar reuses its three saved groups, and the keypad of picture keys types
// into the field that has the focus.
void TestForms::softKeyForm()
{
    const std::unique_ptr<QWidget> root = sample(QStringLiteral("softkeys"));
    QVERIFY(root);
    root->show();
    QVERIFY(QTest::qWaitForWindowActive(root.get()));
    auto *bar = root->findChild<ButtonGroup *>(QStringLiteral("softKeyBar"));
    QVERIFY(bar && bar->isBuilt());
    QCOMPARE(bar->findChildren<FunctionButton *>().size(), 24);
    for (int g = 1; g <= 3; ++g)
        QCOMPARE(bar->buttonsOfGroup(g).size(), 8);
    QCOMPARE(bar->shownButtons().at(1)->shortcut().toString(), QStringLiteral("F1"));
    bar->setCurrentGroup(3);
    QCOMPARE(bar->shownButtons().at(6)->text(), QStringLiteral("Info"));

    auto *field = root->findChild<QLineEdit *>(QStringLiteral("feedInput"));
    field->clear();
    field->setFocus();
    for (const char *key : {"key1", "key2", "keyPoint", "key5", "keyBackspace", "key5"})
        QTest::mouseClick(root->findChild<PictureButton *>(QLatin1String(key)), Qt::LeftButton, {}, QPoint(10, 10));
    QCOMPARE(field->text(), QStringLiteral("12.5"));
}

void TestForms::formsThatCannotRunWhole_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("loadProblem");    // empty: loads
    QTest::addColumn<QString>("sessionProblem"); // empty: runs
    QTest::newRow("missing file") << "absent.ui" << "No such file" << "";
    QTest::newRow("unknown widget class") << "unknown-class.ui" << "no widget class for SpindleGauge \"gauge\"" << "";
    QTest::newRow("number as application") << "nested-qeltapp.ui" << ""
                                           << "dialog \"inner\" inside the form sets its own \"QeltApp\" property";
}

// A form with a hole or a dialog that would cut its widgets off the application is reported, and the
// widgets it holds never take a number from the form for the application.
void TestForms::formsThatCannotRunWhole()
{
    QFETCH(QString, file);
    QFETCH(QString, loadProblem);
    QFETCH(QString, sessionProblem);
    FormLoader loader;
    if (loadProblem.contains(QStringLiteral("SpindleGauge"))) // the loader's own warning
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral(".*SpindleGauge.*")));
    QWidget *root = loader.loadFile(QStringLiteral(HMI_BAD_FORMS_DIR "/") + file);
    QCOMPARE(root == nullptr, !loadProblem.isEmpty());
    QVERIFY2(loader.problem().contains(loadProblem), qPrintable(loader.problem()));
    if (!root)
        return;
    RecordingQeltApp app;
    FormSession session(root, &app);
    QVERIFY(session.problems().join('\n').contains(sessionProblem));
    QCOMPARE(session.problems().isEmpty(), sessionProblem.isEmpty());
    session.start();
    for (const RecordingQeltApp::Registration &r : app.registrations())
        QVERIFY(!qobject_cast<BitButton *>(r.widget.data()));
}

// The sample parameter list: 2,000 rows whose items are made only near the screen, the rows on screen
// registered, values shown in their radix and decimals, and the second language on request.
void TestForms::parameterForm()
{
    std::unique_ptr<QWidget> root = sample(QStringLiteral("parameters"));
    QVERIFY(root);
    auto *table = root->findChild<TableWidget *>(QStringLiteral("parameterTable"));
    QCOMPARE(table->rowCount(), 2000);
    QVERIFY(!table->item(0, 0));
    NORVOInterface_Z3::initialization()->setSystemLanguages({QStringLiteral("Sans"), QStringLiteral("Sans")});
    RecordingQeltApp app;
    app.memory().setWord(0, 0, 0, 500, 0x1f);
    app.memory().setWord(0, 0, 0, 1001, 0x2e);
    app.memory().setWord(0, 0, 0, 1004, 280);
    FormSession session(root.release(), &app);
    session.start();
    QVERIFY(PanelTables::setUp(session.form(), QStringLiteral(HMI_FORMS_DIR)).isEmpty());
    session.form()->show();
    QVERIFY(QTest::qWaitForWindowExposed(session.form()));
    QVERIFY(table->loadedRowCount() < 200);
    QCOMPARE(table->item(1, 2)->text(), QStringLiteral("0000002E"));
    QCOMPARE(table->item(4, 2)->text(), QStringLiteral("0.280"));
    QCOMPARE(table->columnSpan(0, 0), 5);
    // The form's input line is the one the table types into.
    QCOMPARE(table->inputWidget(), session.form()->findChild<QWidget *>(QStringLiteral("inputLine")));
    QVERIFY(table->inputWidget() && table->softKeypad());
    session.setLanguage(1);
    QCOMPARE(table->item(1, 1)->text(), QStringLiteral("Eilganggeschwindigkeit X"));
    QCOMPARE(table->horizontalHeaderItem(2)->text(), QStringLiteral("Wert"));
}

// The program screen: a table the panel shows as the sample NC program, one as a monitor of 128
// input bits, both from the form's own properties.
void TestForms::programForm()
{
    std::unique_ptr<QWidget> root = sample(QStringLiteral("program"));
    QVERIFY(root);
    auto *program = root->findChild<TableWidget *>(QStringLiteral("programView"));
    auto *monitor = root->findChild<TableWidget *>(QStringLiteral("inputMonitor"));
    RecordingQeltApp app;
    FormSession session(root.release(), &app);
    session.start();
    session.form()->show();
    QVERIFY(QTest::qWaitForWindowExposed(session.form()));
    QVERIFY(PanelTables::setUp(session.form(), QStringLiteral(HMI_FORMS_DIR)).isEmpty());
    QFile file(QStringLiteral("program.nc"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(program->rowCount(), int(file.readAll().count('\n')));
    QCOMPARE(program->item(3, 1)->text(), QStringLiteral("21"));
    QCOMPARE(program->verticalHeaderItem(3)->text(), QStringLiteral("0003"));
    QCOMPARE(monitor->rowCount(), 8);
    int monitored = 0;
    for (const UiRegistration &r : app.registrations())
        monitored += r.widget == monitor && r.bitType == 0;
    QVERIFY(monitored >= 16);
}

// The tab sample: pages holding buttons and a parameter table, a service tab above authority 2, and
// mode tabs that a controller word makes present.
void TestForms::tabForm()
{
    std::unique_ptr<QWidget> root = sample(QStringLiteral("tabs"));
    QVERIFY(root);
    auto *operation = root->findChild<TabWidget *>(QStringLiteral("operationTabs"));
    auto *modes = root->findChild<TabWidget *>(QStringLiteral("modeTabs"));
    RecordingQeltApp app;
    FormSession session(root.release(), &app);
    session.start();
    session.form()->show();
    QVERIFY(QTest::qWaitForWindowExposed(session.form()));
    QCOMPARE(operation->tabBar()->count(), 3);
    QVERIFY(operation->findTab(QStringLiteral("tab_1"))->findChild<BitButton *>(QStringLiteral("spindleKey")));
    QVERIFY(operation->findTab(QStringLiteral("tab_2"))->findChild<TableWidget *>(QStringLiteral("pageTable")));
    // The mode tabs wait for the controller's word.
    QCOMPARE(modes->tabBar()->count(), 0);
    QCOMPARE(app.deliver(modes, 0, 0b1011), 1);
    QCOMPARE(modes->tabBar()->count(), 3);
    session.setLanguage(1);
    QCOMPARE(modes->tabBar()->tabText(2), QStringLiteral("Referenz"));
}

// The picture sample: the machine state picked by register word 100 from pictures next to the
// form, and a camera picture watching a folder.
void TestForms::pictureForm()
{
    std::unique_ptr<QWidget> root = sample(QStringLiteral("pictures"));
    QVERIFY(root);
    auto *state = root->findChild<DynamicImage *>(QStringLiteral("machineState"));
    QVERIFY(root->findChild<DynamicImage *>(QStringLiteral("cameraView"))->autoLoadImage());
    RecordingQeltApp app;
    app.memory().setWord(0, 0, 3, 100, 2);
    FormSession session(root.release(), &app);
    session.start();
    QCOMPARE(state->index(), 2);
    QVERIFY(!state->currentPixmap().isNull());
    QCOMPARE(app.deliver(state, 0, 1), 1);
    QVERIFY(state->isPlaying()); // the running state is animated
}

// The screen layout sample: a 2 x 2 grid whose lower right cell holds an MDI area; the soft keys
// F1 ... F3 switch its panels, one shown at a time.
void TestForms::screensForm()
{
    std::unique_ptr<QWidget> root = sample(QStringLiteral("screens"));
    QVERIFY(root);
    QWidget *form = root.get();
    RecordingQeltApp app;
    FormSession session(root.release(), &app);
    session.start();
    form->show();
    QVERIFY(QTest::qWaitForWindowExposed(form));
    auto *grid = form->findChild<GridSplitter *>(QStringLiteral("screenGrid"));
    auto *area = form->findChild<MdiArea *>(QStringLiteral("panelArea"));
    QCOMPARE(area->parentWidget(), grid->cell(1, 1));
    QCOMPARE(form->findChild<QWidget *>(QStringLiteral("spindleKey"))->parentWidget(), grid->cell(0, 0));
    // The keys on the panels are bound to the application like any other.
    QVERIFY(app.callNames().count(QStringLiteral("registerUIVariable")) >= 7);
    const auto shownPanels = [area] {
        QStringList names;
        for (const QString &name : area->getSubwindows()) {
            if (area->subWindow(name)->isVisible())
                names << name;
        }
        return names;
    };
    QCOMPARE(shownPanels(), QStringList{"subWindow_1"});
    for (const char *key : {"functionButton0102", "functionButton0103", "functionButton0101"}) {
        QTest::mouseClick(form->findChild<FunctionButton *>(QString::fromLatin1(key)), Qt::LeftButton);
        const QString panel = QStringLiteral("subWindow_") + QLatin1Char(key[17]);
        QCOMPARE(shownPanels(), QStringList{panel});
        QCOMPARE(area->activeSubWindow(), panel);
    }
}

// The operator screen on the simulated controller with the demo's machine: the machine runs, counts
// parts and raises an alarm the operator resets. (Its pages, languages and authority: tst_endtoend
// and tst_screenshots.)
void TestForms::operatorScreen()
{
    std::unique_ptr<QWidget> root = sample(QStringLiteral("operator"));
    QVERIFY(root);
    QWidget *form = root.get();
    SimulatedController controller;
    DemoScenario scenario(&controller);
    FormSession session(root.release(), &controller);
    QVERIFY(session.problems().isEmpty());
    session.start();
    QCOMPARE(PanelTables::setUp(form, QStringLiteral(HMI_FORMS_DIR)), QStringList());
    form->show();
    QVERIFY(QTest::qWaitForWindowExposed(form));
    const auto find = [form](const char *name) { return form->findChild<QWidget *>(QString::fromLatin1(name)); };

    // The spindle on: the machine runs, walks its program and makes a part each time round.
    auto *state = form->findChild<DynamicImage *>(QStringLiteral("machineState"));
    auto *status = form->findChild<TableWidget *>(QStringLiteral("statusTable"));
    auto *alarm = static_cast<BitButton *>(find("alarmLamp"));
    QTest::mouseClick(find("spindleButton"), Qt::LeftButton);
    QVERIFY(controller.getBit(0, norvo_v0::QeltApp::User_BIT, 100, 0, 0));
    scenario.step();
    controller.flushUpdates();
    QCOMPARE(state->index(), 1);
    QCOMPARE(status->item(0, 1)->text().trimmed(), QStringLiteral("1"));
    QCOMPARE(status->item(1, 1)->text().trimmed(), QStringLiteral("1"));
    // The alarm comes at the twentieth step and stays until the operator resets it.
    while (scenario.steps() < 21)
        scenario.step();
    controller.flushUpdates();
    QCOMPARE(state->index(), 2);
    QCOMPARE(alarm->state(), BitButton::On);
    QCOMPARE(status->item(1, 1)->text().trimmed(), QStringLiteral("19")); // the program stands
    QTest::mouseClick(find("functionButton0106"), Qt::LeftButton);
    scenario.step();
    controller.flushUpdates();
    QCOMPARE(alarm->state(), BitButton::Off);
    QCOMPARE(state->index(), 1);
    QCOMPARE(status->item(1, 1)->text().trimmed(), QStringLiteral("20"));
}

void TestForms::unknownEnumValuesRefused_data()
{
    QTest::addColumn<QString>("className");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<int>("value");
    for (const QString &className : WidgetFactory::classNames()) {
        const std::unique_ptr<QWidget> widget(WidgetFactory::create(className, nullptr));
        const QMetaObject *meta = widget->metaObject();
        const QMetaObject *qtBase = meta;
        while (!QByteArray(qtBase->className()).startsWith('Q'))
            qtBase = qtBase->superClass();
        for (int i = qtBase->propertyCount(); i < meta->propertyCount(); ++i) { // the library's own
            const QMetaProperty p = meta->property(i);
            if (!p.isEnumType() || p.isFlagType() || !p.isWritable())
                continue;
            for (int value : {INT_MAX, -2}) {
                if (!p.enumerator().valueToKey(value))
                    QTest::addRow("%s.%s %d", qPrintable(className), p.name(), value) << className << QByteArray(p.name()) << value;
            }
        }
    }
}

// A form can write any number into an enum property; the widget keeps what it had and says so.
void TestForms::unknownEnumValuesRefused()
{
    QFETCH(QString, className);
    QFETCH(QByteArray, property);
    QFETCH(int, value);
    const std::unique_ptr<QWidget> widget(WidgetFactory::create(className, nullptr));
    widget->setObjectName(QStringLiteral("probe"));
    const QMetaProperty p = widget->metaObject()->property(widget->metaObject()->indexOfProperty(property));
    const int before = p.read(widget.get()).toInt();
    QTest::ignoreMessage(QtWarningMsg, qPrintable(QStringLiteral("%1 \"probe\": property \"%2\": %3 is no value of it; "
                                                                 "it is ignored").arg(className).arg(QLatin1String(property)).arg(value)));
    p.write(widget.get(), value);
    QCOMPARE(p.read(widget.get()).toInt(), before);
}

QTEST_MAIN(TestForms)
#include "tst_forms.moc"
