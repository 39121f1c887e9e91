#ifndef FORMFINDING_H
#define FORMFINDING_H

#include "formwidget.h"

#include <QString>

// Something in a form that would misbehave on the panel, at the line to correct.
struct FormFinding
{
    QString file;
    qint64 line = 0;
    QString objectName;
    QString className;
    QString message;
    QString property; // the property it is about, when one

    static FormFinding about(const FormWidget &widget, qint64 line, const QString &message,
                             const QString &property = QString())
    {
        return {QString(), line, widget.name, widget.className, message, property};
    }
    // FILE:LINE: widget "objectName" (Class): message
    QString toString() const;
    bool operator<(const FormFinding &other) const { return line < other.line; }
};

#endif
