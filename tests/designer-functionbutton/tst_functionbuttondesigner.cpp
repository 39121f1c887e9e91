#include "designercore.h"
#include "editorsession.h"
#include "fontmapcodec.h"
#include "functionbutton.h"
#include "functionbuttontaskmenu.h"
#include "norvointerface_z3.h"
#include "propertydialog.h"
#include "fieldbinder.h"
#include "fieldbinding.h"
#include "textinfocodec.h"
#include "textpropertyeditor_z12.h"
#include "valuechooser.h"

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerContainerExtension>
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
#include <QTreeView>
#include <QUndoStack>

namespace {

const QString TaskMenuIid = QStringLiteral("com.trolltech.Qt.Designer.TaskMenu");

// A form holding one function button at (10, 10), 100 x 30, with the given extra properties.
QString buttonForm(const QString &properties = QString())
{
    return DesignerCore::formDocument(
        QStringLiteral("<widget class=\"FunctionButton\" name=\"functionButton\">"
                       "<property name=\"geometry\"><rect><x>10</x><y>10</y><width>100</width>"
                       "<height>30</height></rect></property>%1</widget>")
            .arg(properties));
}

QString stringProperty(const char *name, const QString &value)
{
    return QStringLiteral("<property name=\"%1\"><string>%2</string></property>").arg(QLatin1String(name), value);
}

QString bufferProperty(const char *name, const QByteArray &value)
{
    return QStringLiteral("<property name=\"%1\"><cstring>%2</cstring></property>")
        .arg(QLatin1String(name), QString::fromLatin1(value));
}

QString fontProperty(const QString &family, int pointSize)
{
    return QStringLiteral("<property name=\"font\"><font><family>%1</family><pointsize>%2</pointsize></font></property>")
        .arg(family)
        .arg(pointSize);
}

TextData record(const QStringList &texts, int wordLibId = -1, const QList<QFont> &fonts = {})
{
    TextData data;
    data.wordLibId = wordLibId;
    data.texts = texts;
    data.fonts = fonts;
    return data;
}

QStringList familiesOf(const QList<QFont> &fonts)
{
    QStringList families;
    for (const QFont &font : fonts)
        families.append(font.family());
    return families;
}

QList<int> pointSizesOf(const QList<QFont> &fonts)
{
    QList<int> sizes;
    for (const QFont &font : fonts)
        sizes.append(font.pointSize());
    return sizes;
}

// The field of the dialog whose what's-this is path; null unless there is exactly one.
QWidget *fieldOf(QDialog *dialog, const QString &path)
{
    QList<QWidget *> found;
    const QList<QWidget *> children = dialog->findChildren<QWidget *>();
    for (QWidget *child : children) {
        if (child->whatsThis() == path)
            found.append(child);
    }
    return found.size() == 1 ? found.first() : nullptr;
}

// The title of the tab a field sits on, or empty beside the tabs.
QString tabOf(QDialog *dialog, QWidget *field)
{
    auto *tabs = dialog->findChild<QTabWidget *>(QStringLiteral("tabWidget"));
    for (QWidget *w = field; w && w != dialog; w = w->parentWidget()) {
        const int index = tabs->indexOf(w);
        if (index >= 0)
            return tabs->tabText(index);
    }
    return QString();
}

// The titles of the group boxes around a field, outermost first, joined by "/".
QString groupsOf(QDialog *dialog, QWidget *field)
{
    QStringList titles;
    for (QWidget *w = field->parentWidget(); w && w != dialog; w = w->parentWidget()) {
        if (auto *box = qobject_cast<QGroupBox *>(w))
            titles.prepend(box->title());
    }
    return titles.join(QLatin1Char('/'));
}

// A check box or radio button shows its own label; other fields have a label with them as buddy.
QString labelOf(QDialog *dialog, QWidget *field)
{
    if (qobject_cast<QCheckBox *>(field) || qobject_cast<QRadioButton *>(field))
        return static_cast<QAbstractButton *>(field)->text();
    const QList<QLabel *> labels = dialog->findChildren<QLabel *>();
    for (QLabel *label : labels) {
        if (label->buddy() == field)
            return label->text();
    }
    return QString();
}

void setField(QWidget *field, const QVariant &input)
{
    if (auto *spin = qobject_cast<QSpinBox *>(field))
        spin->setValue(input.toInt());
    else if (auto *combo = qobject_cast<QComboBox *>(field))
        combo->setCurrentIndex(combo->findText(input.toString()));
    else if (auto *radio = qobject_cast<QRadioButton *>(field))
        radio->click();
    else if (auto *check = qobject_cast<QCheckBox *>(field))
        check->setChecked(input.toBool());
    else if (auto *line = qobject_cast<QLineEdit *>(field))
        line->setText(input.toString());
    else if (auto *keys = qobject_cast<QKeySequenceEdit *>(field))
        keys->setKeySequence(QKeySequence(input.toString()));
    else if (auto *button = qobject_cast<QPushButton *>(field)) {
        ValueChooser::setColorChooser([input](const QColor &, QWidget *) { return input.value<QColor>(); });
        button->click();
    }
}

// Enums read back as their own types: compare them as numbers.
bool sameValue(const QVariant &actual, const QVariant &expected)
{
    if (expected.userType() == QMetaType::Int)
        return actual.toInt() == expected.toInt();
    return actual == expected;
}

void clickButton(QDialog *dialog, QDialogButtonBox::StandardButton which)
{
    dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"))->button(which)->click();
}

textPropertyEditor_Z12 *textEditorOf(QDialog *dialog)
{
    return dialog->findChild<textPropertyEditor_Z12 *>(QStringLiteral("mTextPropertyEditor"));
}

FunctionButton *previewOf(QDialog *dialog)
{
    auto *propertyDialog = qobject_cast<PropertyDialog *>(dialog);
    return propertyDialog ? qobject_cast<FunctionButton *>(propertyDialog->preview()) : nullptr;
}

} // namespace

