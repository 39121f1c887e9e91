#include "bufferwarning.h"

#include <QObject>
#include <QString>
#include <QtGlobal>

void warnUnreadableBuffer(const QObject *widget, const char *property)
{
    qWarning("%s \"%s\": property \"%s\" is malformed or larger than it can be; it is ignored",
             widget->metaObject()->className(), qPrintable(widget->objectName()), property);
}

void warnProperty(const QObject *widget, const char *property, const QString &what)
{
    qWarning("%s \"%s\": property \"%s\": %s", widget->metaObject()->className(), qPrintable(widget->objectName()),
             property, qPrintable(what));
}
