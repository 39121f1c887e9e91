#include "bitbutton.h"
#include "bitbuttonplugin.h"
#include "bitbuttontaskmenu.h"
#include "designercore.h"
#include "fieldbinder.h"
#include "fieldbinding.h"
#include "fontmapcodec.h"
#include "functionbutton.h"
#include "norvointerface_z3.h"
#include "plugincollection.h"
#include "propertydialog.h"
#include "textinfocodec.h"
#include "textpropertyeditor_z12.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QDesignerWidgetDataBaseInterface>
#include <QtDesigner/QExtensionManager>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QUndoStack>

#include <functional>

namespace {

// The task menu's interface id as Qt 4 hosts spell it; Qt 5 and 6 ask by Q_TYPEID.
const char Qt4TaskMenuIid[] = "com.trolltech.Qt.Designer.TaskMenu";

QDesignerFormEditorInterface *core()
{
    return DesignerCore::instance().core();
}

NORVOInterface_Z3 *hmi()
{
    return NORVOInterface_Z3::initialization();
}

// A form holding one bit button "bitButton" at (10, 10), 100 x 30, with extra <property> elements.
QString buttonForm(const QString &properties = QString())
{
    return DesignerCore::formDocument(
        QStringLiteral("<widget class=\"BitButton\" name=\"bitButton\"><property name=\"geometry\"><rect><x>10</x>"
                       "<y>10</y><width>100</width><height>30</height></rect></property>%1</widget>")
            .arg(properties));
}

QString stringProperty(const char *name, const QString &value)
{
    return QStringLiteral("<property name=\"%1\"><string>%2</string></property>").arg(QLatin1String(name), value);
}

QString bytesProperty(const char *name, const QByteArray &value)
{
    return QStringLiteral("<property name=\"%1\"><cstring>%2</cstring></property>")
        .arg(QLatin1String(name), QString::fromLatin1(value));
}

// The bit button's descriptor in a collection as the plugin makes it.
QDesignerCustomWidgetInterface *descriptorIn(const PluginCollection &collection)
{
    const QList<QDesignerCustomWidgetInterface *> widgets = collection.customWidgets();
    for (QDesignerCustomWidgetInterface *widget : widgets) {
        if (widget->name() == QLatin1String("BitButton"))
            return widget;
    }
    return nullptr;
}

// Fonts as text, so that fonts read back from a stored stream compare by what they draw.
QStringList described(const QList<QFont> &fonts)
{
    QStringList texts;
    for (const QFont &font : fonts)
        texts.append(QStringLiteral("%1 %2%3").arg(font.family()).arg(font.pointSize())
                         .arg(font.bold() ? QStringLiteral(" bold") : QString()));
    return texts;
}

QList<BitButtonTaskMenuFactory *> registeredFactories()
{
    return core()->extensionManager()->findChildren<BitButtonTaskMenuFactory *>();
}

TextData record(const QStringList &texts, int wordLibId = -1, const QList<QFont> &fonts = {})
{
    TextData data;
    data.wordLibId = wordLibId;
    data.texts = texts;
    data.fonts = fonts;
    return data;
}

// The tab a field sits on, or empty beside the tabs.
QString tabOf(QWidget *field, QTabWidget *tabs)
{
    for (int i = 0; i < tabs->count(); ++i) {
        if (tabs->widget(i)->isAncestorOf(field))
            return tabs->tabText(i);
    }
    return QString();
}

// The titles of the group boxes around a field, outermost first, joined by "/".
QString groupsOf(QWidget *field, QWidget *dialog)
{
    QStringList titles;
    for (QWidget *w = field->parentWidget(); w && w != dialog; w = w->parentWidget()) {
        if (auto *box = qobject_cast<QGroupBox *>(w))
            titles.prepend(box->title());
    }
    return titles.join(QLatin1Char('/'));
}

// What the user reads next to a field: its buddy label, or a check or radio button's own text.
QString labelOf(QWidget *field, QWidget *dialog)
{
    const QList<QLabel *> labels = dialog->findChildren<QLabel *>();
    for (QLabel *label : labels) {
        if (label->buddy() == field)
            return label->text();
    }
    auto *button = qobject_cast<QAbstractButton *>(field);
    return button && button->isCheckable() ? button->text() : QString();
}

QList<QWidget *> fieldsWithPath(QWidget *dialog, const QString &path)
{
    QList<QWidget *> found;
    const QList<QWidget *> all = dialog->findChildren<QWidget *>();
    for (QWidget *w : all) {
        if (w->whatsThis() == path)
            found.append(w);
    }
    return found;
}

// Makes the edit a user would make to reach value.
void edit(QWidget *field, const QVariant &value)
{
    if (auto *spin = qobject_cast<QSpinBox *>(field))
        spin->setValue(value.toInt());
    else if (auto *combo = qobject_cast<QComboBox *>(field))
        combo->setCurrentIndex(combo->findText(value.toString()));
    else if (auto *radio = qobject_cast<QRadioButton *>(field))
        radio->click();
    else if (auto *check = qobject_cast<QCheckBox *>(field))
        check->setChecked(value.toBool());
    else if (auto *line = qobject_cast<QLineEdit *>(field))
        line->setText(value.toString());
}

// A property's value, enums and flags as their number.
QVariant valueOf(QObject *object, const char *name)
{
    const QMetaObject *meta = object->metaObject();
    const QMetaProperty property = meta->property(meta->indexOfProperty(name));
    const QVariant value = object->property(name);
    return property.isEnumType() ? QVariant(value.toInt()) : value;
}

// Sets the application font's point size while it lives.
class ApplicationFont
{
public:
    explicit ApplicationFont(int pointSize)
        : m_saved(QApplication::font())
    {
        QFont font = m_saved;
        font.setPointSize(pointSize);
        QApplication::setFont(font);
    }
    ~ApplicationFont() { QApplication::setFont(m_saved); }

private:
    QFont m_saved;
};

} // namespace

class TestBitButtonDesigner : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void descriptorAnswers();
    void widgetDataBaseListsTheButton();
    void widgetFromDomXml();
    void initialisingTwiceRegistersOneFactory();
    void taskMenuOffersEditProperties();
    void factoryAnswersOnlyBitButtons_data();
    void factoryAnswersOnlyBitButtons();

    void editorFrame();
    void editorFields_data();
    void editorFields();
    void enumFieldsAreFilled();
    void borderColourFollowsBorderEnabled_data();
    void borderColourFollowsBorderEnabled();
    void descriptionShowsTheFocusedFieldsTip();

    void okCommitsAFieldAndUndoRestores_data();
    void okCommitsAFieldAndUndoRestores();
    void okCommitsSeveralFieldsAsOneStep();
    void cancelChangesNothing();

    void textPageStartsFromTheCaptions();
    void textPageStartsFromStoredRecords();
    void okCommitsTheTexts();
    void switchingStatesKeepsTheEdits();
    void bothStatesEndWithTheSameFonts_data();
    void bothStatesEndWithTheSameFonts();
    void storedFontMapMovesIntoTheRecords();
    void previewFollowsTheTextPage();
    void okTakesWordLibraryCaptions();

