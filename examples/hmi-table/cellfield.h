#ifndef CELLFIELD_H
#define CELLFIELD_H

#include <QString>
#include <QStringList>
#include <QStringView>

// One tab-separated field of the cell file: TEXT, optionally followed by {BRACED} at its very end.
// TEXT is split into languages at each "|"; inside the braces "|" is an ordinary character. The
// escapes \\ \t \n \r \| \{ \} and \# stand for the character itself anywhere; an unescaped brace
// anywhere else is an error, so every field reads exactly one way.
class CellField
{
public:
    QStringList languages; // at least one, possibly empty texts
    bool braced = false;
    QString braces;

    // False with a message for an unknown or unfinished escape or a misplaced brace.
    static bool parse(QStringView field, CellField *out, QString *error);
    // A language text as the file writes it; at the start of a line a leading "#" is escaped so that
    // the line is not read as a directive.
    static QString escapeText(const QString &text, bool startsLine);
    static QString escapeBraces(const QString &text);
};

#endif
