#ifndef TABLISTS_H
#define TABLISTS_H

#include "hmiwidgets_export.h"
#include "textdata.h"

#include <QList>
#include <QStringList>

// What a tab widget keeps per tab, list by list as its properties hold them: texts, text colours,
// authority thresholds (as text and as numbers), texts for ten languages (tab-major) and the text
// records. The lists are edited together (insert, remove, move) so that entry i is always tab i's;
// reads never go past a list that a form gave shorter than the tabs.
class HMIWIDGETS_EXPORT TabLists
{
public:
    static constexpr int Languages = 10;
    static const QString DefaultColor;

    QStringList texts;
    QStringList colors;
    QStringList authorityTexts;
    QList<int> authorities;
    QStringList multiTexts;
    QList<QList<TextData>> records; // one slot a tab, its record first

    TabLists();

    static QString tag(int index) { return QStringLiteral("tab_%1").arg(index + 1); }

    void setAuthorityTexts(const QStringList &list);
    // Colours and thresholds that do not have one entry per tab are replaced by defaults.
    void repair(int tabs);
    // Fills the language texts from the tab texts when a form gave none.
    void fillMultiTexts();
    // A new tab at index with its defaults.
    void insert(int index);
    void remove(int index);
    void move(int from, int to);

    int authorityOf(int index) const { return authorities.value(index, 0); }
    QString colorOf(int index) const;
    // The text tab index shows in language: from its record when there are records, else from the
    // language texts, else its plain text.
    QString textOf(int index, int language) const;
    // A record of one text a language, for a tab without one (what the translation tool is given).
    TextData recordOf(int index, int languages) const;
};

#endif