private:
    BitButton *openForm(const QString &properties = QString());
    QDesignerTaskMenuExtension *taskMenu(QWidget *widget) const;
    // Opens the editor through the button's task menu and runs whileOpen on the dialog; whileOpen
    // ends it with Ok or Cancel, a dialog it leaves open is cancelled.
    void runEditor(const std::function<void(PropertyDialog *)> &whileOpen);
    static void clickOk(QDialog *dialog);
    static void clickCancel(QDialog *dialog);
    QList<QList<TextData>> storedRecords() const;

    QDesignerFormWindowInterface *m_form = nullptr;
    BitButton *m_button = nullptr;
};

void TestBitButtonDesigner::initTestCase()
{
    QVERIFY(DesignerCore::instance().core());
}

void TestBitButtonDesigner::init()
{
    // Two languages, the second one current, so that per-language mix-ups show.
    hmi()->resetToDefaults();
    hmi()->setSystemLanguages({QStringLiteral("Sans"), QStringLiteral("Serif")});
    hmi()->setCurrentLanguageIndex(1);
}

void TestBitButtonDesigner::cleanup()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    DesignerCore::instance().closeForms();
    m_form = nullptr;
    m_button = nullptr;
}

void TestBitButtonDesigner::cleanupTestCase()
{
    DesignerCore::release();
}

BitButton *TestBitButtonDesigner::openForm(const QString &properties)
{
    m_form = DesignerCore::instance().createForm(buttonForm(properties));
    m_button = DesignerCore::formWidget<BitButton>(m_form, QStringLiteral("bitButton"));
    return m_button;
}

QDesignerTaskMenuExtension *TestBitButtonDesigner::taskMenu(QWidget *widget) const
{
    return qt_extension<QDesignerTaskMenuExtension *>(core()->extensionManager(), widget);
}

void TestBitButtonDesigner::runEditor(const std::function<void(PropertyDialog *)> &whileOpen)
{
    QDesignerTaskMenuExtension *menu = taskMenu(m_button);
    QVERIFY(menu);
    bool ran = false;
    QTimer::singleShot(0, this, [&] {
        ran = true;
        QPointer<PropertyDialog> dialog = qobject_cast<PropertyDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        whileOpen(dialog);
        if (dialog && dialog->isVisible())
            dialog->reject();
    });
    menu->preferredEditAction()->trigger();
    QVERIFY2(ran, "no dialog was run");
}

void TestBitButtonDesigner::clickOk(QDialog *dialog)
{
    dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"))->button(QDialogButtonBox::Ok)->click();
}

void TestBitButtonDesigner::clickCancel(QDialog *dialog)
{
    dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"))->button(QDialogButtonBox::Cancel)->click();
}

QList<QList<TextData>> TestBitButtonDesigner::storedRecords() const
{
    QList<QList<TextData>> records;
    TextInfoCodec::decodeSlots(m_button->textInfoBuffer(), &records);
    return records;
}

// --- descriptor and task menu ---

void TestBitButtonDesigner::descriptorAnswers()
{
    PluginCollection collection;
    QDesignerCustomWidgetInterface *bitButton = descriptorIn(collection);
    QVERIFY(bitButton);
    QVERIFY(dynamic_cast<BitButtonPlugin *>(bitButton));
    QCOMPARE(bitButton->group(), QStringLiteral("Buttons"));
    QCOMPARE(bitButton->includeFile(), QStringLiteral("bitbutton.h"));
    QVERIFY(!bitButton->isContainer());
    QVERIFY(bitButton->toolTip().isEmpty());
    QVERIFY(bitButton->whatsThis().isEmpty());
    QVERIFY(bitButton->codeTemplate().isEmpty());
    QVERIFY(!bitButton->icon().isNull());
    QVERIFY(!bitButton->isInitialized());
    QCOMPARE(bitButton->domXml(),
             QStringLiteral("<ui language=\"c++\">\n"
                            "<widget class=\"BitButton\" name=\"bitButton\">\n"
                            " <property name=\"geometry\">\n"
                            "  <rect>\n"
                            "   <x>0</x>\n"
                            "   <y>0</y>\n"
                            "   <width>100</width>\n"
                            "   <height>30</height>\n"
                            "  </rect>\n"
                            " </property>\n"
                            " <property name=\"toolTip\">\n"
                            "  <string></string>\n"
                            " </property>\n"
                            " <property name=\"whatsThis\">\n"
                            "  <string></string>\n"
                            " </property>\n"
                            " <property name=\"text\">\n"
                            "  <string>OFF</string>\n"
                            " </property>\n"
                            "</widget>\n"
                            " <customwidgets>\n"
                            " <customwidget>\n"
                            " <propertyspecifications>\n"
                            "  <stringpropertyspecification name=\"text\" type=\"multiline\"/>\n"
                            "  <stringpropertyspecification name=\"onText\" type=\"multiline\"/>\n"
                            "  <stringpropertyspecification name=\"offText\" type=\"multiline\"/>\n"
                            " </propertyspecifications>\n"
                            " </customwidget>\n"
                            " </customwidgets>\n"
                            "</ui>\n"));
    QWidget parent;
    QWidget *made = bitButton->createWidget(&parent);
    QVERIFY(qobject_cast<BitButton *>(made));
    QCOMPARE(made->parentWidget(), &parent);
}

void TestBitButtonDesigner::widgetDataBaseListsTheButton()
{
    QDesignerWidgetDataBaseInterface *database = core()->widgetDataBase();
    const int index = database->indexOfClassName(QStringLiteral("BitButton"));
    QVERIFY(index >= 0);
    QDesignerWidgetDataBaseItemInterface *item = database->item(index);
    QCOMPARE(item->group(), QStringLiteral("Buttons"));
    QCOMPARE(item->includeFile(), QStringLiteral("bitbutton.h"));
    QVERIFY(item->isCustom());
    QVERIFY(!item->isContainer());
}

void TestBitButtonDesigner::widgetFromDomXml()
{
    // What Designer drops: the <widget> element of the descriptor's XML.
    const QString domXml = BitButtonPlugin().domXml();
    const int from = domXml.indexOf(QLatin1String("<widget"));
    const QString closing = QStringLiteral("</widget>\n");
    const int to = domXml.indexOf(closing) + closing.size();
    QVERIFY(from >= 0 && to > from);
    m_form = DesignerCore::instance().createForm(DesignerCore::formDocument(domXml.mid(from, to - from)));
    QVERIFY(m_form);
    auto *button = DesignerCore::formWidget<BitButton>(m_form, QStringLiteral("bitButton"));
    QVERIFY(button);
    QCOMPARE(button->size(), QSize(100, 30));
    QCOMPARE(button->text(), QStringLiteral("OFF"));
    QCOMPARE(button->offText(), QStringLiteral("OFF"));
}

