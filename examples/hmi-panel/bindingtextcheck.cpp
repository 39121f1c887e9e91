#include "bindingtextcheck.h"

#include "qeltapp.h"

#include <climits>

namespace {

constexpr int MinFields = 6;
constexpr int LongFormFields = 10;
constexpr int MaxBitIndex = 31;

class FieldReader
{
public:
    FieldReader(const QStringList &fields, const char *const *names, QStringList *problems)
        : m_fields(fields)
        , m_names(names)
        , m_problems(problems)
    {
    }

    // The field as an integer; a non-number is reported (the table reads it as 0).
    int integer(int index) const
    {
        bool ok = false;
        const int value = m_fields.at(index).trimmed().toInt(&ok);
        if (!ok)
            report(index, QStringLiteral("is not a whole number, read as 0"));
        return ok ? value : 0;
    }
    double number(int index) const
    {
        bool ok = false;
        const double value = m_fields.at(index).trimmed().toDouble(&ok);
        if (!ok)
            report(index, QStringLiteral("is not a number, read as 0"));
        return ok ? value : 0.0;
    }
    void report(int index, const QString &what) const
    {
        *m_problems << QStringLiteral("field %1 (%2) \"%3\" %4")
                           .arg(index + 1)
                           .arg(QLatin1String(m_names[index]), m_fields.at(index), what);
    }
    void within(int index, int value, int lowest, int highest) const
    {
        if (value < lowest || value > highest)
            report(index, QStringLiteral("is outside %1 ... %2").arg(lowest).arg(highest));
    }

private:
    const QStringList &m_fields;
    const char *const *m_names;
    QStringList *m_problems;
};

void checkValue(const QStringList &fields, int channelCount, QStringList *problems)
{
    static const char *const names[] = {"channel", "data class", "address", "width", "decimals", "lowest",
                                        "highest", "size code", "radix", "link", "extra"};
    const FieldReader read(fields, names, problems);
    read.within(0, read.integer(0), 1, channelCount);
    read.within(1, read.integer(1), norvo_v0::QeltApp::User, norvo_v0::QeltApp::Com);
    read.within(2, read.integer(2), 0, INT_MAX);
    read.within(3, read.integer(3), 0, INT_MAX);
    read.within(4, read.integer(4), 0, INT_MAX);
    const double lowest = read.number(5);
    if (fields.size() > 6 && read.number(6) < lowest)
        read.report(6, QStringLiteral("is below the lowest value %1").arg(fields.at(5)));
    if (fields.size() > 7 && fields.size() < LongFormFields)
        *problems << QStringLiteral("%1 fields: fields 8 ... %1 are ignored (size code, radix and link need all "
                                    "of fields 8 ... 10)")
                         .arg(fields.size());
    if (fields.size() >= LongFormFields) {
        read.integer(7);
        read.within(8, read.integer(8), 0, 3);
        read.within(9, read.integer(9), 0, INT_MAX);
    }
    if (fields.size() > LongFormFields)
        read.integer(10);
}

void checkBit(const QStringList &fields, int channelCount, QStringList *problems)
{
    static const char *const names[] = {"bit", "channel", "bit type", "address", "bit index", "link", "", "", "",
                                        "", "extra"};
    const FieldReader read(fields, names, problems);
    read.within(1, read.integer(1), 1, channelCount);
    read.within(2, read.integer(2), norvo_v0::QeltApp::I_BIT, norvo_v0::QeltApp::Com_BIT);
    read.within(3, read.integer(3), 0, INT_MAX);
    read.within(4, read.integer(4), 0, MaxBitIndex);
    read.within(5, read.integer(5), 0, INT_MAX);
    if (fields.size() > LongFormFields)
        read.integer(10);
}

} // namespace

QStringList BindingTextCheck::problems(const QString &text, int channelCount)
{
    QStringList out;
    if (!text.contains(QLatin1Char('@')))
        return out;
    const QStringList fields = text.split(QLatin1Char('@'));
    const bool bit = fields.first() == QLatin1String("bit");
    if (fields.size() < MinFields) {
        out << QStringLiteral("%1 fields where a %2 binding needs at least %3; the cell shows the text and is "
                              "bound to nothing")
                   .arg(fields.size())
                   .arg(bit ? QStringLiteral("bit") : QStringLiteral("value"))
                   .arg(MinFields);
        return out;
    }
    if (bit)
        checkBit(fields, channelCount, &out);
    else
        checkValue(fields, channelCount, &out);
    return out;
}
