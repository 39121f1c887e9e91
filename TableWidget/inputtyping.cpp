#include "inputtyping.h"

bool InputTyping::accepts(int key, int mode)
{
    if (mode == 1)
        return key >= 32 && key <= 126;
    return (key >= '0' && key <= '9') || key == '.' || key == '-';
}

QString InputTyping::typed(const QString &text, int key, QString *tip)
{
    const QChar minus = QLatin1Char('-');
    QString t = text;
    switch (key) {
    case '+':
        if (t.contains(minus))
            t.remove(minus);
        else
            t.append(QLatin1Char('+'));
        break;
    case '-':
        if (t.contains(minus))
            t.remove(minus);
        else
            t.prepend(minus);
        break;
    case '.':
        if (t.contains(QLatin1Char('.'))) {
            if (tip)
                *tip = QLatin1String(SecondPointTip);
        } else {
            t.append(QLatin1Char('.'));
        }
        break;
    default:
        t.append(QChar(key));
        break;
    }
    return t;
}