void TestBitButtonDesigner::initialisingTwiceRegistersOneFactory()
{
    const int index = core()->widgetDataBase()->indexOfClassName(QStringLiteral("BitButton"));
    QVERIFY(index >= 0);
    QCOMPARE(registeredFactories().size(), 1);

    // The descriptor Designer initialised, from the collection the plugin handed it.
    QDesignerCustomWidgetInterface *initialised = nullptr;
    const QList<QObject *> collections = core()->pluginInstances();
    for (QObject *instance : collections) {
        auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(instance);
        const QList<QDesignerCustomWidgetInterface *> widgets =
            collection ? collection->customWidgets() : QList<QDesignerCustomWidgetInterface *>();
        for (QDesignerCustomWidgetInterface *widget : widgets) {
            if (widget->name() == QLatin1String("BitButton"))
                initialised = widget;
        }
    }
    QVERIFY(initialised);
    QVERIFY(initialised->isInitialized());
    initialised->initialize(core());
    QCOMPARE(registeredFactories().size(), 1);

    // A fresh descriptor registers its factory on its first initialisation only.
    std::unique_ptr<QDesignerCustomWidgetInterface> fresh(new BitButtonPlugin);
    fresh->initialize(core());
    fresh->initialize(core());
    QVERIFY(fresh->isInitialized());
    QCOMPARE(registeredFactories().size(), 2);
    BitButtonTaskMenuFactory *extra = registeredFactories().last();
    core()->extensionManager()->unregisterExtensions(extra, QLatin1String(Qt4TaskMenuIid));
    core()->extensionManager()->unregisterExtensions(extra, Q_TYPEID(QDesignerTaskMenuExtension));
    delete extra;
}

void TestBitButtonDesigner::taskMenuOffersEditProperties()
{
    QVERIFY(openForm());
    QDesignerTaskMenuExtension *menu = taskMenu(m_button);
    QVERIFY(menu);
    QVERIFY(dynamic_cast<BitButtonTaskMenu *>(menu));
    QAction *edit = menu->preferredEditAction();
    QVERIFY(edit);
    QCOMPARE(edit->text(), QStringLiteral("Edit Properties..."));
    QCOMPARE(menu->taskActions(), QList<QAction *>{edit});
}

void TestBitButtonDesigner::factoryAnswersOnlyBitButtons_data()
{
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("iid");
    QTest::addColumn<bool>("answers");
    const QString taskMenu = Q_TYPEID(QDesignerTaskMenuExtension);
    QTest::newRow("bit button, task menu") << "BitButton" << taskMenu << true;
    QTest::newRow("bit button, Qt 4 task menu id") << "BitButton" << QString::fromLatin1(Qt4TaskMenuIid) << true;
    QTest::newRow("bit button, property sheet")
        << "BitButton" << "org.qt-project.Qt.Designer.PropertySheet" << false;
    QTest::newRow("bit button, internal task menu") << "BitButton" << "QDesignerInternalTaskMenuExtension" << false;
    QTest::newRow("function button") << "FunctionButton" << taskMenu << false;
    QTest::newRow("push button") << "QPushButton" << taskMenu << false;
    QTest::newRow("plain widget") << "QWidget" << taskMenu << false;
}

void TestBitButtonDesigner::factoryAnswersOnlyBitButtons()
{
    QFETCH(QString, className);
    QFETCH(QString, iid);
    QFETCH(bool, answers);
    std::unique_ptr<QWidget> object;
    if (className == QLatin1String("BitButton"))
        object = std::make_unique<BitButton>();
    else if (className == QLatin1String("FunctionButton"))
        object = std::make_unique<FunctionButton>();
    else if (className == QLatin1String("QPushButton"))
        object = std::make_unique<QPushButton>();
    else
        object = std::make_unique<QWidget>();

    QExtensionManager manager;
    BitButtonTaskMenuFactory factory(&manager);
    QObject *extension = factory.extension(object.get(), iid);
    QCOMPARE(extension != nullptr, answers);
    if (answers)
        QVERIFY(qobject_cast<BitButtonTaskMenu *>(extension));
}

// --- editor layout ---

void TestBitButtonDesigner::editorFrame()
{
    QVERIFY(openForm());
    // The layout is made for the panel's 9-point font (Qt 5 offscreen defaults to 12 points);
    // with larger fonts Qt widens the dialog to its layout's minimum.
    const ApplicationFont panelFont(9);
    runEditor([](PropertyDialog *dialog) {
        QCOMPARE(dialog->objectName(), QStringLiteral("BitButtonEditor"));
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Bit Button Editor"));
        QCOMPARE(dialog->size(), QSize(826, 555));
        QVERIFY(dialog->isModal());

        auto *tabs = dialog->findChild<QTabWidget *>(QStringLiteral("tabWidget"));
        QVERIFY(tabs);
        QStringList titles;
        for (int i = 0; i < tabs->count(); ++i)
            titles.append(tabs->tabText(i));
        QCOMPARE(titles, (QStringList{QStringLiteral("General"), QStringLiteral("Communication"),
                                      QStringLiteral("Appearance"), QStringLiteral("Text"),
                                      QStringLiteral("Geometry"), QStringLiteral("Macro")}));
        QCOMPARE(tabs->currentIndex(), 4);

        // The preview sits in its area, beside the tabs.
        QWidget *area = dialog->findChild<QWidget *>(QStringLiteral("previewWidget"));
        QVERIFY(area);
        QVERIFY(!tabs->isAncestorOf(area));
        QVERIFY(qobject_cast<BitButton *>(dialog->preview()));
        QCOMPARE(dialog->preview()->parentWidget(), area);
        QCOMPARE(groupsOf(area, dialog), QStringLiteral("Preview"));

        // Written to directly: no label of its own is added.
        QVERIFY(dialog->findChild<QLabel *>(QStringLiteral("descriptionWidget")));
        QVERIFY(!dialog->findChild<QLabel *>(QStringLiteral("descriptionLabel")));

        auto *buttons = dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
        QVERIFY(buttons);
        QCOMPARE(buttons->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);

        auto *macros = dialog->findChild<QTreeView *>(QStringLiteral("macroTreeView"));
        QVERIFY(macros);
        QCOMPARE(tabOf(macros, tabs), QStringLiteral("Macro"));
        QVERIFY(macros->model() && macros->model()->rowCount() > 0);

        auto *texts = dialog->findChild<textPropertyEditor_Z12 *>(QStringLiteral("mTextPropertyEditor"));
        QVERIFY(texts);
        QCOMPARE(tabOf(texts, tabs), QStringLiteral("Text"));
        QStringList radios;
        const QList<QRadioButton *> all = tabs->widget(3)->findChildren<QRadioButton *>();
        for (QRadioButton *radio : all) {
            if (!texts->isAncestorOf(radio))
                radios.append(radio->text());
        }
        QCOMPARE(radios, (QStringList{QStringLiteral("ON Edited"), QStringLiteral("OFF Edited")}));

        QCOMPARE(groupsOf(dialog->findChild<QRadioButton *>(QStringLiteral("alignLeftRadioButton")), dialog),
                 QStringLiteral("Alignment/Horizontal"));
        clickCancel(dialog);
    });
}

