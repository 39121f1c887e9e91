#ifndef NCPROGRAM_H
#define NCPROGRAM_H

#include "hmiwidgets_export.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <array>

// An NC program line as a row of address words: each word is a letter of the code signs followed by
// its value, in the letter's column; whatever is not a word (blanks, comments, text before the first
// word, a letter repeated or out of the column order) travels with the word before it, or with the
// line itself before the first word. So every line is written back exactly as it was read.
class HMIWIDGETS_EXPORT NcProgram
{
public:
    struct Word
    {
        int column = 0;
        QString text;
        QString trailing;
    };
    struct Line
    {
        QString lead;
        QList<Word> words; // in increasing column order
    };

    // Far more than the address letters of any NC dialect.
    static constexpr int MaxColumns = 256;

    // Labels as the columns show them (at most MaxColumns); a label of one character is a letter
    // words start with.
    explicit NcProgram(const QStringList &labels);

    int columnCount() const { return int(m_letters.size()); }
    // The column of a letter, -1 for none.
    int columnOf(QChar c) const;
    QChar letter(int column) const { return m_letters.at(column); }

    Line parse(const QString &upperLine) const;
    QString write(const Line &line) const;

private:
    QList<QChar> m_letters; // a null character for a label that is not one letter
    std::array<qint16, 128> m_asciiColumn; // the column of each ASCII letter, -1 for none
};

#endif
