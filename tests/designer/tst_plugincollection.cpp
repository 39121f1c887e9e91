#include "designercore.h"
#include "formwindowhost.h"
#include "plugincollection.h"
#include "probewidget.h"
#include "widgetpluginregistry.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerWidgetDataBaseInterface>

#include <QDir>
#include <QImage>
#include <QJsonObject>
#include <QPluginLoader>
#include <QTest>

namespace {

// A descriptor that only tells its place, for the registry's ordering.
class PlaceDescriptor : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    PlaceDescriptor(const QString &name, QObject *parent)
        : QObject(parent)
        , m_name(name)
    {
    }
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

QString pluginFile()
{
    const QStringList folders = qEnvironmentVariable("QT_PLUGIN_PATH").split(QLatin1Char(':'));
    for (const QString &folder : folders) {
        const QString file = QDir(folder).filePath(QStringLiteral("designer/libhmiwidgetsplugin.so"));
        if (QFile::exists(file))
            return file;
    }
    return QString();
}

} // namespace

class TestPluginCollection : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void pluginFileDeclaresTheCollection();
    void collectionHoldsTheRegisteredDescriptors();
    void coreListsTheDescriptorsWidget();
    void initialisationInstallsTheHostOnce();
    void formMakesTheWidgetFromItsDomXml();
    void registryOrdersByPlace();
    void registryRefusesATakenPlace();
    void resources_data();
    void resources();

private:
    QObject *collectionInstance();
};

void TestPluginCollection::initTestCase()
{
    ProbeWidgetPlugin::registerInCollection();
    QVERIFY2(!pluginFile().isEmpty(), "the plugin is not on QT_PLUGIN_PATH");
    QVERIFY(DesignerCore::instance().core());
}

void TestPluginCollection::cleanupTestCase()
{
    DesignerCore::release();
}

QObject *TestPluginCollection::collectionInstance()
{
    QPluginLoader loader(pluginFile());
    return loader.instance();
}

void TestPluginCollection::pluginFileDeclaresTheCollection()
{
    QPluginLoader loader(pluginFile());
    QCOMPARE(loader.metaData().value(QStringLiteral("IID")).toString(),
             QStringLiteral("org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface"));
    QObject *instance = loader.instance();
    QVERIFY2(instance, qPrintable(loader.errorString()));
    QCOMPARE(instance->metaObject()->className(), "PluginCollection");
    QVERIFY(qobject_cast<QDesignerCustomWidgetCollectionInterface *>(instance));
    QVERIFY(instance->qt_metacast("QDesignerCustomWidgetCollectionInterface"));
    // The same object Designer got: the collection is made once per loaded plugin.
    QCOMPARE(collectionInstance(), instance);
}

void TestPluginCollection::collectionHoldsTheRegisteredDescriptors()
{
    auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(collectionInstance());
    QVERIFY(collection);
    const QList<QDesignerCustomWidgetInterface *> widgets = collection->customWidgets();
    QCOMPARE(widgets.size(), WidgetPluginRegistry::instance().count());
    QVERIFY(!widgets.isEmpty());
    // The probe's place (100) is after every widget's place.
    QCOMPARE(widgets.last()->name(), QStringLiteral("ProbeWidget"));
    for (QDesignerCustomWidgetInterface *widget : widgets)
        QCOMPARE(dynamic_cast<QObject *>(widget)->parent(), collectionInstance());
}

void TestPluginCollection::coreListsTheDescriptorsWidget()
{
    QDesignerWidgetDataBaseInterface *database = DesignerCore::instance().core()->widgetDataBase();
    const int index = database->indexOfClassName(QStringLiteral("ProbeWidget"));
    QVERIFY(index >= 0);
    QDesignerWidgetDataBaseItemInterface *item = database->item(index);
    QCOMPARE(item->group(), QStringLiteral("HMI Tests"));
    QCOMPARE(item->includeFile(), QStringLiteral("probewidget.h"));
    QVERIFY(item->isCustom());
    QVERIFY(!item->isContainer());
}

void TestPluginCollection::initialisationInstallsTheHostOnce()
{
    QCOMPARE(ProbeWidgetPlugin::initializeCount, 1);
    auto *host = qobject_cast<FormWindowHost *>(DesignerHost::instance());
    QVERIFY(host);
    QCOMPARE(host->core(), DesignerCore::instance().core());

    auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(collectionInstance());
    QDesignerCustomWidgetInterface *probe = collection->customWidgets().last();
    QVERIFY(probe->isInitialized());
    probe->initialize(DesignerCore::instance().core());
    QCOMPARE(ProbeWidgetPlugin::initializeCount, 1);
    QCOMPARE(DesignerHost::instance(), host);
}

void TestPluginCollection::formMakesTheWidgetFromItsDomXml()
{
    auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(collectionInstance());
    const QString domXml = collection->customWidgets().last()->domXml();
    QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(domXml));
    QVERIFY(form);
    auto *probe = DesignerCore::formWidget<ProbeWidget>(form, QStringLiteral("probeWidget"));
    QVERIFY(probe);
    QCOMPARE(probe->size(), QSize(120, 40));
    QCOMPARE(DesignerHost::formWindowOf(probe), static_cast<QWidget *>(form));
    DesignerCore::instance().closeForms();
}

void TestPluginCollection::registryOrdersByPlace()
{
    WidgetPluginRegistry registry;
    QVERIFY(registry.add(WidgetPluginRegistry::ButtonGroup, place<7>));
    QVERIFY(registry.add(WidgetPluginRegistry::FunctionButton, place<1>));
    QVERIFY(registry.add(WidgetPluginRegistry::BitButton, place<5>));
    QCOMPARE(registry.count(), 3);

    QObject parent;
    const QList<QDesignerCustomWidgetInterface *> descriptors = registry.create(&parent);
    QStringList names;
    for (QDesignerCustomWidgetInterface *descriptor : descriptors) {
        names.append(descriptor->name());
        QCOMPARE(dynamic_cast<QObject *>(descriptor)->parent(), &parent);
    }
    QCOMPARE(names, (QStringList{QStringLiteral("1"), QStringLiteral("5"), QStringLiteral("7")}));
}

void TestPluginCollection::registryRefusesATakenPlace()
{
    WidgetPluginRegistry registry;
    QVERIFY(registry.add(WidgetPluginRegistry::TabWidget, place<8>));
    QTest::ignoreMessage(QtWarningMsg, "WidgetPluginRegistry: place 8 of the plugin collection is already taken");
    QVERIFY(!registry.add(WidgetPluginRegistry::TabWidget, place<1>));
    QObject parent;
    const QList<QDesignerCustomWidgetInterface *> descriptors = registry.create(&parent);
    QCOMPARE(descriptors.size(), 1);
    QCOMPARE(descriptors.first()->name(), QStringLiteral("8"));
}

void TestPluginCollection::resources_data()
{
    QTest::addColumn<QString>("path");
    for (const char *name : {":/BitButton.png", ":/FunctionButton.png", ":/up.png", ":/down.png", ":/plus.png",
                             ":/minus.png"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestPluginCollection::resources()
{
    QFETCH(QString, path);
    const QImage image(path);
    QVERIFY(!image.isNull());
    QCOMPARE(image.size(), QSize(32, 32));
    QVERIFY(image.hasAlphaChannel());
}

QTEST_MAIN(TestPluginCollection)
#include "tst_plugincollection.moc"
