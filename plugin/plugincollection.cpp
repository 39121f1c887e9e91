#include "plugincollection.h"

#include "widgetpluginregistry.h"

PluginCollection::PluginCollection(QObject *parent)
    : QObject(parent)
    , m_widgets(WidgetPluginRegistry::instance().create(this))
{
}

QList<QDesignerCustomWidgetInterface *> PluginCollection::customWidgets() const
{
    return m_widgets;
}
