#include "objectnamechecker.h"

#include <QHash>

void ObjectNameChecker::check(const QList<FormWidget> &widgets, QList<FormFinding> *findings)
{
    QHash<QString, qint64> firstLine;
    for (const FormWidget &widget : widgets) {
        if (widget.name.isEmpty())
            continue;
        const auto it = firstLine.constFind(widget.name);
        if (it == firstLine.constEnd()) {
            firstLine.insert(widget.name, widget.line);
            continue;
        }
        findings->append(FormFinding::about(
            widget, widget.line, QStringLiteral("duplicate object name; the widget on line %1 has it too").arg(*it)));
    }
}
