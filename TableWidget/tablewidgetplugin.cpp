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
    d.domXml = CustomWidgetPlugin::fixedDomXml(QStringLiteral("TableWidget"), QStringLiteral("tableWidget"), 320, 200);
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
