#ifndef WIDGETPROPERTYCHECK_H
#define WIDGETPROPERTYCHECK_H

#include "formfinding.h"

#include <QList>
#include <QMap>
#include <QStringList>

// The properties a form gives one of the library's widgets, written into a fresh widget of that
// class in the form's order, as the panel's loader does: what the widget warns about (buffers it
// cannot read), clamps or ignores (channels, bit indexes, authorities, counts) is reported at the
// property's line, so the checks follow the widgets' own rules rather than copies of them. On top,
// what the widgets take silently: negative addresses, enum names the loader does not know, binding
// texts of table cells, word-library ids the panel's library does not hold; and geometry of any widget
// beyond what the panel's loader takes.
class WidgetPropertyCheck
{
public:
    struct Context
    {
        int channelCount = 1;
        QMap<int, QStringList> words;
    };

    // Nothing for a class that is not one of the library's.
    static void check(const FormWidget &widget, const Context &context, QList<FormFinding> *findings);
};

#endif
