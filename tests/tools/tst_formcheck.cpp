#include "formchecker.h"
#include "formlimits.h"
#include "tablecontents.h"
#include "textinfocodec.h"
#include "wordlibraryfile.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QProcess>
#include <QTableWidgetItem>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

QByteArray readFile(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

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
    return readFile(QStringLiteral(HMI_FORMCHECK_DIR "/mistakes.ui"))
        .replace("@DATA@", brokenTableData())
        .replace("@TEXTS@", TextInfoCodec::encodeSlot({caption}));
}

} // namespace

class TestFormCheck : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void mistakesAreReported_data();
    void mistakesAreReported();
    void notAForm_data();
    void notAForm();
    void wordLibraryFile_data();
    void wordLibraryFile();
    void commandExitStatus_data();
    void commandExitStatus();

private:
    QList<FormFinding> m_mistakes;
};

// One finding for each row below, in the order of the lines: nothing is said twice or at a wrong line.
void TestFormCheck::initTestCase()
{
    m_mistakes = check(mistakesForm());
    QStringList all;
    for (const FormFinding &f : std::as_const(m_mistakes))
        all << QStringLiteral("%1: %2").arg(f.line).arg(f.message);
    QVERIFY2(m_mistakes.size() == 18, qPrintable(all.join(QLatin1Char('\n'))));
    for (int i = 1; i < m_mistakes.size(); ++i)
        QVERIFY2(m_mistakes.at(i - 1).line <= m_mistakes.at(i).line, qPrintable(all.join(QLatin1Char('\n'))));
}

void TestFormCheck::mistakesAreReported_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("fragment");
    QTest::newRow("unknown class") << 5 << "unknown widget class";
    QTest::newRow("channel") << 8 << "\"channel\": 9 is out of range; the widget keeps 4";
    QTest::newRow("enum name") << 11 << "\"BitButton::Q_BIT\" is no value of it";
    QTest::newRow("negative address") << 14 << "\"readAddress\": a negative address";
    QTest::newRow("bit index") << 17 << "\"readBitIndex\": 40 is out of range; the widget keeps 0";
    QTest::newRow("authority") << 20 << "\"operationalAuthority\": 150 is out of range; the widget keeps 0";
    QTest::newRow("text buffer") << 23 << "stored \"textInfoBuffer\" cannot be read";
    QTest::newRow("duplicate name") << 26 << "duplicate object name; the widget on line 6 has it too";
    QTest::newRow("word id") << 28 << "\"wordLibId\": word 77 is not in the panel's word library";
    QTest::newRow("soft key page") << 31 << "tab widget \"pages\" has no page 7 (it has 2)";
    QTest::newRow("word id in a text record") << 34 << "\"textInfoBuffer\": word 78 is not in the panel's word library";
    QTest::newRow("column word") << 41 << "entry 2 \"x\" is no address";
    QTest::newRow("stored bit index") << 45 << "cell (1, 0) \"bit@1@3@10@35@0\": field 5 (bit index) \"35\" is outside 0 ... 31";
    QTest::newRow("stored rows break off") << 45 << "stored \"data\" breaks off at row";
    QTest::newRow("cell address") << 49 << "cell (0, 0) \"1@0@-5@8@2@0@100\": field 3 (address) \"-5\" is outside";
    QTest::newRow("short binding") << 54 << "cell (0, 1) \"1@9@0\": 3 fields where a value binding needs at least 6";
    QTest::newRow("tab authority") << 65 << "entry 2 \"120\" is above 99: the tab is open to every operator";
    QTest::newRow("picture index") << 77 << "\"index\": 5 is out of range; the widget keeps -1";
}

void TestFormCheck::mistakesAreReported()
{
    QFETCH(int, line);
    QFETCH(QString, fragment);
    QStringList atLine;
    for (const FormFinding &f : std::as_const(m_mistakes)) {
        if (f.line == line)
            atLine << f.message;
    }
    bool found = false;
    for (const QString &message : std::as_const(atLine))
        found = found || message.contains(fragment);
    QVERIFY2(found, qPrintable(QStringLiteral("line %1: %2").arg(line).arg(atLine.join(QStringLiteral(" | ")))));
}

void TestFormCheck::notAForm_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("problem");
    QTest::newRow("empty") << QByteArray() << "line 1";
    QTest::newRow("not xml") << QByteArray("\x89PNG\r\n\x1a\n\0\0garbage", 18) << "line 1";
    QTest::newRow("not a ui") << QByteArray("<html><body/></html>") << "not a form (<html> instead of <ui>)";
    QTest::newRow("no widget") << QByteArray("<ui version=\"4.0\"><class>X</class></ui>") << "holds no widget";
    QTest::newRow("unclosed") << readFile(QStringLiteral(HMI_FORMCHECK_DIR "/broken.ui")) << "line 6";
    QTest::newRow("deeply nested") << QByteArray("<ui>") + QByteArray("<widget class=\"QWidget\">").repeated(100000)
                                   << "line 1";
}

