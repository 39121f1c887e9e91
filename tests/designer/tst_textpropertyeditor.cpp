#include "norvointerface_z3.h"
#include "textpropertyeditor_z12.h"

#include <QCheckBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

namespace {

// The editor with its colour dialog answering yellow.
class ScriptedEditor : public textPropertyEditor_Z12
{
protected:
    QColor askColor(const QColor &) override { return QColor(Qt::yellow); }
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
    void init()
    {
        NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
        hmi->resetToDefaults();
        hmi->setSystemLanguages({QStringLiteral("Sans"), QStringLiteral("Serif"), QStringLiteral("Monospace")});
        hmi->setCurrentLanguageIndex(1);
    }

    void roundTrip_data()
    {
        QTest::addColumn<QList<TextData>>("list");
        QFont bold(QStringLiteral("Sans"), 12);
        bold.setBold(true);
        TextData kept = record({QStringLiteral("On"), QStringLiteral("Ein")}, 7, {bold});
        kept.firstValue = -1;
        kept.secondValue = 3;
        QTest::newRow("empty") << QList<TextData>();
        QTest::newRow("short texts, values and fonts kept") << QList<TextData>{kept};
        QTest::newRow("two records") << QList<TextData>{record({QStringLiteral("On")}),
                                                        record({QStringLiteral("Off"), QString(), QStringLiteral("X")})};
    }
    void roundTrip()
    {
        QFETCH(QList<TextData>, list);
        textPropertyEditor_Z12 editor;
        editor.setTextDataList(list);
        QCOMPARE(editor.getTextDataList(), list);
    }

    // Edits of the current language (row 1) are reported; other languages are stored silently.
    void edits_data()
    {
        QTest::addColumn<QString>("edit");
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("reports");
        QTest::newRow("text, current language") << "text" << 1 << 1;
        QTest::newRow("text, other language") << "text" << 2 << 0;
        QTest::newRow("font, current language") << "font" << 1 << 1;
        QTest::newRow("font, other language") << "font" << 0 << 0;
        QTest::newRow("colour") << "colour" << 1 << 1;
    }
    void edits()
    {
        QFETCH(QString, edit);
        QFETCH(int, row);
        QFETCH(int, reports);
        ScriptedEditor editor;
        editor.setTextDataList({record({QStringLiteral("A"), QStringLiteral("B")})});
        auto *table = editor.findChild<QTableWidget *>(QStringLiteral("textTable"));
        QCOMPARE(table->currentRow(), 1);
        table->setCurrentCell(row, 0);
        QSignalSpy text(&editor, &textPropertyEditor_Z12::textChange);
        QSignalSpy font(&editor, &textPropertyEditor_Z12::fontChange);
        QSignalSpy colour(&editor, &textPropertyEditor_Z12::colorChange);
        if (edit == QLatin1String("text")) {
            table->item(row, 0)->setText(QStringLiteral("Los"));
            QCOMPARE(text.count(), reports);
            QCOMPARE(editor.getTextDataList().first().texts.value(row), QStringLiteral("Los"));
            if (reports)
                QCOMPARE(text.at(0).at(0).toString(), QStringLiteral("Los"));
        } else if (edit == QLatin1String("font")) {
            editor.findChild<QCheckBox *>(QStringLiteral("boldCheckBox"))->setChecked(true);
            QCOMPARE(font.count(), reports);
            QVERIFY(editor.getTextDataList().first().fonts.value(row).bold());
            if (reports)
                QVERIFY(font.at(0).at(0).value<QFont>().bold());
        } else {
            editor.setTextColor(QColor(Qt::blue)); // setting is not editing
            editor.findChild<QPushButton *>(QStringLiteral("colorButton"))->click();
            QCOMPARE(colour.count(), reports);
            QCOMPARE(colour.at(0).at(0).value<QColor>(), QColor(Qt::yellow));
            QCOMPARE(editor.getTextColor(), QColor(Qt::yellow));
        }
        QCOMPARE(text.count() + font.count() + colour.count(), reports);
    }
};

QTEST_MAIN(TestTextPropertyEditor)
#include "tst_textpropertyeditor.moc"
