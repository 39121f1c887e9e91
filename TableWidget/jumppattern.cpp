#include "jumppattern.h"

#include <QRegularExpression>
#include <QStringList>

namespace {
const QString AnyField = QStringLiteral("\\S+");

bool isCount(const QString &text)
{
    bool ok = false;
    return text.toInt(&ok) >= 0 && ok;
}

QString orAny(const QString &part)
{
    return part.isEmpty() ? AnyField : part;
}

// One number after a prefix in the short form: the whole part and, after a point, the fraction.
struct ShortNumber
{
    QString whole;
    QString fraction;
    bool given = false;
    bool valid = true; // fits the number field it names
};

// Finds prefix followed by a number, only where a token starts (not after a letter, so "B" is never
// read out of "IB" or "CnB"), and cuts it out of text. The first occurrence counts; a second one
// stays in the text and so is refused as left over.
ShortNumber take(QString *text, const QString &prefix)
{
    const QRegularExpression re(QStringLiteral("(?<![A-Za-z])") + QRegularExpression::escape(prefix)
                                + QStringLiteral("(\\d+\\.?\\d*)"));
    const QRegularExpressionMatch m = re.match(*text);
    ShortNumber n;
    if (!m.hasMatch())
        return n;
    const QStringList parts = m.captured(1).split(QLatin1Char('.'));
    bool wholeOk = false;
    bool fractionOk = true;
    n.whole = QString::number(parts.at(0).toInt(&wholeOk));
    if (parts.size() > 1 && !parts.at(1).isEmpty())
        n.fraction = QString::number(parts.at(1).toInt(&fractionOk));
    n.valid = wholeOk && fractionOk;
    n.given = true;
    text->remove(m.capturedStart(0), m.capturedLength(0));
    return n;
}
} // namespace

QString JumpPattern::valuePattern(const QString &channel, const QString &dataClass, const QString &address,
                                  const QString &com)
{
    return QStringLiteral("%1@%2@%3@\\S+@\\S+@\\S+@\\S+@\\S+@\\S+@%4")
        .arg(orAny(channel), orAny(dataClass), orAny(address), orAny(com));
}

QString JumpPattern::bitPattern(const QString &channel, const QString &bitType, const QString &address,
                                const QString &bitIndex, const QString &com)
{
    return QStringLiteral("bit@%1@%2@%3@%4@%5")
        .arg(orAny(channel), orAny(bitType), orAny(address), orAny(bitIndex), orAny(com));
}

std::optional<QString> JumpPattern::build(const Input &input)
{
    switch (input.method) {
    case Row:
    case Number: {
        bool ok = false;
        input.text.trimmed().toInt(&ok);
        return ok ? std::optional<QString>(input.text.trimmed()) : std::nullopt;
    }
    case Text:
        return input.text.isEmpty() ? std::nullopt : std::optional<QString>(input.text);
    case Variable:
        return fromFields(input);
    case ShortVariable:
        return fromShortForm(input.text);
    default:
        return std::nullopt;
    }
}

std::optional<QString> JumpPattern::fromFields(const Input &input)
{
    // Only numbers go into the pattern, so nothing typed can act as a pattern of its own.
    const QString channel = input.channel.trimmed();
    const QString address = input.address.trimmed();
    const QString com = input.com.trimmed();
    if (!isCount(channel) || !isCount(address) || !isCount(com) || input.classIndex < 0)
        return std::nullopt;
    if (input.classIndex < ClassCount)
        return valuePattern(channel, QString::number(input.classIndex), address, com);
    const QString bit = input.bitIndex.trimmed();
    if (!isCount(bit))
        return std::nullopt;
    return bitPattern(channel, QString::number(input.classIndex - ClassCount), address,
                      QString::number(bit.toInt()), com);
}

std::optional<QString> JumpPattern::fromShortForm(const QString &input)
{
    // The data classes User ... Com, then the bit types I ... Tm, in the order they are looked for.
    static const QStringList variablePrefixes = {
        QStringLiteral("U"),  QStringLiteral("M"),  QStringLiteral("S"),  QStringLiteral("R"),   QStringLiteral("B"),
        QStringLiteral("C"),  QStringLiteral("IB"), QStringLiteral("OB"), QStringLiteral("CB"),  QStringLiteral("SB"),
        QStringLiteral("AB"), QStringLiteral("CnB"), QStringLiteral("TmB")};
    QString text = input;
    int kind = -1;
    ShortNumber address;
    int kinds = 0;
    bool valid = true;
    for (int i = 0; i < variablePrefixes.size(); ++i) {
        const ShortNumber n = take(&text, variablePrefixes.at(i));
        valid = valid && n.valid;
        if (n.given) {
            kind = i;
            address = n;
            ++kinds;
        }
    }
    const ShortNumber channel = take(&text, QStringLiteral("Z"));
    const ShortNumber com = take(&text, QStringLiteral("T"));
    // One variable at a time, and nothing the form does not know.
    if (kinds != 1 || !valid || !channel.valid || !com.valid || !text.trimmed().isEmpty() || !channel.fraction.isEmpty()
        || !com.fraction.isEmpty())
        return std::nullopt;
    const bool word = kind < ClassCount;
    if (word && address.fraction.isEmpty())
        return valuePattern(channel.whole, QString::number(kind), address.whole, com.whole);
    // R5.3 is bit 3 of register 5 (bit types User_BIT ... follow the seven PLC ones); an input bit
    // I10.2 names its bit the same way.
    const int type = word ? kind + 7 : kind - ClassCount;
    return bitPattern(channel.whole, QString::number(type), address.whole, address.fraction, com.whole);
}
