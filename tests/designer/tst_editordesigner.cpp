// Every "Edit Properties..." dialog through one driver: a field typed into shows in the preview, Ok
// commits it as one undo step that undo takes back, Cancel and an unchanged value commit nothing;
// every field naming a property path is bound and has its status tip. Then the text page, whose
// companion editor commits the captions in every language in the same step.
#include "bitbutton.h"
#include "designercore.h"
#include "designerhost.h"
#include "fieldbinder.h"
#include "fieldbinding.h"
#include "fontmapcodec.h"
#include "norvointerface_z3.h"
#include "propertydialog.h"
#include "propertypath.h"
#include "textinfocodec.h"
#include "textpropertyeditor_z12.h"

#include <QtDesigner/QDesignerFormWindowInterface>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QUndoStack>

namespace {

QString objectNameOf(const QString &widget) { return widget.left(1).toLower() + widget.mid(1); }

QString prop(const char *name, const QString &type, const QString &value)
{
    return QStringLiteral("<property name=\"%1\"><%2>%3</%2></property>").arg(QLatin1String(name), type, value);
}

QWidget *fieldOf(QDialog *dialog, const QString &path)
{
    QList<QWidget *> found;
    for (QWidget *w : dialog->findChildren<QWidget *>())
        if (w->whatsThis() == path)
            found.append(w);
    return found.size() == 1 ? found.first() : nullptr;
}

bool isInput(QWidget *w)
{
    return qobject_cast<QAbstractSpinBox *>(w) || qobject_cast<QLineEdit *>(w) || qobject_cast<QComboBox *>(w)
           || qobject_cast<QAbstractButton *>(w) || qobject_cast<QPlainTextEdit *>(w) || qobject_cast<QKeySequenceEdit *>(w);
}

QString shown(QWidget *field)
{
    if (auto *line = qobject_cast<QLineEdit *>(field))
        return line->text();
    if (auto *check = qobject_cast<QAbstractButton *>(field))
        return check->isChecked() ? QStringLiteral("true") : QStringLiteral("false");
    if (auto *combo = qobject_cast<QComboBox *>(field))
        return combo->currentText();
    if (auto *spin = qobject_cast<QSpinBox *>(field))
        return QString::number(spin->value());
    if (auto *plain = qobject_cast<QPlainTextEdit *>(field))
        return plain->toPlainText();
    if (auto *keys = qobject_cast<QKeySequenceEdit *>(field))
        return keys->keySequence().toString();
    return QString();
}

void type(QWidget *field, const QVariant &value)
{
    if (auto *spin = qobject_cast<QSpinBox *>(field))
        spin->setValue(value.toInt());
    else if (auto *radio = qobject_cast<QRadioButton *>(field))
        radio->click();
    else if (auto *check = qobject_cast<QCheckBox *>(field))
        check->setChecked(value.toBool());
    else if (auto *line = qobject_cast<QLineEdit *>(field))
        line->setText(value.toString());
    else if (auto *combo = qobject_cast<QComboBox *>(field))
        combo->setCurrentIndex(combo->findText(value.toString()));
    else if (auto *plain = qobject_cast<QPlainTextEdit *>(field))
        plain->setPlainText(value.toString());
    else if (auto *keys = qobject_cast<QKeySequenceEdit *>(field))
        keys->setKeySequence(QKeySequence(value.toString()));
}

void click(QDialog *dialog, QDialogButtonBox::StandardButton which)
{
    dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"))->button(which)->click();
}

textPropertyEditor_Z12 *textEditor(QDialog *dialog)
{
    return dialog->findChild<textPropertyEditor_Z12 *>(QStringLiteral("mTextPropertyEditor"));
}

QTableWidget *textTable(QDialog *dialog) { return textEditor(dialog)->findChild<QTableWidget *>(); }

// Fonts as text, so that fonts read back from a stored stream compare by what they draw.
QStringList described(const QList<QFont> &fonts)
{
    QStringList texts;
    for (const QFont &font : fonts)
        texts.append(QStringLiteral("%1 %2%3").arg(font.family()).arg(font.pointSize()).arg(font.bold() ? " bold" : ""));
    return texts;
}

} // namespace

