// The bit button and the function button share Designer's plumbing (descriptor, task menu factory,
// property dialog, text page); each test takes the widget class as a data column.
#include "bitbutton.h"
#include "bitbuttontaskmenu.h"
#include "designercore.h"
#include "fieldbinder.h"
#include "fieldbinding.h"
#include "fontmapcodec.h"
#include "functionbutton.h"
#include "functionbuttontaskmenu.h"
#include "norvointerface_z3.h"
#include "PictureButton.h"
#include "propertydialog.h"
#include "textinfocodec.h"
#include "textpropertyeditor_z12.h"

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QDesignerWidgetDataBaseInterface>
#include <QtDesigner/QExtensionManager>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QUndoStack>

#include <functional>

namespace {

using Tips = QHash<QString, QString>;

const QString Bit = QStringLiteral("BitButton");
const QString Function = QStringLiteral("FunctionButton");

QDesignerFormEditorInterface *core() { return DesignerCore::instance().core(); }

QString objectNameOf(const QString &widget) { return widget.left(1).toLower() + widget.mid(1); }

QString prop(const char *name, const QString &type, const QString &value)
{
    return QStringLiteral("<property name=\"%1\"><%2>%3</%2></property>").arg(QLatin1String(name), type, value);
}

int factoryCount(const QString &widget)
{
    int count = 0;
    const QObjectList children = core()->extensionManager()->children();
    for (QObject *child : children)
        count += child->inherits(QString(widget + QLatin1String("TaskMenuFactory")).toLatin1().constData());
    return count;
}

QWidget *fieldOf(QDialog *dialog, const QString &path)
{
    QList<QWidget *> found;
    for (QWidget *w : dialog->findChildren<QWidget *>())
        if (w->whatsThis() == path)
            found.append(w);
    return found.size() == 1 ? found.first() : nullptr;
}

void setField(QDialog *dialog, const char *path, const QVariant &value)
{
    QWidget *field = fieldOf(dialog, QLatin1String(path));
    QVERIFY2(field, path);
    if (auto *spin = qobject_cast<QSpinBox *>(field))
        spin->setValue(value.toInt());
    else if (auto *radio = qobject_cast<QRadioButton *>(field))
        radio->click();
    else if (auto *line = qobject_cast<QLineEdit *>(field))
        line->setText(value.toString());
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
        texts.append(QStringLiteral("%1 %2%3").arg(font.family()).arg(font.pointSize())
                         .arg(font.bold() ? QStringLiteral(" bold") : QString()));
    return texts;
}

// Status tips shared by both buttons, by property path; the layout contract of the editors.
Tips commonTips()
{
    Tips tips{
        {"objectName", "This property holds the name of this object."},
        {"shortcut", "This property holds the mnemonic associated with the button."},
        {"focusPolicy", "This property holds the way the widget accepts keyboard focus."},
        {"comId", "Specifies the index of the communication link."},
        {"channel", "Specifies the channel of variable."},
        {"writeBitType", "Specifies the type of variable in the Write Address field. "},
        {"writeAddress", "Specifies the word variable that contains the bit to be operated. "},
        {"action.0", "Sets the specified bit to On when the button is pressed."},
        {"action.1", "Sets the specified bit to Off when the button is pressed. "},
        {"action.2", "Sets the specified bit to On when the button is pressed and sets the bit to Off when the "
                     "button is released. "},
        {"action.3", "Sets the specified bit to Off when the button is pressed and sets the bit to On when the "
                     "button is released. "},
        {"action.4", "Inverts the state of the specified bit when the button is pressed.  "},
        {"onButtonColor", "Sets the button color of state 1 (On)."},
        {"icon", "This property holds the icon shown on the button."},
        {"iconSpace", "Sets the space between the button border and the icon."},
        {"iconPosition", "Sets the position of the icon (top, bottom, left, right)."},
        {"borderEnabled", "This property holds whether the widget' border is enabled."},
        {"borderColor", "Sets the color of this widget's border to the given color."},
        {"cornersRadius", "This property specify the radii of the ellipses defining the corners of the button. "},
        {"textSpace", "Sets the space between the the icon and the button text."},
        {"alignment.1", "Aligns with the left edge."},
        {"alignment.2", "Aligns with the right edge."},
        {"alignment.4", "Centers horizontally in the available space."},
        {"alignment.32", "Aligns with the top."},
        {"alignment.64", "Aligns with the bottom."},
        {"alignment.128", "Centers vertically in the available space. "}};
    for (const char *side : {"width", "height"})
        tips.insert(QStringLiteral("iconSize.%1").arg(QLatin1String(side)),
                    QStringLiteral("This property holds the icon %1 used for this button.").arg(QLatin1String(side)));
    for (const char *side : {"left", "top", "width", "height"})
        tips.insert(QStringLiteral("geometry.%1").arg(QLatin1String(side)),
                    QStringLiteral("This property holds the %1 of the widget relative to its parent and excluding "
                                   "the window frame.").arg(QLatin1String(side)));
    return tips;
}

// The tips of an address group: type, address and bit number.
void addAddress(Tips &tips, const char *prefix, const char *field)
{
    const QString p = QLatin1String(prefix), f = QLatin1String(field);
    tips.insert(p + "BitType", QStringLiteral("Specifies the type of variable in the %1 Address field.").arg(f));
    tips.insert(p + "Address", "Specifies the bit variable or the word variable that contains the bit to be monitored. ");
    tips.insert(p + "BitIndex", QStringLiteral("Specifies which bit of the variable specified in the %1 Address field is "
                                               "to be operated.").arg(f));
}

} // namespace

