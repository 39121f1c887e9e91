#include "sectiontext.h"

#include "tablesections.h"
#include "textdata.h"

#include <algorithm>

namespace {

// A single language is the display text alone: it needs no section.
QStringList languageSection(const QStringList &languages)
{
    return languages.size() > 1 ? languages : QStringList();
}

} // namespace

TableCells::Item SectionText::cell(const QStringList &languages, const QString &binding)
{
    TableCells::Item item;
    item.text = languages.value(0);
    QStringList sections;
    if (!binding.isEmpty())
        sections << binding;
    const QString texts = TableSections::compose(languageSection(languages), QString());
    if (!texts.isEmpty())
        sections << texts;
    item.whatsThis = sections.join(TableSections::SectionSeparator);
    return item;
}

void SectionText::splitCell(const TableCells::Item &item, QStringList *languages, QString *binding)
{
    const QString &w = item.whatsThis;
    const QStringList found = TableSections::multiTexts(w);
    if (found.size() > 1 && found.size() <= TextData::MaxLanguages) {
        // What comes before the languages' section and its separator; cell() below confirms the cut.
        const int sectionSize = int(TableSections::compose(found, QString()).size());
        const QString rest = w.left(std::max(0, int(w.size()) - sectionSize - int(TableSections::SectionSeparator.size())));
        // A panel takes the first multiTexts section, so the binding must hold none.
        if (TableSections::multiTexts(rest).isEmpty() && cell(found, rest) == item) {
            *languages = found;
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
    item.whatsThis = TableSections::compose(languageSection(languages), width >= 0 ? QString::number(width) : QString());
    return item;
}

bool SectionText::splitHeader(const TableCells::Item &item, QStringList *languages, int *width)
{
    *languages = QStringList{item.text};
    *width = -1;
    bool ok = false;
    const int w = TableSections::columnWidth(item.whatsThis).toInt(&ok);
    if (ok && w >= 0 && w <= MaxColumnWidth)
        *width = w;
    QStringList found = TableSections::multiTexts(item.whatsThis);
    if (found.isEmpty())
        found = *languages;
    // Anything header() would not write again (other sections, another order, a width spelt
    // otherwise) leaves the languages at the text alone.
    if (found.size() <= TextData::MaxLanguages && header(found, *width) == item) {
        *languages = found;
        return true;
    }
    return false;
}
