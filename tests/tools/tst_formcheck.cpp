#include "../table/tabletestsupport.h"
#include "bitbutton.h"
#include "formchecker.h"
#include "formlimits.h"
#include "formloader.h"
#include "formreload.h"
#include "formsession.h"
#include "formwatcher.h"
#include "norvointerface_z3.h"
#include "panelwindow.h"
#include "simulatedcontroller.h"
#include "tablecontents.h"
#include "textinfocodec.h"
#include "wordlibraryfile.h"
#ifdef HMI_HAVE_MODBUS
#include "mapcheck.h"
#endif

#include <QBuffer>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QLabel>
#include <QProcess>
#include <QSpinBox>
#include <QTableWidgetItem>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>
#include <memory>

namespace {

// Stored contents of 300 rows whose second row binds a bit index past 31, cut short so that the
// rows from about the middle cannot be read.
QByteArray brokenTableData()
{
    std::vector<std::unique_ptr<QTableWidgetItem>> keep;
    QList<QList<const QTableWidgetItem *>> rows;
    for (int r = 0; r < 300; ++r) {
        QList<const QTableWidgetItem *> row;
        for (int c = 0; c < 2; ++c) {
            keep.push_back(std::make_unique<QTableWidgetItem>(QStringLiteral("parameter %1 %2 with a long caption").arg(r).arg(c)));
            if (r == 1 && c == 0)
                keep.back()->setWhatsThis(QStringLiteral("bit@1@3@10@35@0"));
            else
                keep.back()->setWhatsThis(QStringLiteral("1@0@%1@8@2@0@100").arg(r * 2 + c));
            row << keep.back().get();
        }
        rows << row;
    }
    const QByteArray whole = TableContents::encode(300, 2, rows);
    return whole.left(whole.size() / 2 & ~1);
}

using Files = QMap<QString, QByteArray>; // file name, contents

QList<FormFinding> check(const QByteArray &form, const QMap<int, QStringList> &words = {})
{
    QBuffer buffer;
    buffer.setData(form);
    buffer.open(QIODevice::ReadOnly);
    FormChecker checker({4, words});
    QList<FormFinding> findings;
    if (!checker.check(&buffer, &findings))
        qWarning("not a form: %s", qPrintable(checker.problem()));
    return findings;
}

QByteArray mistakesForm()
{
    TextData caption;
    caption.wordLibId = 78;
    caption.texts = QStringList{QStringLiteral("Spindle")};
    return TableTest::readAll(QStringLiteral(HMI_FORMCHECK_DIR "/mistakes.ui"))
        .replace("@DATA@", brokenTableData())
        .replace("@TEXTS@", TextInfoCodec::encodeSlot({caption}));
}

// A form of widgets nested depth deep inside the form's own, each holding its inner ones.
QByteArray nestedForm(int depth)
{
    return "<ui version=\"4.0\"><widget class=\"QDialog\" name=\"form\">"
           + QByteArray("<widget class=\"QWidget\">").repeated(depth) + QByteArray("</widget>").repeated(depth)
           + "</widget></ui>";
}

QByteArray formOf(const QByteArray &rootClass, QSize size, const QByteArray &children)
{
    return "<ui version=\"4.0\"><widget class=\"" + rootClass + "\" name=\"form\"><property name=\"geometry\"><rect>"
           "<x>0</x><y>0</y><width>" + QByteArray::number(size.width()) + "</width><height>"
           + QByteArray::number(size.height()) + "</height></rect></property>" + children + "</widget></ui>";
}

// A form holding one key that needs authority 2.
QByteArray watchedKey(const QByteArray &name, const QByteArray &title = {})
{
    return formOf("QDialog", {300, 200}, "<property name=\"windowTitle\"><string>" + title + "</string></property>"
                  "<widget class=\"BitButton\" name=\"" + name + "\"><property name=\"operationalAuthority\">"
                  "<number>2</number></property></widget>");
}

} // namespace

class TestFormCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // One finding for each entry, in the order of the lines: nothing is said twice or at a wrong line.
    void mistakesAreReported()
    {
        const QList<std::pair<int, QString>> expected{
            {5, "unknown widget class"}, {8, "\"channel\": 9 is out of range; the widget keeps 4"},
            {11, "\"BitButton::Q_BIT\" is no value of it"}, {14, "\"readAddress\": a negative address"},
            {17, "\"readBitIndex\": 40 is out of range; the widget keeps 0"},
            {20, "\"operationalAuthority\": 150 is out of range; the widget keeps 0"},
            {23, "stored \"textInfoBuffer\" cannot be read"}, {26, "duplicate object name; the widget on line 6 has it too"},
            {28, "\"wordLibId\": word 77 is not in the panel's word library"}, {31, "tab widget \"pages\" has no page 7 (it has 2)"},
            {34, "\"textInfoBuffer\": word 78 is not in the panel's word library"}, {41, "entry 2 \"x\" is no address"},
            {45, "cell (1, 0) \"bit@1@3@10@35@0\": field 5 (bit index) \"35\" is outside 0 ... 31"},
            {45, "stored \"data\" breaks off at row"}, {49, "cell (0, 0) \"1@0@-5@8@2@0@100\": field 3 (address) \"-5\" is outside"},
            {54, "cell (0, 1) \"1@9@0\": 3 fields where a value binding needs at least 6"},
            {65, "entry 2 \"120\" is above 99: the tab is open to every operator"}, {77, "\"index\": 5 is out of range; the widget keeps -1"}};
        const QList<FormFinding> found = check(mistakesForm());
        QStringList all;
        for (const FormFinding &f : found)
            all << QStringLiteral("%1: %2").arg(f.line).arg(f.message);
        QVERIFY2(found.size() == expected.size(), qPrintable(all.join(QLatin1Char('\n'))));
        for (int i = 0; i < found.size(); ++i)
            QVERIFY2(found.at(i).line == expected.at(i).first && found.at(i).message.contains(expected.at(i).second), qPrintable(all.at(i)));
    }

    void wordLibraryFile_data()
    {
        QTest::addColumn<QByteArray>("content"); QTest::addColumn<QString>("read"); // the words, then the problems
        QTest::newRow("two languages, CR-LF, comment, no last line feed")
            << QByteArray("# spindle words\r\n10\tSpindle\tSpindel\r\n\r\n11\tCoolant\tK\xc3\xbchlmittel") << "10=Spindle|Spindel 11=Coolant|Kühlmittel";
        QTest::newRow("bad id, twice given") << QByteArray("x\tNo\n-1\tNegative\n5\tFirst\n5\tSecond\n")
                                             << "5=First | line 1: no word id (a number from 0) in front | line 2: no word id (a number from 0) in front"
                                                " | line 4: word 5 is given twice; the first is kept";
        QTest::newRow("more than ten languages") << QByteArray("1\ta\tb\tc\td\te\tf\tg\th\ti\tj\tk\n")
                                                 << "1=a|b|c|d|e|f|g|h|i|j | line 1: texts beyond 10 languages are left out";
    }
    void wordLibraryFile()
    {
        QFETCH(QByteArray, content); QFETCH(QString, read);
        QBuffer buffer(&content);
        buffer.open(QIODevice::ReadOnly);
        WordLibraryFile library;
        const bool clean = library.read(&buffer);
        QStringList got;
        for (auto it = library.words().cbegin(); it != library.words().cend(); ++it)
            got << QStringLiteral("%1=%2").arg(it.key()).arg(it.value().join(QLatin1Char('|')));
        QCOMPARE((QStringList{got.join(QLatin1Char(' '))} + library.problems()).join(QLatin1String(" | ")), read);
        QCOMPARE(clean, library.problems().isEmpty());
    }

    void watchedForm_data()
    {
        QTest::addColumn<QString>("file"); QTest::addColumn<QByteArray>("saved"); QTest::addColumn<bool>("renamed");
        QTest::addColumn<QString>("shown"); QTest::addColumn<QString>("message"); // the key on screen, the message line
        QTest::addColumn<bool>("modal"); // a dialog open over the form when saved, closed a while later
        QTest::addColumn<QByteArray>("map"); // the Modbus map the panel runs on; none: the simulated machine
        const QByteArray second = watchedKey("second", "Bohrwerk-Bedienfeld");
        const QString reloaded = QStringLiteral("form.ui neu geladen.");
        QTest::newRow("saved as Designer does") << "form.ui" << second << true << "second" << reloaded << false << QByteArray();
        QTest::newRow("saved under a dialog: reloaded when it closes") << "form.ui" << second << true << "second" << reloaded << true << QByteArray();
        QTest::newRow("written in place") << "form.ui" << second << false << "second" << reloaded << false << QByteArray();
        QTest::newRow("word library beside it") << "words.tsv" << QByteArray("1\tOne\tEins\n") << true << "first" << reloaded << false << QByteArray();
        QTest::newRow("half written: last good form stays") << "form.ui" << second.left(90) << false << "first"
            << "form.ui: not a form: line 1" << false << QByteArray();
        QTest::newRow("unknown class: last good form stays") << "form.ui" << formOf("QDialog", {300, 200}, "<widget class=\"NoSuch\" "
            "name=\"ghost\"/>") << true << "first" << "form.ui:1: widget \"ghost\" (NoSuch): unknown widget class" << false << QByteArray();
        QTest::newRow("dialog inside: last good form stays, running") << "form.ui" << formOf("QDialog", {300, 200}, "<widget "
            "class=\"QDialog\" name=\"inner\"/>") << true << "first" << "widget \"inner\" (QDialog): a dialog inside the form" << false << QByteArray();
#ifdef HMI_HAVE_MODBUS
        QTest::newRow("a variable the map lacks: last good form stays") << "form.ui" << second << true << "first"
            << "widget \"second\" (BitButton): shows link 0, channel 1, I_BIT 0, which the map has no entry for" << false
            << QByteArray("{\"entries\": [{\"dataClass\": \"Reg\", \"first\": 0, \"last\": 9, \"unit\": 1, \"table\": \"holding\", \"start\": 0}]}");
#endif
    }
    // A panel watching its form, in German at authority 3, sees a save: the form saved, with the
    // language and authority kept and the panel's own words in that language, or the last good form;
    // the message is said again in English when the operator switches.
    void watchedForm()
    {
        QFETCH(QString, file); QFETCH(QByteArray, saved); QFETCH(bool, renamed); QFETCH(QString, shown); QFETCH(QString, message);
        QFETCH(bool, modal); QFETCH(QByteArray, map);
        NORVOInterface_Z3::initialization()->setSystemLanguages({QStringLiteral("Sans"), QStringLiteral("Sans")});
        QTemporaryDir dir;
        const QString form = dir.filePath(QStringLiteral("form.ui"));
        const auto save = [&](const QString &name, const QByteArray &contents, bool rename) {
            QFile out(dir.filePath(rename ? QStringLiteral(".new") : name));
            QVERIFY(out.open(QIODevice::WriteOnly) && out.write(contents) == contents.size());
            out.close();
            QVERIFY(!rename || std::rename(qPrintable(out.fileName()), qPrintable(dir.filePath(name))) == 0);
        };
        save(QStringLiteral("form.ui"), watchedKey("first"), false);
        SimulatedController controller;
        auto first = std::make_unique<FormSession>(FormLoader().loadFile(form), &controller);
        PanelWindow window(first.get(), {QStringLiteral("English"), QStringLiteral("Deutsch")}, {});
        FormReload::Hooks hooks;
#ifdef HMI_HAVE_MODBUS
        ModbusMap modbusMap;
        QVERIFY(map.isEmpty() || modbusMap.parse(map));
        const MapCheck mapCheck(modbusMap);
        if (!map.isEmpty())
            hooks.gaps = [&mapCheck](const QString &fileName) { return mapCheck.lacking(fileName, {1, {}}); };
#endif
        FormReload reload(form, &window, std::move(first), &controller, hooks);
        reload.session()->start();
        FormWatcher watcher({form, dir.filePath(QStringLiteral("words.tsv"))});
        connect(&watcher, &FormWatcher::changed, &reload, &FormReload::reloadWhenIdle);
        window.findChild<QComboBox *>(QStringLiteral("languageBox"))->setCurrentIndex(1);
        window.findChild<QSpinBox *>(QStringLiteral("authorityBox"))->setValue(3);
        QDialog dialog(&window);
        dialog.setModal(true);
        dialog.setVisible(modal);
        save(file, saved, renamed);
        if (modal) {
            QTest::qWait(3 * FormWatcher::SettleMs);
            QVERIFY(window.findChild<BitButton *>(QStringLiteral("first")));
            dialog.close();
        }
        auto *line = window.findChild<QLabel *>(QStringLiteral("messageLine"));
        QTRY_VERIFY2(line->text().contains(message), qPrintable(line->text()));
        const QList<BitButton *> keys = window.findChildren<BitButton *>();
        QCOMPARE(keys.size(), 1);
        QCOMPARE(keys.constFirst()->objectName(), shown);
        QVERIFY(!keys.constFirst()->QWidget::isEnabled()); // it needs authority 2
        QVERIFY(controller.isUpdating(reload.session()->form()));
        QCOMPARE(NORVOInterface_Z3::initialization()->currentLanguageIndex(), 1);
        QVERIFY(window.findChild<QLabel *>()->text() == QStringLiteral("Sprache:"));
        QCOMPARE(window.windowTitle(), shown == QLatin1String("second") ? "Bohrwerk-Bedienfeld" : "Bedienfeld"); // not "... - Bedienfeld"
        window.findChild<QComboBox *>(QStringLiteral("languageBox"))->setCurrentIndex(0); // the message said again
        QVERIFY2(line->text().startsWith(message.endsWith(QLatin1String("neu geladen.")) ? "form.ui reloaded." : "form.ui not reloaded"),
                 qPrintable(line->text()));
        NORVOInterface_Z3::initialization()->resetToDefaults();
    }

    void commandExitStatus_data()
    {
        QTest::addColumn<QStringList>("arguments"); // "form.ui" is the form column's, when given
        QTest::addColumn<QByteArray>("form"); QTest::addColumn<int>("status"); QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("absent");
        QTest::addColumn<QSize>("formShown"); // in the screenshot "shot.png", around the panel's bar and line
        QTest::addColumn<Files>("files"); // beside the form
        const auto run = [](const char *name, const QStringList &arguments, const QByteArray &form, int status, const QString &output,
                            const QString &absent = {}, QSize formShown = {}, const Files &files = {}) {
            QTest::newRow(name) << arguments << form << status << output << absent << formShown << files;
        };
        const QString wordFinding = QStringLiteral("word %1 is not in the panel's word library");
        const QStringList check{QStringLiteral("--check"), QStringLiteral("form.ui")};
        const QStringList shot{QStringLiteral("form.ui"), QStringLiteral("--screenshot"), QStringLiteral("shot.png")};
        const QByteArray mistakes = mistakesForm();
        QStringList samples{QStringLiteral("--check")}; // every sample form is clean
        for (const QFileInfo &form : QDir(QStringLiteral(HMI_FORMS_DIR)).entryInfoList({QStringLiteral("*.ui")}))
            samples << form.filePath();
        QVERIFY(samples.size() > 8);
        run("samples", samples, {}, 0, {});
        run("mistakes", check, mistakes, 1, "form.ui:5: widget \"ghost\" (NoSuchButton): unknown widget class");
        run("word library beside the form", check, mistakes, 1, wordFinding.arg(78), wordFinding.arg(77), {}, {{"words.tsv", "77\tSpindle\n"}});
        run("named word library wins", check + QStringList{QStringLiteral("--words"), QStringLiteral("library.tsv")}, mistakes, 1,
            wordFinding.arg(77), wordFinding.arg(78), {}, {{"words.tsv", "77\tSpindle\n"}, {"library.tsv", "78\tSpindle\n"}});
        // Not forms at all: nothing checked, and where reading stopped.
        run("empty", check, {}, 2, "form.ui: not a form: line 1");
        run("not XML", check, QByteArray("\x89PNG\r\n\x1a\n\0\0garbage", 18), 2, "form.ui: not a form: line 1");
        run("not a ui", check, "<html><body/></html>", 2, "not a form (<html> instead of <ui>)");
        run("no widget", check, "<ui version=\"4.0\"><class>X</class></ui>", 2, "holds no widget");
        run("unclosed", check, TableTest::readAll(QStringLiteral(HMI_FORMCHECK_DIR "/broken.ui")), 2, "form.ui: not a form: line 6");
        run("deeply nested, unclosed", check, "<ui>" + QByteArray("<widget class=\"QWidget\">").repeated(100000), 2, "form.ui: not a form: line 1");
        run("missing file", {QStringLiteral("--check"), QStringLiteral("no-such-form.ui")}, {}, 2, "cannot be read");
        run("a folder", {QStringLiteral("--check"), QStringLiteral(".")}, {}, 2, "not a regular file");
        run("help", {QStringLiteral("--help")}, {}, 0, "--screenshot <FILE>");
        run("showing needs a display", {QStringLiteral("form.ui")}, mistakes, 1, "no display");

        // Forms that would crash, hang or bloat the panel: refused or bounded, and flagged by the checker.
        run("nested as deep as the panel takes", check, nestedForm(FormLimits::MaxNesting - 1), 0, {});
        const QByteArray deep = nestedForm(100000);
        run("nested 100,000 deep: checked", check, deep, 1, "nest more than");
        run("nested 100,000 deep: refused", shot, deep, 1, "hmi-panel: cannot load form.ui: line 1:");
        const QByteArray huge = formOf("QDialog", {16000, 16000}, "<widget class=\"QLabel\" name=\"far\"><property "
                                       "name=\"geometry\"><rect><x>2147483647</x><y>0</y><width>100</width><height>20</height>"
                                       "</rect></property></widget>");
        run("16000 x 16000: checked", check, huge, 1, "\"geometry\" 16000 x 16000 at (0, 0) is beyond");
        run("16000 x 16000: clamped", shot, huge, 0, "QLabel \"far\": property \"geometry\"", {}, {FormLimits::MaxExtent, FormLimits::MaxExtent});
        run("Designer's widget template shown whole", shot, formOf("QWidget", {1150, 800}, ""), 0, "wrote", {}, {1150, 800});
        // A 400 x 300 dialog holding one widget with one property set.
        const auto holding = [](const QByteArray &widget, const QByteArray &property) {
            return formOf("QDialog", {400, 300}, "<widget class=\"" + widget + "\"><property name=" + property + "</property></widget>");
        };
        const QByteArray pen = holding("GridSplitter\" name=\"grid", "\"gridLineStyle\"><number>2147483647</number>");
        const QString penRefused = QStringLiteral("\"gridLineStyle\": 2147483647 is no value of it; it is ignored");
        run("pen style 2147483647: checked", check, pen, 1, "setting " + penRefused);
        run("pen style 2147483647: ignored", shot, pen, 0, "GridSplitter \"grid\": property " + penRefused, {}, {400, 300});
        const QByteArray rows = holding("TableWidget\" name=\"list", "\"rowCount\"><number>2147483647</number>");
        run("2147483647 rows: checked", check, rows, 1, "setting \"rowCount\": 2147483647 is outside 0 ... 100000");
        run("2147483647 rows: bounded", shot, rows, 0, "TableWidget \"list\": property \"rowCount\"");
        const QByteArray span = holding("TableWidget\" name=\"list", "\"mergeCells\" stdset=\"0\"><cstring>"
                                        "0000000100000000000000007fffffff00000002</cstring>");
        run("span to the last row there is: checked", check, span, 1, "\"mergeCells\": 1 spans reach past");
        run("span to the last row there is: cut", shot, span, 0, "property \"mergeCells\": 1 spans reach past");
        // Qt's loader would make these items and drop them unfreed.
        const QByteArray outside = formOf("QDialog", {400, 300}, "<widget class=\"TableWidget\" name=\"list\"><property name=\"rowCount\">"
            "<number>2</number></property><column/><item row=\"1\" column=\"0\"/><item row=\"0\" column=\"5\"><property name=\"text\">"
            "<string>x</string></property></item><item row=\"-1\" column=\"0\"/></widget>");
        const QString leftOut = QStringLiteral("item (row 0, column 5) lies outside the table's 2 rows and 1 column; it is left out");
        run("table items outside: checked", check, outside, 1, "form.ui:1: widget \"list\" (TableWidget): " + leftOut, "(row 1,");
        run("table items outside: left out", shot, outside, 0, "TableWidget \"list\": line 1: " + leftOut, "(row 1,");
#ifdef HMI_HAVE_MODBUS
        // Against a map: User words in holding registers, their bits in one-register input registers.
        const QStringList mapped = check + QStringList{QStringLiteral("--map"), QStringLiteral("map.json")};
        const Files map{{"map.json", R"({"entries": [{"dataClass": "User", "first": 0, "last": 199, "table": "holding", "registers": 1},
            {"bitType": "User_BIT", "first": 0, "last": 9, "table": "input", "registers": 1}]})"}};
        run("map lacks the variable", mapped, holding("DynamicImage\" name=\"lamp", "\"address\"><number>500</number>"), 1,
            "form.ui:1: widget \"lamp\" (DynamicImage): shows link 0, channel 1, User word 500, which the map has no entry for", {}, {}, map);
        run("map: bit past its word", mapped, holding("BitButton\" name=\"lamp", "\"readBitType\"><enum>BitButton::User_BIT</enum>"
            "</property><property name=\"readBitIndex\"><number>20</number>"), 1, "User_BIT 0.20, past the 16 bits of its word in entry 2", "read-only", {}, map);
        run("map: press writes a read-only table", mapped, holding("BitButton\" name=\"key", "\"writeBitType\"><enum>BitButton::User</enum>"),
            1, "writes link 0, channel 1, User_BIT 0.0, which entry 2 (link 0, channel 1, User_BIT bits 0 ... 9) puts in read-only input", {}, {}, map);
        const QStringList operatorForm{QStringLiteral("--check"), QStringLiteral(HMI_FORMS_DIR "/operator.ui"), QStringLiteral("--map"), QStringLiteral("map.json")};
        run("map: table cell writes a read-only table", operatorForm, {}, 1, "operator.ui:127: widget \"statusTable\" (TableWidget): writes link 0, channel 1, "
            "User word 130, which entry 1 (link 0, channel 1, User words 0 ... 199) puts in read-only input", {}, {}, {{"map.json", QByteArray(map.value("map.json")).replace("holding", "input")}});
        run("map: a locked cell only shows", mapped, formOf("QDialog", {400, 300}, "<widget class=\"TableWidget\" name=\"t\"><row/><column/><item row=\"0\" "
            "column=\"0\"><property name=\"whatsThis\"><string>bit@1@7@5@0@0</string></property><property name=\"flags\"><set>ItemIsEnabled</set></property></item></widget>"), 0, {}, {}, {}, map);
        run("map: the sample form on its map", {operatorForm.mid(0, 3) + QStringList{QStringLiteral(HMI_FORMS_DIR "/operator-modbus.json")}}, {}, 0, {});
        run("map that does not read", mapped, mistakes, 1, "hmi-panel: no \"entries\" list", "form.ui:", {}, {{"map.json", "{}"}});
