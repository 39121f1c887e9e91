#ifndef WIDGETFACTORY_H
#define WIDGETFACTORY_H

#include "hmiwidgets_export.h"

#include <QStringList>

class QMetaObject;
class QWidget;

// The library's widget classes by name, for loaders that build forms at run time. Each widget class
// registers itself (HMI_REGISTER_WIDGET in its source) and is created through its invokable
// (QWidget *parent) constructor.
class HMIWIDGETS_EXPORT WidgetFactory
{
public:
    static bool registerClass(const QMetaObject *metaObject);
    static QStringList classNames();
    // Null for a class the library does not have.
    static QWidget *create(const QString &className, QWidget *parent);
};

#define HMI_REGISTER_WIDGET(Class) \
    static const bool hmiRegistered##Class = WidgetFactory::registerClass(&Class::staticMetaObject);

#endif