class TestEditorDesigner : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // The desktop font the editors are drawn for; Qt 5's offscreen platform would default to 12 points.
    void initTestCase() { QApplication::setFont(QFont(QStringLiteral("Sans Serif"), 9)); }
    void init()
    {
        // Three languages, the second one current, so that per-language mix-ups show.
        NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
        hmi->resetToDefaults();
        hmi->setSystemLanguages({QStringLiteral("Sans"), QStringLiteral("Serif"), QStringLiteral("Monospace")});
        hmi->setCurrentLanguageIndex(1);
    }
    void cleanup()
    {
        DesignerCore::instance().closeForms();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void cleanupTestCase() { DesignerCore::release(); }

    void editField_data();
    void editField();
    void bitButtonTexts();
    void captionTexts_data();
    void captionTexts();

private:
    QWidget *openForm(const QString &widget, const QString &properties = QString());

    QDesignerFormWindowInterface *m_form = nullptr;
};

QWidget *TestEditorDesigner::openForm(const QString &widget, const QString &properties)
{
    m_form = DesignerCore::instance().createForm(DesignerCore::formDocument(
        QStringLiteral("<widget class=\"%1\" name=\"%2\"><property name=\"geometry\"><rect><x>10</x><y>10</y>"
                       "<width>120</width><height>60</height></rect></property>%3</widget>")
            .arg(widget, objectNameOf(widget), properties)));
    return DesignerCore::formWidget(m_form, objectNameOf(widget));
}

void TestEditorDesigner::editField_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QString>("properties");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QVariant>("typed");
    QTest::addColumn<QString>("saved"); // a pattern the saved form holds after Ok
    QTest::addColumn<int>("steps"); // 1: Ok commits one step; 0: typed, put back, Ok commits nothing; -1: Cancel
    const QString address = prop("writeAddress", "number", "40017");
    const QString alignment = prop("alignment", "set", "Qt::AlignRight|Qt::AlignBottom");
    QTest::newRow("line edit") << "BitButton" << "" << "objectName" << "bitButton" << QVariant("start")
                               << "name=\"start\"" << 1;
    // Designer gives form widgets no focus and no shortcut: the fields show the form's.
    QTest::newRow("combo, hidden in Designer") << "FunctionButton" << prop("focusPolicy", "enum", "Qt::ClickFocus")
                                               << "focusPolicy" << "ClickFocus" << QVariant("TabFocus")
                                               << "<enum>Qt::TabFocus</enum>" << 1;
    QTest::newRow("key sequence, hidden in Designer") << "PictureButton" << prop("shortcut", "string", "Ctrl+S")
                                                      << "shortcut" << "Ctrl+S" << QVariant("Ctrl+T")
                                                      << "<string>Ctrl\\+T</string>" << 1;
    QTest::newRow("spin beyond its default range") << "BitButton" << address << "writeAddress" << "40017" << QVariant(120)
                                                   << "<number>120</number>" << 1;
    QTest::newRow("enum choice") << "FunctionButton" << "" << "action.3" << "false" << QVariant(true)
                                 << "FunctionButton::KeepOff</enum>" << 1;
    QTest::newRow("flag replaces its group only") << "BitButton" << alignment << "alignment.1" << "false" << QVariant(true)
                                                  << "<set>(?![^<]*Right)(?=[^<]*AlignLeft)[^<]*AlignBottom" << 1;
    QTest::newRow("other flag group") << "PictureButton" << alignment << "alignment.128" << "false" << QVariant(true)
                                      << "<set>(?![^<]*Bottom)(?=[^<]*AlignRight)[^<]*AlignVCenter" << 1;
    QTest::newRow("font member") << "ButtonGroup" << "" << "font.bold" << "false" << QVariant(true)
                                 << "<bold>true</bold>" << 1;
    QTest::newRow("geometry member") << "FunctionButton" << "" << "geometry.height" << "60" << QVariant(45)
                                     << "<height>45</height>" << 1;
    QTest::newRow("string list") << "DynamicImage" << prop("nameFilters", "stringlist", "<string>a</string><string>b</string>")
                                 << "nameFilters" << "a\nb" << QVariant("*.png") << "<string>\\*\\.png</string>" << 1;
    QTest::newRow("put back") << "GridSplitter" << "" << "rowCount" << "3" << QVariant(5) << "" << 0;
    QTest::newRow("cancel") << "BitButton" << address << "comId" << "0" << QVariant(5) << "" << -1;
    QTest::newRow("grid rows") << "GridSplitter" << "" << "rowCount" << "3" << QVariant(2) << "\"rowCount\">\\s*<number>2<" << 1;
    QTest::newRow("grid cancel") << "GridSplitter" << "" << "columnCount" << "4" << QVariant(2) << "" << -1;
    QTest::newRow("bar groups") << "ButtonGroup" << "" << "groupCount" << "1" << QVariant(3) << "<number>3</number>" << 1;
    QTest::newRow("tab widget place") << "TabWidget" << "" << "geometry.left" << "10" << QVariant(17) << "<x>17</x>" << 1;
    // The table's Ok always writes its keypad record, saved from then on.
    const QString keypad = prop("softKeypad", "bool", "false") + prop("softKeypadPosition", "enum", "TableWidget::Auto")
                           + prop("softKeypadGeometry", "rect", "<x>0</x><y>0</y><width>0</width><height>0</height>");
    QTest::newRow("table rows") << "TableWidget" << keypad << "rowCount" << "4" << QVariant(11) << "<number>11</number>" << 1;
    QTest::newRow("image address") << "DynamicImage" << "" << "address" << "0" << QVariant(30) << "<number>30</number>" << 1;
}

