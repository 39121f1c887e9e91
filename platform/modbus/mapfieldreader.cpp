#include "mapfieldreader.h"

#include <QJsonValue>

#include <algorithm>

#include <cmath>

MapFieldReader::MapFieldReader(const QJsonObject &object, const QString &name, QStringList *errors)
    : m_object(object)
    , m_name(name)
    , m_errors(errors)
    , m_before(int(errors->size()))
{
}

void MapFieldReader::fail(const QString &what)
{
    *m_errors << QStringLiteral("%1: %2").arg(m_name, what);
}

void MapFieldReader::knownKeys(std::initializer_list<const char *> keys)
{
    for (auto it = m_object.begin(); it != m_object.end(); ++it) {
        if (std::none_of(keys.begin(), keys.end(), [&](const char *key) { return it.key() == QLatin1String(key); }))
            fail(QStringLiteral("unknown field \"%1\"").arg(it.key().left(40)));
    }
}

int MapFieldReader::integer(const char *key, int fallback, int lowest, int highest)
{
    const QJsonValue value = m_object.value(QLatin1String(key));
    if (value.isUndefined())
        return fallback;
    // In range before it is made an int: a JSON number such as 1e62 is beyond what an int holds.
    const double number = value.toDouble(-1.5);
    if (!value.isDouble() || !(number >= lowest && number <= highest) || number != std::trunc(number)) {
        fail(QStringLiteral("\"%1\" must be a whole number from %2 to %3").arg(QLatin1String(key)).arg(lowest).arg(highest));
        return fallback;
    }
    return int(number);
}

int MapFieldReader::choice(const char *key, int fallback, std::initializer_list<const char *> names)
{
    const QJsonValue value = m_object.value(QLatin1String(key));
    if (value.isUndefined())
        return fallback;
    int index = 0;
    QStringList all;
    for (const char *name : names) {
        if (value.toString() == QLatin1String(name))
            return index;
        all << QLatin1String(name);
        ++index;
    }
    const QString last = all.takeLast();
    fail(QStringLiteral("\"%1\" must be %2 or %3").arg(QLatin1String(key), all.join(QStringLiteral(", ")), last));
    return fallback;
}

QString MapFieldReader::text(const char *key)
{
    const QJsonValue value = m_object.value(QLatin1String(key));
    if (!value.isUndefined() && !value.isString())
        fail(QStringLiteral("\"%1\" must be a text").arg(QLatin1String(key)));
    return value.toString();
}

bool MapFieldReader::boolean(const char *key, bool fallback)
{
    const QJsonValue value = m_object.value(QLatin1String(key));
    if (value.isUndefined())
        return fallback;
    if (!value.isBool())
        fail(QStringLiteral("\"%1\" must be true or false").arg(QLatin1String(key)));
    return value.toBool(fallback);
}
