#include "tablists.h"

#include "languagestate.h"

const QString TabLists::DefaultColor = QStringLiteral("#000000");

TabLists::TabLists()
    : texts{tag(0), tag(1)}
    , colors{DefaultColor, DefaultColor}
    , authorityTexts{QStringLiteral("0"), QStringLiteral("0")}
    , authorities{0, 0}
{
}

void TabLists::setAuthorityTexts(const QStringList &list)
{
    authorityTexts = list;
    authorities.clear();
    for (const QString &text : list)
        authorities.append(text.trimmed().toInt()); // not a number: 0, always enabled
}

void TabLists::repair(int tabs)
{
    if (colors.size() != tabs)
        colors = perLanguage(tabs, DefaultColor);
    if (authorityTexts.size() != tabs)
        setAuthorityTexts(perLanguage(tabs, QStringLiteral("0")));
    while (texts.size() < tabs)
        texts.append(tag(int(texts.size())));
}

void TabLists::fillMultiTexts()
{
    if (!multiTexts.isEmpty())
        return;
    for (const QString &text : std::as_const(texts)) {
        for (int language = 0; language < Languages; ++language)
            multiTexts.append(text);
    }
}

void TabLists::insert(int index)
{
    const QString text = tag(index);
    texts.insert(qBound(0, index, int(texts.size())), text);
    colors.insert(qBound(0, index, int(colors.size())), DefaultColor);
    authorityTexts.insert(qBound(0, index, int(authorityTexts.size())), QStringLiteral("0"));
    authorities.insert(qBound(0, index, int(authorities.size())), 0);
    const int at = qBound(0, index * Languages, int(multiTexts.size()));
    for (int language = 0; language < Languages; ++language)
        multiTexts.insert(at, text);
    if (!records.isEmpty()) {
        TextData record;
        record.texts = perLanguage(Languages, text);
        records.insert(qBound(0, index, int(records.size())), QList<TextData>{record});
    }
}

void TabLists::remove(int index)
{
    if (index >= 0 && index < texts.size())
        texts.removeAt(index);
    if (index >= 0 && index < colors.size())
        colors.removeAt(index);
    if (index >= 0 && index < authorityTexts.size())
        authorityTexts.removeAt(index);
    if (index >= 0 && index < authorities.size())
        authorities.removeAt(index);
    if (index >= 0 && index < records.size())
        records.removeAt(index);
    for (int language = Languages - 1; language >= 0; --language) {
        const int at = index * Languages + language;
        if (index >= 0 && at < multiTexts.size())
            multiTexts.removeAt(at);
    }
}

namespace {
template<typename List>
void moveEntry(List &list, int from, int to)
{
    if (from >= 0 && to >= 0 && from < list.size() && to < list.size())
        list.move(from, to);
}
} // namespace

void TabLists::move(int from, int to)
{
    moveEntry(texts, from, to);
    moveEntry(colors, from, to);
    moveEntry(authorityTexts, from, to);
    moveEntry(authorities, from, to);
    moveEntry(records, from, to);
    // The ten language texts of the tab move as one block.
    if (from >= 0 && to >= 0 && (std::max(from, to) + 1) * Languages <= multiTexts.size()) {
        const QStringList block = multiTexts.mid(from * Languages, Languages);
        for (int language = 0; language < Languages; ++language)
            multiTexts.removeAt(from * Languages);
        for (int language = 0; language < Languages; ++language)
            multiTexts.insert(to * Languages + language, block.at(language));
    }
}

QString TabLists::colorOf(int index) const
{
    return colors.value(index, DefaultColor);
}

QString TabLists::textOf(int index, int language) const
{
    if (!records.isEmpty()) {
        const QList<TextData> slot = records.value(index);
        return slot.isEmpty() ? texts.value(index) : LanguageState::textAt(slot.first().texts, language);
    }
    const int at = index * Languages + language;
    if (language >= 0 && language < Languages && at >= 0 && at < multiTexts.size())
        return multiTexts.at(at);
    return texts.value(index);
}

TextData TabLists::recordOf(int index, int languages) const
{
    if (index >= 0 && index < records.size() && !records.at(index).isEmpty())
        return records.at(index).first();
    TextData record;
    for (int language = 0; language < languages; ++language)
        record.texts.append(textOf(index, language));
    return record;
}
