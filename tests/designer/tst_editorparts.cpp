// The parts the editor dialogs are made of, where the Designer tests do not reach them: property paths
// naming a property, a member or a value, and the per-language text editor of the text page.
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

    // A record comes back whole (texts, values, fonts). Edits of the current language (row 1) are
    // reported; other languages are stored silently. A colour set in code is no edit; one chosen with
    // the button is.
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
        QFont italic(QStringLiteral("Sans"), 12);
        italic.setItalic(true);
        TextData kept = textRecord({QStringLiteral("A"), QStringLiteral("B")}, 7, {italic});
        kept.firstValue = -1;
        kept.secondValue = 3;
        ScriptedEditor editor;
        editor.setTextDataList({kept});
        QCOMPARE(editor.getTextDataList(), QList<TextData>{kept});
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

    // A path read and written on a whole value: the part, and the whole with a new part; a member that
    // does not fit the type reads and writes nothing; a text naming no path is invalid.
    void paths_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QVariant>("whole"); // invalid: the path is
        QTest::addColumn<QVariant>("part");
        QTest::addColumn<QVariant>("newPart");
        QTest::addColumn<QVariant>("newWhole");
        const QRect rect(10, 20, 100, 30);
        QFont font(QStringLiteral("Sans"), 9), bigger = font;
        bigger.setPointSize(14);
        QTest::newRow("top moves, keeps height, spaces trimmed") << " geometry.top " << QVariant(rect) << QVariant(20)
                                                                 << QVariant(0) << QVariant(QRect(10, 0, 100, 30));
        QTest::newRow("size height") << "iconSize.height" << QVariant(QSize(16, 24)) << QVariant(24) << QVariant(8)
                                     << QVariant(QSize(16, 8));
        QTest::newRow("font size") << "font.pointSize" << QVariant(font) << QVariant(9) << QVariant(14) << QVariant(bigger);
        QTest::newRow("whole with underscore") << "Chn_No" << QVariant(1) << QVariant(1) << QVariant(2) << QVariant(2);
        QTest::newRow("negative value") << "readBitType.-1" << QVariant(3) << QVariant(3) << QVariant(4) << QVariant(4);
        QTest::newRow("font member of a rect") << "geometry.bold" << QVariant(rect) << QVariant() << QVariant(true)
                                               << QVariant();
        QTest::newRow("member of a string") << "text.width" << QVariant(QStringLiteral("x")) << QVariant() << QVariant(3)
                                            << QVariant();
        for (const char *bad : {"", "Sets the colour.", "font.family.name", "1st", "geometry."})
            QTest::newRow(bad) << QString::fromLatin1(bad) << QVariant() << QVariant() << QVariant() << QVariant();
    }
    void paths()
    {
        QFETCH(QString, path);
        QFETCH(QVariant, whole);
        QFETCH(QVariant, part);
        QFETCH(QVariant, newPart);
        const PropertyPath p = PropertyPath::parse(path);
        QCOMPARE(p.isValid(), whole.isValid());
        if (!p.isValid())
            return;
        QCOMPARE(p.read(whole), part);
        QTEST(p.write(whole, newPart), "newWhole");
        QCOMPARE(p.partType(whole.userType()), part.isValid() ? part.userType() : int(QMetaType::UnknownType));
    }
};

QTEST_MAIN(TestEditorParts)
#include "tst_editorparts.moc"
