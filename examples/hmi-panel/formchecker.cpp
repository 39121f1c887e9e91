#include "formchecker.h"

#include "formdocument.h"
#include "formlimits.h"
#include "objectnamechecker.h"
#include "softkeypages.h"
#include "tableitembounds.h"
#include "widgetfactory.h"

#include <QBuffer>
#include <QFile>
#include <QHash>
#include <QVariant>
#include <QWidget>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <utility>

FormChecker::FormChecker(const WidgetPropertyCheck::Context &context, VariableCheck variableCheck)
    : m_context(context)
    , m_variableCheck(std::move(variableCheck))
{
}

bool FormChecker::check(QIODevice *device, QList<FormFinding> *findings)
{
    const QByteArray form = device->readAll(); // read twice with a variable check: as XML and as a form
    QBuffer buffer;
    buffer.setData(form);
    buffer.open(QIODevice::ReadOnly);
    FormDocument document;
    if (!document.read(&buffer)) {
        m_problem = document.problem();
        return false;
    }
    m_problem.clear();
    QList<FormFinding> found;
    if (document.tooDeepLine() > 0) {
        FormWidget holder;
        if (document.tooDeepWidget() >= 0)
            holder = document.widgets().at(document.tooDeepWidget());
        found.append(FormFinding::about(holder, document.tooDeepLine(), FormLimits::nestingProblem()));
    }
    for (const FormWidget &widget : document.widgets()) {
        m_classes.check(widget, &found);
        WidgetPropertyCheck::check(widget, m_context, &found);
    }
    ObjectNameChecker::check(document.widgets(), &found);
    for (const TableItemBounds::Stray &stray : TableItemBounds::find(QString::fromUtf8(form)))
        found.append({QString(), stray.line, stray.objectName, stray.className, TableItemBounds::problem(stray), QStringLiteral("items")});
    checkSoftKeys(document.widgets(), &found);
    if (m_variableCheck && document.tooDeepLine() == 0) { // a form the panel refuses registers nothing
        for (const FormVariable &variable : FormVariables::collect(form, document.widgets()))
            m_variableCheck(document.widgets().at(variable.widget), variable, &found);
    }
    std::stable_sort(found.begin(), found.end());
    *findings << capped(found);
    return true;
}

QList<FormFinding> FormChecker::capped(const QList<FormFinding> &found)
{
    // One mistake copied down a list of 10,000 entries is found from the first few.
    const auto key = [](const FormFinding &f) {
        return QStringList{f.className, f.objectName, f.property}.join(QChar::Null);
    };
    QHash<QString, int> total;
    for (const FormFinding &f : found)
        ++total[key(f)];
    QHash<QString, int> shown;
    QList<FormFinding> out;
    for (const FormFinding &f : found) {
        const QString k = key(f);
        const int n = ++shown[k];
        if (n > MaxFindingsPerProperty)
            continue;
        out.append(f);
        if (n == MaxFindingsPerProperty && total.value(k) > n) {
            FormFinding more = f;
            const int left = total.value(k) - n;
            more.message = f.property.isEmpty() ? QStringLiteral("... and %1 more").arg(left)
                                                : QStringLiteral("... and %1 more about \"%2\"").arg(left).arg(f.property);
            out.append(more);
        }
    }
    return out;
}

void FormChecker::checkSoftKeys(const QList<FormWidget> &widgets, QList<FormFinding> *findings) const
{
    QHash<QString, int> pages; // tab widget -> tab count
    int defaultCount = -1;
    for (const FormWidget &widget : widgets) {
        if (widget.className != QLatin1String("TabWidget"))
            continue;
        if (const FormProperty *count = widget.property(QStringLiteral("tabsCount"))) {
            pages.insert(widget.name, count->text.toInt());
            continue;
        }
        if (defaultCount < 0) {
            const std::unique_ptr<QWidget> tabs(WidgetFactory::create(widget.className, nullptr));
            defaultCount = tabs ? tabs->property("tabsCount").toInt() : 0;
        }
        pages.insert(widget.name, defaultCount);
    }
    for (const FormWidget &widget : widgets) {
        const FormProperty *target = widget.property(QStringLiteral("showTab"));
        if (!target)
            continue;
        QString name;
        int page = 0;
        QString problem;
        if (!SoftKeyPages::parseTarget(target->text, &name, &page))
            problem = QStringLiteral("\"showTab\" \"%1\" is not \"tabWidgetName:page\"").arg(target->text);
        else if (!pages.contains(name))
            problem = QStringLiteral("\"showTab\": the form has no tab widget \"%1\"").arg(name);
        else if (page >= pages.value(name))
            problem = QStringLiteral("\"showTab\": tab widget \"%1\" has no page %2 (it has %3)")
                          .arg(name).arg(page).arg(pages.value(name));
        if (!problem.isEmpty())
            findings->append(FormFinding::about(widget, target->line, problem, target->name));
    }
}

FormChecker::FileResult FormChecker::checkFile(const QString &fileName, QList<FormFinding> *findings)
{
    QFile file(fileName);
    m_problem = FormLimits::fileProblem(fileName);
    if (!m_problem.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        if (m_problem.isEmpty())
            m_problem = file.errorString();
        return FileResult::Unreadable;
    }
    QList<FormFinding> found;
    if (!check(&file, &found))
        return FileResult::NotAForm;
    for (FormFinding &finding : found)
        finding.file = fileName;
    *findings << found;
    return FileResult::Checked;
}

int FormChecker::run(const QString &fileName, const WidgetPropertyCheck::Context &context,
                     const VariableCheck &variableCheck)
{
    FormChecker checker(context, variableCheck);
    QList<FormFinding> findings;
    const FileResult result = checker.checkFile(fileName, &findings);
    if (result != FileResult::Checked) {
        std::printf("%s: %s: %s\n", qPrintable(fileName),
                    result == FileResult::Unreadable ? "cannot be read" : "not a form", qPrintable(checker.problem()));
        return 2;
    }
    for (const FormFinding &finding : std::as_const(findings))
        std::printf("%s\n", qPrintable(finding.toString()));
    std::fflush(stdout);
    return findings.isEmpty() ? 0 : 1;
}
