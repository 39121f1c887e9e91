#include "designercore.h"
#include "plugincollection.h"
#include "probewidget.h"
#include "widgetpluginregistry.h"

#include <QDir>
#include <QPluginLoader>
#include <QTest>

namespace {

// A descriptor that only tells its place, for the registry's ordering.
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

QString pluginFile()
{
    for (const QString &folder : qEnvironmentVariable("QT_PLUGIN_PATH").split(QLatin1Char(':'))) {
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
    void loadedCollectionHoldsTheRegistry()
    {
        ProbeWidgetPlugin::registerInCollection();
        QVERIFY(DesignerCore::instance().core());
        QPluginLoader loader(pluginFile());
        auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(loader.instance());
        QVERIFY2(collection, qPrintable(loader.errorString()));
        const QList<QDesignerCustomWidgetInterface *> widgets = collection->customWidgets();
        QCOMPARE(widgets.size(), WidgetPluginRegistry::instance().count());
        QCOMPARE(widgets.last()->name(), QStringLiteral("ProbeWidget")); // place 100, after every widget
        QCOMPARE(ProbeWidgetPlugin::initializeCount, 1);
        DesignerCore::release();
    }

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
            QTest::ignoreMessage(QtWarningMsg,
                                 "WidgetPluginRegistry: place 8 of the plugin collection is already taken");
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
};

QTEST_MAIN(TestPluginCollection)
#include "tst_plugincollection.moc"
