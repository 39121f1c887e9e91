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
#include "ui_demo.h"
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

class TestForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }
    void compiledForm();
    void loadedForm_data();
    void loadedForm();
    void stdsetAsDesignerWrites_data();
    void stdsetAsDesignerWrites();
    void softKeyForm_data();
    void softKeyForm();
    void formsThatCannotRunWhole_data();
    void formsThatCannotRunWhole();
    void parameterForm_data();
    void parameterForm();
    void programForm_data();
    void programForm();
    void tabForm_data();
    void tabForm();
    void pictureForm_data();
    void pictureForm();
    void screensForm_data();
    void screensForm();
    void operatorScreen_data();
    void operatorScreen();
    void unknownEnumValuesRefused_data();
    void unknownEnumValuesRefused();
};

void TestForms::compiledForm()
{
    QDialog form;
    Ui::DemoPanel ui;
    ui.setupUi(&form);
    QCOMPARE(ui.spindleButton->action(), BitButton::KeepOn);
    QCOMPARE(ui.spindleButton->onText(), QStringLiteral("Spindle ON"));
    QCOMPARE(ui.coolantButton->writeBitIndex(), 1);
    QCOMPARE(ui.guardedButton->getOperationalAuthority(), 2);
    QCOMPARE(ui.modeButton->textStringList().size(), 3);
    QCOMPARE(ui.feedHoldButton->bitOnVisible(), false);
    QCOMPARE(ui.cycleStartButton->buttonColorOn(), QColor(110, 210, 110));
}

void TestForms::loadedForm_data()
{
    QTest::addColumn<QString>("object");
    QTest::addColumn<QString>("className");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("momentary") << "spindleButton" << "BitButton" << QByteArray("action")
                               << QVariant(int(BitButton::KeepOn));
    QTest::newRow("invert") << "coolantButton" << "BitButton" << QByteArray("action") << QVariant(int(BitButton::Invert));
    QTest::newRow("set off") << "lampOffButton" << "BitButton" << QByteArray("action") << QVariant(int(BitButton::SetOff));
    QTest::newRow("keep off") << "brakeButton" << "BitButton" << QByteArray("action") << QVariant(int(BitButton::KeepOff));
    QTest::newRow("enable bit") << "guardedButton" << "BitButton" << QByteArray("enabledAddress") << QVariant(103);
    QTest::newRow("languages") << "spindleButton" << "BitButton" << QByteArray("offTextList")
                               << QVariant(QStringList{QStringLiteral("Spindle OFF"), QStringLiteral("Spindel AUS")});
    QTest::newRow("caption table") << "modeButton" << "FunctionButton" << QByteArray("textControlAddress") << QVariant(100);
    QTest::newRow("colour bit") << "cycleStartButton" << "FunctionButton" << QByteArray("colorBitType")
                                << QVariant(int(FunctionButton::O_BIT));
    QTest::newRow("visible bit") << "feedHoldButton" << "FunctionButton" << QByteArray("visibleAddress") << QVariant(106);
    QTest::newRow("function invert") << "toolChangeButton" << "FunctionButton" << QByteArray("action")
                                     << QVariant(int(FunctionButton::Invert));
}

void TestForms::loadedForm()
{
    QFETCH(QString, object);
    QFETCH(QString, className);
    QFETCH(QByteArray, property);
    QFETCH(QVariant, value);
    FormLoader loader;
    std::unique_ptr<QWidget> form(loader.loadFile(QStringLiteral(HMI_FORMS_DIR "/demo.ui")));
    QVERIFY2(form, qPrintable(loader.errorString()));
    QWidget *widget = form->findChild<QWidget *>(object);
    QVERIFY(widget);
    QCOMPARE(QString::fromLatin1(widget->metaObject()->className()), className);
    const QVariant actual = widget->property(property);
    if (value.userType() == QMetaType::Int)
        QCOMPARE(actual.toInt(), value.toInt()); // enum properties read back as their enum type
    else
        QCOMPARE(actual, value);
}

// Designer marks a property stdset="0" exactly when its setter is not set<Name>; uic then calls
// setProperty instead of a setter that does not exist.
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
    const QHash<QString, const QMetaObject *> classes{{QStringLiteral("BitButton"), &BitButton::staticMetaObject},
                                                      {QStringLiteral("FunctionButton"), &FunctionButton::staticMetaObject},
                                                      {QStringLiteral("TableWidget"), &TableWidget::staticMetaObject},
                                                      {QStringLiteral("TabWidget"), &TabWidget::staticMetaObject},
                                                      {QStringLiteral("DynamicImage"), &DynamicImage::staticMetaObject}};
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

