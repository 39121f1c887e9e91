#ifndef BINDINGTEXTCHECK_H
#define BINDINGTEXTCHECK_H

#include <QString>
#include <QStringList>

// What is wrong with a table cell's binding text, in the words a panel builder corrects it with. The
// table itself never refuses a text (a field that is not a number reads as 0, a short text is a text
// cell), so a slip makes a cell show or write the wrong variable without a word; this says so.
class BindingTextCheck
{
public:
    // Empty for a plain text, or a value or bit binding whose fields are all in range.
    static QStringList problems(const QString &text, int channelCount);
};

#endif
