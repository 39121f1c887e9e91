#ifndef OPERATORMESSAGE_H
#define OPERATORMESSAGE_H

#include "hmiwidgets_export.h"

#include <QString>

#include <functional>

class QWidget;

// Messages the widgets have for the operator (a file that cannot be read, nothing found). A plain
// application shows them in a message box. A panel with a message line of its own, or one that nobody
// watches (a screenshot run), installs a sink instead: a modal box there would wait for ever.
class HMIWIDGETS_EXPORT OperatorMessage
{
public:
    enum Kind { Information, Warning };
    using Sink = std::function<void(Kind kind, QWidget *source, const QString &title, const QString &text)>;

    // The sink that takes every message from now on; an empty one brings the message boxes back.
    static void setSink(Sink sink);
    static void information(QWidget *source, const QString &title, const QString &text);
    static void warning(QWidget *source, const QString &title, const QString &text);

private:
    static void tell(Kind kind, QWidget *source, const QString &title, const QString &text);
};

#endif
