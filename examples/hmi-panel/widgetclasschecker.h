#ifndef WIDGETCLASSCHECKER_H
#define WIDGETCLASSCHECKER_H

#include "formfinding.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include <memory>

class FormLoader;

// Widgets the panel cannot run: a class neither Qt's form loader nor the library makes (the panel
// refuses such a form), and a plain QDialog inside the form (its widgets would take it for their
// form, which carries no application).
class WidgetClassChecker
{
public:
    WidgetClassChecker();
    ~WidgetClassChecker();

    bool isKnown(const QString &className);
    void check(const FormWidget &widget, QList<FormFinding> *findings);

private:
    QSet<QString> m_known;
    QHash<QString, bool> m_probed;
    std::unique_ptr<FormLoader> m_loader;
};

#endif
