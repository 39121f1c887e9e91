// The designer host on the real core (form window, project folder, undoable commands, selection,
// managed widgets), and the widget collection as Designer sees it: the registry's order, the ten descriptors with groups,
// headers, icons and initial XML, the widget box, every offered widget placed from its initial XML
// with its one task menu action, and a form holding every widget saved, reopened and saved again alike.
#include "designercore.h"
#include "formwindowhost.h"
#include "widgetpluginregistry.h"

#include <QtDesigner/QDesignerComponents>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QDesignerWidgetBoxInterface>
#include <QtDesigner/QDesignerWidgetDataBaseInterface>
#include <QtDesigner/QExtensionManager>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QUndoStack>
#include <QTest>

namespace {

struct Entry
{
    QString name, group, objectName, header;
    QSize size;
    QStringList multiline; // string properties Designer edits with its multi-line editor
};

// The collection in its order; the panel is Designer's page of the MDI area, never offered.
const QList<Entry> Collection{
    {"FunctionButton", "Buttons", "functionButton", "functionbutton.h", {100, 30}, {"text"}},
    {"PictureButton", "Buttons", "pictureButton", "PictureButton.h", {100, 30}, {"text"}},
    {"DynamicImage", "Display Widgets", "dynamicImage", "dynamicimage.h", {60, 60}, {}},
    {"TableWidget", "Item Widgets", "tableWidget", "tablewidget.h", {320, 200}, {}},
    {"BitButton", "Buttons", "bitButton", "bitbutton.h", {100, 30}, {"text", "onText", "offText"}},
    {"GridSplitter", "Containers", "gridSplitter", "gridsplitter.h", {300, 300}, {}},
    {"ButtonGroup", "Buttons", "buttonGroup", "buttongroup.h", {460, 60}, {}},
    {"TabWidget", "Containers", "tabWidget", "tabwidget.h", {150, 150}, {}},
    {"MdiArea", "Containers", "MdiArea", "mdiarea.h", {200, 200}, {}},
    {"SubWindow", "[invisible]", "SubWindow", "subwindow.h", {100, 100}, {}},
};

QDesignerFormEditorInterface *core() { return DesignerCore::instance().core(); }

QList<QDesignerCustomWidgetInterface *> ourDescriptors()
{
    QList<QDesignerCustomWidgetInterface *> found;
    for (QObject *instance : core()->pluginInstances()) {
        if (auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(instance))
            found << collection->customWidgets();
    }
    return found;
}

// The <widget> element of a descriptor's initial XML (the text buttons wrap it in <ui>).
QString widgetElement(const QString &domXml)
{
    const int start = int(domXml.indexOf(QLatin1String("<widget")));
    const int end = int(domXml.lastIndexOf(QLatin1String("</widget>")));
    return domXml.mid(start, end + 9 - start);
}

int taskMenuFactories(const QString &widget)
{
    int count = 0;
    for (QObject *child : core()->extensionManager()->children())
        count += child->inherits(QString(widget + QLatin1String("TaskMenuFactory")).toLatin1().constData());
    return count;
}

QString bigForm()
{
    return QStringLiteral("<ui version=\"4.0\"><class>Form</class><widget class=\"QWidget\" name=\"Form\">"
                          "<property name=\"geometry\"><rect><x>0</x><y>0</y><width>1200</width>"
                          "<height>900</height></rect></property></widget></ui>");
}

} // namespace

