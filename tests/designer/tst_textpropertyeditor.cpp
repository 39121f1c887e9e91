#include "norvointerface_z3.h"
#include "textpropertyeditor_z12.h"

#include <QCheckBox>
#include <QFontComboBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

namespace {

// The editor with its colour dialog replaced.
class ScriptedEditor : public textPropertyEditor_Z12
{
public:
    QColor answer; // invalid: the user cancels
    QColor asked;

protected:
    QColor askColor(const QColor &current) override
    {
        asked = current;
        return answer;
    }
};

TextData record(const QStringList &texts, int wordLibId = -1, const QList<QFont> &fonts = {})
{
    TextData data;
    data.wordLibId = wordLibId;
    data.texts = texts;
    data.fonts = fonts;
    return data;
}

} // namespace

class TestTextPropertyEditor : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void roundTripsItsList_data();
    void roundTripsItsList();
    void oneRowPerSystemLanguage();
    void editingTheCurrentLanguageReportsTheText();
    void editingAnotherLanguageIsSilent();
    void editingAnEmptyListMakesARecord();
    void fontOfTheCurrentLanguage();
    void fontOfAnotherLanguageIsSilent();
    void colour();
    void wordLibraryIdTakesTheLibrarysTexts();

private:
    QTableWidget *table(QWidget *editor) { return editor->findChild<QTableWidget *>(QStringLiteral("textTable")); }
};

void TestTextPropertyEditor::init()
{
    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    hmi->resetToDefaults();
    hmi->setSystemLanguages({QStringLiteral("Sans"), QStringLiteral("Serif"), QStringLiteral("Monospace")});
    hmi->setCurrentLanguageIndex(1);
}

void TestTextPropertyEditor::roundTripsItsList_data()
{
    QTest::addColumn<QList<TextData>>("list");
    QFont bold(QStringLiteral("Sans"), 12);
    bold.setBold(true);
    TextData kept = record({QStringLiteral("On"), QStringLiteral("Ein")}, 7, {bold});
    kept.firstValue = -1;
    kept.secondValue = 3;
    QTest::newRow("empty") << QList<TextData>();
    QTest::newRow("one record") << QList<TextData>{record({QStringLiteral("Start"), QStringLiteral("Starten"),
                                                           QStringLiteral("Partir")})};
    QTest::newRow("short texts, values and fonts kept") << QList<TextData>{kept};
    QTest::newRow("two records") << QList<TextData>{record({QStringLiteral("On")}),
                                                    record({QStringLiteral("Off"), QString(), QStringLiteral("X")})};
}

void TestTextPropertyEditor::roundTripsItsList()
{
    QFETCH(QList<TextData>, list);
    textPropertyEditor_Z12 editor;
    editor.setTextDataList(list);
    QCOMPARE(editor.getTextDataList(), list);
}

void TestTextPropertyEditor::oneRowPerSystemLanguage()
{
    textPropertyEditor_Z12 editor;
    editor.setTextDataList({record({QStringLiteral("Start"), QStringLiteral("Starten")})});
    QTableWidget *t = table(&editor);
    QCOMPARE(t->rowCount(), 3);
    QCOMPARE(t->columnCount(), 1);
    QCOMPARE(t->item(0, 0)->text(), QStringLiteral("Start"));
    QCOMPARE(t->item(1, 0)->text(), QStringLiteral("Starten"));
    QCOMPARE(t->item(2, 0)->text(), QString());
    QCOMPARE(t->currentRow(), 1); // the current system language
}

void TestTextPropertyEditor::editingTheCurrentLanguageReportsTheText()
{
    textPropertyEditor_Z12 editor;
    editor.setTextDataList({record({QStringLiteral("Start"), QStringLiteral("Starten")})});
    QSignalSpy spy(&editor, &textPropertyEditor_Z12::textChange);
    table(&editor)->item(1, 0)->setText(QStringLiteral("Los"));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QStringLiteral("Los"));
    QCOMPARE(editor.getTextDataList().first().texts, (QStringList{QStringLiteral("Start"), QStringLiteral("Los")}));
}

void TestTextPropertyEditor::editingAnotherLanguageIsSilent()
{
    textPropertyEditor_Z12 editor;
    editor.setTextDataList({record({QStringLiteral("Start")})});
    QSignalSpy spy(&editor, &textPropertyEditor_Z12::textChange);
    table(&editor)->item(2, 0)->setText(QStringLiteral("Partir"));
    QCOMPARE(spy.count(), 0);
    QCOMPARE(editor.getTextDataList().first().texts,
             (QStringList{QStringLiteral("Start"), QString(), QStringLiteral("Partir")}));
}

