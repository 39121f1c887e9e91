#include "designercore.h"
#include "designerhost.h"
#include "probewidget.h"
#include "propertydialog.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QUndoStack>
#include <QVBoxLayout>

namespace {

template <class Field> Field *addField(QWidget *page, const char *objectName, const char *path, const char *tip)
{
    auto *field = new Field(page);
    field->setObjectName(QLatin1String(objectName));
    field->setWhatsThis(QLatin1String(path));
    field->setStatusTip(QLatin1String(tip));
    page->layout()->addWidget(field);
    return field;
}

// What a task menu does: the dialog's fixed children, and fields on a tab.
QWidget *buildFrame(QDialog *dialog)
{
    auto *layout = new QVBoxLayout(dialog);
    auto *tabs = new QTabWidget(dialog);
    tabs->setObjectName(QStringLiteral("tabWidget"));
    layout->addWidget(tabs);
    auto *preview = new QGroupBox(QStringLiteral("Preview"), dialog);
    preview->setObjectName(QStringLiteral("previewWidget"));
    layout->addWidget(preview);
    auto *description = new QLabel(dialog);
    description->setObjectName(QStringLiteral("descriptionWidget"));
    layout->addWidget(description);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    layout->addWidget(buttons);
    auto *page = new QWidget;
    new QVBoxLayout(page);
    tabs->addTab(page, QStringLiteral("General"));
    return page;
}

void buildButtonEditor(QDialog *dialog)
{
    QWidget *general = buildFrame(dialog);
    addField<QLineEdit>(general, "nameEdit", "objectName", "This property holds the name of this object.");
    addField<QLineEdit>(general, "textEdit", "text", "The caption.");
    addField<QCheckBox>(general, "checkableBox", "checkable", "Whether the button toggles.");
    addField<QComboBox>(general, "focusCombo", "focusPolicy", "The way the widget accepts keyboard focus.");
    addField<QCheckBox>(general, "boldBox", "font.bold", "Bold caption.");
    addField<QSpinBox>(general, "widthSpin", "geometry.width", "The width of the widget.");
    addField<QLineEdit>(general, "shortcutEdit", "shortcut", "The mnemonic of the button.");
    // Not bound: a sentence, and a path naming no property of the widget.
    addField<QLabel>(general, "helpLabel", "Shows the help.", "")->setText(QStringLiteral("Help"));
    addField<QLineEdit>(general, "strayEdit", "noSuchProperty", "");
}

void buildProbeEditor(QDialog *dialog)
{
    QWidget *page = buildFrame(dialog);
    const char *const groups[3][3][2] = {
        {{"leftRadio", "alignment.1"}, {"rightRadio", "alignment.2"}, {"hCenterRadio", "alignment.4"}},
        {{"topRadio", "alignment.32"}, {"bottomRadio", "alignment.64"}, {"vCenterRadio", "alignment.128"}},
        {{"offRadio", "mode.0"}, {"slowRadio", "mode.1"}, {"fastRadio", "mode.2"}}};
    for (const auto &group : groups) {
        auto *box = addField<QGroupBox>(page, "box", "", "");
        new QVBoxLayout(box);
        for (const auto &radio : group)
            addField<QRadioButton>(box, radio[0], radio[1], "");
    }
    addField<QSpinBox>(page, "addressSpin", "address", "The address.");
    addField<QPlainTextEdit>(page, "linesEdit", "lines", "One line each.");
    addField<QComboBox>(page, "modeCombo", "mode", "The mode.");
}

QString shown(QWidget *field)
{
    if (auto *line = qobject_cast<QLineEdit *>(field))
        return line->text();
    if (auto *label = qobject_cast<QLabel *>(field))
        return label->text();
    if (auto *check = qobject_cast<QAbstractButton *>(field))
        return check->isChecked() ? QStringLiteral("true") : QStringLiteral("false");
    if (auto *combo = qobject_cast<QComboBox *>(field))
        return combo->currentText();
    if (auto *spin = qobject_cast<QSpinBox *>(field))
        return QString::number(spin->value());
    if (auto *plain = qobject_cast<QPlainTextEdit *>(field))
        return plain->toPlainText();
    return QString();
}

const char ButtonForm[] =
    "<widget class=\"QPushButton\" name=\"okButton\"><property name=\"geometry\"><rect><x>10</x><y>10</y>"
    "<width>100</width><height>30</height></rect></property>"
    "<property name=\"text\"><string>Push</string></property>"
    "<property name=\"checkable\"><bool>true</bool></property>"
    "<property name=\"shortcut\"><string>Ctrl+S</string></property>"
    "<property name=\"focusPolicy\"><enum>Qt::ClickFocus</enum></property></widget>";

const char ProbeForm[] =
    "<widget class=\"ProbeWidget\" name=\"probe\"><property name=\"geometry\"><rect><x>20</x><y>20</y>"
    "<width>120</width><height>40</height></rect></property>"
    "<property name=\"alignment\"><set>Qt::AlignRight|Qt::AlignBottom</set></property>"
    "<property name=\"mode\"><enum>ProbeWidget::Fast</enum></property>"
    "<property name=\"address\"><number>40017</number></property>"
    "<property name=\"lines\"><stringlist><string>a</string><string>b</string></stringlist></property>"
    "</widget>";

} // namespace

