#include "designercore.h"
#include "designerhost.h"
#include "fieldbinder.h"
#include "fieldbinding.h"
#include "probewidget.h"
#include "propertydialog.h"
#include "valuechooser.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMetaEnum>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>
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

QWidget *addPage(QTabWidget *tabs, const QString &title)
{
    auto *page = new QWidget;
    new QVBoxLayout(page);
    tabs->addTab(page, title);
    return page;
}

// What a task menu does: the dialog's fixed children, and fields on tabs.
QTabWidget *buildFrame(QDialog *dialog)
{
    auto *layout = new QVBoxLayout(dialog);
    auto *tabs = new QTabWidget(dialog);
    tabs->setObjectName(QStringLiteral("tabWidget"));
    layout->addWidget(tabs);
    auto *preview = new QGroupBox(QStringLiteral("Preview"), dialog);
    preview->setObjectName(QStringLiteral("previewWidget"));
    preview->setMinimumSize(300, 120);
    layout->addWidget(preview);
    auto *description = new QLabel(dialog);
    description->setObjectName(QStringLiteral("descriptionWidget"));
    layout->addWidget(description);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    layout->addWidget(buttons);
    QWidget *macro = addPage(tabs, QStringLiteral("Macro"));
    auto *tree = new QTreeView(macro);
    tree->setObjectName(QStringLiteral("macroTreeView"));
    macro->layout()->addWidget(tree);
    return tabs;
}

void buildButtonEditor(QDialog *dialog)
{
    QTabWidget *tabs = buildFrame(dialog);
    QWidget *general = addPage(tabs, QStringLiteral("General"));
    addField<QLineEdit>(general, "nameEdit", "objectName", "This property holds the name of this object.");
    addField<QLineEdit>(general, "textEdit", "text", "The caption.");
    addField<QCheckBox>(general, "checkableBox", "checkable", "Whether the button toggles.");
    addField<QComboBox>(general, "focusCombo", "focusPolicy", "The way the widget accepts keyboard focus.");
    addField<QCheckBox>(general, "boldBox", "font.bold", "Bold caption.");
    addField<QSpinBox>(general, "leftSpin", "geometry.left", "The left of the widget.");
    addField<QSpinBox>(general, "widthSpin", "geometry.width", "The width of the widget.");
    addField<QLineEdit>(general, "shortcutEdit", "shortcut", "The mnemonic of the button.");
    // Not bound: a sentence, and a path naming no property of the widget.
    addField<QLabel>(general, "helpLabel", "Shows the help.", "")->setText(QStringLiteral("Help"));
    addField<QLineEdit>(general, "strayEdit", "noSuchProperty", "");
}

QRadioButton *addRadio(QWidget *box, const char *objectName, const char *path)
{
    return addField<QRadioButton>(box, objectName, path, "");
}

void buildProbeEditor(QDialog *dialog)
{
    QTabWidget *tabs = buildFrame(dialog);
    QWidget *page = addPage(tabs, QStringLiteral("General"));
    auto *horizontal = addField<QGroupBox>(page, "horizontalBox", "", "");
    new QVBoxLayout(horizontal);
    addRadio(horizontal, "leftRadio", "alignment.1");
    addRadio(horizontal, "rightRadio", "alignment.2");
    addRadio(horizontal, "hCenterRadio", "alignment.4");
    auto *vertical = addField<QGroupBox>(page, "verticalBox", "", "");
    new QVBoxLayout(vertical);
    addRadio(vertical, "topRadio", "alignment.32");
    addRadio(vertical, "bottomRadio", "alignment.64");
    addRadio(vertical, "vCenterRadio", "alignment.128");
    auto *modes = addField<QGroupBox>(page, "modeBox", "", "");
    new QVBoxLayout(modes);
    addRadio(modes, "offRadio", "mode.0");
    addRadio(modes, "slowRadio", "mode.1");
    addRadio(modes, "fastRadio", "mode.2");
    addField<QSpinBox>(page, "addressSpin", "address", "The address.");
    addField<QPlainTextEdit>(page, "linesEdit", "lines", "One line each.");
    addField<QComboBox>(page, "modeCombo", "mode", "The mode.");
    addField<QPushButton>(page, "colorButton", "lampColor", "The lamp colour.")->setText(QStringLiteral("Edit..."));
    addField<QPushButton>(page, "pictureButton", "picture", "The picture.")->setText(QStringLiteral("Edit..."));
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
    return QString();
}

