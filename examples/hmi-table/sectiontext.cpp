#include "sectiontext.h"

#include <algorithm>

namespace {

const QString MultiTexts = QStringLiteral("multiTexts=");
const QString ColumnWidth = QStringLiteral("columnWidth=");

QString join(const QStringList &sections)
{
    return sections.join(SectionText::sectionSeparator());
}

} // namespace

QString SectionText::sectionSeparator() { return QStringLiteral("##8!&*_"); }
QString SectionText::languageSeparator() { return QStringLiteral("##!&*_"); }

TableCells::Item SectionText::cell(const QStringList &languages, const QString &binding)
{
    TableCells::Item item;
    item.text = languages.value(0);
    QStringList sections;
    if (!binding.isEmpty())
        sections << binding;
    if (languages.size() > 1)
        sections << MultiTexts + languages.join(languageSeparator());
    item.whatsThis = join(sections);
    return item;
}

void SectionText::splitCell(const TableCells::Item &item, QStringList *languages, QString *binding)
{
    const QString &w = item.whatsThis;
    int start = w.startsWith(MultiTexts) ? 0 : -1;
    const int marked = w.lastIndexOf(sectionSeparator() + MultiTexts);
    if (marked >= 0)
        start = marked + sectionSeparator().size();
    if (start >= 0) {
        const QStringList candidate = w.mid(start + MultiTexts.size()).split(languageSeparator());
        const QString rest = start == 0 ? QString() : w.left(start - sectionSeparator().size());
        // Only a split that rebuilds the item exactly may be written as languages, and no language
        // may run on into a following section.
        const bool runsOn = std::any_of(candidate.cbegin(), candidate.cend(),
                                        [](const QString &l) { return l.contains(sectionSeparator()); });
        // A panel takes the first multiTexts section, so the binding must hold none.
        if (candidate.size() > 1 && candidate.size() <= MaxLanguages && !runsOn && !rest.contains(MultiTexts)
            && cell(candidate, rest) == item) {
            *languages = candidate;
            *binding = rest;
            return;
        }
    }
    *languages = QStringList{item.text};
    *binding = w;
}

TableCells::Item SectionText::header(const QStringList &languages, int width)
{
    TableCells::Item item;
    item.text = languages.value(0);
    QStringList sections;
    if (languages.size() > 1)
        sections << MultiTexts + languages.join(languageSeparator());
    if (width >= 0)
        sections << ColumnWidth + QString::number(width);
    item.whatsThis = join(sections);
    return item;
}

bool SectionText::splitHeader(const TableCells::Item &item, QStringList *languages, int *width)
{
    *languages = QStringList{item.text};
    *width = -1;
    if (item.whatsThis.isEmpty())
        return true;
    QStringList found{item.text};
    bool known = true;
    for (const QString &section : item.whatsThis.split(sectionSeparator())) {
        if (section.startsWith(MultiTexts)) {
            found = section.mid(MultiTexts.size()).split(languageSeparator());
        } else if (section.startsWith(ColumnWidth)) {
            bool ok = false;
            const int w = section.mid(ColumnWidth.size()).toInt(&ok);
            if (ok && w >= 0 && w <= MaxColumnWidth)
                *width = w;
            else
                known = false;
        } else {
            known = false;
        }
    }
    if (known && found.size() <= MaxLanguages && header(found, *width) == item) {
        *languages = found;
        return true;
    }
    return false;
}
