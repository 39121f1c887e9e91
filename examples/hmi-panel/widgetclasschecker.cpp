#include "widgetclasschecker.h"

#include "formloader.h"
#include "warningcapture.h"
#include "widgetfactory.h"

#include <QWidget>

WidgetClassChecker::WidgetClassChecker()
    : m_loader(std::make_unique<FormLoader>())
{
    const QStringList qtClasses = m_loader->availableWidgets();
    const QStringList ours = WidgetFactory::classNames();
    for (const QString &name : qtClasses)
        m_known.insert(name);
    for (const QString &name : ours)
        m_known.insert(name);
}

WidgetClassChecker::~WidgetClassChecker() = default;

bool WidgetClassChecker::isKnown(const QString &className)
{
    if (className.isEmpty())
        return false;
    if (m_known.contains(className))
        return true;
    // The panel's loader also makes a few classes that no list names (Designer's "Line", the
    // panel's input line): ask it once per class.
    const auto it = m_probed.constFind(className);
    if (it != m_probed.constEnd())
        return *it;
    WarningCapture quiet; // the loader's complaint about a class it lacks is this check's finding
    const std::unique_ptr<QWidget> made(m_loader->createWidget(className, nullptr, QString()));
    m_probed.insert(className, made != nullptr);
    return made != nullptr;
}

void WidgetClassChecker::check(const FormWidget &widget, QList<FormFinding> *findings)
{
    if (!isKnown(widget.className)) {
        findings->append(FormFinding::about(widget, widget.line,
                                            widget.className.isEmpty()
                                                ? QStringLiteral("no widget class given; the panel refuses the form")
                                                : QStringLiteral("unknown widget class; the panel refuses the form")));
    } else if (!widget.isRoot && widget.className == QLatin1String("QDialog")) {
        findings->append(FormFinding::about(widget, widget.line,
                                            QStringLiteral("a dialog inside the form: the widgets on it cannot attach "
                                                           "to the controller; the panel refuses the form")));
    }
}
