#include "columnvisibility.h"

QList<int> ColumnVisibility::addresses(const QStringList &entries)
{
    QList<int> result;
    for (const QString &entry : entries) {
        bool ok = false;
        const int address = entry.toInt(&ok);
        if (ok)
            result.append(address);
        if (result.size() == MaxWords)
            break;
    }
    return result;
}

void ColumnVisibility::append(int word)
{
    if (m_words.size() < MaxWords)
        m_words.append(quint32(word));
}

bool ColumnVisibility::update(int index, int value)
{
    const int k = FirstIndex - index;
    if (!isWordIndex(index) || k >= m_words.size())
        return false;
    m_words[k] = quint32(value);
    return true;
}

std::optional<bool> ColumnVisibility::shown(int column) const
{
    if (column < 0 || column / 32 >= m_words.size())
        return std::nullopt;
    return (m_words.at(column / 32) >> (column % 32) & 1u) != 0;
}
