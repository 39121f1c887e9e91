#ifndef OBJECTNAMECHECKER_H
#define OBJECTNAMECHECKER_H

#include "formfinding.h"

#include <QList>

// Object names used by more than one widget of a form: lookups by name (the panel's own, a table's
// input line, a grid's cells, connections) find only one of them, and uic refuses the form.
class ObjectNameChecker
{
public:
    static void check(const QList<FormWidget> &widgets, QList<FormFinding> *findings);
};

#endif