const char ButtonForm[] =
    "<widget class=\"QPushButton\" name=\"okButton\"><property name=\"geometry\"><rect><x>10</x><y>10</y>"
    "<width>100</width><height>30</height></rect></property>"
    "<property name=\"text\"><string>Push</string></property>"
    "<property name=\"checkable\"><bool>true</bool></property>"
    "<property name=\"shortcut\"><string>Ctrl+S</string></property>"
    "<property name=\"focusPolicy\"><enum>Qt::ClickFocus</enum></property>"
    "<property name=\"whatsThis\"><string>checkable</string></property></widget>";

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
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

    void fieldsShowTheFormsValues_data();
    void fieldsShowTheFormsValues();
    void enumComboListsTheKeys();
    void onlyPropertyPathsAreBound();
    void previewStartsAsTheWidget();
    void previewFollowsEveryEdit();
    void statusTipOfTheFocusedField();
    void okCommitsChangedFieldsAsOneUndoStep();
    void okWithoutChangesLeavesNoUndoStep();
    void cancelChangesNothing();
    void companionCommitsJoinTheUndoStep();
    void dialogGoesAwayAfterClosing();
    void macroViewListsTheSlots();
    void choicesShowAndSetEnumsAndFlags();
    void valueFieldsOfOtherKinds();
    void colourChooser();
    void cancelledColourChooserChangesNothing();
    void pictureChooserSavesThePath();

private:
    PropertyDialog *openDialog(const char *widgets, const QString &name, void (*build)(QDialog *));
    PropertyDialog *openButtonDialog() { return openDialog(ButtonForm, QStringLiteral("okButton"), buildButtonEditor); }
    PropertyDialog *openProbeDialog() { return openDialog(ProbeForm, QStringLiteral("probe"), buildProbeEditor); }
    template <class T> T *field(const char *name) const
    {
        return m_dialog ? m_dialog->findChild<T *>(QLatin1String(name)) : nullptr;
    }
    void clickOk();
    void clickCancel();

    QDesignerFormWindowInterface *m_form = nullptr;
    QWidget *m_widget = nullptr;
    QPointer<PropertyDialog> m_dialog;
};

void TestPropertyDialog::initTestCase()
{
    ProbeWidgetPlugin::registerInCollection();
    DesignerCore::instance();
}

void TestPropertyDialog::cleanup()
{
    delete m_dialog;
    ValueChooser::setColorChooser({});
    ValueChooser::setPictureChooser({});
    DesignerCore::instance().closeForms();
}

void TestPropertyDialog::cleanupTestCase()
{
    DesignerCore::release();
}

PropertyDialog *TestPropertyDialog::openDialog(const char *widgets, const QString &name, void (*build)(QDialog *))
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

void TestPropertyDialog::clickOk()
{
    field<QDialogButtonBox>("buttonBox")->button(QDialogButtonBox::Ok)->click();
}

void TestPropertyDialog::clickCancel()
{
    field<QDialogButtonBox>("buttonBox")->button(QDialogButtonBox::Cancel)->click();
}

void TestPropertyDialog::fieldsShowTheFormsValues_data()
{
    QTest::addColumn<QString>("fieldName");
    QTest::addColumn<QString>("expected");
    QTest::newRow("objectName") << "nameEdit" << "okButton";
    QTest::newRow("text") << "textEdit" << "Push";
    QTest::newRow("checkable") << "checkableBox" << "true";
    // Designer gives form widgets no focus and no shortcut: these come from the form.
    QTest::newRow("focusPolicy") << "focusCombo" << "ClickFocus";
    QTest::newRow("shortcut") << "shortcutEdit" << "Ctrl+S";
    QTest::newRow("font.bold") << "boldBox" << "false";
    QTest::newRow("geometry.left") << "leftSpin" << "10";
    QTest::newRow("geometry.width") << "widthSpin" << "100";
}

void TestPropertyDialog::fieldsShowTheFormsValues()
{
    QFETCH(QString, fieldName);
    QFETCH(QString, expected);
    QVERIFY(openButtonDialog());
    m_dialog->show();
    QVERIFY(m_dialog->isBound());
    QCOMPARE(shown(m_dialog->findChild<QWidget *>(fieldName)), expected);
}

