#ifndef LANGUAGESTATE_H
#define LANGUAGESTATE_H

#include "hmiwidgets_export.h"

#include <QFont>
#include <QList>
#include <QStringList>

#include <optional>

struct TextData;

// count copies of value, one per language (Qt 5's QList has no such constructor).
template <typename T>
QList<T> perLanguage(int count, const T &value)
{
    QList<T> list;
    for (int i = 0; i < count; ++i)
        list.append(value);
    return list;
}

// A widget's current language: taken from the HMI at construction and pending until the first
// change that could be applied, so that the first updateLanguage applies even for the same index.
class HMIWIDGETS_EXPORT LanguageState
{
public:
    LanguageState();

    int current() const { return m_current; }
    void setCurrent(int index) { m_current = index; }
    bool isPending() const { return m_pending; }

    // index is a configured language and not the one already applied.
    bool accepts(int index) const;
    void markApplied(int index);
    // Back to language 0 when the current one has no entry among count texts.
    void clampTo(int count);

    // Per-language lookups that never go out of range.
    static QString textAt(const QStringList &texts, int index);
    static std::optional<QFont> fontAt(const QList<QFont> &fonts, int index);
    // Replaces the record's texts from the word library when it names an entry that exists.
    static bool refreshFromWordLibrary(TextData &record);

private:
    int m_current = 0;
    bool m_pending = true;
};

#endif
