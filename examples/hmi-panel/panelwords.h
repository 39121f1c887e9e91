#ifndef PANELWORDS_H
#define PANELWORDS_H

#include <QMap>
#include <QStringList>

// The panel's own texts (its bar, its message line, its title) are words of the word library, so they
// follow the panel language as the widgets' captions do. English and German are built in; a word
// library that gives one of these ids replaces the built-in texts, in as many languages as it has.
class PanelWords
{
public:
    static constexpr int FirstId = 990000;
    enum Word {
        Language = FirstId, Authority, AuthorityTip, Find, FindPrompt, FindNext, Jump, Files,
        LoadTable, SaveTable, ShowProgram, SaveProgram, TableFiles, Programs, NeedsAuthority, NoTable,
        Title, Reloaded, NotReloaded, MoreLines,
        End
    };

    // The library with the panel's words added where it does not give them itself.
    static QMap<int, QStringList> withPanelWords(QMap<int, QStringList> library);
    // The word in the panel's current language; in the first language where it has none there.
    static QString text(Word word);
    // A menu entry's text without its "...", as the title of the dialog it opens.
    static QString title(Word word);
};

#endif
