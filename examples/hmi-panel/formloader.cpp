#include "formloader.h"

#include "formlimits.h"
#include "inputwidget.h"
#include "tableitembounds.h"
#include "widgetfactory.h"

#include <QBuffer>
#include <QFile>
#include <QWidget>

FormLoader::FormLoader(QObject *parent)
    : QUiLoader(parent)
{
}

QWidget *FormLoader::createWidget(const QString &className, QWidget *parent, const QString &name)
{
    if (QWidget *widget = WidgetFactory::create(className, parent)) {
        widget->setObjectName(name);
        return widget;
    }
    // The panel's own input line, which the library's tables type into.
    if (className == QLatin1String("InputWidget")) {
        auto *input = new InputWidget(parent);
        input->setObjectName(name);
        return input;
    }
    QWidget *widget = QUiLoader::createWidget(className, parent, name);
    if (!widget)
        m_missing << QStringLiteral("%1 \"%2\"").arg(className, name);
    return widget;
}

QWidget *FormLoader::loadForm(const QByteArray &form, QWidget *parent)
{
    QBuffer buffer;
    buffer.setData(TableItemBounds::withoutStray(form));
    buffer.open(QIODevice::ReadOnly);
    return load(&buffer, parent);
}

QWidget *FormLoader::loadFile(const QString &fileName, QWidget *parent)
{
    m_missing.clear();
    m_problem = FormLimits::fileProblem(fileName);
    if (!m_problem.isEmpty())
        return nullptr;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        m_problem = file.errorString();
        return nullptr;
    }
    if (const qint64 line = FormLimits::firstTooDeep(&file)) {
        m_problem = QStringLiteral("line %1: %2").arg(line).arg(FormLimits::nestingProblem());
        return nullptr;
    }
    file.seek(0);
    QWidget *form = loadForm(file.readAll(), parent);
    if (!form) {
        m_problem = errorString().isEmpty() ? QStringLiteral("not a form") : errorString();
        return nullptr;
    }
    if (!m_missing.isEmpty()) {
        m_problem = QStringLiteral("no widget class for %1").arg(m_missing.join(QStringLiteral(", ")));
        delete form;
        return nullptr;
    }
    FormLimits::clampGeometry(form);
    return form;
}