void TestBitButtonDesigner::editorFields_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("tab");
    QTest::addColumn<QString>("groups");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("statusTip");

    auto row = [](const char *path, const char *kind, const char *tab, const char *groups, const char *label,
                  const char *tip) {
        QTest::newRow(path) << QString::fromLatin1(path) << QString::fromLatin1(kind) << QString::fromLatin1(tab)
                            << QString::fromLatin1(groups) << QString::fromLatin1(label) << QString::fromLatin1(tip);
    };
    row("objectName", "QLineEdit", "General", "General", "Object Name:",
        "This property holds the name of this object.");
    row("shortcut", "QKeySequenceEdit", "General", "General", "Shortcut:",
        "This property holds the mnemonic associated with the button.");
    row("focusPolicy", "QComboBox", "General", "General", "Focus Policy:",
        "This property holds the way the widget accepts keyboard focus.");

    row("comId", "QSpinBox", "Communication", "", "Com ID:", "Specifies the index of the communication link.");
    row("channel", "QSpinBox", "Communication", "", "Channel:", "Specifies the channel of variable.");
    const char *monitored = "Specifies the bit variable or the word variable that contains the bit to be monitored. ";
    row("readBitType", "QComboBox", "Communication", "Monitor Address", "Address Type:",
        "Specifies the type of variable in the Read Address field.");
    row("readAddress", "QSpinBox", "Communication", "Monitor Address", "Monitor Address:", monitored);
    row("readBitIndex", "QSpinBox", "Communication", "Monitor Address", "Bit Number:",
        "Specifies which bit of the variable specified in the Monitor Address field is to be operated.");
    row("writeBitType", "QComboBox", "Communication", "Write Address", "Address Type:",
        "Specifies the type of variable in the Write Address field. ");
    row("writeAddress", "QSpinBox", "Communication", "Write Address", "Write Address:",
        "Specifies the word variable that contains the bit to be operated. ");
    row("writeBitIndex", "QSpinBox", "Communication", "Write Address", "Bit Number:",
        "Specifies which bit of the variable specified in the Write Address field is to be operated.");
    row("enabledBitType", "QComboBox", "Communication", "Enabled Address", "Address Type:",
        "Specifies the type of variable in the Enabled Address field.");
    row("enabledAddress", "QSpinBox", "Communication", "Enabled Address", "Monitor Address:", monitored);
    row("enabledBitIndex", "QSpinBox", "Communication", "Enabled Address", "Bit Number:",
        "Specifies which bit of the variable specified in the Enabled Address field is to be operated.");
    row("visibleBitType", "QComboBox", "Communication", "Visible Address", "Address Type:",
        "Specifies the type of variable in the Visible Address field.");
    row("visibleAddress", "QSpinBox", "Communication", "Visible Address", "Monitor Address:", monitored);
    row("visibleBitIndex", "QSpinBox", "Communication", "Visible Address", "Bit Number:",
        "Specifies which bit of the variable specified in the Visible Address field is to be operated.");
    row("bitOnVisible", "QCheckBox", "Communication", "Visible Address", "Bit On Visible",
        "Shows the button while the visible bit is On; otherwise while it is Off.");
    row("action.0", "QRadioButton", "Communication", "Operation", "Set ON",
        "Sets the specified bit to On when the button is pressed.");
    row("action.1", "QRadioButton", "Communication", "Operation", "Set OFF",
        "Sets the specified bit to Off when the button is pressed. ");
    row("action.2", "QRadioButton", "Communication", "Operation", "Momentary ON",
        "Sets the specified bit to On when the button is pressed and sets the bit to Off when the button is "
        "released. ");
    row("action.3", "QRadioButton", "Communication", "Operation", "Momentary OFF",
        "Sets the specified bit to Off when the button is pressed and sets the bit to On when the button is "
        "released. ");
    row("action.4", "QRadioButton", "Communication", "Operation", "Invert",
        "Inverts the state of the specified bit when the button is pressed.  ");

    row("onButtonColor", "QPushButton", "Appearance", "Bit ON", "Button Color:",
        "Sets the button color of state 1 (On).");
    row("onPicture", "QPushButton", "Appearance", "Bit ON", "Picture:", "Sets the picture of state 1 (On).");
    row("offButtonColor", "QPushButton", "Appearance", "Bit OFF", "Button Color:",
        "Sets the button color of state 0 (Off). ");
    row("offPicture", "QPushButton", "Appearance", "Bit OFF", "Picture:", "Sets the picture of state 0 (Off). ");
    row("icon", "QPushButton", "Appearance", "Icon", "Icon:", "This property holds the icon shown on the button.");
    row("iconSize.width", "QSpinBox", "Appearance", "Icon", "Icon Width:",
        "This property holds the icon width used for this button.");
    row("iconSize.height", "QSpinBox", "Appearance", "Icon", "Icon Height:",
        "This property holds the icon height used for this button.");
    row("iconSpace", "QSpinBox", "Appearance", "Icon", "Icon Space:",
        "Sets the space between the button border and the icon.");
    row("iconPosition", "QComboBox", "Appearance", "Icon", "Icon Position:",
        "Sets the position of the icon (top, bottom, left, right).");
    row("borderEnabled", "QCheckBox", "Appearance", "Border", "Border Enabled",
        "This property holds whether the widget' border is enabled.");
    row("borderColor", "QPushButton", "Appearance", "Border", "Border Color:",
        "Sets the color of this widget's border to the given color.");
    row("cornersRadius", "QSpinBox", "Appearance", "Border", "Corners Radius:",
        "This property specify the radii of the ellipses defining the corners of the button. ");

    row("geometry.left", "QSpinBox", "Geometry", "Dimension", "Left:",
        "This property holds the left of the widget relative to its parent and excluding the window frame.");
    row("geometry.top", "QSpinBox", "Geometry", "Dimension", "Top:",
        "This property holds the top of the widget relative to its parent and excluding the window frame.");
    row("geometry.width", "QSpinBox", "Geometry", "Dimension", "Width:",
        "This property holds the width of the widget relative to its parent and excluding the window frame.");
    row("geometry.height", "QSpinBox", "Geometry", "Dimension", "Height:",
        "This property holds the height of the widget relative to its parent and excluding the window frame.");

    row("state.0", "QRadioButton", "", "Preview", "OFF", "Shows the preview in state 0 (Off).");
    row("state.1", "QRadioButton", "", "Preview", "ON", "Shows the preview in state 1 (On).");
    row("textSpace", "QSpinBox", "", "Preview", "Text Space:",
        "Sets the space between the the icon and the button text.");
    row("alignment.1", "QRadioButton", "", "Alignment/Horizontal", "Left", "Aligns with the left edge.");
    row("alignment.2", "QRadioButton", "", "Alignment/Horizontal", "Right", "Aligns with the right edge.");
    row("alignment.4", "QRadioButton", "", "Alignment/Horizontal", "Center",
        "Centers horizontally in the available space.");
    row("alignment.32", "QRadioButton", "", "Alignment/Vertical", "Top", "Aligns with the top.");
    row("alignment.64", "QRadioButton", "", "Alignment/Vertical", "Bottom", "Aligns with the bottom.");
    row("alignment.128", "QRadioButton", "", "Alignment/Vertical", "Center",
        "Centers vertically in the available space. ");
}