void TestFormCheck::notAForm()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, problem);
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    FormChecker checker({4, {}});
    QList<FormFinding> findings;
    QVERIFY(!checker.check(&buffer, &findings));
    QVERIFY2(checker.problem().contains(problem), qPrintable(checker.problem()));
    QVERIFY(findings.isEmpty());
}

void TestFormCheck::wordLibraryFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("words");
    QTest::addColumn<QStringList>("problems");
    QTest::newRow("two languages, CR-LF, comment, no last line feed")
        << QByteArray("# spindle words\r\n10\tSpindle\tSpindel\r\n\r\n11\tCoolant\tK\xc3\xbchlmittel")
        << "10=Spindle|Spindel 11=Coolant|Kühlmittel" << QStringList();
    QTest::newRow("bad id, twice given")
        << QByteArray("x\tNo\n-1\tNegative\n5\tFirst\n5\tSecond\n")
        << "5=First"
        << QStringList{"line 1: no word id (a number from 0) in front", "line 2: no word id (a number from 0) in front",
                       "line 4: word 5 is given twice; the first is kept"};
    QTest::newRow("more than ten languages")
        << QByteArray("1\ta\tb\tc\td\te\tf\tg\th\ti\tj\tk\n") << "1=a|b|c|d|e|f|g|h|i|j"
        << QStringList{"line 1: texts beyond 10 languages are left out"};
}

void TestFormCheck::wordLibraryFile()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, words);
    QFETCH(QStringList, problems);
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    WordLibraryFile library;
    QCOMPARE(library.read(&buffer), problems.isEmpty());
    QStringList read;
    for (auto it = library.words().cbegin(); it != library.words().cend(); ++it)
        read << QStringLiteral("%1=%2").arg(it.key()).arg(it.value().join(QLatin1Char('|')));
    QCOMPARE(read.join(QLatin1Char(' ')), words);
    QCOMPARE(library.problems(), problems);
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

