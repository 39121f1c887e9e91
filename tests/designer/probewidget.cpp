#include "probewidget.h"

#include "formwindowhost.h"
#include "widgetpluginregistry.h"

#include <QIcon>

int ProbeWidgetPlugin::initializeCount = 0;

ProbeWidget::ProbeWidget(QWidget *parent)
    : QLabel(parent)
{
}

ProbeWidgetPlugin::ProbeWidgetPlugin(QObject *parent)
    : QObject(parent)
{
}

QIcon ProbeWidgetPlugin::icon() const
{
    return QIcon(QStringLiteral(":/BitButton.png"));
}

void ProbeWidgetPlugin::initialize(QDesignerFormEditorInterface *core)
{
    if (m_initialized)
        return;
    ++initializeCount;
    FormWindowHost::installFor(core);
    m_initialized = true;
}

QString ProbeWidgetPlugin::domXml() const
{
    return QStringLiteral("<widget class=\"ProbeWidget\" name=\"probeWidget\">\n"
                          " <property name=\"geometry\"><rect><x>0</x><y>0</y><width>120</width>"
                          "<height>40</height></rect></property>\n"
                          "</widget>\n");
}

void ProbeWidgetPlugin::registerInCollection()
{
    static const bool registered = WidgetPluginRegistry::instance().add(
        100, [](QObject *parent) -> QDesignerCustomWidgetInterface * { return new ProbeWidgetPlugin(parent); });
    Q_UNUSED(registered)
}
