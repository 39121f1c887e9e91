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
#include <functional>
#include <memory>

using norvo_v0::QeltApp;

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

// Where a widget of a sample lies: the tag of the page or cell holding it.
QString holder(QWidget *form, const char *name)
{
    for (QWidget *w = form->findChild<QWidget *>(QLatin1String(name)); w; w = w->parentWidget()) {
        if (w->objectName() != QLatin1String(name) && !w->statusTip().isEmpty())
            return w->statusTip();
    }
    return QStringLiteral("nowhere");
}

template <class T = QWidget>
T *in(QWidget *form, const char *name)
{
    return form->findChild<T *>(QLatin1String(name));
}

// What a sample runs on: a recording application, or the simulated controller with the demo's machine.
struct Panel
{
    RecordingQeltApp app;
    SimulatedController controller;
    DemoScenario scenario{&controller};
};

// A sample running on a panel, and what a look at it finds.
struct Sample
{
    const char *form;
    QStringList expected;
    std::function<QStringList(QWidget *, Panel &, FormSession &)> look;
    bool simulated = false;
};

const QList<Sample> &sampleLooks()
{
    static const QList<Sample> list{
        // The bar reuses its three saved groups; the keypad of picture keys types into the focused field.
        {"softkeys", {"24", "8 8 8", "F1", "Info", "12.5"}, [](QWidget *form, Panel &, FormSession &) {
             auto *bar = in<ButtonGroup>(form, "softKeyBar");
             QStringList seen{QString::number(bar->isBuilt() ? bar->findChildren<FunctionButton *>().size() : -1)};
             seen << QStringLiteral("%1 %2 %3").arg(bar->buttonsOfGroup(1).size()).arg(bar->buttonsOfGroup(2).size())
                         .arg(bar->buttonsOfGroup(3).size());
             seen << bar->shownButtons().at(1)->shortcut().toString();
             bar->setCurrentGroup(3);
             seen << bar->shownButtons().at(6)->text();
             auto *field = in<QLineEdit>(form, "feedInput");
             field->clear();
             field->setFocus();
             for (const char *key : {"key1", "key2", "keyPoint", "key5", "keyBackspace", "key5"})
                 QTest::mouseClick(in<PictureButton>(form, key), Qt::LeftButton, {}, QPoint(10, 10));
             return seen << field->text();
         }},
        // 2,000 rows whose items are made only near the screen, values in their radix and decimals, the
        // form's input line as the table's, and the second language on request.
        {"parameters", {"2000", "few made", "0000002E", "0.280", "5", "inputLine", "Eilganggeschwindigkeit X", "Wert"},
         [](QWidget *form, Panel &, FormSession &session) {
             auto *table = in<TableWidget>(form, "parameterTable");
             QStringList seen{QString::number(table->rowCount()), table->loadedRowCount() < 200 ? "few made" : "all made",
                              table->item(1, 2)->text(), table->item(4, 2)->text(), QString::number(table->columnSpan(0, 0)),
                              table->softKeypad() && table->inputWidget() ? table->inputWidget()->objectName() : QString()};
             session.setLanguage(1);
             return seen << table->item(1, 1)->text() << table->horizontalHeaderItem(2)->text();
         }},
        // A table shown as the sample NC program, one as a monitor of 128 input bits.
        {"program", {"a row a line", "21", "0003", "8", "bits monitored"}, [](QWidget *form, Panel &p, FormSession &) {
             auto *program = in<TableWidget>(form, "programView");
             auto *monitor = in<TableWidget>(form, "inputMonitor");
             QFile file(QStringLiteral("program.nc"));
             const int lines = file.open(QIODevice::ReadOnly) ? int(file.readAll().count('\n')) : -1;
             int monitored = 0;
             for (const UiRegistration &r : p.app.registrations())
                 monitored += r.widget == monitor && r.bitType == 0;
             return QStringList{program->rowCount() == lines ? "a row a line" : "rows " + QString::number(program->rowCount()),
                                program->item(3, 1)->text(), program->verticalHeaderItem(3)->text(),
                                QString::number(monitor->rowCount()), monitored >= 16 ? "bits monitored" : "bits not monitored"};
         }},
        // Pages holding buttons and a table; mode tabs that a controller word makes present.
        {"tabs", {"3", "tab_1", "tab_2", "0", "1", "3", "Referenz"}, [](QWidget *form, Panel &p, FormSession &session) {
             auto *operation = in<TabWidget>(form, "operationTabs");
             auto *modes = in<TabWidget>(form, "modeTabs");
             QStringList seen{QString::number(operation->tabBar()->count()), holder(form, "spindleKey"),
                              holder(form, "pageTable"), QString::number(modes->tabBar()->count())};
             seen << QString::number(p.app.deliver(modes, 0, 0b1011)) << QString::number(modes->tabBar()->count());
             session.setLanguage(1);
             return seen << modes->tabBar()->tabText(2);
         }},
        // The machine state picked by register word 100 from pictures next to the form, animated when running.
        {"pictures", {"2", "drawn", "1", "playing"}, [](QWidget *form, Panel &p, FormSession &) {
             auto *state = in<DynamicImage>(form, "machineState");
             QStringList seen{QString::number(state->index()), state->currentPixmap().isNull() ? "blank" : "drawn",
                              QString::number(p.app.deliver(state, 0, 1))};
             return seen << (state->isPlaying() ? "playing" : "still");
         }},
        // A 2 x 2 grid whose lower right cell holds an MDI area; the keys F1 ... F3 switch its panels, one
        // shown at a time; the keys on the panels are bound like any other.
        {"screens", {"cell0101", "cell0000", "bound", "subWindow_1", "subWindow_2", "subWindow_3", "subWindow_1"},
         [](QWidget *form, Panel &p, FormSession &) {
             auto *area = in<MdiArea>(form, "panelArea");
             const auto shownPanels = [area] {
                 QStringList names;
                 for (const QString &name : area->getSubwindows()) {
                     if (area->subWindow(name)->isVisible())
                         names << name;
                 }
                 return names.join(QLatin1Char(' ')) + (names == QStringList{area->activeSubWindow()} ? "" : " inactive");
             };
             QStringList seen{holder(form, "panelArea"), holder(form, "spindleKey"),
                              p.app.callNames().count(QStringLiteral("registerUIVariable")) >= 7 ? "bound" : "unbound", shownPanels()};
             for (const char *key : {"functionButton0102", "functionButton0103", "functionButton0101"}) {
                 QTest::mouseClick(in(form, key), Qt::LeftButton);
                 seen << shownPanels();
             }
             return seen;
         }},
        // The demo's machine: the spindle on, it runs, walks its program and makes a part each time
        // round; at the twentieth step an alarm stops the program until the operator resets it.
        {"operator", {"spindle on", "1 Off 1", "1 part", "2 On 19", "1 Off 20"}, [](QWidget *form, Panel &p, FormSession &) {
             auto *status = in<TableWidget>(form, "statusTable");
             const auto machine = [&] {
                 p.controller.flushUpdates();
                 return QStringLiteral("%1 %2 %3").arg(in<DynamicImage>(form, "machineState")->index())
                     .arg(in<BitButton>(form, "alarmLamp")->state() == BitButton::On ? "On" : "Off", status->item(1, 1)->text().trimmed());
             };
             QTest::mouseClick(in(form, "spindleButton"), Qt::LeftButton);
             QStringList seen{p.controller.getBit(0, QeltApp::User_BIT, 100, 0, 0) ? "spindle on" : "spindle off"};
             p.scenario.step();
             seen << machine() << status->item(0, 1)->text().trimmed() + " part";
             while (p.scenario.steps() < 21)
                 p.scenario.step();
             seen << machine();
             QTest::mouseClick(in(form, "functionButton0106"), Qt::LeftButton);
             p.scenario.step();
             return seen << machine();
         }, true},
    };
    return list;
}

} // namespace

class TestForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QDir::setCurrent(QStringLiteral(HMI_FORMS_DIR)); }
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    void stdsetAsDesignerWrites_data()
    {
        QTest::addColumn<QString>("fileName");
        const QStringList forms = QDir(QStringLiteral(HMI_FORMS_DIR)).entryList({QStringLiteral("*.ui")});
        for (const QString &f : forms)
            QTest::newRow(qPrintable(f)) << QStringLiteral(HMI_FORMS_DIR "/") + f;
    }

    // A property of the widget's own with a setter is written plainly, any other (a dynamic one, for the
    // application) with stdset="0", as Designer writes them.
    void stdsetAsDesignerWrites()
    {
        QFETCH(QString, fileName);
        QFile file(fileName);
        QDomDocument doc;
        QVERIFY(file.open(QIODevice::ReadOnly) && doc.setContent(&file));
        QHash<QString, const QMetaObject *> classes;
        for (const QString &name : WidgetFactory::classNames())
            classes.insert(name, std::unique_ptr<QWidget>(WidgetFactory::create(name, nullptr))->metaObject());
        QStringList wrong;
        int checked = 0;
        const QDomNodeList properties = doc.elementsByTagName(QStringLiteral("property"));
        for (int i = 0; i < properties.size(); ++i) {
            const QDomElement p = properties.at(i).toElement();
            const QDomElement widget = p.parentNode().toElement();
            if (const QMetaObject *meta = widget.tagName() == QLatin1String("widget") ? classes.value(widget.attribute(QStringLiteral("class"))) : nullptr) {
                const int index = meta->indexOfProperty(p.attribute(QStringLiteral("name")).toLatin1().constData());
                if ((p.attribute(QStringLiteral("stdset")) == QLatin1String("0")) == (index >= 0 && meta->property(index).hasStdCppSet()))
                    wrong << widget.attribute(QStringLiteral("name")) + QLatin1Char('.') + p.attribute(QStringLiteral("name"));
                checked += index >= 0;
            }
        }
        QVERIFY(checked > 0);
        QCOMPARE(wrong, QStringList());
    }

    void formsThatCannotRunWhole_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("problem"); // the loader's, or the session's when it loads
        QTest::newRow("missing file") << "absent.ui" << "No such file";
        QTest::newRow("unknown widget class") << "unknown-class.ui" << "no widget class for SpindleGauge \"gauge\"";
        QTest::newRow("number as application") << "nested-qeltapp.ui" << "dialog \"inner\" inside the form sets its own \"QeltApp\" property";
    }

    // A form with a hole or a dialog that would cut its widgets off the application is reported, and the
    // widgets it holds never take a number from the form for the application.
    void formsThatCannotRunWhole()
    {
        QFETCH(QString, file);
        QFETCH(QString, problem);
        FormLoader loader;
        if (problem.contains(QStringLiteral("SpindleGauge"))) // the loader's own warning
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral(".*SpindleGauge.*")));
        QWidget *root = loader.loadFile(QStringLiteral(HMI_BAD_FORMS_DIR "/") + file);
        RecordingQeltApp app;
        std::unique_ptr<FormSession> session(root ? new FormSession(root, &app) : nullptr);
        const QStringList problems = session ? session->problems() : QStringList{loader.problem()};
        QCOMPARE(problems.size(), 1);
        QVERIFY2(problems.first().contains(problem), qPrintable(problems.first()));
        if (session)
            session->start();
        for (const RecordingQeltApp::Registration &r : app.registrations())
            QVERIFY(!qobject_cast<BitButton *>(r.widget.data()));
    }

    void samples_data()
    {
        QTest::addColumn<bool>("compiledByUic");
        QTest::addColumn<int>("sample");
        for (int i = 0; i < sampleLooks().size(); ++i) {
            QTest::addRow("%s, uic", sampleLooks().at(i).form) << true << i;
            QTest::addRow("%s, loaded", sampleLooks().at(i).form) << false << i;
        }
    }

    // Each sample form compiled and loaded, running in a session and shown, as the panel runs it.
    void samples()
    {
        QFETCH(int, sample);
        const Sample &look = sampleLooks().at(sample);
        NORVOInterface_Z3::initialization()->setSystemLanguages({QStringLiteral("Sans"), QStringLiteral("Sans")});
        std::unique_ptr<QWidget> root = ::sample(QString::fromLatin1(look.form));
        QVERIFY(root);
        Panel p;
        p.app.memory().setWord(0, 0, 0, 500, 0x1f); // every parameter column
        p.app.memory().setWord(0, 0, 0, 1001, 0x2e);
        p.app.memory().setWord(0, 0, 0, 1004, 280);
        p.app.memory().setWord(0, 0, 3, 100, 2); // the machine state
        FormSession session(root.release(), look.simulated ? static_cast<QeltApp *>(&p.controller) : &p.app);
        QCOMPARE(session.problems(), QStringList());
        session.start();
        QVERIFY(PanelTables::setUp(session.form(), QStringLiteral(HMI_FORMS_DIR)).isEmpty());
        session.form()->show();
        session.form()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(session.form()));
        QCOMPARE(look.look(session.form(), p, session), look.expected);
    }

    void unknownEnumValuesRefused_data()
    {
        QTest::addColumn<QString>("className");
        QTest::addColumn<int>("property");
        for (const QString &className : WidgetFactory::classNames()) {
            const QMetaObject *meta = std::unique_ptr<QWidget>(WidgetFactory::create(className, nullptr))->metaObject();
            const QMetaObject *qtBase = meta;
            while (!QByteArray(qtBase->className()).startsWith('Q'))
                qtBase = qtBase->superClass();
            for (int i = qtBase->propertyCount(); i < meta->propertyCount(); ++i) { // the library's own
                const QMetaProperty p = meta->property(i);
                if (p.isEnumType() && !p.isFlagType() && p.isWritable())
                    QTest::addRow("%s.%s", qPrintable(className), p.name()) << className << i;
            }
        }
    }

    // A form can write any number into an enum property; the widget keeps what it had and says so.
    void unknownEnumValuesRefused()
    {
        QFETCH(QString, className);
        QFETCH(int, property);
        const std::unique_ptr<QWidget> widget(WidgetFactory::create(className, nullptr));
        widget->setObjectName(QStringLiteral("probe"));
        const QMetaProperty p = widget->metaObject()->property(property);
        const int before = p.read(widget.get()).toInt();
        for (int value : {INT_MAX, -2}) {
            if (p.enumerator().valueToKey(value))
                continue;
            QTest::ignoreMessage(QtWarningMsg, qPrintable(QStringLiteral("%1 \"probe\": property \"%2\": %3 is no value of it; it is ignored")
                                                              .arg(className, QLatin1String(p.name())).arg(value)));
            p.write(widget.get(), value);
            QCOMPARE(p.read(widget.get()).toInt(), before);
        }
    }
};

QTEST_MAIN(TestForms)
#include "tst_forms.moc"