class TestButtonDesigners : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase() { DesignerCore::release(); }

    void perWidget_data();
    void descriptorAndDroppedWidget_data()
    {
        perWidget_data();
        QTest::newRow("PictureButton") << QStringLiteral("PictureButton");
    }
    void descriptorAndDroppedWidget();
    void factoryServesOnlyItsWidget_data();
    void factoryServesOnlyItsWidget();
    void editorFrame_data();
    void editorFrame();
    void editorFields_data();
    void editorFields();
    void okIsOneUndoStep_data() { perWidget_data(); }
    void okIsOneUndoStep();
    void cancelChangesNothing_data() { perWidget_data(); }
    void cancelChangesNothing();

    void bitButtonTexts();
    void functionButtonTexts();
    void pictureButtonTexts();

private:
    QWidget *openForm(const QString &widget, const QString &properties = QString());
    // Runs step on the dialog the preferred task menu action opens; a dialog left open is cancelled.
    bool runEditor(const std::function<void(PropertyDialog *)> &step);
    QUndoStack *history() const { return m_form->commandHistory(); }

    QDesignerFormWindowInterface *m_form = nullptr;
    QWidget *m_button = nullptr;
};

void TestButtonDesigners::initTestCase()
{
    // The desktop font the editors are drawn for; Qt 5's offscreen platform would default to 12 points.
    QApplication::setFont(QFont(QStringLiteral("Sans Serif"), 9));
    QVERIFY(core());
}

void TestButtonDesigners::init()
{
    // Three languages, the second one current, so that per-language mix-ups show.
    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    hmi->resetToDefaults();
    hmi->setSystemLanguages({QStringLiteral("Sans"), QStringLiteral("Serif"), QStringLiteral("Monospace")});
    hmi->setCurrentLanguageIndex(1);
}

