#include "widgetfactory.h"

#include <QHash>
#include <QMetaObject>
#include <QWidget>

namespace {
QHash<QString, const QMetaObject *> &classes()
{
    static QHash<QString, const QMetaObject *> registry;
    return registry;
}
} // namespace

bool WidgetFactory::registerClass(const QMetaObject *metaObject)
{
    classes().insert(QString::fromLatin1(metaObject->className()), metaObject);
    return true;
}

QStringList WidgetFactory::classNames()
{
    QStringList names = classes().keys();
    names.sort();
    return names;
}

QWidget *WidgetFactory::create(const QString &className, QWidget *parent)
{
    const QMetaObject *metaObject = classes().value(className);
    if (!metaObject)
        return nullptr;
    QObject *object = metaObject->newInstance(Q_ARG(QWidget *, parent));
    return qobject_cast<QWidget *>(object);
}
