#ifndef COLUMNVISIBILITY_H
#define COLUMNVISIBILITY_H

#include "hmiwidgets_export.h"

#include <QList>
#include <QStringList>

#include <optional>

// Controller words that show and hide columns: word k covers columns 32k ... 32k + 31, a set bit
// shows the column. Word k is registered under index -100 - k, the index range whose updates store
// into the words, so a controller change reaches the columns.
class HMIWIDGETS_EXPORT ColumnVisibility
{
public:
    static constexpr int MaxWords = 11;
    static constexpr int FirstIndex = -100;
    static constexpr int LastIndex = FirstIndex - (MaxWords - 1);

    static int registrationIndex(int word) { return FirstIndex - word; }
    static bool isWordIndex(int index) { return index <= FirstIndex && index >= LastIndex; }
    // The controller addresses of the words: the entries of the list that are decimal integers, in
    // order, at most MaxWords of them.
    static QList<int> addresses(const QStringList &entries);

    void clear() { m_words.clear(); }
    void append(int word);
    int count() const { return m_words.size(); }
    // Stores an update for word index; false when no such word was read.
    bool update(int index, int value);
    // Whether the column is shown; none when no word covers it.
    std::optional<bool> shown(int column) const;

private:
    QList<quint32> m_words;
};

#endif
