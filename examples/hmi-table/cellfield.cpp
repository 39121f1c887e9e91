#include "cellfield.h"

namespace {

// The character an escape stands for, or a null QChar for an unknown escape.
QChar unescaped(QChar c)
{
    switch (c.unicode()) {
    case 't': return QLatin1Char('\t');
    case 'n': return QLatin1Char('\n');
    case 'r': return QLatin1Char('\r');
    case '\\': case '|': case '{': case '}': case '#': return c;
    default: return QChar();
    }
}

QString escape(const QString &text, bool bar)
{
    QString out;
    out.reserve(text.size());
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '\t': out += QLatin1String("\\t"); break;
        case '\n': out += QLatin1String("\\n"); break;
        case '\r': out += QLatin1String("\\r"); break;
        case '\\': case '{': case '}': out += QLatin1Char('\\'); out += c; break;
        case '|':
            if (bar)
                out += QLatin1Char('\\');
            out += c;
            break;
        default: out += c;
        }
    }
    return out;
}

} // namespace

bool CellField::parse(QStringView field, CellField *out, QString *error)
{
    *out = CellField();
    QString current;
    bool closed = false;
    for (qsizetype i = 0; i < field.size(); ++i) {
        const QChar c = field.at(i);
        if (closed) {
            *error = QStringLiteral("text after the closing } of a binding (write \\} for a brace)");
            return false;
        }
        if (c == QLatin1Char('\\')) {
            if (i + 1 == field.size()) {
                *error = QStringLiteral("a field ends in a lone \\ (write \\\\ for a backslash)");
                return false;
            }
            const QChar e = unescaped(field.at(++i));
            if (e.isNull()) {
                *error = QStringLiteral("unknown escape \\%1 (write \\\\ for a backslash)").arg(field.at(i));
                return false;
            }
            current += e;
        } else if (c == QLatin1Char('{')) {
            if (out->braced) {
                *error = QStringLiteral("{ inside a binding (write \\{ for a brace)");
                return false;
            }
            out->braced = true;
            out->languages << current;
            current.clear();
        } else if (c == QLatin1Char('}')) {
            if (!out->braced) {
                *error = QStringLiteral("} without an opening { (write \\} for a brace)");
                return false;
            }
            closed = true;
        } else if (c == QLatin1Char('|') && !out->braced) {
            out->languages << current;
            current.clear();
        } else {
            current += c;
        }
    }
    if (out->braced && !closed) {
        *error = QStringLiteral("a binding's { is not closed by } at the end of the field");
        return false;
    }
    if (out->braced)
        out->braces = current;
    else
        out->languages << current;
    return true;
}

QString CellField::escapeText(const QString &text, bool startsLine)
{
    QString out = escape(text, true);
    if (startsLine && out.startsWith(QLatin1Char('#')))
        out.prepend(QLatin1Char('\\'));
    return out;
}

QString CellField::escapeBraces(const QString &text)
{
    return escape(text, false);
}