void TestTextPropertyEditor::editingAnEmptyListMakesARecord()
{
    textPropertyEditor_Z12 editor;
    table(&editor)->item(0, 0)->setText(QStringLiteral("Stop"));
    const QList<TextData> list = editor.getTextDataList();
    QCOMPARE(list.size(), 1);
    QCOMPARE(list.first().wordLibId, -1);
    QCOMPARE(list.first().firstValue, 0);
    QCOMPARE(list.first().texts, QStringList{QStringLiteral("Stop")});
}

void TestTextPropertyEditor::fontOfTheCurrentLanguage()
{
    const QFont sans(QStringLiteral("Sans"), 9);
    textPropertyEditor_Z12 editor;
    editor.setTextDataList({record({QStringLiteral("A"), QStringLiteral("B")}, -1, {sans})});
    QSignalSpy spy(&editor, &textPropertyEditor_Z12::fontChange);
    editor.findChild<QSpinBox *>(QStringLiteral("pointSizeSpinBox"))->setValue(14);
    editor.findChild<QCheckBox *>(QStringLiteral("boldCheckBox"))->setChecked(true);
    QCOMPARE(spy.count(), 2);
    const QFont reported = spy.last().at(0).value<QFont>();
    QCOMPARE(reported.pointSize(), 14);
    QVERIFY(reported.bold());

    // Language 0 keeps its font; language 1 (current) has the new one.
    const QList<QFont> fonts = editor.getTextDataList().first().fonts;
    QCOMPARE(fonts.size(), 2);
    QCOMPARE(fonts.at(0), sans);
    QCOMPARE(fonts.at(1).pointSize(), 14);
    QVERIFY(fonts.at(1).bold());
    QVERIFY(!fonts.at(1).italic());
}

void TestTextPropertyEditor::fontOfAnotherLanguageIsSilent()
{
    textPropertyEditor_Z12 editor;
    editor.setTextDataList({record({QStringLiteral("A"), QStringLiteral("B")})});
    QSignalSpy spy(&editor, &textPropertyEditor_Z12::fontChange);
    table(&editor)->setCurrentCell(0, 0);
    editor.findChild<QCheckBox *>(QStringLiteral("italicCheckBox"))->setChecked(true);
    QCOMPARE(spy.count(), 0);
    QVERIFY(editor.getTextDataList().first().fonts.at(0).italic());
}

void TestTextPropertyEditor::colour()
{
    ScriptedEditor editor;
    QSignalSpy spy(&editor, &textPropertyEditor_Z12::colorChange);
    editor.setTextColor(QColor(Qt::blue));
    QCOMPARE(editor.getTextColor(), QColor(Qt::blue));
    QCOMPARE(spy.count(), 0); // setting is not editing

    auto *button = editor.findChild<QPushButton *>(QStringLiteral("colorButton"));
    button->click(); // cancelled
    QCOMPARE(spy.count(), 0);
    QCOMPARE(editor.getTextColor(), QColor(Qt::blue));

    editor.answer = QColor(Qt::yellow);
    button->click();
    QCOMPARE(editor.asked, QColor(Qt::blue));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).value<QColor>(), QColor(Qt::yellow));
    QCOMPARE(editor.getTextColor(), QColor(Qt::yellow));
}

void TestTextPropertyEditor::wordLibraryIdTakesTheLibrarysTexts()
{
    NORVOInterface_Z3::initialization()->setWordLibraryEntry(
        42, {QStringLiteral("Cycle start"), QStringLiteral("Zyklusstart"), QStringLiteral("Départ cycle")});
    textPropertyEditor_Z12 editor;
    editor.setTextDataList({record({QStringLiteral("Start"), QStringLiteral("Starten")})});
    QSignalSpy spy(&editor, &textPropertyEditor_Z12::textChange);
    editor.findChild<QSpinBox *>(QStringLiteral("wordLibIdSpinBox"))->setValue(42);

    const TextData data = editor.getTextDataList().first();
    QCOMPARE(data.wordLibId, 42);
    QCOMPARE(data.texts.at(1), QStringLiteral("Zyklusstart"));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QStringLiteral("Zyklusstart"));
    // Linked texts are edited in the library.
    QVERIFY(!(table(&editor)->item(1, 0)->flags() & Qt::ItemIsEditable));

    editor.findChild<QSpinBox *>(QStringLiteral("wordLibIdSpinBox"))->setValue(-1);
    QCOMPARE(editor.getTextDataList().first().wordLibId, -1);
    QCOMPARE(editor.getTextDataList().first().texts.at(1), QStringLiteral("Zyklusstart"));
    QVERIFY(table(&editor)->item(1, 0)->flags() & Qt::ItemIsEditable);
}

QTEST_MAIN(TestTextPropertyEditor)
#include "tst_textpropertyeditor.moc"