void TestBitButtonDesigner::editorFields()
{
    QFETCH(QString, path);
    QFETCH(QString, kind);
    QFETCH(QString, tab);
    QFETCH(QString, groups);
    QFETCH(QString, label);
    QFETCH(QString, statusTip);
    QVERIFY(openForm());
    runEditor([&](PropertyDialog *dialog) {
        const QList<QWidget *> fields = fieldsWithPath(dialog, path);
        QCOMPARE(fields.size(), 1);
        QWidget *field = fields.first();
        QVERIFY2(field->inherits(kind.toLatin1().constData()), field->metaObject()->className());
        QCOMPARE(tabOf(field, dialog->findChild<QTabWidget *>(QStringLiteral("tabWidget"))), tab);
        QCOMPARE(groupsOf(field, dialog), groups);
        QCOMPARE(labelOf(field, dialog), label);
        QCOMPARE(field->statusTip(), statusTip);
        if (kind == QLatin1String("QPushButton"))
            QCOMPARE(static_cast<QPushButton *>(field)->text(), QStringLiteral("Edit..."));
        // The path names a property of the button: the dialog bound the field to it.
        bool bound = false;
        for (FieldBinding *binding : dialog->binder()->bindings())
            bound = bound || binding->field() == field;
        QVERIFY(bound);
        clickCancel(dialog);
    });
}

void TestBitButtonDesigner::enumFieldsAreFilled()
{
    QVERIFY(openForm(QStringLiteral("<property name=\"iconPosition\"><enum>AbstractButton::PositionRight</enum>"
                                    "</property><property name=\"readBitType\"><enum>BitButton::C_BIT</enum>"
                                    "</property>")));
    runEditor([](PropertyDialog *dialog) {
        auto *position = dialog->findChild<QComboBox *>(QStringLiteral("iconPositionComboBox"));
        QStringList items;
        for (int i = 0; i < position->count(); ++i)
            items.append(position->itemText(i));
        QCOMPARE(items, (QStringList{QStringLiteral("Top"), QStringLiteral("Bottom"), QStringLiteral("Left"),
                                     QStringLiteral("Right")}));
        QCOMPARE(position->currentText(), QStringLiteral("Right"));

        auto *readType = dialog->findChild<QComboBox *>(QStringLiteral("readBitTypeComboBox"));
        const QMetaEnum keys = QMetaEnum::fromType<BitButton::ReadBitType>();
        QCOMPARE(readType->count(), keys.keyCount());
        QCOMPARE(readType->currentText(), QStringLiteral("C_BIT"));
        auto *writeType = dialog->findChild<QComboBox *>(QStringLiteral("writeBitTypeComboBox"));
        QCOMPARE(writeType->count(), QMetaEnum::fromType<BitButton::WriteBitType>().keyCount());
        QCOMPARE(writeType->currentText(), QStringLiteral("None"));
        clickCancel(dialog);
    });
}

void TestBitButtonDesigner::borderColourFollowsBorderEnabled_data()
{
    QTest::addColumn<bool>("borderEnabled");
    QTest::newRow("border drawn") << true;
    QTest::newRow("no border") << false;
}

void TestBitButtonDesigner::borderColourFollowsBorderEnabled()
{
    QFETCH(bool, borderEnabled);
    QVERIFY(openForm(QStringLiteral("<property name=\"borderEnabled\"><bool>%1</bool></property>")
                         .arg(borderEnabled ? QLatin1String("true") : QLatin1String("false"))));
    runEditor([&](PropertyDialog *dialog) {
        auto *check = dialog->findChild<QCheckBox *>(QStringLiteral("borderEnabledCheckBox"));
        auto *colour = dialog->findChild<QPushButton *>(QStringLiteral("borderColorButton"));
        QCOMPARE(check->isChecked(), borderEnabled);
        QCOMPARE(colour->isEnabled(), borderEnabled);
        check->click();
        QCOMPARE(colour->isEnabled(), !borderEnabled);
        QCOMPARE(static_cast<BitButton *>(dialog->preview())->borderEnabled(), !borderEnabled);
        clickCancel(dialog);
    });
}

void TestBitButtonDesigner::descriptionShowsTheFocusedFieldsTip()
{
    QVERIFY(openForm());
    runEditor([](PropertyDialog *dialog) {
        dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog));
        auto *description = dialog->findChild<QLabel *>(QStringLiteral("descriptionWidget"));
        auto *tabs = dialog->findChild<QTabWidget *>(QStringLiteral("tabWidget"));
        tabs->setCurrentIndex(1);
        dialog->findChild<QSpinBox *>(QStringLiteral("writeAddressSpinBox"))->setFocus();
        QTRY_COMPARE(description->text(),
                     QStringLiteral("Specifies the word variable that contains the bit to be operated. "));
        dialog->findChild<QRadioButton *>(QStringLiteral("invertRadioButton"))->setFocus();
        QTRY_COMPARE(description->text(),
                     QStringLiteral("Inverts the state of the specified bit when the button is pressed.  "));
        dialog->findChild<QSpinBox *>(QStringLiteral("textSpaceSpinBox"))->setFocus();
        QTRY_COMPARE(description->text(), QStringLiteral("Sets the space between the the icon and the button text."));
        clickCancel(dialog);
    });
}

// --- committing ---