void TestButtonDesigners::cleanup()
{
    DesignerCore::instance().closeForms();
    m_form = nullptr;
    m_button = nullptr;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QWidget *TestButtonDesigners::openForm(const QString &widget, const QString &properties)
{
    m_form = DesignerCore::instance().createForm(DesignerCore::formDocument(
        QStringLiteral("<widget class=\"%1\" name=\"%2\"><property name=\"geometry\"><rect><x>10</x><y>10</y>"
                       "<width>100</width><height>30</height></rect></property>%3</widget>")
            .arg(widget, objectNameOf(widget), properties)));
    m_button = DesignerCore::formWidget(m_form, objectNameOf(widget));
    return m_button;
}

bool TestButtonDesigners::runEditor(const std::function<void(PropertyDialog *)> &step)
{
    return DesignerCore::runEditor(m_button, [&](QDialog *dialog) { step(qobject_cast<PropertyDialog *>(dialog)); });
}

void TestButtonDesigners::perWidget_data()
{
    QTest::addColumn<QString>("widget");
    QTest::newRow("BitButton") << Bit;
    QTest::newRow("FunctionButton") << Function;
}

void TestButtonDesigners::descriptorAndDroppedWidget()
{
    QFETCH(QString, widget);
    QDesignerWidgetDataBaseInterface *database = core()->widgetDataBase();
    const int index = database->indexOfClassName(widget);
    QVERIFY(index >= 0);
    QCOMPARE(database->item(index)->group(), QStringLiteral("Buttons"));
    // The picture key's header keeps its class name's capitals.
    const QString header = widget == QLatin1String("PictureButton") ? widget : widget.toLower();
    QCOMPARE(database->item(index)->includeFile(), header + QLatin1String(".h"));

    const bool bit = widget == Bit;
    const QString element = QStringLiteral(
        "<widget class=\"%1\" name=\"%2\">\n <property name=\"geometry\">\n  <rect>\n   <x>0</x>\n   <y>0</y>\n"
        "   <width>100</width>\n   <height>30</height>\n  </rect>\n </property>\n"
        " <property name=\"toolTip\">\n  <string></string>\n </property>\n"
        " <property name=\"whatsThis\">\n  <string></string>\n </property>\n"
        " <property name=\"text\">\n  <string>%3</string>\n </property>\n</widget>\n")
        .arg(widget, objectNameOf(widget), bit ? QStringLiteral("OFF") : widget);
    QString multiline = QStringLiteral("  <stringpropertyspecification name=\"text\" type=\"multiline\"/>\n");
    if (bit)
        multiline += QStringLiteral("  <stringpropertyspecification name=\"onText\" type=\"multiline\"/>\n"
                                    "  <stringpropertyspecification name=\"offText\" type=\"multiline\"/>\n");
    QCOMPARE(DesignerCore::descriptor(widget)->domXml(),
             "<ui language=\"c++\">\n" + element + " <customwidgets>\n <customwidget>\n <propertyspecifications>\n"
                 + multiline + " </propertyspecifications>\n </customwidget>\n </customwidgets>\n</ui>\n");

    // What Designer drops from the widget box: the <widget> element.
    m_form = DesignerCore::instance().createForm(DesignerCore::formDocument(element));
    QWidget *dropped = DesignerCore::formWidget(m_form, objectNameOf(widget));
    QVERIFY(dropped && dropped->inherits(widget.toLatin1().constData()));
    QCOMPARE(dropped->size(), QSize(100, 30));
    QCOMPARE(dropped->property("text").toString(), bit ? QStringLiteral("OFF") : widget);

    // The task menu offers one action, the preferred one.
    m_button = dropped;
    auto *menu = qt_extension<QDesignerTaskMenuExtension *>(core()->extensionManager(), dropped);
    QVERIFY(menu && menu->preferredEditAction());
    QCOMPARE(menu->preferredEditAction()->text(), QStringLiteral("Edit Properties..."));
    QCOMPARE(menu->taskActions(), QList<QAction *>{menu->preferredEditAction()});

    // Initialising again registers no second task menu factory.
    QCOMPARE(factoryCount(widget), 1);
    DesignerCore::descriptor(widget)->initialize(core());
    QCOMPARE(factoryCount(widget), 1);
}

void TestButtonDesigners::factoryServesOnlyItsWidget_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QString>("object");
    QTest::addColumn<QString>("iid");
    QTest::addColumn<bool>("served");
    const QString taskMenu = Q_TYPEID(QDesignerTaskMenuExtension);
    const QString qt4 = QStringLiteral("com.trolltech.Qt.Designer.TaskMenu");
    for (const QString &w : {Bit, Function}) {
        const QString other = w == Bit ? Function : Bit;
        QTest::addRow("%s, own class", qPrintable(w)) << w << w << taskMenu << true;
        QTest::addRow("%s, Qt 4 id", qPrintable(w)) << w << w << qt4 << true;
        QTest::addRow("%s, property sheet", qPrintable(w))
            << w << w << QStringLiteral("org.qt-project.Qt.Designer.PropertySheet") << false;
        QTest::addRow("%s, other button", qPrintable(w)) << w << other << taskMenu << false;
        QTest::addRow("%s, push button", qPrintable(w)) << w << "QPushButton" << qt4 << false;
    }
}

