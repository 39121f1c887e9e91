#ifndef FORMCHECKER_H
#define FORMCHECKER_H

#include "formfinding.h"
#include "formvariables.h"
#include "widgetclasschecker.h"
#include "widgetpropertycheck.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

class QIODevice;

// Reads a form as the panel would run it and lists, with line numbers, what would misbehave:
// classes the panel cannot make, duplicate object names, properties the widgets clamp, ignore or
// cannot read, table bindings that do not parse, word ids missing from the panel's library, soft
// keys that name no page, and forms nested deeper or larger than the panel takes. With a variable
// check, also what it finds about each variable the form shows or writes.
class FormChecker
{
public:
    using VariableCheck = std::function<void(const FormWidget &, const FormVariable &, QList<FormFinding> *)>;

    explicit FormChecker(const WidgetPropertyCheck::Context &context, VariableCheck variableCheck = {});

    // False, with problem() saying why, when the device holds no readable form.
    bool check(QIODevice *device, QList<FormFinding> *findings);
    enum class FileResult { Checked, Unreadable, NotAForm };
    // The same for a file the panel would take (a regular file within its limits); the findings carry
    // the file's name, problem() says why for the other results.
    FileResult checkFile(const QString &fileName, QList<FormFinding> *findings);
    QString problem() const { return m_problem; }

    // At most this many findings about one property of a widget (or about the widget itself) are
    // listed, then one line says how many more there are.
    static constexpr int MaxFindingsPerProperty = 20;

    // Checks the file and prints its findings ("FILE:LINE: ...") to standard output. 0 for a clean
    // form, 1 for a form with findings, 2 for a file that is not a readable form.
    static int run(const QString &fileName, const WidgetPropertyCheck::Context &context,
                   const VariableCheck &variableCheck = {});

private:
    static QList<FormFinding> capped(const QList<FormFinding> &found);
    void checkSoftKeys(const QList<FormWidget> &widgets, QList<FormFinding> *findings) const;

    WidgetPropertyCheck::Context m_context;
    VariableCheck m_variableCheck;
    WidgetClassChecker m_classes;
    QString m_problem;
};

#endif