class TestFunctionButtonDesigner : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void databaseListsTheWidget();
    void descriptorAnswers();
    void domXmlIsTheTextButtonTemplate();
    void widgetFromDomXml();
    void initializeTwiceRegistersOnce();
    void preferredActionEditsProperties();
    void factoryServesOnlyFunctionButtons_data();
    void factoryServesOnlyFunctionButtons();

    void editorFrame();
    void editorFields_data();
    void editorFields();
    void iconPositionItems();
    void borderEnabledEnablesTheBorderColour();
    void okCommitsAndUndoRestores_data();
    void okCommitsAndUndoRestores();
    void cancelChangesNothing();

    void companionLoads_data();
    void companionLoads();
    void previewFollowsTheTextEditor();
    void okCommitsTheTexts();
    void okTakesWordLibraryTexts();

private:
    QDesignerFormEditorInterface *core() const { return DesignerCore::instance().core(); }
    QDesignerCustomWidgetInterface *descriptor() const;
    FunctionButton *openForm(const QString &properties = QString());
    bool edit(const EditorSession::Step &step) { return EditorSession::run(core(), m_button, step); }
    QUndoStack *history() const { return m_form->commandHistory(); }

    QDesignerFormWindowInterface *m_form = nullptr;
    FunctionButton *m_button = nullptr;
};

void TestFunctionButtonDesigner::initTestCase()
{
    // The desktop font the editor is drawn for, as Designer has it on both majors; Qt 5's offscreen
    // platform alone would default to 12 points.
    QApplication::setFont(QFont(QStringLiteral("Sans Serif"), 9));
    QVERIFY(DesignerCore::instance().core());
    QVERIFY2(descriptor(), "the plugin did not offer FunctionButton");
}

void TestFunctionButtonDesigner::init()
{
    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    hmi->resetToDefaults();
    hmi->setSystemLanguages({QStringLiteral("Sans"), QStringLiteral("Serif"), QStringLiteral("Monospace")});
    hmi->setCurrentLanguageIndex(1);
}