void TestButtonDesigners::factoryServesOnlyItsWidget()
{
    QFETCH(QString, widget);
    QFETCH(QString, object);
    QFETCH(QString, iid);
    QFETCH(bool, served);
    QWidget parent;
    QWidget *target = object == Bit ? new BitButton(&parent)
                      : object == Function ? static_cast<QWidget *>(new FunctionButton(&parent))
                                           : new QPushButton(&parent);
    QExtensionManager manager;
    std::unique_ptr<QExtensionFactory> factory(widget == Bit ? static_cast<QExtensionFactory *>(
                                                   new BitButtonTaskMenuFactory(&manager))
                                                             : new FunctionButtonTaskMenuFactory(&manager));
    QObject *extension = factory->extension(target, iid);
    QCOMPARE(extension != nullptr, served);
    if (served)
        QVERIFY(widget == Bit ? !!dynamic_cast<BitButtonTaskMenu *>(extension) : !!dynamic_cast<FunctionButtonTaskMenu *>(extension));
}

void TestButtonDesigners::editorFrame_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("tabs");
    QTest::addColumn<QString>("startTab");
    QTest::newRow("BitButton") << Bit << "BitButtonEditor" << "Bit Button Editor" << QSize(826, 555)
                               << "General,Communication,Appearance,Text,Geometry,Macro" << "Geometry";
    QTest::newRow("FunctionButton") << Function << "FunctionButtonEditor" << "Function Button Editor"
                                    << QSize(868, 580) << "General,Appearance,Text,Geometry,Macro" << "General";
    QTest::newRow("PictureButton") << QStringLiteral("PictureButton") << "PictureButtonEditor" << "Picture Button Editor"
                                   << QSize(742, 496) << "General,Appearance,textEdit,Geometry,Macro" << "textEdit";
}