void TestPropertyDialog::enumComboListsTheKeys()
{
    QVERIFY(openButtonDialog());
    m_dialog->bind();
    auto *combo = field<QComboBox>("focusCombo");
    const QMetaEnum keys = QMetaEnum::fromType<Qt::FocusPolicy>();
    QCOMPARE(combo->count(), keys.keyCount());
    for (int i = 0; i < keys.keyCount(); ++i) {
        QCOMPARE(combo->itemText(i), QString::fromLatin1(keys.key(i)));
        QCOMPARE(combo->itemData(i).toInt(), keys.value(i));
    }
}

void TestPropertyDialog::onlyPropertyPathsAreBound()
{
    QVERIFY(openButtonDialog());
    m_dialog->bind();
    QStringList bound;
    for (FieldBinding *binding : m_dialog->binder()->bindings())
        bound.append(binding->field()->objectName());
    QCOMPARE(bound, (QStringList{QStringLiteral("nameEdit"), QStringLiteral("textEdit"),
                                 QStringLiteral("checkableBox"), QStringLiteral("focusCombo"),
                                 QStringLiteral("boldBox"), QStringLiteral("leftSpin"), QStringLiteral("widthSpin"),
                                 QStringLiteral("shortcutEdit")}));
    QCOMPARE(field<QLabel>("helpLabel")->text(), QStringLiteral("Help"));
    QVERIFY(field<QLineEdit>("strayEdit")->text().isEmpty());
    // The preview carries the widget's what's-this, which reads like a path.
    QCOMPARE(m_dialog->preview()->whatsThis(), QStringLiteral("checkable"));
}

void TestPropertyDialog::previewStartsAsTheWidget()
{
    QVERIFY(openButtonDialog());
    auto *preview = qobject_cast<QPushButton *>(m_dialog->preview());
    QVERIFY(preview);
    QCOMPARE(preview->text(), QStringLiteral("Push"));
    QVERIFY(preview->isCheckable());
    QCOMPARE(preview->focusPolicy(), Qt::ClickFocus);
    QCOMPARE(preview->shortcut(), QKeySequence(QStringLiteral("Ctrl+S")));
    QCOMPARE(preview->size(), QSize(100, 30));

    m_dialog->show();
    QWidget *area = field<QWidget>("previewWidget");
    QCOMPARE(preview->parentWidget(), area);
    QVERIFY(preview->isVisible());
    // In the dialog the preview is not part of the form.
    QVERIFY(!QDesignerFormWindowInterface::findFormWindow(preview));
    QVERIFY(!DesignerHost::formWindowOf(preview));
}

void TestPropertyDialog::previewFollowsEveryEdit()
{
    QVERIFY(openButtonDialog());
    m_dialog->show();
    auto *preview = qobject_cast<QPushButton *>(m_dialog->preview());

    field<QLineEdit>("textEdit")->setText(QStringLiteral("Start"));
    QCOMPARE(preview->text(), QStringLiteral("Start"));
    field<QSpinBox>("widthSpin")->setValue(160);
    QCOMPARE(preview->size(), QSize(160, 30));
    field<QCheckBox>("boldBox")->setChecked(true);
    QVERIFY(preview->font().bold());
    auto *focus = field<QComboBox>("focusCombo");
    focus->setCurrentIndex(focus->findText(QStringLiteral("TabFocus")));
    QCOMPARE(preview->focusPolicy(), Qt::TabFocus);
    field<QCheckBox>("checkableBox")->setChecked(false);
    QVERIFY(!preview->isCheckable());

    // The widget on the form waits for Ok.
    auto *button = qobject_cast<QPushButton *>(m_widget);
    QCOMPARE(button->text(), QStringLiteral("Push"));
    QCOMPARE(button->width(), 100);
    QVERIFY(button->isCheckable());
    QCOMPARE(m_form->commandHistory()->count(), 0);
}

void TestPropertyDialog::statusTipOfTheFocusedField()
{
    QVERIFY(openButtonDialog());
    m_dialog->show();
    m_dialog->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog));
    auto *description = field<QLabel>("descriptionWidget");
    field<QTabWidget>("tabWidget")->setCurrentIndex(1);

    field<QLineEdit>("textEdit")->setFocus();
    QTRY_COMPARE(description->text(), QStringLiteral("The caption."));
    // A spin box's own line edit takes the focus: the field's tip shows.
    field<QSpinBox>("widthSpin")->setFocus();
    QTRY_COMPARE(description->text(), QStringLiteral("The width of the widget."));
    field<QComboBox>("focusCombo")->setFocus();
    QTRY_COMPARE(description->text(), QStringLiteral("The way the widget accepts keyboard focus."));
}