#endif
        QByteArray tabs = "<widget class=\"TabWidget\" name=\"tabs\"><property name=\"operationalAuthoritys\"><stringlist>";
        for (int i = 0; i < 10000; ++i)
            tabs += "<string>" + QByteArray::number(100 + i) + "</string>";
        run("10,000 tab authorities: a few findings", check, formOf("QDialog", {400, 300}, tabs + "</stringlist></property></widget>"), 1,
            "... and 9980 more about \"operationalAuthoritys\"", "entry 21 ");
    }
    void commandExitStatus()
    {
        QFETCH(QStringList, arguments); QFETCH(QByteArray, form); QFETCH(int, status); QFETCH(QString, output);
        QFETCH(QString, absent); QFETCH(QSize, formShown); QFETCH(Files, files);
        QTemporaryDir dir;
        files.insert(QStringLiteral("form.ui"), form);
        for (auto it = files.cbegin(); it != files.cend(); ++it) {
            QFile file(dir.filePath(it.key()));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(it.value()) == it.value().size());
        }
        QProcess panel;
        panel.setWorkingDirectory(dir.path());
        panel.setProcessChannelMode(QProcess::MergedChannels);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment(); // no display, as on a build server
        environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
        environment.remove(QStringLiteral("DISPLAY"));
        environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
        panel.setProcessEnvironment(environment);
        panel.start(QStringLiteral(HMI_PANEL), arguments);
        QVERIFY(panel.waitForFinished(60000));
        const QString out = QString::fromUtf8(panel.readAll());
        QCOMPARE(panel.exitStatus(), QProcess::NormalExit);
        QVERIFY2(panel.exitCode() == status, qPrintable(out.left(2000)));
        if (output.isEmpty())
            QVERIFY2(out.isEmpty(), qPrintable(out));
        else
            QVERIFY2(out.contains(output), qPrintable(out.left(2000)));
        if (!absent.isEmpty())
            QVERIFY2(!out.contains(absent), qPrintable(out.left(2000)));
        if (formShown.isValid()) {
            const QSize picture = QImageReader(dir.filePath(QStringLiteral("shot.png"))).size();
            const QSize around = picture - formShown; // the panel's bar above the form and message line below
            QVERIFY2(around.width() >= 0 && around.width() < 100 && around.height() >= 0 && around.height() < 100,
                     qPrintable(QStringLiteral("%1 x %2").arg(picture.width()).arg(picture.height())));
        }
    }
};

QTEST_MAIN(TestFormCheck)
#include "tst_formcheck.moc"