void TestEditorDesigner::editField()
{
    QFETCH(QString, widget);
    QFETCH(QString, properties);
    QFETCH(QString, path);
    QFETCH(QString, shown);
    QFETCH(QVariant, typed);
    QFETCH(QString, saved);
    QFETCH(int, steps);
    QWidget *target = openForm(widget, properties);
    QVERIFY(target);
    const QString before = m_form->contents();
    const QRegularExpression savedPattern(saved);
    QVERIFY(saved.isEmpty() || !before.contains(savedPattern));
    const QByteArray property = PropertyPath::parse(path).name();
    QStringList unbound;
    bool ran = false;
    const auto edit = [&](QDialog *d) {
        auto *dialog = qobject_cast<PropertyDialog *>(d);
        QVERIFY(dialog);
        QWidget *preview = dialog->preview();
        QVERIFY(preview->inherits(qPrintable(widget)));
        QCOMPARE(preview->parentWidget(), dialog->findChild<QWidget *>(QStringLiteral("previewWidget")));
        QVERIFY(!DesignerHost::formWindowOf(preview));
        // Every field naming a property path is bound and tells what it sets.
        for (QWidget *field : dialog->findChildren<QWidget *>()) {
            if (!isInput(field) || !PropertyPath::parse(field->whatsThis()).isValid())
                continue;
            bool bound = false;
            for (FieldBinding *binding : dialog->binder()->bindings())
                bound = bound || binding->field() == field;
            if (!bound || field->statusTip().isEmpty())
                unbound << field->whatsThis();
        }
        // A one-line description bar across the dialog shows the focused field's tip.
        auto *description = dialog->findChild<QLabel *>(QStringLiteral("descriptionWidget"));
        QVERIFY(description->width() > dialog->width() * 9 / 10);
        QVERIFY(description->height() < 2 * description->fontMetrics().lineSpacing());
        QWidget *field = fieldOf(dialog, path);
        QVERIFY2(field, qPrintable(path));
        auto *tabs = dialog->findChild<QTabWidget *>(QStringLiteral("tabWidget"));
        for (int i = 0; i < tabs->count(); ++i) {
            if (tabs->widget(i)->isAncestorOf(field))
                tabs->setCurrentIndex(i);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        if (path == QLatin1String("objectName")) { // a long name fits
            const int longName = field->fontMetrics().horizontalAdvance(QStringLiteral("spindleOverrideButton_2"));
            QVERIFY2(field->width() > longName + 10, qPrintable(QString::number(field->width())));
        }
        dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog));
        field->setFocus();
        QTRY_COMPARE(description->text(), field->statusTip());
        QCOMPARE(::shown(field), shown);
        const QVariant previewBefore = preview->property(property);
        type(field, typed);
        if (property != "objectName" && property != "geometry")
            QVERIFY(preview->property(property) != previewBefore);
        if (steps == 0)
            type(field, shown);
        ran = true;
        click(dialog, steps < 0 ? QDialogButtonBox::Cancel : QDialogButtonBox::Ok);
    };
    QVERIFY(DesignerCore::runEditor(target, edit));
    QVERIFY(ran);
    QVERIFY2(unbound.isEmpty(), qPrintable(unbound.join(QLatin1String(", "))));
    QCOMPARE(m_form->commandHistory()->count(), qMax(steps, 0));
    if (steps > 0) {
        QVERIFY2(m_form->contents().contains(savedPattern), qPrintable(m_form->contents()));
        m_form->commandHistory()->undo();
    }
    QCOMPARE(m_form->contents(), before);
    QVERIFY(!m_form->isDirty());
}