void TestPropertyDialog::okCommitsChangedFieldsAsOneUndoStep()
{
    QVERIFY(openButtonDialog());
    m_dialog->show();
    field<QLineEdit>("textEdit")->setText(QStringLiteral("Start"));
    field<QSpinBox>("widthSpin")->setValue(150);
    auto *focus = field<QComboBox>("focusCombo");
    focus->setCurrentIndex(focus->findText(QStringLiteral("TabFocus")));
    field<QLineEdit>("shortcutEdit")->setText(QStringLiteral("Ctrl+T"));
    // Edited and put back: no change to commit.
    field<QCheckBox>("boldBox")->setChecked(true);
    field<QCheckBox>("boldBox")->setChecked(false);
    QCOMPARE(m_dialog->binder()->changedProperties(),
             (QList<QByteArray>{"text", "focusPolicy", "geometry", "shortcut"}));

    clickOk();
    auto *button = qobject_cast<QPushButton *>(m_widget);
    QCOMPARE(button->text(), QStringLiteral("Start"));
    QCOMPARE(button->geometry(), QRect(10, 10, 150, 30));
    const QString saved = m_form->contents();
    QVERIFY(saved.contains(QLatin1String("<string>Start</string>")));
    QVERIFY(saved.contains(QLatin1String("<enum>Qt::TabFocus</enum>")));
    QVERIFY(saved.contains(QLatin1String("<string>Ctrl+T</string>")));
    QVERIFY(saved.contains(QLatin1String("<width>150</width>")));
    QVERIFY(!saved.contains(QLatin1String("name=\"font\"")));
    QCOMPARE(m_form->commandHistory()->count(), 1);
    QVERIFY(m_form->isDirty());

    m_form->commandHistory()->undo();
    QCOMPARE(button->text(), QStringLiteral("Push"));
    QCOMPARE(button->geometry(), QRect(10, 10, 100, 30));
    const QString restored = m_form->contents();
    QVERIFY(restored.contains(QLatin1String("<enum>Qt::ClickFocus</enum>")));
    QVERIFY(restored.contains(QLatin1String("<string>Ctrl+S</string>")));
    QVERIFY(!m_form->isDirty());
}

void TestPropertyDialog::okWithoutChangesLeavesNoUndoStep()
{
    QVERIFY(openButtonDialog());
    m_dialog->show();
    field<QLineEdit>("textEdit")->setText(QStringLiteral("Start"));
    field<QLineEdit>("textEdit")->setText(QStringLiteral("Push"));
    const QString before = m_form->contents();
    clickOk();
    QCOMPARE(m_form->commandHistory()->count(), 0);
    QVERIFY(!m_form->isDirty());
    QCOMPARE(m_form->contents(), before);
}

void TestPropertyDialog::cancelChangesNothing()
{
    QVERIFY(openButtonDialog());
    m_dialog->show();
    const QString before = m_form->contents();
    field<QLineEdit>("textEdit")->setText(QStringLiteral("Start"));
    field<QSpinBox>("widthSpin")->setValue(150);
    field<QLineEdit>("nameEdit")->setText(QStringLiteral("startButton"));
    clickCancel();
    QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    QCOMPARE(m_widget->objectName(), QStringLiteral("okButton"));
    QCOMPARE(qobject_cast<QPushButton *>(m_widget)->text(), QStringLiteral("Push"));
    QCOMPARE(m_widget->width(), 100);
    QCOMPARE(m_form->commandHistory()->count(), 0);
    QVERIFY(!m_form->isDirty());
    QCOMPARE(m_form->contents(), before);
}

void TestPropertyDialog::companionCommitsJoinTheUndoStep()
{
    QVERIFY(openButtonDialog());
    QWidget *widget = m_widget;
    QDesignerFormWindowInterface *form = m_form;
    // A companion editor commits on accepted(), after the dialog's own fields.
    connect(m_dialog, &QDialog::accepted, this, [widget, form] {
        form->cursor()->setWidgetProperty(widget, QStringLiteral("toolTip"), QStringLiteral("Starts the cycle"));
    });
    m_dialog->show();
    field<QLineEdit>("nameEdit")->setText(QStringLiteral("startButton"));
    clickOk();
    QCOMPARE(m_widget->objectName(), QStringLiteral("startButton"));
    QVERIFY(m_form->contents().contains(QLatin1String("Starts the cycle")));
    QCOMPARE(m_form->commandHistory()->count(), 1);
    m_form->commandHistory()->undo();
    QCOMPARE(m_widget->objectName(), QStringLiteral("okButton"));
    QVERIFY(!m_form->contents().contains(QLatin1String("Starts the cycle")));
}

