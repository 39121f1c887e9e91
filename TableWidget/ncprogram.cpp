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
    // Words are found by position; everything between them is one stretch of the line, so the lead
    // and each trailing text are cut out whole at the end.
    struct Found
    {
        int column;
        int letter; // position of the letter; the value follows it
        int end;    // position after the value
    };
    QList<Found> found;
    enum { Code, Comment, Rest } state = Code;
    const int length = int(line.size());
    const QChar *chars = line.constData();
    int i = 0;
    while (i < length) {
        const QChar c = chars[i];
        const int column = state == Code ? columnOf(c) : -1;
        // A word starts only in a column after the last word's: repeated or earlier letters are
        // text, so the words stay in line order and the line is written back unchanged.
        if (column >= 0 && (found.isEmpty() || column > found.last().column)) {
            int end = i + 1;
            while (end < length) {
                const QChar v = chars[end];
                if (v == QLatin1Char(' ') || v == QLatin1Char('\t') || v == QLatin1Char('(') || v == QLatin1Char(';')
                    || columnOf(v) >= 0)
                    break;
                ++end;
            }
            // A letter with no value is plain text: "G X10" keeps "G " before the X word.
            if (end > i + 1)
                found.append(Found{column, i, end});
            i = end == i + 1 ? i + 1 : end;
            continue;
        }
        if (state == Comment && c == QLatin1Char(')'))
            state = Code;
        else if (state == Code && c == QLatin1Char('('))
            state = Comment;
        else if (state == Code && c == QLatin1Char(';'))
            state = Rest;
        ++i;
    }
    Line out;
    out.lead = line.left(found.isEmpty() ? length : found.first().letter);
    out.words.reserve(found.size());
    for (int k = 0; k < found.size(); ++k) {
        const Found &f = found.at(k);
        const int next = k + 1 < found.size() ? found.at(k + 1).letter : length;
        out.words.append(Word{f.column, line.mid(f.letter + 1, f.end - f.letter - 1), line.mid(f.end, next - f.end)});
    }
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
