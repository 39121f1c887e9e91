#include "customwidgetplugin.h"

#include "formwindowhost.h"
#include "previewsession.h"

#include <QFile>

#include <QDesignerFormEditorInterface>
#include <QExtensionFactory>
#include <QExtensionManager>
#include <QIcon>
#include <QtDesigner/QDesignerTaskMenuExtension>

CustomWidgetPlugin::CustomWidgetPlugin(const Description &description, QObject *parent)
    : QObject(parent)
    , m_description(description)
{
}

QString CustomWidgetPlugin::name() const { return m_description.name; }
QString CustomWidgetPlugin::group() const { return m_description.group; }
QString CustomWidgetPlugin::toolTip() const { return QString(); }
QString CustomWidgetPlugin::whatsThis() const { return QString(); }
QString CustomWidgetPlugin::includeFile() const { return m_description.includeFile; }
QIcon CustomWidgetPlugin::icon() const
{
    // A descriptor may name a picture the resources do not have: its icon is then empty.
    return QFile::exists(m_description.iconPath) ? QIcon(m_description.iconPath) : QIcon();
}
bool CustomWidgetPlugin::isContainer() const { return m_description.container; }
bool CustomWidgetPlugin::isInitialized() const { return m_initialized; }
QString CustomWidgetPlugin::domXml() const { return m_description.domXml; }
QString CustomWidgetPlugin::codeTemplate() const { return QString(); }

void CustomWidgetPlugin::initialize(QDesignerFormEditorInterface *core)
{
    if (m_initialized)
        return;
    FormWindowHost::installFor(core);
    QExtensionManager *manager = core->extensionManager();
    if (QExtensionFactory *factory = createTaskMenuFactory(manager)) {
        // Qt 5 and 6 Designer ask by their own id; hosts of the Qt 4 interfaces by the old one.
        manager->registerExtensions(factory, QStringLiteral("com.trolltech.Qt.Designer.TaskMenu"));
        manager->registerExtensions(factory, Q_TYPEID(QDesignerTaskMenuExtension));
    }
    m_initialized = true;
}

QWidget *CustomWidgetPlugin::made(QWidget *widget, QWidget *parent)
{
    PreviewSession::adopt(parent);
    return widget;
}

QString CustomWidgetPlugin::fixedDomXml(const QString &className, const QString &objectName, int width, int height,
                                        const QString &children)
{
    return QStringLiteral("<widget class=\"%1\" name=\"%2\">\n"
                          " <property name=\"geometry\">\n"
                          "  <rect>\n"
                          "   <x>0</x>\n"
                          "   <y>0</y>\n"
                          "   <width>%3</width>\n"
                          "   <height>%4</height>\n"
                          "  </rect>\n"
                          " </property>\n"
                          "%5"
                          "</widget>\n")
        .arg(className)
        .arg(objectName)
        .arg(width)
        .arg(height)
        .arg(children);
}

QString CustomWidgetPlugin::textButtonDomXml(const QString &className, const QString &objectName, int width,
                                             int height, const QString &text, const QStringList &multiLineProperties)
{
    QString multiLine;
    for (const QString &property : multiLineProperties)
        multiLine += QStringLiteral("  <stringpropertyspecification name=\"%1\" type=\"multiline\"/>\n").arg(property);
    const QString xml = QStringLiteral("<ui language=\"c++\">\n"
                                       "<widget class=\"%1\" name=\"%2\">\n"
                                       " <property name=\"geometry\">\n"
                                       "  <rect>\n"
                                       "   <x>0</x>\n"
                                       "   <y>0</y>\n"
                                       "   <width>%3</width>\n"
                                       "   <height>%4</height>\n"
                                       "  </rect>\n"
                                       " </property>\n"
                                       " <property name=\"toolTip\">\n"
                                       "  <string>%5</string>\n"
                                       " </property>\n"
                                       " <property name=\"whatsThis\">\n"
                                       "  <string>%6</string>\n"
                                       " </property>\n"
                                       " <property name=\"text\">\n"
                                       "  <string>%7</string>\n"
                                       " </property>\n"
                                       "</widget>\n"
                                       " <customwidgets>\n"
                                       " <customwidget>\n"
                                       " <propertyspecifications>\n");
    return xml.arg(className)
               .arg(objectName)
               .arg(width)
               .arg(height)
               .arg(QString())
               .arg(QString())
               .arg(text)
           + multiLine
           + QStringLiteral(" </propertyspecifications>\n"
                            " </customwidget>\n"
                            " </customwidgets>\n"
                            "</ui>\n");
}