void TestForms::softKeyForm_data()
{
    QTest::addColumn<bool>("compiled"); // by uic, or loaded at run time
    QTest::newRow("uic") << true;
    QTest::newRow("loaded") << false;
}

// The soft-key sample: the bar reuses its three saved groups, and the keypad of picture keys types
// into the field that has the focus.
void TestForms::softKeyForm()
{
    QFETCH(bool, compiled);
    std::unique_ptr<QWidget> root;
    if (compiled) {
        auto *dialog = new QDialog;
        Ui::SoftKeyPanel ui;
        ui.setupUi(dialog);
        root.reset(dialog);
    } else {
        FormLoader loader;
        root.reset(loader.loadFile(QStringLiteral(HMI_FORMS_DIR "/softkeys.ui")));
        QVERIFY2(root, qPrintable(loader.problem()));
    }
    root->show();
    QVERIFY(QTest::qWaitForWindowActive(root.get()));
    auto *bar = root->findChild<ButtonGroup *>(QStringLiteral("softKeyBar"));
    QVERIFY(bar && bar->isBuilt());
    QCOMPARE(bar->findChildren<FunctionButton *>().size(), 24);
    for (int g = 1; g <= 3; ++g)
        QCOMPARE(bar->buttonsOfGroup(g).size(), 8);
    QCOMPARE(bar->shownButtons().at(1)->text(), QStringLiteral("Auto"));
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
    QTest::newRow("unknown widget class") << "bad/unknown-class.ui" << "no widget class for SpindleGauge \"gauge\""
                                          << "";
    QTest::newRow("number as application") << "bad/nested-qeltapp.ui" << ""
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
    QWidget *root = loader.loadFile(QStringLiteral(HMI_TESTS_DIR "/forms/") + file);
    QCOMPARE(root == nullptr, !loadProblem.isEmpty());
    QVERIFY2(loader.problem().contains(loadProblem), qPrintable(loader.problem()));
    if (!root)
        return;
    RecordingQeltApp app;
    FormSession session(root, &app);
    QCOMPARE(session.problems().join('\n').contains(sessionProblem), true);
    QCOMPARE(session.problems().isEmpty(), sessionProblem.isEmpty());
    session.start();
    for (const RecordingQeltApp::Registration &r : app.registrations())
        QVERIFY(!qobject_cast<BitButton *>(r.widget.data()));
}


void TestForms::parameterForm_data()
{
    QTest::addColumn<bool>("compiled"); // by uic, or loaded at run time
    QTest::newRow("uic") << true;
    QTest::newRow("loaded") << false;
}

// The sample parameter list: 2,000 rows whose items are made only near the screen, the rows on screen
// registered, values shown in their radix and decimals, and the second language on request.
void TestForms::parameterForm()
{
    QFETCH(bool, compiled);
    std::unique_ptr<QWidget> root;
    Ui::ParameterScreen ui;
    if (compiled) {
        root = std::make_unique<QDialog>();
        ui.setupUi(static_cast<QDialog *>(root.get()));
    } else {
        FormLoader loader;
        root.reset(loader.loadFile(QStringLiteral(HMI_FORMS_DIR "/parameters.ui")));
        QVERIFY2(root, qPrintable(loader.problem()));
    }
    auto *table = root->findChild<TableWidget *>(QStringLiteral("parameterTable"));
    QVERIFY(table);
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
    QCOMPARE(table->rowSpan(0, 0), 1);
    QCOMPARE(table->columnSpan(0, 0), 5);
    QVERIFY(!table->isColumnHidden(4));
    // The form's input line is the one the table types into.
    QVERIFY(table->inputWidget());
    QCOMPARE(table->inputWidget(), session.form()->findChild<QWidget *>(QStringLiteral("inputLine")));
    QVERIFY(table->softKeypad());
    session.setLanguage(1);
    QCOMPARE(table->item(1, 1)->text(), QStringLiteral("Eilganggeschwindigkeit X"));
    QCOMPARE(table->horizontalHeaderItem(2)->text(), QStringLiteral("Wert"));
}

void TestForms::programForm_data()
{
    QTest::addColumn<bool>("compiled");
    QTest::newRow("uic") << true;
    QTest::newRow("loaded") << false;
}

