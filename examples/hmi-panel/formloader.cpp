#include "formloader.h"

#include "widgetfactory.h"

#include <QFile>
#include <QWidget>

FormLoader::FormLoader(QObject *parent)
    : QUiLoader(parent)
{
}

QWidget *FormLoader::createWidget(const QString &className, QWidget *parent, const QString &name)
{
    if (QWidget *widget = WidgetFactory::create(className, parent)) {
        widget->setObjectName(name);
        return widget;
    }
    return QUiLoader::createWidget(className, parent, name);
}

QWidget *FormLoader::loadFile(const QString &fileName, QWidget *parent)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return nullptr;
    return load(&file, parent);
}
