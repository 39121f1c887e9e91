#include "formlimits.h"

#include <QFileInfo>
#include <QWidget>
#include <QXmlStreamReader>

#include <algorithm>

namespace {
bool isLevel(QStringView element)
{
    return element == QLatin1String("widget") || element == QLatin1String("layout");
}
} // namespace

QString FormLimits::fileProblem(const QString &fileName)
{
    const QFileInfo info(fileName);
    if (!info.exists())
        return QStringLiteral("No such file");
    if (!info.isFile())
        return QStringLiteral("not a regular file");
    if (info.size() > MaxFileBytes)
        return QStringLiteral("larger than %1 bytes").arg(MaxFileBytes);
    return QString();
}

bool FormLimits::Nesting::enter(QStringView element)
{
    const int levels = m_levels + (isLevel(element) ? 1 : 0);
    if (m_elements >= MaxElementDepth || levels > MaxNesting)
        return false;
    ++m_elements;
    m_levels = levels;
    return true;
}

void FormLimits::Nesting::leave(QStringView element)
{
    --m_elements;
    if (isLevel(element))
        --m_levels;
}

QString FormLimits::nestingProblem()
{
    return QStringLiteral("widgets and layouts nest more than %1 deep (or elements more than %2); the panel "
                          "refuses such forms")
        .arg(MaxNesting)
        .arg(MaxElementDepth);
}

qint64 FormLimits::firstTooDeep(QIODevice *device)
{
    QXmlStreamReader xml(device);
    Nesting nesting;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::StartElement && !nesting.enter(xml.name()))
            return xml.lineNumber();
        if (token == QXmlStreamReader::EndElement)
            nesting.leave(xml.name());
    }
    return 0; // malformed XML is the loader's to report
}

QString FormLimits::Geometry::toString() const
{
    return QStringLiteral("%1 x %2 at (%3, %4)").arg(width).arg(height).arg(x).arg(y);
}

FormLimits::Geometry FormLimits::clamped(const Geometry &g)
{
    const auto position = [](qint64 v) { return std::clamp<qint64>(v, -MaxExtent, MaxExtent); };
    const auto size = [](qint64 v) { return std::clamp<qint64>(v, 0, MaxExtent); };
    return {position(g.x), position(g.y), size(g.width), size(g.height)};
}

void FormLimits::clampGeometry(QWidget *form)
{
    QList<QWidget *> widgets = form->findChildren<QWidget *>();
    widgets.prepend(form);
    for (QWidget *w : std::as_const(widgets)) {
        // From the corners: a form's position and size may add up past what an int holds.
        const QRect r = w->geometry();
        const Geometry given{r.left(), r.top(), qint64(r.right()) - r.left() + 1, qint64(r.bottom()) - r.top() + 1};
        const Geometry kept = clamped(given);
        if (kept == given)
            continue;
        qWarning("%s \"%s\": property \"geometry\" %s is beyond the panel's %d x %d; it is clamped to %s",
                 w->metaObject()->className(), qPrintable(w->objectName()), qPrintable(given.toString()), MaxExtent,
                 MaxExtent, qPrintable(kept.toString()));
        w->setGeometry(int(kept.x), int(kept.y), int(kept.width), int(kept.height));
    }
}
