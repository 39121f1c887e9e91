#include "languagestate.h"

#include "norvointerface_z3.h"
#include "textdata.h"

LanguageState::LanguageState()
    : m_current(NORVOInterface_Z3::initialization()->currentLanguageIndex())
{
}

bool LanguageState::accepts(int index) const
{
    if (index < 0 || index >= NORVOInterface_Z3::initialization()->getSystemLanguageCount())
        return false;
    return m_pending || index != m_current;
}

void LanguageState::markApplied(int index)
{
    m_current = index;
    m_pending = false;
}

void LanguageState::clampTo(int count)
{
    if (m_current < 0 || m_current >= count)
        m_current = 0;
}

QString LanguageState::textAt(const QStringList &texts, int index)
{
    return index >= 0 && index < texts.size() ? texts.at(index) : QString();
}

std::optional<QFont> LanguageState::fontAt(const QList<QFont> &fonts, int index)
{
    if (index >= 0 && index < fonts.size())
        return fonts.at(index);
    return std::nullopt;
}

bool LanguageState::refreshFromWordLibrary(TextData &record)
{
    if (record.wordLibId == -1)
        return false;
    QStringList texts;
    if (!NORVOInterface_Z3::initialization()->getWordLibraryDatasUsedId(record.wordLibId, texts))
        return false;
    record.texts = texts;
    return true;
}
