#include "tablesections.h"

namespace TableSections {

const QString SectionSeparator = QStringLiteral("##8!&*_");
const QString LanguageSeparator = QStringLiteral("##!&*_");

namespace {
QString afterMarker(const QString &text, QLatin1String marker, bool *found)
{
    *found = false;
    if (!text.contains(marker))
        return QString();
    const QStringList sections = text.split(SectionSeparator);
    for (const QString &section : sections) {
        const int at = section.indexOf(marker);
        if (at >= 0) {
            *found = true;
            return section.mid(at + marker.size());
        }
    }
    return QString();
}
} // namespace

QStringList multiTexts(const QString &text)
{
    bool found = false;
    const QString texts = afterMarker(text, QLatin1String("multiTexts="), &found);
    return found ? texts.split(LanguageSeparator) : QStringList();
}

QString columnWidth(const QString &text)
{
    bool found = false;
    return afterMarker(text, QLatin1String("columnWidth="), &found);
}

QString compose(const QStringList &texts, const QString &width)
{
    QStringList sections;
    if (!texts.isEmpty())
        sections << QStringLiteral("multiTexts=") + texts.join(LanguageSeparator);
    if (!width.isEmpty())
        sections << QStringLiteral("columnWidth=") + width;
    return sections.join(SectionSeparator);
}

} // namespace TableSections