void TestEditorDesigner::bitButtonTexts()
{
    FontMapCodec::Maps maps;
    maps.captionFonts.insert(0, QFont(QStringLiteral("Serif"), 10));
    auto *button = qobject_cast<BitButton *>(openForm(QStringLiteral("BitButton"),
        prop("onText", "string", "Run") + prop("offText", "string", "Stop")
            + prop("MapBuffer", "cstring", QString::fromLatin1(FontMapCodec::encode(maps)))));
    QVERIFY(button);
    QList<TextData> editedOn;
    QVERIFY(DesignerCore::runEditor(button, [&](QDialog *dialog) {
        QTableWidget *table = textTable(dialog);
        auto *on = dialog->findChild<QRadioButton *>(QStringLiteral("onEditedRadioButton"));
        auto *off = dialog->findChild<QRadioButton *>(QStringLiteral("offEditedRadioButton"));
        QVERIFY(on->isChecked());
        // ON edits: the current language's caption and font.
        table->item(1, 0)->setText(QStringLiteral("Läuft"));
        textEditor(dialog)->findChild<QSpinBox *>(QStringLiteral("pointSizeSpinBox"))->setValue(21);
        textEditor(dialog)->findChild<QCheckBox *>(QStringLiteral("boldCheckBox"))->setChecked(true);
        off->click();
        QCOMPARE(table->item(1, 0)->text(), QStringLiteral("Stop"));
        table->item(1, 0)->setText(QStringLiteral("Steht"));
        on->click();
        QCOMPARE(table->item(1, 0)->text(), QStringLiteral("Läuft"));
        editedOn = textEditor(dialog)->getTextDataList();
        click(dialog, QDialogButtonBox::Ok);
    }));
    QList<QList<TextData>> records;
    TextInfoCodec::decodeSlots(button->textInfoBuffer(), &records);
    QCOMPARE(records.size(), 2);
    QCOMPARE(records.at(0).first().texts, (QStringList{"Run", "Läuft", "Run"}));
    QCOMPARE(records.at(0).first().texts, editedOn.first().texts);
    QCOMPARE(records.at(1).first().texts, (QStringList{"Stop", "Steht", "Stop"}));
    QCOMPARE(described(records.at(0).first().fonts), described(editedOn.first().fonts));
    QCOMPARE(records.at(0).first().fonts.at(1).pointSize(), 21);
    QVERIFY(records.at(0).first().fonts.at(1).bold());
    // Both states end with the same fonts.
    QCOMPARE(described(records.at(1).first().fonts), described(records.at(0).first().fonts));
    QVERIFY(button->MapBuffer().isEmpty());
    QCOMPARE(button->onText(), QStringLiteral("Läuft"));
    QCOMPARE(button->offText(), QStringLiteral("Steht"));
    QVERIFY(button->font().bold());
    QCOMPARE(m_form->commandHistory()->count(), 1);
    m_form->commandHistory()->undo();
    QVERIFY(!button->font().bold());
    QCOMPARE(button->onText(), QStringLiteral("Run"));
    QVERIFY(button->textInfoBuffer().isEmpty());
    QCOMPARE(button->MapBuffer(), FontMapCodec::encode(maps));
}

