#include "widgetpluginregistry.h"

#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <QtGlobal>

WidgetPluginRegistry &WidgetPluginRegistry::instance()
{
    // Function-local so that registrations from other files' static initialisers find it built.
    static WidgetPluginRegistry registry;
    return registry;
}

bool WidgetPluginRegistry::add(int position, Factory factory)
{
    if (!factory || m_factories.count(position) != 0) {
        qWarning("WidgetPluginRegistry: place %d of the plugin collection is already taken", position);
        return false;
    }
    m_factories.emplace(position, factory);
    return true;
}

QList<QDesignerCustomWidgetInterface *> WidgetPluginRegistry::create(QObject *parent) const
{
    QList<QDesignerCustomWidgetInterface *> descriptors;
    for (const auto &entry : m_factories)
        descriptors.append(entry.second(parent));
    return descriptors;
}
