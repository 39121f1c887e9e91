// The parts the editor dialogs are made of, without Designer: property paths naming a property or a
// part of it, and the per-language text editor of the text page.
#include "norvointerface_z3.h"
#include "propertypath.h"
#include "textpropertyeditor_z12.h"

#include "textrecord.h"

#include <QCheckBox>
#include <QFont>
#include <QPushButton>
#include <QRect>
#include <QSize>
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

} // namespace

class TestEditorParts : public QObject
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
        TextData kept = textRecord({QStringLiteral("On"), QStringLiteral("Ein")}, 7, {bold});
        kept.firstValue = -1;
        kept.secondValue = 3;
        QTest::newRow("empty") << QList<TextData>();
        QTest::newRow("short texts, values and fonts kept") << QList<TextData>{kept};
        QTest::newRow("two records") << QList<TextData>{textRecord({QStringLiteral("On")}),
                                                        textRecord({QStringLiteral("Off"), QString(), QStringLiteral("X")})};
    }
    void roundTrip()
    {
        QFETCH(QList<TextData>, list);
        textPropertyEditor_Z12 editor;
        editor.setTextDataList(list);
        QCOMPARE(editor.getTextDataList(), list);
    }

    // Edits of the current language (row 1) are reported; other languages are stored silently. A
    // colour set in code is no edit; one chosen with the button is.
    void edits_data()
    {
        QTest::addColumn<QString>("edit");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("reported");
        QTest::addColumn<QString>("held"); // reported or not, the editor holds the edit
        QTest::newRow("text, current language") << "text" << 1 << "text Los" << "text Los";
        QTest::newRow("text, other language") << "text" << 2 << "" << "text Los";
        QTest::newRow("font, current language") << "font" << 1 << "bold font" << "bold font";
        QTest::newRow("font, other language") << "font" << 0 << "" << "bold font";
        QTest::newRow("colour") << "colour" << 1 << "colour #ffff00" << "colour #ffff00";
    }
    void edits()
    {
        QFETCH(QString, edit);
        QFETCH(int, row);
        ScriptedEditor editor;
        editor.setTextDataList({textRecord({QStringLiteral("A"), QStringLiteral("B")})});
        auto *table = editor.findChild<QTableWidget *>(QStringLiteral("textTable"));
        QCOMPARE(table->currentRow(), 1);
        table->setCurrentCell(row, 0);
        QStringList reported;
        connect(&editor, &textPropertyEditor_Z12::textChange, [&](const QString &text) { reported << "text " + text; });
        connect(&editor, &textPropertyEditor_Z12::fontChange, [&](const QFont &font) {
            reported << (font.bold() ? "bold font" : "font");
        });
        connect(&editor, &textPropertyEditor_Z12::colorChange, [&](const QColor &colour) { reported << "colour " + colour.name(); });
        QString held;
        if (edit == QLatin1String("text")) {
            table->item(row, 0)->setText(QStringLiteral("Los"));
            held = QStringLiteral("text ") + editor.getTextDataList().first().texts.value(row);
        } else if (edit == QLatin1String("font")) {
            editor.findChild<QCheckBox *>(QStringLiteral("boldCheckBox"))->setChecked(true);
            held = editor.getTextDataList().first().fonts.value(row).bold() ? "bold font" : "font";
        } else {
            editor.setTextColor(QColor(Qt::blue));
            editor.findChild<QPushButton *>(QStringLiteral("colorButton"))->click();
            held = QStringLiteral("colour ") + editor.getTextColor().name();
        }
        QTEST(reported.join(QLatin1String(", ")), "reported");
        QTEST(held, "held");
    }

    void parse_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("form");
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("member");
        QTest::addColumn<int>("number");
        const int W = PropertyPath::Whole, M = PropertyPath::Member, N = PropertyPath::Number, I = PropertyPath::Invalid;
        QTest::newRow("whole with underscore") << "Chn_No" << W << QByteArray("Chn_No") << "" << 0;
        QTest::newRow("member, spaces trimmed") << " font.bold " << M << QByteArray("font") << "bold" << 0;
        QTest::newRow("flag value") << "alignment.128" << N << QByteArray("alignment") << "" << 128;
        QTest::newRow("negative value") << "readBitType.-1" << N << QByteArray("readBitType") << "" << -1;
        for (const char *bad : {"", "Sets the colour.", "font.family.name", "1st", "geometry."})
            QTest::newRow(bad) << QString::fromLatin1(bad) << I << QByteArray() << "" << 0;
    }

    void parse()
    {
        QFETCH(QString, text);
        QFETCH(int, form);
        const PropertyPath path = PropertyPath::parse(text);
        QCOMPARE(int(path.form()), form);
        QCOMPARE(path.isValid(), form != PropertyPath::Invalid);
        if (path.isValid()) {
            QTEST(path.name(), "name");
            QTEST(path.member(), "member");
            QTEST(path.number(), "number");
        }
    }

    void readWrite_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QVariant>("whole");
        QTest::addColumn<QVariant>("part"); // invalid: the member does not fit the type
        QTest::addColumn<QVariant>("newPart");
        QTest::addColumn<QVariant>("newWhole");
        const QRect rect(10, 20, 100, 30);
        QFont font(QStringLiteral("Sans"), 9), bigger = font;
        bigger.setPointSize(14);
        QTest::newRow("left moves, keeps width") << "geometry.left" << QVariant(rect) << QVariant(10) << QVariant(50)
                                                 << QVariant(QRect(50, 20, 100, 30));
        QTest::newRow("top moves, keeps height") << "geometry.top" << QVariant(rect) << QVariant(20) << QVariant(0)
                                                 << QVariant(QRect(10, 0, 100, 30));
        QTest::newRow("size height") << "iconSize.height" << QVariant(QSize(16, 24)) << QVariant(24) << QVariant(8)
                                     << QVariant(QSize(16, 8));
        QTest::newRow("font size") << "font.pointSize" << QVariant(font) << QVariant(9) << QVariant(14) << QVariant(bigger);
        QTest::newRow("whole value") << "text" << QVariant(QStringLiteral("a")) << QVariant(QStringLiteral("a"))
                                     << QVariant(QStringLiteral("b")) << QVariant(QStringLiteral("b"));
        QTest::newRow("font member of a rect") << "geometry.bold" << QVariant(rect) << QVariant() << QVariant(true)
                                               << QVariant();
        QTest::newRow("member of a string") << "text.width" << QVariant(QStringLiteral("x")) << QVariant() << QVariant(3)
                                            << QVariant();
    }

    void readWrite()
    {
        QFETCH(QString, path);
        QFETCH(QVariant, whole);
        QFETCH(QVariant, part);
        const PropertyPath p = PropertyPath::parse(path);
        QVERIFY(p.isValid());
        QCOMPARE(p.read(whole), part);
        QFETCH(QVariant, newPart);
        QTEST(p.write(whole, newPart), "newWhole");
        QCOMPARE(p.partType(whole.userType()), part.isValid() ? part.userType() : int(QMetaType::UnknownType));
    }
};

QTEST_MAIN(TestEditorParts)
#include "tst_editorparts.moc"