void TestBitButtonDesigner::okCommitsAFieldAndUndoRestores_data()
{
    QTest::addColumn<QString>("fieldName");
    QTest::addColumn<QVariant>("input");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("comId") << "comIdSpinBox" << QVariant(3) << "comId" << QVariant(3);
    QTest::newRow("channel") << "channelSpinBox" << QVariant(2) << "channel" << QVariant(2);
    QTest::newRow("readBitType") << "readBitTypeComboBox" << QVariant(QStringLiteral("O_BIT")) << "readBitType"
                                 << QVariant(int(BitButton::O_BIT));
    QTest::newRow("writeBitType") << "writeBitTypeComboBox" << QVariant(QStringLiteral("Com")) << "writeBitType"
                                  << QVariant(int(BitButton::Com));
    QTest::newRow("writeAddress") << "writeAddressSpinBox" << QVariant(40017) << "writeAddress" << QVariant(40017);
    QTest::newRow("visibleBitIndex") << "visibleBitIndexSpinBox" << QVariant(31) << "visibleBitIndex"
                                     << QVariant(31);
    QTest::newRow("action.4") << "invertRadioButton" << QVariant(true) << "action" << QVariant(int(BitButton::Invert));
    QTest::newRow("action.2") << "momentaryOnRadioButton" << QVariant(true) << "action"
                              << QVariant(int(BitButton::KeepOn));
    QTest::newRow("bitOnVisible") << "bitOnVisibleCheckBox" << QVariant(false) << "bitOnVisible" << QVariant(false);
    QTest::newRow("iconPosition") << "iconPositionComboBox" << QVariant(QStringLiteral("Top")) << "iconPosition"
                                  << QVariant(int(AbstractButton::PositionTop));
    QTest::newRow("iconSize.width") << "iconWidthSpinBox" << QVariant(24) << "iconSize" << QVariant(QSize(24, 16));
    QTest::newRow("borderEnabled") << "borderEnabledCheckBox" << QVariant(false) << "borderEnabled"
                                   << QVariant(false);
    QTest::newRow("cornersRadius") << "cornersRadiusSpinBox" << QVariant(12) << "cornersRadius" << QVariant(12);
    QTest::newRow("geometry.width") << "widthSpinBox" << QVariant(160) << "geometry"
                                    << QVariant(QRect(10, 10, 160, 30));
    QTest::newRow("geometry.top") << "topSpinBox" << QVariant(40) << "geometry" << QVariant(QRect(10, 40, 100, 30));
    QTest::newRow("state.1") << "previewOnRadioButton" << QVariant(true) << "state" << QVariant(int(BitButton::On));
    QTest::newRow("textSpace") << "textSpaceSpinBox" << QVariant(9) << "textSpace" << QVariant(9);
    QTest::newRow("alignment.32") << "alignTopRadioButton" << QVariant(true) << "alignment"
                                  << QVariant(int(Qt::AlignHCenter | Qt::AlignTop));
    QTest::newRow("alignment.1") << "alignLeftRadioButton" << QVariant(true) << "alignment"
                                 << QVariant(int(Qt::AlignLeft | Qt::AlignVCenter));
    QTest::newRow("objectName") << "objectNameLineEdit" << QVariant(QStringLiteral("startButton")) << "objectName"
                                << QVariant(QStringLiteral("startButton"));
}

void TestBitButtonDesigner::okCommitsAFieldAndUndoRestores()
{
    QFETCH(QString, fieldName);
    QFETCH(QVariant, input);
    QFETCH(QString, property);
    QFETCH(QVariant, expected);
    QVERIFY(openForm());
    const QByteArray name = property.toLatin1();
    const QVariant before = valueOf(m_button, name.constData());
    QVERIFY(before != expected);

    runEditor([&](PropertyDialog *dialog) {
        auto *field = dialog->findChild<QWidget *>(fieldName);
        QVERIFY(field);
        edit(field, input);
        // The preview takes the size, not the place.
        if (name == "geometry")
            QCOMPARE(dialog->preview()->size(), expected.toRect().size());
        else
            QCOMPARE(valueOf(dialog->preview(), name.constData()), expected);
        QCOMPARE(valueOf(m_button, name.constData()), before); // the form waits for Ok
        clickOk(dialog);
    });
    QCOMPARE(valueOf(m_button, name.constData()), expected);
    // Saved with the form; the object name is the widget's name attribute.
    const QString saved = property == QLatin1String("objectName") ? QStringLiteral("name=\"%1\"").arg(expected.toString())
                                                                  : QStringLiteral("name=\"%1\"").arg(property);
    QVERIFY(m_form->contents().contains(saved));
    QCOMPARE(m_form->commandHistory()->count(), 1);
    QVERIFY(m_form->isDirty());

    m_form->commandHistory()->undo();
    QCOMPARE(valueOf(m_button, name.constData()), before);
    QVERIFY(!m_form->isDirty());
}

void TestBitButtonDesigner::okCommitsSeveralFieldsAsOneStep()
{
    QVERIFY(openForm());
    runEditor([](PropertyDialog *dialog) {
        edit(dialog->findChild<QSpinBox *>(QStringLiteral("comIdSpinBox")), 2);
        edit(dialog->findChild<QComboBox *>(QStringLiteral("readBitTypeComboBox")), QStringLiteral("S_BIT"));
        edit(dialog->findChild<QSpinBox *>(QStringLiteral("readAddressSpinBox")), 120);
        edit(dialog->findChild<QRadioButton *>(QStringLiteral("momentaryOffRadioButton")), true);
        edit(dialog->findChild<QSpinBox *>(QStringLiteral("heightSpinBox")), 45);
        clickOk(dialog);
    });
    QCOMPARE(m_button->comId(), 2);
    QCOMPARE(m_button->readBitType(), BitButton::S_BIT);
    QCOMPARE(m_button->readAddress(), 120);
    QCOMPARE(m_button->action(), BitButton::KeepOff);
    QCOMPARE(m_button->geometry(), QRect(10, 10, 100, 45));
    const QString saved = m_form->contents();
    QVERIFY(saved.contains(QLatin1String("<enum>BitButton::S_BIT</enum>")));
    QVERIFY(saved.contains(QLatin1String("<enum>BitButton::KeepOff</enum>")));
    QCOMPARE(m_form->commandHistory()->count(), 1);

    m_form->commandHistory()->undo();
    QCOMPARE(m_button->comId(), 0);
    QCOMPARE(m_button->readBitType(), BitButton::I_BIT);
    QCOMPARE(m_button->readAddress(), 0);
    QCOMPARE(m_button->action(), BitButton::SetOn);
    QCOMPARE(m_button->geometry(), QRect(10, 10, 100, 30));
}

void TestBitButtonDesigner::cancelChangesNothing()
{
    QVERIFY(openForm(stringProperty("onText", QStringLiteral("Run"))));
    const QString before = m_form->contents();
    runEditor([](PropertyDialog *dialog) {
        edit(dialog->findChild<QSpinBox *>(QStringLiteral("comIdSpinBox")), 5);
        edit(dialog->findChild<QRadioButton *>(QStringLiteral("invertRadioButton")), true);
        edit(dialog->findChild<QLineEdit *>(QStringLiteral("objectNameLineEdit")), QStringLiteral("other"));
        auto *table = dialog->findChild<QTableWidget *>(QStringLiteral("textTable"));
        table->item(1, 0)->setText(QStringLiteral("Go"));
        dialog->findChild<QRadioButton *>(QStringLiteral("offEditedRadioButton"))->click();
        table->item(1, 0)->setText(QStringLiteral("Halt"));
        clickCancel(dialog);
        QCOMPARE(dialog->result(), int(QDialog::Rejected));
    });
    QCOMPARE(m_button->comId(), 0);
    QCOMPARE(m_button->action(), BitButton::SetOn);
    QCOMPARE(m_button->objectName(), QStringLiteral("bitButton"));
    QCOMPARE(m_button->onText(), QStringLiteral("Run"));
    QCOMPARE(m_button->offText(), QStringLiteral("OFF"));
    QVERIFY(m_button->textInfoBuffer().isEmpty());
    QCOMPARE(m_form->commandHistory()->count(), 0);
    QVERIFY(!m_form->isDirty());
    QCOMPARE(m_form->contents(), before);
}

// --- the text page ---