void TestEditorDesigner::captionTexts_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QString>("properties");
    QTest::newRow("FunctionButton") << "FunctionButton" << "";
    // The picture key commits its language before the texts; they must not undo each other.
    QTest::newRow("PictureButton") << "PictureButton" << prop("language", "enum", "PictureButton::language_2");
}

// The caption in every language from the start, the current one edited; one undo takes back every
// commit of the editor: buffers, caption and the font they set; redo brings them again.
void TestEditorDesigner::captionTexts()
{
    QFETCH(QString, widget);
    QFETCH(QString, properties);
    FontMapCodec::Maps maps;
    maps.captionFonts.insert(0, QFont(QStringLiteral("Serif"), 10));
    const QByteArray map = FontMapCodec::encode(maps);
    QWidget *button = openForm(widget, properties + prop("text", "string", "Start")
                                           + prop("MapBuffer", "cstring", QString::fromLatin1(map)));
    QVERIFY(button);
    const QVariant language = button->property("language");
    QList<TextData> loaded, edited;
    QString previewCaption;
    QVERIFY(DesignerCore::runEditor(button, [&](QDialog *dialog) {
        previewCaption = qobject_cast<PropertyDialog *>(dialog)->preview()->property("text").toString();
        loaded = textEditor(dialog)->getTextDataList();
        textTable(dialog)->item(1, 0)->setText(QStringLiteral("Go"));
        textEditor(dialog)->findChild<QCheckBox *>(QStringLiteral("boldCheckBox"))->setChecked(true);
        edited = textEditor(dialog)->getTextDataList();
        click(dialog, QDialogButtonBox::Ok);
    }));
    QCOMPARE(previewCaption, QStringLiteral("Start"));
    QCOMPARE(loaded.size(), 1);
    QCOMPARE(loaded.first().texts, (QStringList{"Start", "Start", "Start"}));
    QCOMPARE(edited.first().texts, (QStringList{"Start", "Go", "Start"}));
    QList<TextData> stored;
    QVERIFY(TextInfoCodec::decodeSlot(button->property("textInfoBuffer").toByteArray(), &stored));
    QCOMPARE(stored, edited);
    QVERIFY(button->property("MapBuffer").toByteArray().isEmpty());
    QCOMPARE(button->property("text").toString(), QStringLiteral("Go"));
    QVERIFY(button->font().bold());
    QCOMPARE(button->property("language"), language);
    QCOMPARE(m_form->commandHistory()->count(), 1);
    m_form->commandHistory()->undo();
    QCOMPARE(button->property("MapBuffer").toByteArray(), map);
    QVERIFY(button->property("textInfoBuffer").toByteArray().isEmpty());
    QCOMPARE(button->property("text").toString(), QStringLiteral("Start"));
    QVERIFY(!button->font().bold());
    m_form->commandHistory()->redo();
    QCOMPARE(button->property("text").toString(), QStringLiteral("Go"));
    QVERIFY(button->font().bold());
}

QTEST_MAIN(TestEditorDesigner)
#include "tst_editordesigner.moc"