class TestCollectionDesigner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setFont(QFont(QStringLiteral("Sans Serif"), 9)); }
    void cleanup() { DesignerCore::instance().closeForms(); }
    void cleanupTestCase() { DesignerCore::release(); }

    void takenPlaceRefused()
    {
        WidgetPluginRegistry registry;
        const auto none = [](QObject *) -> QDesignerCustomWidgetInterface * { return nullptr; };
        QVERIFY(registry.add(WidgetPluginRegistry::TabWidget, none));
        QTest::ignoreMessage(QtWarningMsg, "WidgetPluginRegistry: place 8 of the plugin collection is already taken");
        QVERIFY(!registry.add(WidgetPluginRegistry::TabWidget, none));
        QCOMPARE(registry.count(), 1);
    }

    void descriptorsInOrder()
    {
        const QList<QDesignerCustomWidgetInterface *> found = ourDescriptors();
        QCOMPARE(found.size(), Collection.size());
        QCOMPARE(found.size(), WidgetPluginRegistry::instance().count());
        for (int i = 0; i < Collection.size(); ++i) {
            const Entry &e = Collection.at(i);
            QDesignerCustomWidgetInterface *d = found.at(i);
            QCOMPARE(d->name(), e.name);
            QCOMPARE(d->group(), e.group);
            QCOMPARE(d->includeFile(), e.header);
            QCOMPARE(d->isContainer(), e.name == QLatin1String("SubWindow"));
            QCOMPARE(d->icon().isNull(), e.name == QLatin1String("SubWindow"));
            QVERIFY(d->toolTip().isEmpty() && d->whatsThis().isEmpty() && d->codeTemplate().isEmpty());
            const QString element = widgetElement(d->domXml());
            QVERIFY2(element.startsWith(QStringLiteral("<widget class=\"%1\" name=\"%2\">").arg(e.name, e.objectName)),
                     qPrintable(element));
            QVERIFY(element.contains(QStringLiteral("<width>%1</width>").arg(e.size.width())));
            QVERIFY(element.contains(QStringLiteral("<height>%1</height>").arg(e.size.height())));
            for (const QString &property : e.multiline)
                QVERIFY(d->domXml().contains(
                    QStringLiteral("<stringpropertyspecification name=\"%1\" type=\"multiline\"/>").arg(property)));
            // Initialising again registers no second task menu factory.
            const int factories = taskMenuFactories(e.name);
            d->initialize(core());
            QCOMPARE(taskMenuFactories(e.name), factories);
        }
    }

    void widgetBoxGroups()
    {
        std::unique_ptr<QDesignerWidgetBoxInterface> box(QDesignerComponents::createWidgetBox(core(), nullptr));
        core()->setWidgetBox(box.get());
        box->load();
        QMap<QString, QStringList> ours;
        for (int c = 0; c < box->categoryCount(); ++c) {
            const QDesignerWidgetBoxInterface::Category category = box->category(c);
            for (int w = 0; w < category.widgetCount(); ++w) {
                for (const Entry &e : Collection) {
                    if (e.name == category.widget(w).name())
                        ours[category.name()] << e.name;
                }
            }
        }
        core()->setWidgetBox(nullptr);
        QMap<QString, QStringList> expected;
        for (const Entry &e : Collection) {
            if (e.group != QLatin1String("[invisible]"))
                expected[e.group] << e.name;
        }
        for (QMap<QString, QStringList> *groups : {&ours, &expected}) {
            for (QStringList &names : *groups)
                names.sort();
        }
        QCOMPARE(ours, expected);
        QVERIFY(core()->widgetDataBase()->indexOfClassName(QStringLiteral("KeypadButton")) < 0); // a library widget only
    }

    // Every offered widget dropped on one shown form from its initial XML, with its own task menu;
    // the form saved, reopened and saved again, the two saves alike.
    void everyWidgetPlacedAndSavedAlike()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(bigForm(), true);
        int y = 10;
        for (const Entry &e : Collection) {
            if (e.group == QLatin1String("[invisible]"))
                continue;
            QString element = widgetElement(DesignerCore::descriptor(e.name)->domXml());
            element.replace(QLatin1String("<x>0</x>"), QStringLiteral("<x>%1</x>").arg(10 + (y / 600) * 500));
            element.replace(QLatin1String("<y>0</y>"), QStringLiteral("<y>%1</y>").arg(y % 600));
            DesignerCore::paste(form, form->mainContainer(), element);
            y += e.size.height() + 10;
            QWidget *placed = DesignerCore::formWidget(form, e.objectName);
            QVERIFY2(placed && placed->metaObject()->className() == e.name && form->isManaged(placed), qPrintable(e.name));
            QCOMPARE(placed->size(), e.size);
            auto *menu = qt_extension<QDesignerTaskMenuExtension *>(core()->extensionManager(), placed);
            if (e.name == QLatin1String("TableWidget"))
                continue; // Designer's own table menu comes first; ours is checked with the table
            QVERIFY2(menu && dynamic_cast<QObject *>(menu)->inherits(qPrintable(e.name + "TaskMenu")), qPrintable(e.name));
            QCOMPARE(menu->preferredEditAction()->text(), QStringLiteral("Edit Properties..."));
            QCOMPARE(menu->taskActions(), QList<QAction *>{menu->preferredEditAction()});
        }
        const QString first = form->contents();
        QDesignerFormWindowInterface *again = DesignerCore::instance().createForm(first, true);
        QVERIFY(again);
        const QString second = again->contents();
        QCOMPARE(second, first);
    }


    void formWindowAndProjectFolder_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("projectPath");
        QTest::newRow("unsaved form") << QString() << QDir::currentPath();
        QTest::newRow("saved form") << QStringLiteral("/srv/panels/line1/main.ui") << QStringLiteral("/srv/panels/line1");
        QTest::newRow("form at the root") << QStringLiteral("/main.ui") << QStringLiteral("/");
    }
    void formWindowAndProjectFolder()
    {
        openLabels();
        QFETCH(QString, fileName);
        QFETCH(QString, projectPath);
        QCOMPARE(DesignerHost::formWindowOf(m_label), static_cast<QWidget *>(m_form));
        QLabel outside;
        QVERIFY(!DesignerHost::formWindowOf(&outside));
        m_form->setFileName(fileName);
        QCOMPARE(host()->fileName(m_form), fileName);
        QCOMPARE(host()->projectPath(m_form), projectPath);
    }

    void undoableCommands_data()
    {
        QTest::addColumn<bool>("grouped");
        QTest::newRow("single property") << false;
        QTest::newRow("grouped command") << true;
    }
    void undoableCommands()
    {
        openLabels();
        QFETCH(bool, grouped);
        if (grouped)
            host()->beginCommand(m_form, QStringLiteral("Edit label"));
        host()->setUndoableProperty(m_label, QStringLiteral("text"), QStringLiteral("New"));
        if (grouped) {
            host()->setUndoableProperty(m_other, QStringLiteral("indent"), 7);
            host()->endCommand(m_form);
        }
        QCOMPARE(m_label->text(), QStringLiteral("New"));
        QCOMPARE(m_form->commandHistory()->count(), 1);
        QVERIFY(m_form->contents().contains(QLatin1String("<string>New</string>")));
        m_form->commandHistory()->undo();
        QCOMPARE(m_label->text(), QStringLiteral("Old"));
        QCOMPARE(m_other->indent(), -1);
        QVERIFY(!m_form->isDirty());
    }

    void selection()
    {
        openLabels();
        host()->clearSelection(m_form);
        host()->selectWidget(m_form, m_label, true);
        host()->selectWidget(m_form, m_other, true);
        QVERIFY(host()->isSelected(m_form, m_label) && host()->isSelected(m_form, m_other));
        host()->selectWidget(m_form, m_label, false);
        QVERIFY(!host()->isSelected(m_form, m_label) && host()->isSelected(m_form, m_other));
        QTRY_COMPARE(host()->propertyEditorObject(), static_cast<QObject *>(m_other));
    }

    void managedWidgetGetsAUniqueName()
    {
        openLabels();
        auto *page = new QLabel(m_form->mainContainer());
        page->setObjectName(QStringLiteral("label"));
        host()->manageWidget(m_form, page);
        QVERIFY(m_form->isManaged(page));
        QCOMPARE(page->objectName(), QStringLiteral("label_2"));
        host()->refreshEditors(m_form);
        QVERIFY(m_form->contents().contains(QLatin1String("name=\"label_2\"")));
        host()->unmanageWidget(m_form, page);
        QVERIFY(!m_form->contents().contains(QLatin1String("name=\"label_2\"")));
    }

private:
    void openLabels()
    {
        m_form = DesignerCore::instance().createForm(DesignerCore::formDocument(QStringLiteral(
            "<widget class=\"QLabel\" name=\"label\"><property name=\"geometry\"><rect><x>10</x><y>10</y>"
            "<width>100</width><height>30</height></rect></property>"
            "<property name=\"text\"><string>Old</string></property></widget>"
            "<widget class=\"QLabel\" name=\"other\"><property name=\"geometry\"><rect><x>10</x><y>50</y>"
            "<width>100</width><height>30</height></rect></property></widget>")));
        QVERIFY(m_form);
        m_label = DesignerCore::formWidget<QLabel>(m_form, QStringLiteral("label"));
        m_other = DesignerCore::formWidget<QLabel>(m_form, QStringLiteral("other"));
        QVERIFY(m_label && m_other);
    }
    FormWindowHost *host() const { return qobject_cast<FormWindowHost *>(DesignerHost::instance()); }

    QDesignerFormWindowInterface *m_form = nullptr;
    QLabel *m_label = nullptr;
    QLabel *m_other = nullptr;
};

QTEST_MAIN(TestCollectionDesigner)
#include "tst_collectiondesigner.moc"