void TestBitButtonDesigner::textPageStartsFromTheCaptions()
{
    // A button at the panel's default size takes each language's family.
    QFont panelFont(QStringLiteral("Sans"), 9);
    hmi()->setDefaultWidgetFont(panelFont);
    QVERIFY(openForm(stringProperty("onText", QStringLiteral("Run"))
                     + QStringLiteral("<property name=\"offTextList\"><stringlist><string>Stop</string>"
                                      "<string>Stale</string></stringlist></property>")
                     + stringProperty("offText", QStringLiteral("Halt"))));
    runEditor([](PropertyDialog *dialog) {
        auto *editor = dialog->findChild<textPropertyEditor_Z12 *>(QStringLiteral("mTextPropertyEditor"));
        QVERIFY(dialog->findChild<QRadioButton *>(QStringLiteral("onEditedRadioButton"))->isChecked());
        // ON: no list, the caption once per language.
        QList<TextData> on = editor->getTextDataList();
        QCOMPARE(on.size(), 1);
        QCOMPARE(on.first().texts, (QStringList{QStringLiteral("Run"), QStringLiteral("Run")}));
        QCOMPARE(on.first().wordLibId, -1);
        QCOMPARE(on.first().fonts.size(), 2);
        QCOMPARE(on.first().fonts.at(0).family(), QStringLiteral("Sans"));
        QCOMPARE(on.first().fonts.at(1).family(), QStringLiteral("Serif"));
        QCOMPARE(editor->getTextColor(), QColor(Qt::black));

        // OFF: the list, with the caption of the current language taking the place of a stale entry.
        dialog->findChild<QRadioButton *>(QStringLiteral("offEditedRadioButton"))->click();
        const QList<TextData> off = editor->getTextDataList();
        QCOMPARE(off.size(), 1);
        QCOMPARE(off.first().texts, (QStringList{QStringLiteral("Stop"), QStringLiteral("Halt")}));
        QCOMPARE(described(off.first().fonts), described(on.first().fonts));
        clickCancel(dialog);
    });
}

void TestBitButtonDesigner::textPageStartsFromStoredRecords()
{
    QFont big(QStringLiteral("Serif"), 14);
    const QByteArray stored = TextInfoCodec::encodeSlots(
        {{record({QStringLiteral("Auto"), QStringLiteral("Automatik")}, -1, {big, big})},
         {record({QStringLiteral("Hand"), QStringLiteral("Handbetrieb")}, -1, {big, big})}});
    QVERIFY(openForm(bytesProperty("textInfoBuffer", stored)
                     + QStringLiteral("<property name=\"onTextColor\"><color><red>0</red><green>128</green>"
                                      "<blue>0</blue></color></property>")));
    runEditor([&](PropertyDialog *dialog) {
        auto *editor = dialog->findChild<textPropertyEditor_Z12 *>(QStringLiteral("mTextPropertyEditor"));
        QCOMPARE(editor->getTextDataList().first().texts,
                 (QStringList{QStringLiteral("Auto"), QStringLiteral("Automatik")}));
        QCOMPARE(described(editor->getTextDataList().first().fonts), described({big, big}));
        QCOMPARE(editor->getTextColor(), QColor(0, 128, 0));
        auto *table = editor->findChild<QTableWidget *>(QStringLiteral("textTable"));
        QCOMPARE(table->item(1, 0)->text(), QStringLiteral("Automatik"));
        dialog->findChild<QRadioButton *>(QStringLiteral("offEditedRadioButton"))->click();
        QCOMPARE(table->item(1, 0)->text(), QStringLiteral("Handbetrieb"));
        QCOMPARE(editor->getTextColor(), QColor(Qt::black));
        clickCancel(dialog);
    });
}

void TestBitButtonDesigner::okCommitsTheTexts()
{
    QVERIFY(openForm(stringProperty("onText", QStringLiteral("Run"))
                     + stringProperty("offText", QStringLiteral("Stop"))));
    const QString before = m_form->contents();
    runEditor([](PropertyDialog *dialog) {
        auto *table = dialog->findChild<QTableWidget *>(QStringLiteral("textTable"));
        table->item(1, 0)->setText(QStringLiteral("Läuft"));
        dialog->findChild<QRadioButton *>(QStringLiteral("offEditedRadioButton"))->click();
        table->item(0, 0)->setText(QStringLiteral("Halt"));
        table->item(1, 0)->setText(QStringLiteral("Steht"));
        clickOk(dialog);
    });
    const QList<QList<TextData>> records = storedRecords();
    QCOMPARE(records.size(), 2);
    QCOMPARE(records.at(0).size(), 1);
    QCOMPARE(records.at(1).size(), 1);
    QCOMPARE(records.at(0).first().texts, (QStringList{QStringLiteral("Run"), QStringLiteral("Läuft")}));
    QCOMPARE(records.at(1).first().texts, (QStringList{QStringLiteral("Halt"), QStringLiteral("Steht")}));
    QCOMPARE(records.at(0).first().wordLibId, -1);
    QVERIFY(m_button->MapBuffer().isEmpty());
    // The captions of the current language (the second).
    QCOMPARE(m_button->onText(), QStringLiteral("Läuft"));
    QCOMPARE(m_button->offText(), QStringLiteral("Steht"));
    QCOMPARE(m_button->getOffTextList(), (QStringList{QStringLiteral("Halt"), QStringLiteral("Steht")}));
    const QString saved = m_form->contents();
    QVERIFY(saved.contains(QLatin1String("name=\"textInfoBuffer\"")));
    QVERIFY(saved.contains(QString::fromLatin1(m_button->textInfoBuffer())));
    QVERIFY(saved.contains(QLatin1String("<string>Steht</string>")));
    QCOMPARE(m_form->commandHistory()->count(), 1);

    m_form->commandHistory()->undo();
    QCOMPARE(m_button->onText(), QStringLiteral("Run"));
    QCOMPARE(m_button->offText(), QStringLiteral("Stop"));
    QVERIFY(m_button->textInfoBuffer().isEmpty());
    QCOMPARE(m_form->contents(), before);
}

void TestBitButtonDesigner::switchingStatesKeepsTheEdits()
{
    QVERIFY(openForm(stringProperty("onText", QStringLiteral("Run"))));
    runEditor([](PropertyDialog *dialog) {
        auto *editor = dialog->findChild<textPropertyEditor_Z12 *>(QStringLiteral("mTextPropertyEditor"));
        auto *table = editor->findChild<QTableWidget *>(QStringLiteral("textTable"));
        auto *on = dialog->findChild<QRadioButton *>(QStringLiteral("onEditedRadioButton"));
        auto *off = dialog->findChild<QRadioButton *>(QStringLiteral("offEditedRadioButton"));
        table->item(0, 0)->setText(QStringLiteral("Go"));
        table->item(1, 0)->setText(QStringLiteral("Los"));
        // Clicking the state being edited changes nothing.
        on->click();
        QCOMPARE(table->item(1, 0)->text(), QStringLiteral("Los"));

        off->click();
        QCOMPARE(table->item(0, 0)->text(), QStringLiteral("OFF"));
        table->item(1, 0)->setText(QStringLiteral("Aus"));
        on->click();
        QCOMPARE(editor->getTextDataList().first().texts, (QStringList{QStringLiteral("Go"), QStringLiteral("Los")}));
        QCOMPARE(table->item(1, 0)->text(), QStringLiteral("Los"));
        off->click();
        QCOMPARE(table->item(1, 0)->text(), QStringLiteral("Aus"));
        clickOk(dialog);
    });
    const QList<QList<TextData>> records = storedRecords();
    QCOMPARE(records.size(), 2);
    QCOMPARE(records.at(0).first().texts, (QStringList{QStringLiteral("Go"), QStringLiteral("Los")}));
    QCOMPARE(records.at(1).first().texts, (QStringList{QStringLiteral("OFF"), QStringLiteral("Aus")}));
}

