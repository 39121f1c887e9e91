// The widget collection as Designer sees it: the registry's order, the ten descriptors with groups,
// headers, icons and initial XML, the widget box, every offered widget placed from its initial XML
// with its one task menu action, and a form holding every widget saved, reopened and saved again alike.
#include "designercore.h"
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

class PlaceDescriptor : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    PlaceDescriptor(const QString &name, QObject *parent) : QObject(parent), m_name(name) {}
    QString name() const override { return m_name; }
    QString group() const override { return QString(); }
    QString toolTip() const override { return QString(); }
    QString whatsThis() const override { return QString(); }
    QString includeFile() const override { return QString(); }
    QIcon icon() const override { return QIcon(); }
    bool isContainer() const override { return false; }
    QWidget *createWidget(QWidget *parent) override { return new QWidget(parent); }

private:
    QString m_name;
};

template <int N> QDesignerCustomWidgetInterface *place(QObject *parent)
{
    return new PlaceDescriptor(QString::number(N), parent);
}

} // namespace

class TestCollectionDesigner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setFont(QFont(QStringLiteral("Sans Serif"), 9)); }
    void cleanup() { DesignerCore::instance().closeForms(); }
    void cleanupTestCase() { DesignerCore::release(); }

    void registryOrder_data()
    {
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("ordered by place") << QStringList{QStringLiteral("1"), QStringLiteral("5"), QStringLiteral("7")};
        QTest::newRow("taken place refused") << QStringList{QStringLiteral("8")};
    }
    void registryOrder()
    {
        QFETCH(QStringList, expected);
        WidgetPluginRegistry registry;
        if (expected.size() == 3) {
            QVERIFY(registry.add(WidgetPluginRegistry::ButtonGroup, place<7>));
            QVERIFY(registry.add(WidgetPluginRegistry::FunctionButton, place<1>));
            QVERIFY(registry.add(WidgetPluginRegistry::BitButton, place<5>));
        } else {
            QVERIFY(registry.add(WidgetPluginRegistry::TabWidget, place<8>));
            QTest::ignoreMessage(QtWarningMsg, "WidgetPluginRegistry: place 8 of the plugin collection is already taken");
            QVERIFY(!registry.add(WidgetPluginRegistry::TabWidget, place<1>));
        }
        QObject parent;
        QStringList names;
        for (QDesignerCustomWidgetInterface *descriptor : registry.create(&parent)) {
            names.append(descriptor->name());
            QCOMPARE(dynamic_cast<QObject *>(descriptor)->parent(), &parent);
        }
        QCOMPARE(names, expected);
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
        for (QStringList *names : {&ours[QStringLiteral("Buttons")], &expected[QStringLiteral("Buttons")],
                                   &ours[QStringLiteral("Containers")], &expected[QStringLiteral("Containers")]})
            names->sort();
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
        if (first != second) {
            const QStringList a = first.split(QLatin1Char('\n')), b = second.split(QLatin1Char('\n'));
            for (int i = 0; i < qMin(a.size(), b.size()); ++i) {
                if (a.at(i) != b.at(i)) {
                    qWarning("line %d differs:\n%s\n----\n%s", i + 1, qPrintable(a.mid(qMax(0, i - 12), 40).join('\n')),
                             qPrintable(b.mid(qMax(0, i - 12), 40).join('\n')));
                    break;
                }
            }
        }
        QCOMPARE(second, first);
    }
};

QTEST_MAIN(TestCollectionDesigner)
#include "tst_collectiondesigner.moc"
