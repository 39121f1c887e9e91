#ifndef INPUTTYPING_H
#define INPUTTYPING_H

#include "hmiwidgets_export.h"

#include <QString>

// What a key typed at the table does to the text of the input line.
class HMIWIDGETS_EXPORT InputTyping
{
public:
    static constexpr const char *SecondPointTip = "Invilid Input!";

    // Whether the key goes to the input line: in the free-entry mode (1) any printable character, in
    // the normal mode digits, "." and "-".
    static bool accepts(int key, int mode);
    // The text after typing key: "+" and "-" toggle the sign ("+" appends itself to an unsigned
    // text), a second "." is refused (tip set to the reason, text unchanged), anything else appended.
    static QString typed(const QString &text, int key, QString *tip);
};

#endif
