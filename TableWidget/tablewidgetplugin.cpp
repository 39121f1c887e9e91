#include "tablewidgetplugin.h"

#include "tableitemsextrainfo.h"
#include "tablewidget.h"
#include "widgetpluginregistry.h"

#include <QDesignerFormEditorInterface>
#include <QExtensionManager>
#include <QtDesigner/QDesignerExtraInfoExtension>

namespace {

CustomWidgetPlugin::Description description()
{
    CustomWidgetPlugin::Description d;
    d.name = QStringLiteral("TableWidget");
    d.group = QStringLiteral("Item Widgets");
    d.iconPath = QStringLiteral(":/table.png");
    d.includeFile = QStringLiteral("tablewidget.h");
    // The three columns a new table has, named, so that Designer's item editor lists them.
    QString columns;
    for (const char *name : {"Parameter", "Value", "Unit"})
        columns += QStringLiteral(" <column>\n  <property name=\"text\">\n   <string>%1</string>\n  </property>\n </column>\n")
                       .arg(QLatin1String(name));
    d.domXml = CustomWidgetPlugin::fixedDomXml(QStringLiteral("TableWidget"), QStringLiteral("tableWidget"), 320, 200,
                                               columns);
    return d;
}

} // namespace

HMI_REGISTER_WIDGET_PLUGIN(TableWidgetPlugin, WidgetPluginRegistry::TableWidget)

TableWidgetPlugin::TableWidgetPlugin(QObject *parent)
    : TypedWidgetPlugin(description(), parent)
{
}

void TableWidgetPlugin::initialize(QDesignerFormEditorInterface *core)
{
    if (isInitialized())
        return;
    TypedWidgetPlugin::initialize(core);
    core->extensionManager()->registerExtensions(new TableItemsExtraInfoFactory(core->extensionManager()),
                                                 Q_TYPEID(QDesignerExtraInfoExtension));
}
