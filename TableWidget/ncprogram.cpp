#include "ncprogram.h"

NcProgram::NcProgram(const QStringList &labels)
{
    m_asciiColumn.fill(-1);
    for (const QString &label : labels.mid(0, MaxColumns)) {
        const QString upper = label.toUpper();
        const QChar letter = upper.size() == 1 ? upper.at(0) : QChar();
        // The first column of a letter given twice takes its words.
        if (letter.unicode() > 0 && letter.unicode() < 128 && m_asciiColumn[letter.unicode()] < 0)
            m_asciiColumn[letter.unicode()] = qint16(m_letters.size());
        m_letters.append(letter);
    }
}

int NcProgram::columnOf(QChar c) const
{
    if (c.unicode() < 128)
        return c.isNull() ? -1 : m_asciiColumn[c.unicode()];
    for (int i = 0; i < m_letters.size(); ++i) {
        if (m_letters.at(i) == c)
            return i;
    }
    return -1;
}

NcProgram::Line NcProgram::parse(const QString &line) const
{
    Line out;
    // The text that is not a word goes to the last word's trailing text, or to the lead.
    const auto carrier = [&out]() -> QString & { return out.words.isEmpty() ? out.lead : out.words.last().trailing; };
    bool open = false;
    enum { Code, Comment, Rest } state = Code;
    // A letter with no value is plain text: "G X10" keeps "G " before the X word.
    const auto closeWord = [&] {
        open = false;
        if (!out.words.last().text.isEmpty())
            return;
        const QChar letter = m_letters.at(out.words.takeLast().column);
        carrier().append(letter);
    };
    for (const QChar c : line) {
        const int column = state == Code ? columnOf(c) : -1;
        if (open) {
            const bool closes = column >= 0 || c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('(')
                || c == QLatin1Char(';');
            if (!closes) {
                out.words.last().text.append(c);
                continue;
            }
            closeWord();
        }
        // A word starts only in a column after the last word's: repeated or earlier letters are
        // text, so the words stay in line order and the line is written back unchanged.
        if (column >= 0 && (out.words.isEmpty() || column > out.words.last().column)) {
            out.words.append(Word{column, QString(), QString()});
            open = true;
            continue;
        }
        carrier().append(c);
        if (state == Comment && c == QLatin1Char(')'))
            state = Code;
        else if (state == Code && c == QLatin1Char('('))
            state = Comment;
        else if (state == Code && c == QLatin1Char(';'))
            state = Rest;
    }
    if (open)
        closeWord();
    return out;
}

QString NcProgram::write(const Line &line) const
{
    QString out = line.lead;
    for (const Word &w : line.words) {
        if (w.text.isEmpty())
            continue;
        out += m_letters.at(w.column);
        out += w.text;
        out += w.trailing;
    }
    return out;
}