class TestPropertyDialog : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        ProbeWidgetPlugin::registerInCollection();
        DesignerCore::instance();
    }
    void cleanup()
    {
        delete m_dialog;
        DesignerCore::instance().closeForms();
    }
    void cleanupTestCase() { DesignerCore::release(); }

    // Fields are bound by path: name, name.member and name.number; anything else is left alone.
    void fieldsShowTheFormsValues_data()
    {
        QTest::addColumn<bool>("probe");
        QTest::addColumn<QString>("fieldName");
        QTest::addColumn<QString>("expected");
        QTest::newRow("objectName") << false << "nameEdit" << "okButton";
        QTest::newRow("checkable") << false << "checkableBox" << "true";
        // Designer gives form widgets no focus and no shortcut: these come from the form.
        QTest::newRow("hidden focusPolicy") << false << "focusCombo" << "ClickFocus";
        QTest::newRow("hidden shortcut") << false << "shortcutEdit" << "Ctrl+S";
        QTest::newRow("font.bold") << false << "boldBox" << "false";
        QTest::newRow("geometry.width") << false << "widthSpin" << "100";
        QTest::newRow("sentence not bound") << false << "helpLabel" << "Help";
        QTest::newRow("unknown property not bound") << false << "strayEdit" << "";
        QTest::newRow("address beyond spin default") << true << "addressSpin" << "40017";
        QTest::newRow("string list") << true << "linesEdit" << "a\nb";
        QTest::newRow("flag set") << true << "rightRadio" << "true";
        QTest::newRow("flag unset") << true << "leftRadio" << "false";
        QTest::newRow("other flag group") << true << "bottomRadio" << "true";
        QTest::newRow("enum value") << true << "fastRadio" << "true";
    }
    void fieldsShowTheFormsValues()
    {
        QFETCH(bool, probe);
        QFETCH(QString, fieldName);
        QVERIFY(probe ? openProbeDialog() : openButtonDialog());
        m_dialog->show();
        QVERIFY(m_dialog->isBound());
        QTEST(shown(m_dialog->findChild<QWidget *>(fieldName)), "expected");
    }

    void statusTipOfTheFocusedField()
    {
        QVERIFY(openButtonDialog());
        m_dialog->show();
        m_dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog));
        auto *description = field<QLabel>("descriptionWidget");
        field<QLineEdit>("textEdit")->setFocus();
        QTRY_COMPARE(description->text(), QStringLiteral("The caption."));
        // A spin box's own line edit takes the focus: the field's tip shows.
        field<QSpinBox>("widthSpin")->setFocus();
        QTRY_COMPARE(description->text(), QStringLiteral("The width of the widget."));
    }

    // The preview follows every edit; the form waits for Ok, which is one undo step.
    void commit_data()
    {
        QTest::addColumn<QString>("ending");
        QTest::addColumn<int>("steps");
        QTest::newRow("ok") << "ok" << 1;
        QTest::newRow("ok with companion") << "companion" << 1;
        QTest::newRow("ok after putting back") << "putBack" << 0;
        QTest::newRow("cancel") << "cancel" << 0;
    }
    void commit()
    {
        QFETCH(QString, ending);
        QFETCH(int, steps);
        QVERIFY(openButtonDialog());
        QWidget *widget = m_widget;
        QDesignerFormWindowInterface *form = m_form;
        if (ending == QLatin1String("companion")) {
            // A companion editor commits on accepted(), after the dialog's own fields.
            connect(m_dialog, &QDialog::accepted, this, [widget, form] {
                form->cursor()->setWidgetProperty(widget, QStringLiteral("toolTip"), QStringLiteral("Starts"));
            });
        }
        m_dialog->show();
        const QString before = m_form->contents();
        auto *preview = qobject_cast<QPushButton *>(m_dialog->preview());
        QVERIFY(!DesignerHost::formWindowOf(preview));
        field<QLineEdit>("textEdit")->setText(QStringLiteral("Start"));
        field<QSpinBox>("widthSpin")->setValue(150);
        auto *focus = field<QComboBox>("focusCombo");
        focus->setCurrentIndex(focus->findText(QStringLiteral("TabFocus")));
        field<QLineEdit>("shortcutEdit")->setText(QStringLiteral("Ctrl+T"));
        field<QCheckBox>("boldBox")->setChecked(true);
        QCOMPARE(preview->text(), QStringLiteral("Start"));
        QCOMPARE(preview->size(), QSize(150, 30));
        QCOMPARE(preview->focusPolicy(), Qt::TabFocus);
        QVERIFY(preview->font().bold());
        field<QCheckBox>("boldBox")->setChecked(false); // edited and put back: nothing to commit
        auto *button = qobject_cast<QPushButton *>(m_widget);
        QCOMPARE(button->text(), QStringLiteral("Push"));
        if (ending == QLatin1String("putBack")) {
            field<QLineEdit>("textEdit")->setText(QStringLiteral("Push"));
            field<QSpinBox>("widthSpin")->setValue(100);
            focus->setCurrentIndex(focus->findText(QStringLiteral("ClickFocus")));
            field<QLineEdit>("shortcutEdit")->setText(QStringLiteral("Ctrl+S"));
        }
        field<QDialogButtonBox>("buttonBox")
            ->button(ending == QLatin1String("cancel") ? QDialogButtonBox::Cancel : QDialogButtonBox::Ok)
            ->click();
        QCOMPARE(m_form->commandHistory()->count(), steps);
        if (steps) {
            QCOMPARE(button->text(), QStringLiteral("Start"));
            QCOMPARE(button->geometry(), QRect(10, 10, 150, 30));
            const QString saved = m_form->contents();
            QVERIFY(saved.contains(QLatin1String("<enum>Qt::TabFocus</enum>")));
            QVERIFY(saved.contains(QLatin1String("<string>Ctrl+T</string>")));
            QVERIFY(!saved.contains(QLatin1String("name=\"font\"")));
            QCOMPARE(saved.contains(QLatin1String("Starts")), ending == QLatin1String("companion"));
            m_form->commandHistory()->undo();
        }
        QCOMPARE(button->text(), QStringLiteral("Push"));
        QCOMPARE(button->geometry(), QRect(10, 10, 100, 30));
        QCOMPARE(m_form->contents(), before);
        QVERIFY(!m_form->isDirty());
    }

    void choicesSetEnumsAndFlags()
    {
        QVERIFY(openProbeDialog());
        m_dialog->show();
        auto *preview = qobject_cast<ProbeWidget *>(m_dialog->preview());
        // A flag replaces the other flags of its group and leaves the other group alone.
        field<QRadioButton>("leftRadio")->click();
        QCOMPARE(preview->alignment(), Qt::AlignLeft | Qt::AlignBottom);
        field<QRadioButton>("vCenterRadio")->click();
        field<QRadioButton>("slowRadio")->click();
        QCOMPARE(preview->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
        QCOMPARE(field<QComboBox>("modeCombo")->currentText(), QStringLiteral("Slow"));
        field<QDialogButtonBox>("buttonBox")->button(QDialogButtonBox::Ok)->click();
        auto *probe = qobject_cast<ProbeWidget *>(m_widget);
        QCOMPARE(probe->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
        QCOMPARE(probe->mode(), ProbeWidget::Slow);
        QCOMPARE(m_form->commandHistory()->count(), 1);
        m_form->commandHistory()->undo();
        QCOMPARE(probe->alignment(), Qt::AlignRight | Qt::AlignBottom);
        QCOMPARE(probe->mode(), ProbeWidget::Fast);
    }

private:
    PropertyDialog *openDialog(const char *widgets, const QString &name, void (*build)(QDialog *))
    {
        m_form = DesignerCore::instance().createForm(DesignerCore::formDocument(QLatin1String(widgets)));
        m_widget = DesignerCore::formWidget(m_form, name);
        if (!m_widget)
            return nullptr;
        // As a task menu: a new instance of the widget's class, without parent, for the preview.
        QWidget *preview = qobject_cast<ProbeWidget *>(m_widget) ? static_cast<QWidget *>(new ProbeWidget)
                                                                 : static_cast<QWidget *>(new QPushButton);
        m_dialog = qobject_cast<PropertyDialog *>(createPropertyDialog(m_widget, preview));
        if (m_dialog)
            build(m_dialog);
        return m_dialog;
    }
    PropertyDialog *openButtonDialog() { return openDialog(ButtonForm, QStringLiteral("okButton"), buildButtonEditor); }
    PropertyDialog *openProbeDialog() { return openDialog(ProbeForm, QStringLiteral("probe"), buildProbeEditor); }
    template <class T> T *field(const char *name) const { return m_dialog->findChild<T *>(QLatin1String(name)); }

    QDesignerFormWindowInterface *m_form = nullptr;
    QWidget *m_widget = nullptr;
    QPointer<PropertyDialog> m_dialog;
};

QTEST_MAIN(TestPropertyDialog)
#include "tst_propertydialog.moc"