void TestButtonDesigners::editorFrame()
{
    QFETCH(QString, widget);
    QFETCH(QString, name);
    QFETCH(QString, title);
    QFETCH(QSize, size);
    QFETCH(QString, tabs);
    QFETCH(QString, startTab);
    QVERIFY(openForm(widget));
    QVERIFY(runEditor([&](PropertyDialog *dialog) {
        QCOMPARE(dialog->objectName(), name);
        QCOMPARE(dialog->windowTitle(), title);
        QCOMPARE(dialog->size(), size); // the layout fits the panel's 9-point font
        auto *tabWidget = dialog->findChild<QTabWidget *>(QStringLiteral("tabWidget"));
        QStringList titles;
        for (int i = 0; i < tabWidget->count(); ++i)
            titles.append(tabWidget->tabText(i));
        QCOMPARE(titles.join(QLatin1Char(',')), tabs);
        QCOMPARE(tabWidget->tabText(tabWidget->currentIndex()), startTab);
        QVERIFY(dialog->preview()->inherits(widget.toLatin1().constData()));
        QCOMPARE(dialog->preview()->parentWidget(), dialog->findChild<QWidget *>(QStringLiteral("previewWidget")));
        // A one-line description bar across the dialog, and an object name field that shows a long name.
        auto *description = dialog->findChild<QLabel *>(QStringLiteral("descriptionWidget"));
        QVERIFY(description->width() > dialog->width() * 9 / 10);
        QVERIFY(description->height() < 2 * description->fontMetrics().lineSpacing());
        tabWidget->setCurrentIndex(0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        auto *objectName = dialog->findChild<QLineEdit *>(QStringLiteral("objectNameLineEdit"));
        const int longName = objectName->fontMetrics().horizontalAdvance(QStringLiteral("spindleOverrideButton_2"));
        QVERIFY2(objectName->width() > longName + 10, qPrintable(QString::number(objectName->width())));
    }));
}

void TestButtonDesigners::editorFields_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<Tips>("tips");
    Tips bit = commonTips();
    addAddress(bit, "read", "Monitor");
    bit.insert("readBitType", "Specifies the type of variable in the Read Address field.");
    addAddress(bit, "enabled", "Enabled");
    addAddress(bit, "visible", "Visible");
    bit.insert("writeBitIndex", "Specifies which bit of the variable specified in the Write Address field is to be operated.");
    bit.insert("bitOnVisible", "Shows the button while the visible bit is On; otherwise while it is Off.");
    bit.insert("onPicture", "Sets the picture of state 1 (On).");
    bit.insert("offButtonColor", "Sets the button color of state 0 (Off). ");
    bit.insert("offPicture", "Sets the picture of state 0 (Off). ");
    bit.insert("state.0", "Shows the preview in state 0 (Off).");
    bit.insert("state.1", "Shows the preview in state 1 (On).");
    QTest::newRow("BitButton") << Bit << bit;

    Tips function = commonTips();
    addAddress(function, "enabled", "Enabled");
    addAddress(function, "visible", "Visible");
    addAddress(function, "color", "Color");
    function.insert("writeBitIndex", bit.value("writeBitIndex"));
    function.insert("autoExclusive", "This property holds whether auto-exclusivity is enabled.");
    function.insert("checkable", "This property holds whether the button is checkable.");
    function.insert("checked", "This property holds whether the button is checked.");
    function.insert("autoRepeat", "This property holds whether auto-repeat is enabled.");
    function.insert("autoRepeatDelay", "This property holds the initial delay of auto-repetition in milliseconds.");
    function.insert("autoRepeatInterval", "This property holds the interval of auto-repetition in milliseconds.");
    function.insert("bitOnVisible", "Specifies whether the button is visible while the bit of the Visible Address "
                                    "field is on (checked) or off.");
    function.insert("buttonColorNormal", "Sets the button color of the normal state.");
    function.insert("buttonColorPushed", "Sets the button color while the button is pushed.");
    function.insert("buttonColorHot", "Sets the button color while the button has the keyboard focus.");
    function.insert("onTextColor", "Sets the text color of state 1 (On).");
    function.insert("down", "This property holds whether the button is pressed down.");
    QTest::newRow("FunctionButton") << Function << function;
}

void TestButtonDesigners::editorFields()
{
    QFETCH(QString, widget);
    QFETCH(Tips, tips);
    QVERIFY(openForm(widget));
    QStringList wrong;
    QVERIFY(runEditor([&](PropertyDialog *dialog) {
        const QList<FieldBinding *> bindings = dialog->binder()->bindings();
        for (auto it = tips.cbegin(); it != tips.cend(); ++it) {
            QWidget *field = fieldOf(dialog, it.key());
            bool bound = false;
            for (FieldBinding *binding : bindings)
                bound = bound || (field && binding->field() == field);
            if (!bound || field->statusTip() != it.value())
                wrong.append(it.key());
        }
    }));
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1String(", "))));
}