// The program screen: a table the panel shows as the sample NC program, one as a monitor of 128
// input bits, both from the form's own properties.
void TestForms::programForm()
{
    QFETCH(bool, compiled);
    std::unique_ptr<QWidget> root;
    Ui::ProgramScreen ui;
    if (compiled) {
        root = std::make_unique<QDialog>();
        ui.setupUi(static_cast<QDialog *>(root.get()));
    } else {
        FormLoader loader;
        root.reset(loader.loadFile(QStringLiteral(HMI_FORMS_DIR "/program.ui")));
        QVERIFY2(root, qPrintable(loader.problem()));
    }
    auto *program = root->findChild<TableWidget *>(QStringLiteral("programView"));
    auto *monitor = root->findChild<TableWidget *>(QStringLiteral("inputMonitor"));
    QVERIFY(program && monitor);
    RecordingQeltApp app;
    FormSession session(root.release(), &app);
    session.start();
    session.form()->show();
    QVERIFY(QTest::qWaitForWindowExposed(session.form()));
    QVERIFY(PanelTables::setUp(session.form(), QStringLiteral(HMI_FORMS_DIR)).isEmpty());
    QFile file(QStringLiteral(HMI_FORMS_DIR "/program.nc"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    QCOMPARE(program->rowCount(), int(lines.size()) - 1);
    QCOMPARE(program->horizontalHeaderItem(1)->text(), QStringLiteral("G"));
    QCOMPARE(program->item(3, 1)->text(), QStringLiteral("21"));
    QCOMPARE(program->verticalHeaderItem(3)->text(), QStringLiteral("0003"));
    QCOMPARE(monitor->rowCount(), 8);
    QCOMPARE(monitor->horizontalHeaderItem(10)->text(), QStringLiteral("A"));
    int monitored = 0;
    for (const UiRegistration &r : app.registrations())
        monitored += r.widget == monitor && r.bitType == 0;
    QVERIFY(monitored >= 16);
}

void TestForms::tabForm_data()
{
    QTest::addColumn<bool>("compiled");
    QTest::newRow("uic") << true;
    QTest::newRow("loaded") << false;
}

// The tab sample: pages holding buttons and a parameter table, a service tab above authority 2, and
// mode tabs that a controller word makes present.
void TestForms::tabForm()
{
    QFETCH(bool, compiled);
    std::unique_ptr<QWidget> root;
    Ui::TabScreen ui;
    if (compiled) {
        root = std::make_unique<QDialog>();
        ui.setupUi(static_cast<QDialog *>(root.get()));
    } else {
        FormLoader loader;
        root.reset(loader.loadFile(QStringLiteral(HMI_FORMS_DIR "/tabs.ui")));
        QVERIFY2(root, qPrintable(loader.problem()));
    }
    auto *operation = root->findChild<TabWidget *>(QStringLiteral("operationTabs"));
    auto *modes = root->findChild<TabWidget *>(QStringLiteral("modeTabs"));
    QVERIFY(operation && modes);
    RecordingQeltApp app;
    app.memory().setWord(0, 0, 0, 520, 0b1011);
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
    QCOMPARE(modes->tabBar()->tabText(2), QStringLiteral("Ref"));
    session.setLanguage(1);
    QCOMPARE(operation->tabBar()->tabText(0), QStringLiteral("Hand"));
    QCOMPARE(modes->tabBar()->tabText(2), QStringLiteral("Referenz"));
}

void TestForms::pictureForm_data()
{
    QTest::addColumn<bool>("compiled");
    QTest::newRow("uic") << true;
    QTest::newRow("loaded") << false;
}

// The picture sample: the machine state picked by register word 100 from pictures next to the
// form, and a camera picture watching a folder.
void TestForms::pictureForm()
{
    QFETCH(bool, compiled);
    const QString before = QDir::currentPath();
    QDir::setCurrent(QStringLiteral(HMI_FORMS_DIR));
    std::unique_ptr<QWidget> root;
    Ui::PictureScreen ui;
    if (compiled) {
        root = std::make_unique<QDialog>();
        ui.setupUi(static_cast<QDialog *>(root.get()));
    } else {
        FormLoader loader;
        root.reset(loader.loadFile(QStringLiteral("pictures.ui")));
        QVERIFY2(root, qPrintable(loader.problem()));
    }
    auto *state = root->findChild<DynamicImage *>(QStringLiteral("machineState"));
    auto *camera = root->findChild<DynamicImage *>(QStringLiteral("cameraView"));
    QVERIFY(state && camera);
    QVERIFY(camera->autoLoadImage());
    RecordingQeltApp app;
    app.memory().setWord(0, 0, 3, 100, 2);
    FormSession session(root.release(), &app);
    session.start();
    QCOMPARE(state->index(), 2);
    QVERIFY(!state->currentPixmap().isNull());
    QCOMPARE(app.deliver(state, 0, 1), 1);
    QVERIFY(state->isPlaying()); // the running state is animated
    QDir::setCurrent(before);
}

void TestForms::screensForm_data()
{
    QTest::addColumn<bool>("compiled");
    QTest::newRow("uic") << true;
    QTest::newRow("loaded") << false;
}

// The screen layout sample: a 2 x 2 grid whose lower right cell holds an MDI area; the soft keys
// F1 ... F3 switch its panels, one shown at a time.
void TestForms::screensForm()
{
    QFETCH(bool, compiled);
    const QString before = QDir::currentPath();
    QDir::setCurrent(QStringLiteral(HMI_FORMS_DIR));
    std::unique_ptr<QWidget> root;
    Ui::ScreenPanel ui;
    if (compiled) {
        root = std::make_unique<QDialog>();
        ui.setupUi(static_cast<QDialog *>(root.get()));
    } else {
        FormLoader loader;
        root.reset(loader.loadFile(QStringLiteral("screens.ui")));
        QVERIFY2(root, qPrintable(loader.problem()));
    }
    QWidget *form = root.get();
    RecordingQeltApp app;
    FormSession session(root.release(), &app);
    session.start();
    form->show();
    QVERIFY(QTest::qWaitForWindowExposed(form));
    auto *grid = form->findChild<GridSplitter *>(QStringLiteral("screenGrid"));
    auto *area = form->findChild<MdiArea *>(QStringLiteral("panelArea"));
    QVERIFY(grid && area);
    QCOMPARE(grid->lineHPos(), QStringList{"0.36"});
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
        auto *button = form->findChild<FunctionButton *>(QString::fromLatin1(key));
        QVERIFY(button);
        QTest::mouseClick(button, Qt::LeftButton);
        const QString panel = QStringLiteral("subWindow_") + QLatin1Char(key[17]);
        QCOMPARE(shownPanels(), QStringList{panel});
        QCOMPARE(area->activeSubWindow(), panel);
    }
    QDir::setCurrent(before);
}

void TestForms::operatorScreen_data()
{
    QTest::addColumn<bool>("compiled");
    QTest::newRow("uic") << true;
    QTest::newRow("loaded") << false;
}

// The operator screen on the simulated controller with the demo's machine: soft keys turn the pages,
// the panel language and the operator's authority show, and the machine runs, counts parts and
// raises an alarm the operator resets.
void TestForms::operatorScreen()
{
    QFETCH(bool, compiled);
    const QString before = QDir::currentPath();
    QDir::setCurrent(QStringLiteral(HMI_FORMS_DIR));
    NORVOInterface_Z3::initialization()->setSystemLanguages({QStringLiteral("Sans"), QStringLiteral("Sans")});
    std::unique_ptr<QWidget> root;
    Ui::OperatorPanel ui;
    if (compiled) {
        root = std::make_unique<QDialog>();
        ui.setupUi(static_cast<QDialog *>(root.get()));
    } else {
        FormLoader loader;
        root.reset(loader.loadFile(QStringLiteral("operator.ui")));
        QVERIFY2(root, qPrintable(loader.problem()));
    }
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
    auto *pages = form->findChild<TabWidget *>(QStringLiteral("pages"));
    QVERIFY(pages);

    // F1 ... F3 turn the pages.
    for (int key : {2, 3, 1}) {
        QTest::mouseClick(find(QStringLiteral("functionButton010%1").arg(key).toLatin1().constData()), Qt::LeftButton);
        QCOMPARE(pages->currentIndex(), key - 1);
    }
    // German (the operator's authority on every route: tst_endtoend).
    session.setLanguage(1);
    QCOMPARE(pages->tabBar()->tabText(1), QStringLiteral("Eingänge"));
    QCOMPARE(static_cast<BitButton *>(find("spindleButton"))->text(), QStringLiteral("Spindel AUS"));
    QCOMPARE(form->findChild<TableWidget *>(QStringLiteral("parameterTable"))->item(0, 0)->text(),
             QStringLiteral("Vorschub-Override"));

    // The spindle on: the machine runs, walks its program and makes a part each time round.
    auto *state = form->findChild<DynamicImage *>(QStringLiteral("machineState"));
    auto *status = form->findChild<TableWidget *>(QStringLiteral("statusTable"));
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
    QCOMPARE(static_cast<BitButton *>(find("alarmLamp"))->state(), BitButton::On);
    QCOMPARE(status->item(1, 1)->text().trimmed(), QStringLiteral("19")); // the program stands
    QTest::mouseClick(find("functionButton0106"), Qt::LeftButton);
    scenario.step();
    controller.flushUpdates();
    QCOMPARE(static_cast<BitButton *>(find("alarmLamp"))->state(), BitButton::Off);
    QCOMPARE(state->index(), 1);
    QCOMPARE(status->item(1, 1)->text().trimmed(), QStringLiteral("20"));
    NORVOInterface_Z3::initialization()->resetToDefaults();
    QDir::setCurrent(before);
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