void TestBitButtonDesigner::bothStatesEndWithTheSameFonts_data()
{
    QTest::addColumn<bool>("editOff");
    QTest::addColumn<bool>("switchBack");
    QTest::newRow("ON edited, OFF visited, back to ON") << false << true;
    QTest::newRow("ON edited, Ok without switching") << false << false;
    QTest::newRow("OFF edited, Ok on OFF") << true << false;
    QTest::newRow("OFF edited, back to ON") << true << true;
}

void TestBitButtonDesigner::bothStatesEndWithTheSameFonts()
{
    QFETCH(bool, editOff);
    QFETCH(bool, switchBack);
    QVERIFY(openForm());
    runEditor([&](PropertyDialog *dialog) {
        auto *on = dialog->findChild<QRadioButton *>(QStringLiteral("onEditedRadioButton"));
        auto *off = dialog->findChild<QRadioButton *>(QStringLiteral("offEditedRadioButton"));
        auto *editor = dialog->findChild<textPropertyEditor_Z12 *>(QStringLiteral("mTextPropertyEditor"));
        if (editOff)
            off->click();
        // The second language's row is the current one: its font changes.
        editor->findChild<QSpinBox *>(QStringLiteral("pointSizeSpinBox"))->setValue(21);
        editor->findChild<QCheckBox *>(QStringLiteral("boldCheckBox"))->setChecked(true);
        if (switchBack) {
            (editOff ? on : off)->click();
            QCOMPARE(editor->getTextDataList().first().fonts.at(1).pointSize(), 21);
            (editOff ? off : on)->click();
        }
        clickOk(dialog);
    });
    const QList<QList<TextData>> records = storedRecords();
    QCOMPARE(records.size(), 2);
    const QList<QFont> onFonts = records.at(0).first().fonts;
    QCOMPARE(onFonts.size(), 2);
    QCOMPARE(onFonts.at(1).pointSize(), 21);
    QVERIFY(onFonts.at(1).bold());
    QVERIFY(!onFonts.at(0).bold());
    QCOMPARE(described(records.at(1).first().fonts), described(onFonts));
}

void TestBitButtonDesigner::storedFontMapMovesIntoTheRecords()
{
    FontMapCodec::Maps maps;
    maps.captionFonts.insert(0, QFont(QStringLiteral("Sans"), 11));
    maps.captionFonts.insert(1, QFont(QStringLiteral("Serif"), 13));
    QVERIFY(openForm(bytesProperty("MapBuffer", FontMapCodec::encode(maps))));
    QVERIFY(!m_button->MapBuffer().isEmpty());
    runEditor([](PropertyDialog *dialog) { clickOk(dialog); });
    QVERIFY(m_button->MapBuffer().isEmpty());
    const QList<QList<TextData>> records = storedRecords();
    QCOMPARE(records.size(), 2);
    const QList<QFont> expected{maps.captionFonts.value(0), maps.captionFonts.value(1)};
    QCOMPARE(described(records.at(0).first().fonts), described(expected));
    QCOMPARE(described(records.at(1).first().fonts), described(expected));
    m_form->commandHistory()->undo();
    QVERIFY(!m_button->MapBuffer().isEmpty());
}

void TestBitButtonDesigner::previewFollowsTheTextPage()
{
    QVERIFY(openForm(stringProperty("onText", QStringLiteral("Run"))));
    runEditor([this](PropertyDialog *dialog) {
        auto *preview = qobject_cast<BitButton *>(dialog->preview());
        auto *editor = dialog->findChild<textPropertyEditor_Z12 *>(QStringLiteral("mTextPropertyEditor"));
        auto *table = editor->findChild<QTableWidget *>(QStringLiteral("textTable"));
        QCOMPARE(preview->onText(), QStringLiteral("Run"));
        table->item(1, 0)->setText(QStringLiteral("Los"));
        QCOMPARE(preview->onText(), QStringLiteral("Los"));
        QCOMPARE(preview->offText(), QStringLiteral("OFF"));
        // Another language than the current one does not show.
        table->item(0, 0)->setText(QStringLiteral("Go"));
        QCOMPARE(preview->onText(), QStringLiteral("Los"));

        dialog->findChild<QRadioButton *>(QStringLiteral("offEditedRadioButton"))->click();
        table->item(1, 0)->setText(QStringLiteral("Aus"));
        QCOMPARE(preview->offText(), QStringLiteral("Aus"));
        QCOMPARE(preview->onText(), QStringLiteral("Los"));
        editor->findChild<QSpinBox *>(QStringLiteral("pointSizeSpinBox"))->setValue(17);
        QCOMPARE(preview->font().pointSize(), 17);

        // The preview's state radios show the other caption.
        QCOMPARE(preview->state(), BitButton::Off);
        dialog->findChild<QRadioButton *>(QStringLiteral("previewOnRadioButton"))->click();
        QCOMPARE(preview->state(), BitButton::On);
        QCOMPARE(m_button->onText(), QStringLiteral("Run"));
        clickCancel(dialog);
    });
}

void TestBitButtonDesigner::okTakesWordLibraryCaptions()
{
    hmi()->setWordLibraryEntry(7, {QStringLiteral("Coolant"), QStringLiteral("Kühlmittel")});
    const QByteArray stored = TextInfoCodec::encodeSlots(
        {{record({QStringLiteral("old"), QStringLiteral("alt")}, 7)},
         {record({QStringLiteral("Off"), QStringLiteral("Aus")})}});
    QVERIFY(openForm(bytesProperty("textInfoBuffer", stored)));
    runEditor([](PropertyDialog *dialog) {
        auto *editor = dialog->findChild<textPropertyEditor_Z12 *>(QStringLiteral("mTextPropertyEditor"));
        QCOMPARE(editor->getTextDataList().first().texts,
                 (QStringList{QStringLiteral("Coolant"), QStringLiteral("Kühlmittel")}));
        clickOk(dialog);
    });
    QCOMPARE(m_button->onText(), QStringLiteral("Kühlmittel"));
    QCOMPARE(m_button->offText(), QStringLiteral("Aus"));
    QCOMPARE(storedRecords().at(0).first().wordLibId, 7);
}

QTEST_MAIN(TestBitButtonDesigner)
#include "tst_bitbuttondesigner.moc"
