#ifndef PLUGINCOLLECTION_H
#define PLUGINCOLLECTION_H

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <QObject>

// What Qt Designer loads: the descriptors of the offered widgets, in widget box order. The widget
// folders register their descriptors with WidgetPluginRegistry; each descriptor is a child of the
// collection and dies with it.
class PluginCollection : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

public:
    explicit PluginCollection(QObject *parent = nullptr);

    QList<QDesignerCustomWidgetInterface *> customWidgets() const override;

private:
    QList<QDesignerCustomWidgetInterface *> m_widgets;
};

#endif