void TestFunctionButtonDesigner::cleanup()
{
    ValueChooser::setColorChooser({});
    DesignerCore::instance().closeForms();
    m_form = nullptr;
    m_button = nullptr;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void TestFunctionButtonDesigner::cleanupTestCase()
{
    DesignerCore::release();
}

QDesignerCustomWidgetInterface *TestFunctionButtonDesigner::descriptor() const
{
    const QObjectList instances = core()->pluginInstances();
    for (QObject *instance : instances) {
        auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(instance);
        const QList<QDesignerCustomWidgetInterface *> widgets =
            collection ? collection->customWidgets() : QList<QDesignerCustomWidgetInterface *>();
        for (QDesignerCustomWidgetInterface *widget : widgets) {
            if (widget->name() == QLatin1String("FunctionButton"))
                return widget;
        }
    }
    return nullptr;
}

FunctionButton *TestFunctionButtonDesigner::openForm(const QString &properties)
{
    m_form = DesignerCore::instance().createForm(buttonForm(properties));
    m_button = DesignerCore::formWidget<FunctionButton>(m_form, QStringLiteral("functionButton"));
    return m_button;
}

// --- descriptor and task menu ---------------------------------------------------------------

void TestFunctionButtonDesigner::databaseListsTheWidget()
{
    QDesignerWidgetDataBaseInterface *database = core()->widgetDataBase();
    const int index = database->indexOfClassName(QStringLiteral("FunctionButton"));
    QVERIFY(index >= 0);
    QDesignerWidgetDataBaseItemInterface *item = database->item(index);
    QCOMPARE(item->group(), QStringLiteral("Buttons"));
    QCOMPARE(item->includeFile(), QStringLiteral("functionbutton.h"));
    QVERIFY(item->isCustom());
    QVERIFY(!item->isContainer());
}

void TestFunctionButtonDesigner::descriptorAnswers()
{
    QDesignerCustomWidgetInterface *plugin = descriptor();
    QCOMPARE(plugin->group(), QStringLiteral("Buttons"));
    QCOMPARE(plugin->includeFile(), QStringLiteral("functionbutton.h"));
    QVERIFY(plugin->toolTip().isEmpty());
    QVERIFY(plugin->whatsThis().isEmpty());
    QVERIFY(plugin->codeTemplate().isEmpty());
    QVERIFY(!plugin->isContainer());
    QVERIFY(plugin->isInitialized());
    QVERIFY(!plugin->icon().isNull());
    const QImage picture(QStringLiteral(":/FunctionButton.png"));
    QVERIFY(!picture.isNull());
    QCOMPARE(plugin->icon().pixmap(picture.size()).toImage().convertToFormat(QImage::Format_ARGB32),
             picture.convertToFormat(QImage::Format_ARGB32));
    QWidget parent;
    QWidget *widget = plugin->createWidget(&parent);
    QVERIFY(qobject_cast<FunctionButton *>(widget));
    QCOMPARE(widget->parentWidget(), &parent);
}

void TestFunctionButtonDesigner::domXmlIsTheTextButtonTemplate()
{
    const QString expected = QStringLiteral("<ui language=\"c++\">\n"
                                            "<widget class=\"FunctionButton\" name=\"functionButton\">\n"
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
                                            "  <string>FunctionButton</string>\n"
                                            " </property>\n"
                                            "</widget>\n"
                                            " <customwidgets>\n"
                                            " <customwidget>\n"
                                            " <propertyspecifications>\n"
                                            "  <stringpropertyspecification name=\"text\" type=\"multiline\"/>\n"
                                            " </propertyspecifications>\n"
                                            " </customwidget>\n"
                                            " </customwidgets>\n"
                                            "</ui>\n");
    QCOMPARE(descriptor()->domXml(), expected);
}

void TestFunctionButtonDesigner::widgetFromDomXml()
{
    // What Designer drops from the widget box: the <widget> element of the initial XML.
    const QString xml = descriptor()->domXml();
    const int begin = xml.indexOf(QLatin1String("<widget"));
    const QString end = QStringLiteral("</widget>");
    const QString element = xml.mid(begin, xml.indexOf(end) + end.size() - begin);
    m_form = DesignerCore::instance().createForm(DesignerCore::formDocument(element));
    QWidget *widget = DesignerCore::formWidget(m_form, QStringLiteral("functionButton"));
    auto *button = qobject_cast<FunctionButton *>(widget);
    QVERIFY2(button, widget ? widget->metaObject()->className() : "no widget");
    QCOMPARE(button->size(), QSize(100, 30));
    QCOMPARE(button->text(), QStringLiteral("FunctionButton"));
}

void TestFunctionButtonDesigner::initializeTwiceRegistersOnce()
{
    QExtensionManager *manager = core()->extensionManager();
    QCOMPARE(manager->findChildren<FunctionButtonTaskMenuFactory *>().size(), 1);
    descriptor()->initialize(core());
    QCOMPARE(manager->findChildren<FunctionButtonTaskMenuFactory *>().size(), 1);
    QVERIFY(descriptor()->isInitialized());
}

void TestFunctionButtonDesigner::preferredActionEditsProperties()
{
    QVERIFY(openForm());
    auto *menu = qt_extension<QDesignerTaskMenuExtension *>(core()->extensionManager(), m_button);
    QVERIFY2(menu, "Designer finds no task menu for the function button");
    QVERIFY(menu->preferredEditAction());
    QCOMPARE(menu->preferredEditAction()->text(), QStringLiteral("Edit Properties..."));
    QCOMPARE(menu->taskActions(), QList<QAction *>{menu->preferredEditAction()});
}

void TestFunctionButtonDesigner::factoryServesOnlyFunctionButtons_data()
{
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("iid");
    QTest::addColumn<bool>("served");
    const QString designerIid = QString(Q_TYPEID(QDesignerTaskMenuExtension));
    const QString functionButton = QStringLiteral("FunctionButton");
    QTest::newRow("function button") << functionButton << TaskMenuIid << true;
    QTest::newRow("function button, Designer's id") << functionButton << designerIid << true;
    QTest::newRow("push button") << QStringLiteral("QPushButton") << designerIid << false;
    QTest::newRow("plain widget") << QStringLiteral("QWidget") << TaskMenuIid << false;
    QTest::newRow("property sheet") << functionButton << QStringLiteral("com.trolltech.Qt.Designer.PropertySheet")
                                    << false;
    QTest::newRow("container") << functionButton << QString(Q_TYPEID(QDesignerContainerExtension))
                               << false;
}

void TestFunctionButtonDesigner::factoryServesOnlyFunctionButtons()
{
    QFETCH(QString, className);
    QFETCH(QString, iid);
    QFETCH(bool, served);
    QWidget parent;
    QWidget *object = className == QLatin1String("FunctionButton") ? new FunctionButton(&parent)
                      : className == QLatin1String("QPushButton")  ? new QPushButton(&parent)
                                                                   : new QWidget(&parent);
    QExtensionManager manager;
    FunctionButtonTaskMenuFactory factory(&manager);
    QObject *extension = factory.extension(object, iid);
    QCOMPARE(extension != nullptr, served);
    if (served) {
        QVERIFY(qobject_cast<FunctionButtonTaskMenu *>(extension));
        QCOMPARE(extension->parent(), &factory);
    }
}

// --- the editor layout ------------------------------------------------------------------------

void TestFunctionButtonDesigner::editorFrame()
{
    QVERIFY(openForm());
    QString name, title, start;
    QSize size;
    QStringList tabs;
    QStringList missing;
    const bool opened = edit([&](QDialog *dialog) {
        name = dialog->objectName();
        title = dialog->windowTitle();
        size = dialog->size();
        auto *tabWidget = dialog->findChild<QTabWidget *>(QStringLiteral("tabWidget"));
        for (int i = 0; tabWidget && i < tabWidget->count(); ++i)
            tabs.append(tabWidget->tabText(i));
        start = tabWidget ? tabWidget->tabText(tabWidget->currentIndex()) : QString();
        const QList<QPair<QString, QString>> fixed{
            {QStringLiteral("previewWidget"), QStringLiteral("QWidget")},
            {QStringLiteral("descriptionWidget"), QStringLiteral("QLabel")},
            {QStringLiteral("buttonBox"), QStringLiteral("QDialogButtonBox")},
            {QStringLiteral("macroTreeView"), QStringLiteral("QTreeView")},
            {QStringLiteral("mTextPropertyEditor"), QStringLiteral("textPropertyEditor_Z12")}};
        for (const auto &child : fixed) {
            QWidget *w = dialog->findChild<QWidget *>(child.first);
            if (!w || QLatin1String(w->metaObject()->className()) != child.second)
                missing.append(child.first);
        }
        auto *buttons = dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
        if (!buttons || buttons->standardButtons() != (QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
            missing.append(QStringLiteral("Ok and Cancel"));
        // The preview sits in the preview area, the macro view on the Macro tab, the texts on Text.
        if (previewOf(dialog)->parentWidget() != dialog->findChild<QWidget *>(QStringLiteral("previewWidget")))
            missing.append(QStringLiteral("preview in previewWidget"));
        if (tabOf(dialog, dialog->findChild<QWidget *>(QStringLiteral("macroTreeView"))) != QLatin1String("Macro"))
            missing.append(QStringLiteral("macroTreeView on Macro"));
        if (tabOf(dialog, textEditorOf(dialog)) != QLatin1String("Text"))
            missing.append(QStringLiteral("mTextPropertyEditor on Text"));
    });
    QVERIFY(opened);
    QCOMPARE(name, QStringLiteral("FunctionButtonEditor"));
    QCOMPARE(title, QStringLiteral("Function Button Editor"));
    QCOMPARE(size, QSize(868, 580)); // and the layout fits into it
    QCOMPARE(tabs, (QStringList{QStringLiteral("General"), QStringLiteral("Appearance"), QStringLiteral("Text"),
                                QStringLiteral("Geometry"), QStringLiteral("Macro")}));
    QCOMPARE(start, QStringLiteral("General"));
    QCOMPARE(missing, QStringList());
}

void TestFunctionButtonDesigner::editorFields_data()
{
    QTest::addColumn<QString>("tab");
    QTest::addColumn<QString>("groups");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("fieldClass");
    QTest::addColumn<QString>("statusTip");

    const auto row = [](const char *path, const char *tab, const char *groups, const char *label,
                        const char *fieldClass, const char *tip) {
        QTest::newRow(path) << QString::fromUtf8(tab) << QString::fromUtf8(groups) << QString::fromUtf8(label)
                            << QString::fromUtf8(fieldClass) << QString::fromUtf8(tip);
    };
    const char *monitored = "Specifies the bit variable or the word variable that contains the bit to be monitored. ";

    row("objectName", "General", "General", "Object Name:", "QLineEdit", "This property holds the name of this object.");
    row("shortcut", "General", "General", "Shortcut:", "QKeySequenceEdit",
        "This property holds the mnemonic associated with the button.");
    row("autoExclusive", "General", "General", "Auto Exclusive", "QCheckBox",
        "This property holds whether auto-exclusivity is enabled.");
    row("checkable", "General", "General", "Checkable", "QCheckBox", "This property holds whether the button is checkable.");
    row("checked", "General", "General", "Checked", "QCheckBox", "This property holds whether the button is checked.");
    row("focusPolicy", "General", "General", "Focus Policy:", "QComboBox",
        "This property holds the way the widget accepts keyboard focus.");
    row("autoRepeat", "General", "Repeat", "Auto Repeat", "QCheckBox", "This property holds whether auto-repeat is enabled.");
    row("autoRepeatDelay", "General", "Repeat", "Auto Repeat Delay:", "QSpinBox",
        "This property holds the initial delay of auto-repetition in milliseconds.");
    row("autoRepeatInterval", "General", "Repeat", "Auto Repeat Interval:", "QSpinBox",
        "This property holds the interval of auto-repetition in milliseconds.");
    row("comId", "General", "Communication", "Com ID:", "QSpinBox", "Specifies the index of the communication link.");
    row("channel", "General", "Communication", "Channel:", "QSpinBox", "Specifies the channel of variable.");
    row("bitOnVisible", "General", "Communication", "Bit On Visible", "QCheckBox",
        "Specifies whether the button is visible while the bit of the Visible Address field is on (checked) or off.");
    row("enabledBitType", "General", "Enabled Address", "Address Type:", "QComboBox",
        "Specifies the type of variable in the Enabled Address field.");
    row("enabledAddress", "General", "Enabled Address", "Monitor Address:", "QSpinBox", monitored);
    row("enabledBitIndex", "General", "Enabled Address", "Bit Number:", "QSpinBox",
        "Specifies which bit of the variable specified in the Enabled Address field is to be operated.");
    row("visibleBitType", "General", "Visible Address", "Address Type:", "QComboBox",
        "Specifies the type of variable in the Visible Address field.");
    row("visibleAddress", "General", "Visible Address", "Write Address:", "QSpinBox", monitored);
    row("visibleBitIndex", "General", "Visible Address", "Bit Number:", "QSpinBox",
        "Specifies which bit of the variable specified in the Visible Address field is to be operated.");
    row("colorBitType", "General", "Color Address", "Address Type:", "QComboBox",
        "Specifies the type of variable in the Color Address field.");
    row("colorAddress", "General", "Color Address", "Monitor Address:", "QSpinBox", monitored);
    row("colorBitIndex", "General", "Color Address", "Bit Number:", "QSpinBox",
        "Specifies which bit of the variable specified in the Color Address field is to be operated.");
    row("writeBitType", "General", "Write Address", "Address Type:", "QComboBox",
        "Specifies the type of variable in the Write Address field. ");
    row("writeAddress", "General", "Write Address", "Write Address:", "QSpinBox",
        "Specifies the word variable that contains the bit to be operated. ");
    row("writeBitIndex", "General", "Write Address", "Bit Number:", "QSpinBox",
        "Specifies which bit of the variable specified in the Write Address field is to be operated.");
    row("action.0", "General", "Operation", "Set ON", "QRadioButton",
        "Sets the specified bit to On when the button is pressed.");
    row("action.1", "General", "Operation", "Set OFF", "QRadioButton",
        "Sets the specified bit to Off when the button is pressed. ");
    row("action.2", "General", "Operation", "Momentary ON", "QRadioButton",
        "Sets the specified bit to On when the button is pressed and sets the bit to Off when the button is released. ");
    row("action.3", "General", "Operation", "Momentary OFF", "QRadioButton",
        "Sets the specified bit to Off when the button is pressed and sets the bit to On when the button is released. ");
    row("action.4", "General", "Operation", "Invert", "QRadioButton",
        "Inverts the state of the specified bit when the button is pressed.  ");

    row("buttonColorNormal", "Appearance", "Normal", "Button Color:", "QPushButton",
        "Sets the button color of the normal state.");
    row("onButtonColor", "Appearance", "Normal", "Bit On Color:", "QPushButton", "Sets the button color of state 1 (On).");
    row("buttonColorPushed", "Appearance", "Pushed", "Button Color:", "QPushButton",
        "Sets the button color while the button is pushed.");
    row("buttonColorHot", "Appearance", "Focus", "Button Color:", "QPushButton",
        "Sets the button color while the button has the keyboard focus.");
    row("textSpace", "Appearance", "Text style", "Text Space:", "QSpinBox",
        "Sets the space between the the icon and the button text.");
    row("onTextColor", "Appearance", "Text style", "Bit On Color:", "QPushButton", "Sets the text color of state 1 (On).");
    row("icon", "Appearance", "Icon", "Icon:", "QPushButton", "This property holds the icon shown on the button.");
    row("iconSize.width", "Appearance", "Icon", "Icon Width:", "QSpinBox",
        "This property holds the icon width used for this button.");
    row("iconSize.height", "Appearance", "Icon", "Icon Height:", "QSpinBox",
        "This property holds the icon height used for this button.");
    row("iconSpace", "Appearance", "Icon", "Icon Space:", "QSpinBox",
        "Sets the space between the button border and the icon.");
    row("iconPosition", "Appearance", "Icon", "Icon Position:", "QComboBox",
        "Sets the position of the icon (top, bottom, left, right).");
    row("borderEnabled", "Appearance", "Border", "Border Enabled", "QCheckBox",
        "This property holds whether the widget' border is enabled.");
    row("borderColor", "Appearance", "Border", "Border Color:", "QPushButton",
        "Sets the color of this widget's border to the given color.");
    row("cornersRadius", "Appearance", "Border", "Corners Radius:", "QSpinBox",
        "This property specify the radii of the ellipses defining the corners of the button. ");

    row("geometry.left", "Geometry", "Dimension", "Left:", "QSpinBox",
        "This property holds the left of the widget relative to its parent and excluding the window frame.");
    row("geometry.top", "Geometry", "Dimension", "Top:", "QSpinBox",
        "This property holds the top of the widget relative to its parent and excluding the window frame.");
    row("geometry.width", "Geometry", "Dimension", "Width:", "QSpinBox",
        "This property holds the width of the widget relative to its parent and excluding the window frame.");
    row("geometry.height", "Geometry", "Dimension", "Height:", "QSpinBox",
        "This property holds the height of the widget relative to its parent and excluding the window frame.");

    row("down", "", "Preview", "Down", "QCheckBox", "This property holds whether the button is pressed down.");
    row("alignment.1", "", "Alignment/Horizontal", "Left", "QRadioButton", "Aligns with the left edge.");
    row("alignment.2", "", "Alignment/Horizontal", "Right", "QRadioButton", "Aligns with the right edge.");
    row("alignment.4", "", "Alignment/Horizontal", "Center", "QRadioButton",
        "Centers horizontally in the available space.");
    row("alignment.128", "", "Alignment/Vertical", "Center", "QRadioButton",
        "Centers vertically in the available space. ");
    row("alignment.64", "", "Alignment/Vertical", "Bottom", "QRadioButton", "Aligns with the bottom.");
    row("alignment.32", "", "Alignment/Vertical", "Top", "QRadioButton", "Aligns with the top.");
}

void TestFunctionButtonDesigner::editorFields()
{
    QFETCH(QString, tab);
    QFETCH(QString, groups);
    QFETCH(QString, label);
    QFETCH(QString, fieldClass);
    QFETCH(QString, statusTip);
    const QString path = QString::fromLatin1(QTest::currentDataTag());
    QVERIFY(openForm());
    bool found = false;
    bool bound = false;
    QString shownTab, shownGroups, shownLabel, shownClass, shownTip;
    QVERIFY(edit([&](QDialog *dialog) {
        QWidget *field = fieldOf(dialog, path);
        found = field != nullptr;
        if (!field)
            return;
        shownTab = tabOf(dialog, field);
        shownGroups = groupsOf(dialog, field);
        shownLabel = labelOf(dialog, field);
        shownClass = QString::fromLatin1(field->metaObject()->className());
        shownTip = field->statusTip();
        // The dialog took the path for a property of the button.
        const QList<FieldBinding *> bindings = qobject_cast<PropertyDialog *>(dialog)->binder()->bindings();
        for (FieldBinding *binding : bindings)
            bound = bound || binding->field() == field;
    }));
    QVERIFY2(found, "no single field has this path");
    QCOMPARE(shownTab, tab);
    QCOMPARE(shownGroups, groups);
    QCOMPARE(shownLabel, label);
    QCOMPARE(shownClass, fieldClass);
    QCOMPARE(shownTip, statusTip);
    QVERIFY(bound);
}

void TestFunctionButtonDesigner::iconPositionItems()
{
    QVERIFY(openForm(QStringLiteral("<property name=\"iconPosition\"><enum>AbstractButton::PositionBottom</enum>"
                                    "</property>")));
    QStringList items;
    QString shown;
    QVERIFY(edit([&](QDialog *dialog) {
        auto *combo = qobject_cast<QComboBox *>(fieldOf(dialog, QStringLiteral("iconPosition")));
        for (int i = 0; combo && i < combo->count(); ++i)
            items.append(combo->itemText(i));
        shown = combo ? combo->currentText() : QString();
    }));
    QCOMPARE(items, (QStringList{QStringLiteral("Top"), QStringLiteral("Bottom"), QStringLiteral("Left"),
                                 QStringLiteral("Right")}));
    QCOMPARE(shown, QStringLiteral("Bottom"));
}

void TestFunctionButtonDesigner::borderEnabledEnablesTheBorderColour()
{
    QVERIFY(openForm(QStringLiteral("<property name=\"borderEnabled\"><bool>false</bool></property>")));
    QList<bool> colourEnabled;
    QVERIFY(edit([&](QDialog *dialog) {
        auto *check = qobject_cast<QCheckBox *>(fieldOf(dialog, QStringLiteral("borderEnabled")));
        QWidget *colour = fieldOf(dialog, QStringLiteral("borderColor"));
        if (!check || !colour)
            return;
        colourEnabled.append(colour->isEnabled()); // as loaded from a button without border
        check->setChecked(true);
        colourEnabled.append(colour->isEnabled());
        check->setChecked(false);
        colourEnabled.append(colour->isEnabled());
    }));
    QCOMPARE(colourEnabled, (QList<bool>{false, true, false}));
}

void TestFunctionButtonDesigner::okCommitsAndUndoRestores_data()
{
    QTest::addColumn<QVariant>("input");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("expected"); // invalid: Designer keeps the value in the form only
    QTest::addColumn<QString>("saved");

    const auto row = [](const char *path, const QVariant &input, const char *property, const QVariant &expected,
                        const char *saved) {
        QTest::newRow(path) << input << QString::fromLatin1(property) << expected << QString::fromLatin1(saved);
    };
    row("comId", 3, "comId", 3, "<number>3</number>");
    row("channel", 2, "channel", 2, "<number>2</number>");
    row("enabledBitType", QStringLiteral("O_BIT"), "enabledBitType", int(FunctionButton::O_BIT),
        "<enum>FunctionButton::O_BIT</enum>");
    row("writeBitType", QStringLiteral("Reg"), "writeBitType", int(FunctionButton::Reg),
        "<enum>FunctionButton::Reg</enum>");
    row("writeAddress", 40017, "writeAddress", 40017, "<number>40017</number>");
    row("action.4", QVariant(), "action", int(FunctionButton::Invert), "<enum>FunctionButton::Invert</enum>");
    row("buttonColorNormal", QColor(Qt::red), "buttonColorNormal", QColor(Qt::red), "name=\"buttonColorNormal\"");
    row("onTextColor", QColor(10, 20, 30), "onTextColor", QColor(10, 20, 30), "<red>10</red>");
    row("geometry.width", 150, "geometry", QRect(10, 10, 150, 30), "<width>150</width>");
    row("iconSize.height", 24, "iconSize", QSize(16, 24), "<height>24</height>");
    row("borderEnabled", false, "borderEnabled", false, "name=\"borderEnabled\"");
    row("iconPosition", QStringLiteral("Right"), "iconPosition", int(AbstractButton::PositionRight),
        "AbstractButton::PositionRight");
    row("autoRepeatDelay", 700, "autoRepeatDelay", 700, "<number>700</number>");
    // Designer keeps shortcuts off the widgets of a form, so that they do not fire while editing.
    row("shortcut", QStringLiteral("F5"), "shortcut", QVariant(), "<string>F5</string>");
    row("objectName", QStringLiteral("startButton"), "objectName", QStringLiteral("startButton"),
        "name=\"startButton\"");
}

void TestFunctionButtonDesigner::okCommitsAndUndoRestores()
{
    QFETCH(QVariant, input);
    QFETCH(QString, property);
    QFETCH(QVariant, expected);
    QFETCH(QString, saved);
    const QString path = QString::fromLatin1(QTest::currentDataTag());
    QVERIFY(openForm(stringProperty("text", QStringLiteral("Start"))));
    const QByteArray name = property.toLatin1();
    const QVariant before = m_button->property(name.constData());
    QVERIFY(expected.isNull() || !sameValue(before, expected));
    QVERIFY(!m_form->contents().contains(saved));

    bool accepted = false;
    QVERIFY(edit([&](QDialog *dialog) {
        QWidget *field = fieldOf(dialog, path);
        if (!field)
            return;
        setField(field, input);
        clickButton(dialog, QDialogButtonBox::Ok);
        accepted = dialog->result() == QDialog::Accepted;
    }));
    QVERIFY(accepted);
    if (!expected.isNull()) {
        QVERIFY2(sameValue(m_button->property(name.constData()), expected),
                 qPrintable(m_button->property(name.constData()).toString()));
    }
    QVERIFY2(m_form->contents().contains(saved), qPrintable(m_form->contents()));
    QVERIFY(m_form->isDirty());
    // The field and the text editor's commits are one undo step.
    QCOMPARE(history()->count(), 1);

    history()->undo();
    QVERIFY2(sameValue(m_button->property(name.constData()), before),
             qPrintable(m_button->property(name.constData()).toString()));
    QVERIFY(!m_form->contents().contains(saved));
    QCOMPARE(m_button->text(), QStringLiteral("Start"));
    QVERIFY(m_button->textInfoBuffer().isEmpty());
    QVERIFY(!m_form->isDirty());
}

void TestFunctionButtonDesigner::cancelChangesNothing()
{
    QVERIFY(openForm(stringProperty("text", QStringLiteral("Start"))));
    const QString before = m_form->contents();
    QVERIFY(edit([&](QDialog *dialog) {
        setField(fieldOf(dialog, QStringLiteral("comId")), 5);
        setField(fieldOf(dialog, QStringLiteral("objectName")), QStringLiteral("stopButton"));
        setField(fieldOf(dialog, QStringLiteral("action.1")), QVariant());
        textEditorOf(dialog)->findChild<QTableWidget *>()->item(1, 0)->setText(QStringLiteral("Halt"));
        clickButton(dialog, QDialogButtonBox::Cancel);
    }));
    QCOMPARE(m_button->comId(), 0);
    QCOMPARE(m_button->objectName(), QStringLiteral("functionButton"));
    QCOMPARE(m_button->action(), FunctionButton::SetOn);
    QCOMPARE(m_button->text(), QStringLiteral("Start"));
    QVERIFY(m_button->textInfoBuffer().isEmpty());
    QCOMPARE(history()->count(), 0);
    QVERIFY(!m_form->isDirty());
    QCOMPARE(m_form->contents(), before);
}

// --- the text companion -----------------------------------------------------------------------

void TestFunctionButtonDesigner::companionLoads_data()
{
    QTest::addColumn<QString>("properties");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<int>("wordLibId");
    QTest::addColumn<QStringList>("families");
    QTest::addColumn<QList<int>>("pointSizes");

    const QString start = stringProperty("text", QStringLiteral("Start"));
    QTest::newRow("caption in every language, language families at size 9")
        << fontProperty(QStringLiteral("Courier"), 9) + start << QStringList{"Start", "Start", "Start"} << -1
        << QStringList{"Sans", "Serif", "Monospace"} << QList<int>{9, 9, 9};
    QTest::newRow("other sizes keep the button's family")
        << fontProperty(QStringLiteral("Courier"), 12) + start << QStringList{"Start", "Start", "Start"} << -1
        << QStringList{"Courier", "Courier", "Courier"} << QList<int>{12, 12, 12};
    QTest::newRow("unreadable buffers count as none")
        << fontProperty(QStringLiteral("Courier"), 9) + start + bufferProperty("textInfoBuffer", "zz")
               + bufferProperty("MapBuffer", "zz")
        << QStringList{"Start", "Start", "Start"} << -1 << QStringList{"Sans", "Serif", "Monospace"}
        << QList<int>{9, 9, 9};
    // The caption comes first and is in the list, so that the button keeps the list as it is.
    QTest::newRow("caption replaces the current language's entry")
        << fontProperty(QStringLiteral("Courier"), 12) + stringProperty("text", QStringLiteral("A"))
               + QStringLiteral("<property name=\"textList\"><stringlist><string>A</string><string>B</string>"
                                "<string>C</string></stringlist></property>")
        << QStringList{"A", "A", "C"} << -1 << QStringList{"Courier", "Courier", "Courier"} << QList<int>{12, 12, 12};

    FontMapCodec::Maps maps;
    maps.captionFonts.insert(2, QFont(QStringLiteral("Monospace"), 14));
    maps.captionFonts.insert(0, QFont(QStringLiteral("Serif"), 10));
    QTest::newRow("fonts from the stored font map")
        << start + bufferProperty("MapBuffer", FontMapCodec::encode(maps)) << QStringList{"Start", "Start", "Start"}
        << -1 << QStringList{"Serif", "Monospace"} << QList<int>{10, 14};

    const QByteArray stored =
        TextInfoCodec::encodeSlot({record({"X", "Y", "Z"}, -1, {QFont(QStringLiteral("Serif"), 11)})});
    QTest::newRow("stored records as they are")
        << start + bufferProperty("MapBuffer", FontMapCodec::encode(maps)) + bufferProperty("textInfoBuffer", stored)
        << QStringList{"X", "Y", "Z"} << -1 << QStringList{"Serif"} << QList<int>{11};

    const QByteArray linked =
        TextInfoCodec::encodeSlot({record({"old", "old", "old"}, 7, {QFont(QStringLiteral("Serif"), 11)})});
    QTest::newRow("word library texts") << bufferProperty("textInfoBuffer", linked)
                                        << QStringList{"Halt", "Stopp", "Arret"} << 7 << QStringList{"Serif"}
                                        << QList<int>{11};
}

void TestFunctionButtonDesigner::companionLoads()
{
    QFETCH(QString, properties);
    QFETCH(QStringList, texts);
    QFETCH(int, wordLibId);
    QFETCH(QStringList, families);
    QFETCH(QList<int>, pointSizes);
    QVERIFY(openForm(properties));
    // Changed after the button was made, so that only the editor can have read it.
    NORVOInterface_Z3::initialization()->setWordLibraryEntry(7, {"Halt", "Stopp", "Arret"});

    QList<TextData> loaded;
    QVERIFY(edit([&](QDialog *dialog) { loaded = textEditorOf(dialog)->getTextDataList(); }));
    QCOMPARE(loaded.size(), 1);
    QCOMPARE(loaded.first().texts, texts);
    QCOMPARE(loaded.first().wordLibId, wordLibId);
    QCOMPARE(loaded.first().firstValue, 0);
    QCOMPARE(loaded.first().secondValue, 0);
    QCOMPARE(familiesOf(loaded.first().fonts), families);
    QCOMPARE(pointSizesOf(loaded.first().fonts), pointSizes);
}

void TestFunctionButtonDesigner::previewFollowsTheTextEditor()
{
    QVERIFY(openForm(stringProperty("text", QStringLiteral("Start"))
                     + QStringLiteral("<property name=\"textColorEnabled\"><color><red>10</red><green>20</green>"
                                      "<blue>30</blue></color></property>")));
    QColor editorColour, loadedPreviewColour, previewColour;
    QString previewText;
    bool previewBold = false;
    QVERIFY(edit([&](QDialog *dialog) {
        textPropertyEditor_Z12 *editor = textEditorOf(dialog);
        FunctionButton *preview = previewOf(dialog);
        editorColour = editor->getTextColor();
        loadedPreviewColour = preview->textColorEnabled();
        // Language 1 is the current one.
        editor->findChild<QTableWidget *>()->item(1, 0)->setText(QStringLiteral("Go"));
        previewText = preview->text();
        editor->findChild<QCheckBox *>(QStringLiteral("boldCheckBox"))->setChecked(true);
        previewBold = preview->font().bold();
        Q_EMIT editor->colorChange(QColor(Qt::blue));
        previewColour = preview->textColorEnabled();
    }));
    QCOMPARE(editorColour, QColor(10, 20, 30));
    QCOMPARE(loadedPreviewColour, QColor(10, 20, 30));
    QCOMPARE(previewText, QStringLiteral("Go"));
    QVERIFY(previewBold);
    QCOMPARE(previewColour, QColor(Qt::blue));
    // Only the preview changed.
    QCOMPARE(m_button->text(), QStringLiteral("Start"));
    QCOMPARE(m_button->textColorEnabled(), QColor(10, 20, 30));
    QVERIFY(!m_button->font().bold());
    QCOMPARE(history()->count(), 0);
}

void TestFunctionButtonDesigner::okCommitsTheTexts()
{
    FontMapCodec::Maps maps;
    maps.captionFonts.insert(0, QFont(QStringLiteral("Serif"), 10));
    const QByteArray oldMap = FontMapCodec::encode(maps);
    QVERIFY(openForm(stringProperty("text", QStringLiteral("Start")) + bufferProperty("MapBuffer", oldMap)));
    QVERIFY(m_button->textInfoBuffer().isEmpty());
    QVERIFY(m_button->getTextList().isEmpty());

    QList<TextData> edited;
    QVERIFY(edit([&](QDialog *dialog) {
        textPropertyEditor_Z12 *editor = textEditorOf(dialog);
        editor->findChild<QTableWidget *>()->item(1, 0)->setText(QStringLiteral("Go"));
        Q_EMIT editor->colorChange(QColor(Qt::blue));
        edited = editor->getTextDataList();
        clickButton(dialog, QDialogButtonBox::Ok);
    }));
    QCOMPARE(edited.size(), 1);
    QCOMPARE(edited.first().texts, (QStringList{"Start", "Go", "Start"}));

    QVERIFY(m_button->MapBuffer().isEmpty());
    QList<TextData> stored;
    QVERIFY(TextInfoCodec::decodeSlot(m_button->textInfoBuffer(), &stored));
    QCOMPARE(stored, edited);
    QCOMPARE(m_button->text(), QStringLiteral("Go"));
    QCOMPARE(m_button->textColorEnabled(), QColor(Qt::blue));
    const QString saved = m_form->contents();
    QVERIFY(saved.contains(QLatin1String(m_button->textInfoBuffer())));
    QVERIFY(saved.contains(QLatin1String("<string>Go</string>")));

    // One undo step, the companion's changes last and in their order.
    QCOMPARE(history()->count(), 1);
    const QUndoCommand *step = history()->command(0);
    QStringList changed;
    for (int i = 0; i < step->childCount(); ++i)
        changed.append(step->child(i)->text());
    const QStringList expected{QStringLiteral("'MapBuffer'"), QStringLiteral("'textInfoBuffer'"),
                               QStringLiteral("'textColorEnabled'"), QStringLiteral("'text'")};
    QVERIFY2(changed.size() >= expected.size(), qPrintable(changed.join(QLatin1String(", "))));
    for (int i = 0; i < expected.size(); ++i) {
        const QString &text = changed.at(changed.size() - expected.size() + i);
        QVERIFY2(text.contains(expected.at(i)), qPrintable(changed.join(QLatin1String(", "))));
    }

    history()->undo();
    QCOMPARE(m_button->MapBuffer(), oldMap);
    QVERIFY(m_button->textInfoBuffer().isEmpty());
    QCOMPARE(m_button->text(), QStringLiteral("Start"));
    QCOMPARE(m_button->textColorEnabled(), QColor(Qt::black));
    QVERIFY(!m_form->contents().contains(QLatin1String("<string>Go</string>")));

    history()->redo();
    QVERIFY(m_button->MapBuffer().isEmpty());
    QVERIFY(TextInfoCodec::decodeSlot(m_button->textInfoBuffer(), &stored));
    QCOMPARE(stored, edited);
    QCOMPARE(m_button->text(), QStringLiteral("Go"));
    QCOMPARE(m_button->textColorEnabled(), QColor(Qt::blue));
}

void TestFunctionButtonDesigner::okTakesWordLibraryTexts()
{
    NORVOInterface_Z3::initialization()->setWordLibraryEntry(7, {"Halt", "Stopp", "Arret"});
    const QByteArray linked = TextInfoCodec::encodeSlot({record({"old", "old", "old"}, 7)});
    QVERIFY(openForm(bufferProperty("textInfoBuffer", linked)));
    // The library changes while the dialog is open.
    QVERIFY(edit([&](QDialog *dialog) {
        NORVOInterface_Z3::initialization()->setWordLibraryEntry(7, {"Aus", "Ende", "Fin"});
        clickButton(dialog, QDialogButtonBox::Ok);
    }));
    QCOMPARE(m_button->text(), QStringLiteral("Ende"));
    QList<TextData> stored;
    QVERIFY(TextInfoCodec::decodeSlot(m_button->textInfoBuffer(), &stored));
    QCOMPARE(stored.size(), 1);
    QCOMPARE(stored.first().wordLibId, 7);
    QCOMPARE(m_button->MapBuffer(), QByteArray());
}

QTEST_MAIN(TestFunctionButtonDesigner)
#include "tst_functionbuttondesigner.moc"