void TestFormCheck::commandExitStatus_data()
{
    QTest::addColumn<QStringList>("arguments"); // "form.ui" is the form column's, when given
    QTest::addColumn<QByteArray>("form");
    QTest::addColumn<QByteArray>("besideWords"); // words.tsv beside the forms, when not empty
    QTest::addColumn<QByteArray>("namedWords");  // given with --words, when not empty
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("absent");
    QTest::addColumn<QSize>("formShown"); // in the screenshot "shot.png", around the panel's bar and line
    const QString wordFinding = QStringLiteral("word %1 is not in the panel's word library");
    const QStringList check{QStringLiteral("--check"), QStringLiteral("form.ui")};
    const QStringList shot{QStringLiteral("form.ui"), QStringLiteral("--screenshot"), QStringLiteral("shot.png")};
    const QByteArray mistakes = mistakesForm();
    QStringList samples{QStringLiteral("--check")}; // every sample form is clean
    for (const QFileInfo &form : QDir(QStringLiteral(HMI_FORMS_DIR)).entryInfoList({QStringLiteral("*.ui")}))
        samples << form.filePath();
    QVERIFY(samples.size() > 8);
    QTest::newRow("samples") << samples << QByteArray() << QByteArray() << QByteArray() << 0 << QString() << QString() << QSize();
    QTest::newRow("mistakes") << check << mistakes << QByteArray() << QByteArray() << 1
                              << "form.ui:5: widget \"ghost\" (NoSuchButton): unknown widget class" << QString() << QSize();
    QTest::newRow("word library beside the form")
        << check << mistakes << QByteArray("77\tSpindle\n") << QByteArray() << 1 << wordFinding.arg(78)
        << wordFinding.arg(77) << QSize();
    QTest::newRow("named word library wins")
        << (check + QStringList{QStringLiteral("--words"), QStringLiteral("library.tsv")}) << mistakes
        << QByteArray("77\tSpindle\n") << QByteArray("78\tSpindle\n") << 1 << wordFinding.arg(77) << wordFinding.arg(78)
        << QSize();
    QTest::newRow("not a form") << QStringList{QStringLiteral("--check"), QStringLiteral(HMI_FORMCHECK_DIR "/broken.ui")}
                                << QByteArray() << QByteArray() << QByteArray() << 2 << "not a form" << QString() << QSize();
    QTest::newRow("missing file") << QStringList{QStringLiteral("--check"), QStringLiteral("no-such-form.ui")} << QByteArray()
                                  << QByteArray() << QByteArray() << 2 << "cannot be read" << QString() << QSize();
    QTest::newRow("a folder") << QStringList{QStringLiteral("--check"), QStringLiteral(".")} << QByteArray() << QByteArray()
                              << QByteArray() << 2 << "not a regular file" << QString() << QSize();
    QTest::newRow("help") << QStringList{QStringLiteral("--help")} << QByteArray() << QByteArray() << QByteArray() << 0
                          << "--screenshot <FILE>" << QString() << QSize();
    QTest::newRow("showing needs a display") << QStringList{QStringLiteral("form.ui")} << mistakes << QByteArray()
                                             << QByteArray() << 1 << "no display" << QString() << QSize();

    // Forms that would crash, hang or bloat the panel: refused or bounded, and flagged by the checker.
    QTest::newRow("nested as deep as the panel takes") << check << nestedForm(FormLimits::MaxNesting - 1) << QByteArray()
                                                       << QByteArray() << 0 << QString() << QString() << QSize();
    const QByteArray deep = nestedForm(100000);
    QTest::newRow("nested 100,000 deep: checked") << check << deep << QByteArray() << QByteArray() << 1
                                                  << "nest more than" << QString() << QSize();
    QTest::newRow("nested 100,000 deep: refused") << shot << deep << QByteArray() << QByteArray() << 1
                                                  << "hmi-panel: cannot load form.ui: line 1:" << QString() << QSize();
    const QByteArray huge = formOf("QDialog", {16000, 16000}, "<widget class=\"QLabel\" name=\"far\"><property "
                                   "name=\"geometry\"><rect><x>2147483647</x><y>0</y><width>100</width><height>20</height>"
                                   "</rect></property></widget>");
    QTest::newRow("16000 x 16000: checked") << check << huge << QByteArray() << QByteArray() << 1
                                            << "\"geometry\" 16000 x 16000 at (0, 0) is beyond" << QString() << QSize();
    QTest::newRow("16000 x 16000: clamped") << shot << huge << QByteArray() << QByteArray() << 0
                                            << "QLabel \"far\": property \"geometry\"" << QString()
                                            << QSize(FormLimits::MaxExtent, FormLimits::MaxExtent);
    QTest::newRow("Designer's widget template shown whole")
        << shot << formOf("QWidget", {1150, 800}, "") << QByteArray() << QByteArray() << 0 << "wrote" << QString()
        << QSize(1150, 800);
    const QByteArray pen = formOf("QDialog", {400, 300}, "<widget class=\"GridSplitter\" name=\"grid\"><property name="
                                  "\"gridLineStyle\"><number>2147483647</number></property></widget>");
    const QString penRefused = QStringLiteral("\"gridLineStyle\": 2147483647 is no value of it; it is ignored");
    QTest::newRow("pen style 2147483647: checked") << check << pen << QByteArray() << QByteArray() << 1
                                                   << "setting " + penRefused << QString() << QSize();
    QTest::newRow("pen style 2147483647: ignored") << shot << pen << QByteArray() << QByteArray() << 0
                                                   << "GridSplitter \"grid\": property " + penRefused << QString()
                                                   << QSize(400, 300);
    const QByteArray rows = formOf("QDialog", {400, 300}, "<widget class=\"TableWidget\" name=\"list\"><property name="
                                   "\"rowCount\"><number>2147483647</number></property></widget>");
    QTest::newRow("2147483647 rows: checked") << check << rows << QByteArray() << QByteArray() << 1
                                              << "setting \"rowCount\": 2147483647 is outside 0 ... 100000" << QString() << QSize();
    QTest::newRow("2147483647 rows: bounded") << shot << rows << QByteArray() << QByteArray() << 0
                                              << "TableWidget \"list\": property \"rowCount\"" << QString() << QSize();
    const QByteArray span = formOf("QDialog", {400, 300}, "<widget class=\"TableWidget\" name=\"list\"><property name="
                                   "\"mergeCells\" stdset=\"0\"><cstring>0000000100000000000000007fffffff00000002"
                                   "</cstring></property></widget>");
    QTest::newRow("span to the last row there is: checked") << check << span << QByteArray() << QByteArray() << 1
                                                            << "\"mergeCells\": 1 spans reach past" << QString() << QSize();
    QTest::newRow("span to the last row there is: cut") << shot << span << QByteArray() << QByteArray() << 0
                                                        << "property \"mergeCells\": 1 spans reach past" << QString()
                                                        << QSize();
    QByteArray tabs = "<widget class=\"TabWidget\" name=\"tabs\"><property name=\"operationalAuthoritys\"><stringlist>";
    for (int i = 0; i < 10000; ++i)
        tabs += "<string>" + QByteArray::number(100 + i) + "</string>";
    QTest::newRow("10,000 tab authorities: a few findings")
        << check << formOf("QDialog", {400, 300}, tabs + "</stringlist></property></widget>") << QByteArray()
        << QByteArray() << 1 << "... and 9980 more about \"operationalAuthoritys\"" << "entry 21 " << QSize();
}

void TestFormCheck::commandExitStatus()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, form);
    QFETCH(QByteArray, besideWords);
    QFETCH(QByteArray, namedWords);
    QFETCH(int, status);
    QFETCH(QString, output);
    QFETCH(QString, absent);
    QFETCH(QSize, formShown);
    QTemporaryDir dir;
    const auto write = [&](const QString &name, const QByteArray &content) {
        QFile file(dir.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    };
    write(QStringLiteral("form.ui"), form);
    if (!besideWords.isEmpty())
        write(QStringLiteral("words.tsv"), besideWords);
    if (!namedWords.isEmpty())
        write(QStringLiteral("library.tsv"), namedWords);
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

QTEST_MAIN(TestFormCheck)
#include "tst_formcheck.moc"
