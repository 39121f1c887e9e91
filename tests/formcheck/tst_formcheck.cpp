#include "formchecker.h"
#include "tablecontents.h"
#include "textinfocodec.h"
#include "wordlibraryfile.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
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
    void mistakesAreReported_data();
    void mistakesAreReported();
    void nothingElseIsReported();
    void wordLibraryHoldsTheWord();
    void sampleFormsAreClean_data();
    void sampleFormsAreClean();
    void notAForm_data();
    void notAForm();
    void wordLibraryFile_data();
    void wordLibraryFile();
    void commandExitStatus_data();
    void commandExitStatus();

private:
    QList<FormFinding> m_mistakes;
};

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
    if (m_mistakes.isEmpty())
        m_mistakes = check(mistakesForm());
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

void TestFormCheck::nothingElseIsReported()
{
    // The data-driven rows above, one finding each; nothing is said twice or at a wrong line.
    const QList<FormFinding> findings = check(mistakesForm());
    QStringList all;
    for (const FormFinding &f : findings)
        all << QStringLiteral("%1: %2").arg(f.line).arg(f.message);
    QCOMPARE(findings.size(), 18);
    for (int i = 1; i < findings.size(); ++i)
        QVERIFY2(findings.at(i - 1).line <= findings.at(i).line, qPrintable(all.join(QLatin1Char('\n'))));
}

void TestFormCheck::wordLibraryHoldsTheWord()
{
    for (const FormFinding &f : check(mistakesForm(), {{77, {QStringLiteral("Spindle")}}}))
        QVERIFY2(!f.message.contains(QLatin1String("word 77")), qPrintable(f.message));
}

void TestFormCheck::sampleFormsAreClean_data()
{
    QTest::addColumn<QString>("fileName");
    const QStringList forms = QDir(QStringLiteral(HMI_FORMS_DIR)).entryList({QStringLiteral("*.ui")});
    QVERIFY(forms.size() >= 8);
    for (const QString &form : forms)
        QTest::newRow(qPrintable(form)) << QStringLiteral(HMI_FORMS_DIR "/") + form;
}

void TestFormCheck::sampleFormsAreClean()
{
    QFETCH(QString, fileName);
    QStringList said;
    for (const FormFinding &f : check(readFile(fileName)))
        said << QStringLiteral("%1: %2 %3").arg(f.line).arg(f.objectName, f.message);
    QVERIFY2(said.isEmpty(), qPrintable(said.join(QLatin1Char('\n'))));
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

void TestFormCheck::commandExitStatus_data()
{
    QTest::addColumn<QStringList>("forms");
    QTest::addColumn<QByteArray>("besideWords"); // words.tsv beside the forms, when not empty
    QTest::addColumn<QByteArray>("namedWords");  // given with --words, when not empty
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("absent");
    const QString wordFinding = QStringLiteral("word %1 is not in the panel's word library");
    QTest::newRow("samples") << QStringList{QStringLiteral(HMI_FORMS_DIR "/operator.ui"),
                                            QStringLiteral(HMI_FORMS_DIR "/demo.ui")}
                             << QByteArray() << QByteArray() << 0 << QString() << QString();
    QTest::newRow("mistakes") << QStringList{QStringLiteral("mistakes.ui")} << QByteArray() << QByteArray() << 1
                              << "mistakes.ui:5: widget \"ghost\" (NoSuchButton): unknown widget class" << QString();
    QTest::newRow("word library beside the form")
        << QStringList{QStringLiteral("mistakes.ui")} << QByteArray("77\tSpindle\n") << QByteArray() << 1
        << wordFinding.arg(78) << wordFinding.arg(77);
    QTest::newRow("named word library wins")
        << QStringList{QStringLiteral("mistakes.ui")} << QByteArray("77\tSpindle\n") << QByteArray("78\tSpindle\n") << 1
        << wordFinding.arg(77) << wordFinding.arg(78);
    QTest::newRow("not a form") << QStringList{QStringLiteral(HMI_FORMCHECK_DIR "/broken.ui")} << QByteArray()
                                << QByteArray() << 2 << "not a form" << QString();
    QTest::newRow("missing file") << QStringList{QStringLiteral("no-such-form.ui")} << QByteArray() << QByteArray() << 2
                                  << "cannot be read" << QString();
}

void TestFormCheck::commandExitStatus()
{
    QFETCH(QStringList, forms);
    QFETCH(QByteArray, besideWords);
    QFETCH(QByteArray, namedWords);
    QFETCH(int, status);
    QFETCH(QString, output);
    QFETCH(QString, absent);
    QTemporaryDir dir;
    const auto write = [&](const QString &name, const QByteArray &content) {
        QFile file(dir.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    };
    write(QStringLiteral("mistakes.ui"), mistakesForm());
    QStringList arguments{QStringLiteral("--check")};
    if (!besideWords.isEmpty())
        write(QStringLiteral("words.tsv"), besideWords);
    if (!namedWords.isEmpty()) {
        write(QStringLiteral("library.tsv"), namedWords);
        arguments << QStringLiteral("--words") << QStringLiteral("library.tsv");
    }
    QProcess panel;
    panel.setWorkingDirectory(dir.path());
    panel.start(QStringLiteral(HMI_PANEL), arguments + forms);
    QVERIFY(panel.waitForFinished(60000));
    const QString out = QString::fromUtf8(panel.readAllStandardOutput());
    QCOMPARE(panel.exitCode(), status);
    if (output.isEmpty())
        QVERIFY2(out.isEmpty(), qPrintable(out));
    else
        QVERIFY2(out.contains(output), qPrintable(out));
    if (!absent.isEmpty())
        QVERIFY2(!out.contains(absent), qPrintable(out));
}

QTEST_MAIN(TestFormCheck)
#include "tst_formcheck.moc"