void TestButtonDesigners::okIsOneUndoStep()
{
    QFETCH(QString, widget);
    QVERIFY(openForm(widget));
    QVERIFY(runEditor([](PropertyDialog *dialog) {
        setField(dialog, "comId", 2);
        setField(dialog, "writeAddress", 120);
        setField(dialog, "action.3", true);
        setField(dialog, "geometry.height", 45);
        setField(dialog, "objectName", QStringLiteral("start"));
        click(dialog, QDialogButtonBox::Ok);
    }));
    QCOMPARE(m_button->property("comId").toInt(), 2);
    QCOMPARE(m_button->property("writeAddress").toInt(), 120);
    QCOMPARE(m_button->property("action").toInt(), 3);
    QCOMPARE(m_button->geometry(), QRect(10, 10, 100, 45));
    QCOMPARE(m_button->objectName(), QStringLiteral("start"));
    QCOMPARE(history()->count(), 1);

    history()->undo();
    QCOMPARE(m_button->property("comId").toInt(), 0);
    QCOMPARE(m_button->property("writeAddress").toInt(), 0);
    QCOMPARE(m_button->property("action").toInt(), 0);
    QCOMPARE(m_button->geometry(), QRect(10, 10, 100, 30));
    QCOMPARE(m_button->objectName(), objectNameOf(widget));
    QVERIFY(!m_form->isDirty());
}

void TestButtonDesigners::cancelChangesNothing()
{
    QFETCH(QString, widget);
    QVERIFY(openForm(widget, prop("text", "string", QStringLiteral("Start"))));
    const QString before = m_form->contents();
    QVERIFY(runEditor([](PropertyDialog *dialog) {
        setField(dialog, "comId", 5);
        setField(dialog, "action.4", true);
        setField(dialog, "objectName", QStringLiteral("other"));
        textTable(dialog)->item(1, 0)->setText(QStringLiteral("Halt"));
        click(dialog, QDialogButtonBox::Cancel);
    }));
    QCOMPARE(history()->count(), 0);
    QVERIFY(!m_form->isDirty());
    QCOMPARE(m_form->contents(), before);
    QCOMPARE(m_button->objectName(), objectNameOf(widget));
}