void TestPropertyDialog::dialogGoesAwayAfterClosing()
{
    QVERIFY(openButtonDialog());
    QPointer<QWidget> preview = m_dialog->preview();
    QVERIFY(m_dialog->isModal());
    QVERIFY(m_dialog->isWindow());
    m_dialog->show();
    clickOk();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!m_dialog);
    QVERIFY(!preview);
}

void TestPropertyDialog::macroViewListsTheSlots()
{
    QVERIFY(openButtonDialog());
    m_dialog->show();
    auto *model = qobject_cast<QStandardItemModel *>(field<QTreeView>("macroTreeView")->model());
    QVERIFY(model);
    const QList<QStandardItem *> branches = model->findItems(QStringLiteral("QAbstractButton"));
    QCOMPARE(branches.size(), 1);
    QStringList slotNames;
    for (int row = 0; row < branches.first()->rowCount(); ++row)
        slotNames.append(branches.first()->child(row)->text());
    QVERIFY(slotNames.contains(QStringLiteral("click()")));
    QVERIFY(slotNames.contains(QStringLiteral("toggle()")));
    QVERIFY(model->findItems(QStringLiteral("QObject")).isEmpty());
}

void TestPropertyDialog::choicesShowAndSetEnumsAndFlags()
{
    QVERIFY(openProbeDialog());
    m_dialog->show();
    auto *preview = qobject_cast<ProbeWidget *>(m_dialog->preview());
    QVERIFY(preview);
    const QStringList names{QStringLiteral("leftRadio"), QStringLiteral("rightRadio"), QStringLiteral("hCenterRadio"),
                            QStringLiteral("topRadio"),  QStringLiteral("bottomRadio"), QStringLiteral("vCenterRadio"),
                            QStringLiteral("offRadio"),  QStringLiteral("slowRadio"),  QStringLiteral("fastRadio")};
    QStringList checked;
    for (const QString &name : names) {
        if (m_dialog->findChild<QRadioButton *>(name)->isChecked())
            checked.append(name);
    }
    QCOMPARE(checked, (QStringList{QStringLiteral("rightRadio"), QStringLiteral("bottomRadio"),
                                   QStringLiteral("fastRadio")}));

    // A flag replaces the other flags of its group and leaves the other group alone.
    field<QRadioButton>("leftRadio")->click();
    QCOMPARE(preview->alignment(), Qt::AlignLeft | Qt::AlignBottom);
    field<QRadioButton>("vCenterRadio")->click();
    QCOMPARE(preview->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
    field<QRadioButton>("slowRadio")->click();
    QCOMPARE(preview->mode(), ProbeWidget::Slow);
    // The combo box of the same property follows.
    QCOMPARE(field<QComboBox>("modeCombo")->currentText(), QStringLiteral("Slow"));

    clickOk();
    auto *probe = qobject_cast<ProbeWidget *>(m_widget);
    QCOMPARE(probe->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(probe->mode(), ProbeWidget::Slow);
    QVERIFY(m_form->contents().contains(QLatin1String("<enum>ProbeWidget::Slow</enum>")));
    QCOMPARE(m_form->commandHistory()->count(), 1);
    m_form->commandHistory()->undo();
    QCOMPARE(probe->alignment(), Qt::AlignRight | Qt::AlignBottom);
    QCOMPARE(probe->mode(), ProbeWidget::Fast);
}

void TestPropertyDialog::valueFieldsOfOtherKinds()
{
    QVERIFY(openProbeDialog());
    m_dialog->show();
    auto *preview = qobject_cast<ProbeWidget *>(m_dialog->preview());
    // Qt's default spin box range (0 to 99) would clip the address.
    QCOMPARE(field<QSpinBox>("addressSpin")->value(), 40017);
    QCOMPARE(field<QComboBox>("modeCombo")->currentText(), QStringLiteral("Fast"));
    QCOMPARE(field<QPlainTextEdit>("linesEdit")->toPlainText(), QStringLiteral("a\nb"));

    field<QPlainTextEdit>("linesEdit")->setPlainText(QStringLiteral("a\nb\nc"));
    QCOMPARE(preview->lines(), (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
    field<QSpinBox>("addressSpin")->setValue(40100);
    QCOMPARE(preview->address(), 40100);
    clickOk();
    auto *probe = qobject_cast<ProbeWidget *>(m_widget);
    QCOMPARE(probe->lines(), (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
    QCOMPARE(probe->address(), 40100);
    QVERIFY(m_form->contents().contains(QLatin1String("<number>40100</number>")));
}

void TestPropertyDialog::colourChooser()
{
    QColor offered;
    ValueChooser::setColorChooser([&offered](const QColor &initial, QWidget *) {
        offered = initial;
        return QColor(Qt::red);
    });
    QVERIFY(openProbeDialog());
    m_dialog->show();
    auto *button = field<QPushButton>("colorButton");
    QCOMPARE(button->icon().pixmap(20, 20).toImage().pixelColor(10, 10), QColor(Qt::green));
    button->click();
    QCOMPARE(offered, QColor(Qt::green));
    QCOMPARE(qobject_cast<ProbeWidget *>(m_dialog->preview())->lampColor(), QColor(Qt::red));
    QCOMPARE(button->icon().pixmap(20, 20).toImage().pixelColor(10, 10), QColor(Qt::red));
    QCOMPARE(button->text(), QStringLiteral("Edit..."));

    clickOk();
    auto *probe = qobject_cast<ProbeWidget *>(m_widget);
    QCOMPARE(probe->lampColor(), QColor(Qt::red));
    QVERIFY(m_form->contents().contains(QLatin1String("name=\"lampColor\"")));
    m_form->commandHistory()->undo();
    QCOMPARE(probe->lampColor(), QColor(Qt::green));
}

void TestPropertyDialog::cancelledColourChooserChangesNothing()
{
    ValueChooser::setColorChooser([](const QColor &, QWidget *) { return QColor(); });
    ValueChooser::setPictureChooser([](const QString &, QWidget *) { return QString(); });
    QVERIFY(openProbeDialog());
    m_dialog->show();
    field<QPushButton>("colorButton")->click();
    field<QPushButton>("pictureButton")->click();
    QCOMPARE(qobject_cast<ProbeWidget *>(m_dialog->preview())->lampColor(), QColor(Qt::green));
    QCOMPARE(m_dialog->binder()->changedProperties(), QList<QByteArray>());
    clickOk();
    QCOMPARE(m_form->commandHistory()->count(), 0);
}

void TestPropertyDialog::pictureChooserSavesThePath()
{
    QTemporaryDir project;
    QVERIFY(project.isValid());
    QVERIFY(QDir(project.path()).mkpath(QStringLiteral("ResourceFiles")));
    const QString picture = project.filePath(QStringLiteral("ResourceFiles/lamp.png"));
    QImage image(16, 16, QImage::Format_ARGB32);
    image.fill(Qt::blue);
    QVERIFY(image.save(picture));

    QString offeredFolder;
    ValueChooser::setPictureChooser([&](const QString &folder, QWidget *) {
        offeredFolder = folder;
        return picture;
    });
    QVERIFY(openProbeDialog());
    m_form->setFileName(project.filePath(QStringLiteral("panel.ui")));
    m_dialog->show();
    field<QPushButton>("pictureButton")->click();
    QCOMPARE(offeredFolder, project.path()); // the project folder
    QCOMPARE(qobject_cast<ProbeWidget *>(m_dialog->preview())->picture().size(), QSize(16, 16));

    clickOk();
    auto *probe = qobject_cast<ProbeWidget *>(m_widget);
    QCOMPARE(probe->picture().size(), QSize(16, 16));
    // Saved with its path, relative to the form; a plain pixmap would be saved empty.
    QVERIFY2(m_form->contents().contains(QLatin1String("<pixmap>ResourceFiles/lamp.png</pixmap>")),
             qPrintable(m_form->contents()));
    QCOMPARE(m_form->commandHistory()->count(), 1);
    m_form->commandHistory()->undo();
    QVERIFY(probe->picture().isNull());
}

QTEST_MAIN(TestPropertyDialog)
#include "tst_propertydialog.moc"