void TestButtonDesigners::bitButtonTexts()
{
    FontMapCodec::Maps maps;
    maps.captionFonts.insert(0, QFont(QStringLiteral("Serif"), 10));
    QVERIFY(openForm(Bit, prop("onText", "string", "Run") + prop("offText", "string", "Stop")
                              + prop("MapBuffer", "cstring", QString::fromLatin1(FontMapCodec::encode(maps)))));
    QList<TextData> editedOn;
    QVERIFY(runEditor([&](PropertyDialog *dialog) {
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
    TextInfoCodec::decodeSlots(static_cast<BitButton *>(m_button)->textInfoBuffer(), &records);
    QCOMPARE(records.size(), 2);
    QCOMPARE(records.at(0).first().texts, (QStringList{"Run", "Läuft", "Run"}));
    QCOMPARE(records.at(0).first().texts, editedOn.first().texts);
    QCOMPARE(records.at(1).first().texts, (QStringList{"Stop", "Steht", "Stop"}));
    QCOMPARE(described(records.at(0).first().fonts), described(editedOn.first().fonts));
    QCOMPARE(records.at(0).first().fonts.at(1).pointSize(), 21);
    QVERIFY(records.at(0).first().fonts.at(1).bold());
    // Both states end with the same fonts.
    QCOMPARE(described(records.at(1).first().fonts), described(records.at(0).first().fonts));
    auto *button = static_cast<BitButton *>(m_button);
    QVERIFY(button->MapBuffer().isEmpty());
    QCOMPARE(button->onText(), QStringLiteral("Läuft"));
    QCOMPARE(button->offText(), QStringLiteral("Steht"));
    QCOMPARE(history()->count(), 1);

    QVERIFY(button->font().bold());
    history()->undo();
    QVERIFY(!button->font().bold());
    QCOMPARE(button->onText(), QStringLiteral("Run"));
    QVERIFY(button->textInfoBuffer().isEmpty());
    QCOMPARE(button->MapBuffer(), FontMapCodec::encode(maps));
}

void TestButtonDesigners::functionButtonTexts()
{
    FontMapCodec::Maps maps;
    maps.captionFonts.insert(0, QFont(QStringLiteral("Serif"), 10));
    QVERIFY(openForm(Function, prop("text", "string", "Start")
                                   + prop("MapBuffer", "cstring", QString::fromLatin1(FontMapCodec::encode(maps)))));
    QList<TextData> loaded, edited;
    QString previewCaption;
    QVERIFY(runEditor([&](PropertyDialog *dialog) {
        previewCaption = dialog->preview()->property("text").toString();
        loaded = textEditor(dialog)->getTextDataList();
        textTable(dialog)->item(1, 0)->setText(QStringLiteral("Go"));
        textEditor(dialog)->findChild<QCheckBox *>(QStringLiteral("boldCheckBox"))->setChecked(true);
        edited = textEditor(dialog)->getTextDataList();
        click(dialog, QDialogButtonBox::Ok);
    }));
    QCOMPARE(previewCaption, QStringLiteral("Start")); // the preview shows the caption from the start
    // The caption in every language.
    QCOMPARE(loaded.size(), 1);
    QCOMPARE(loaded.first().texts, (QStringList{"Start", "Start", "Start"}));
    QCOMPARE(edited.first().texts, (QStringList{"Start", "Go", "Start"}));

    auto *button = static_cast<FunctionButton *>(m_button);
    QList<TextData> stored;
    QVERIFY(TextInfoCodec::decodeSlot(button->textInfoBuffer(), &stored));
    QCOMPARE(stored, edited);
    QVERIFY(button->MapBuffer().isEmpty());
    QCOMPARE(button->text(), QStringLiteral("Go"));
    QVERIFY(button->font().bold());
    QCOMPARE(history()->count(), 1);

    // One undo takes back every commit of the editor: buffers, caption and the font they set.
    history()->undo();
    QCOMPARE(button->MapBuffer(), FontMapCodec::encode(maps));
    QVERIFY(button->textInfoBuffer().isEmpty());
    QCOMPARE(button->text(), QStringLiteral("Start"));
    QVERIFY(!button->font().bold());
    history()->redo();
    QCOMPARE(button->text(), QStringLiteral("Go"));
    QVERIFY(button->font().bold());
}

// The picture key's text page: as the function button's, with the language committed first.
void TestButtonDesigners::pictureButtonTexts()
{
    QVERIFY(openForm(QStringLiteral("PictureButton"), prop("text", "string", "Key") + prop("language", "enum", "PictureButton::language_2")));
    auto *button = static_cast<PictureButton *>(m_button);
    QCOMPARE(button->getLanguage(), PictureButton::language_2);
    QList<TextData> loaded;
    QVERIFY(runEditor([&](PropertyDialog *dialog) {
        QCOMPARE(dialog->preview()->property("text").toString(), QStringLiteral("Key"));
        loaded = textEditor(dialog)->getTextDataList();
        textTable(dialog)->item(1, 0)->setText(QStringLiteral("Taste"));
        click(dialog, QDialogButtonBox::Ok);
    }));
    QCOMPARE(loaded.first().texts, (QStringList{"Key", "Key", "Key"}));
    QList<TextData> stored;
    QVERIFY(TextInfoCodec::decodeSlot(button->textInfoBuffer(), &stored));
    QCOMPARE(stored.first().texts, (QStringList{"Key", "Taste", "Key"}));
    QCOMPARE(button->text(), QStringLiteral("Taste"));
    QCOMPARE(button->getLanguage(), PictureButton::language_2);
    QCOMPARE(history()->count(), 1);
    history()->undo();
    QVERIFY(button->textInfoBuffer().isEmpty());
    QCOMPARE(button->text(), QStringLiteral("Key"));
}

QTEST_MAIN(TestButtonDesigners)
#include "tst_buttondesigners.moc"
