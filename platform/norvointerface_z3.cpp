#include "norvointerface_z3.h"

#include <QApplication>
#include <QWidget>

namespace {
constexpr int MaxLanguages = 10;
}

NORVOInterface_Z3::NORVOInterface_Z3()
{
    resetToDefaults();
}

NORVOInterface_Z3 *NORVOInterface_Z3::initialization()
{
    static NORVOInterface_Z3 *instance = new NORVOInterface_Z3; // lives for the process, like the HMI's
    return instance;
}

NORVOInterface_Z3 *NORVOInterface_Z3::init()
{
    return initialization();
}

void NORVOInterface_Z3::resetToDefaults()
{
    const QString family = QFont().family();
    m_families = QStringList{family, family};
    m_currentLanguage = 0;
    m_wordLibrary.clear();
    m_channelCount = 4;
    m_keypadModeSize = 0;
    m_defaultFont = QFont();
    m_textInterfaces.clear();
}

int NORVOInterface_Z3::currentLanguageIndex() const { return m_currentLanguage; }
int NORVOInterface_Z3::getSystemLanguageCount() const { return int(m_families.size()); }
QStringList NORVOInterface_Z3::getSystemLanguageFamilys() const { return m_families; }

bool NORVOInterface_Z3::getWordLibraryDatasUsedId(int id, QStringList &texts) const
{
    const auto it = m_wordLibrary.constFind(id);
    if (it == m_wordLibrary.constEnd())
        return false;
    texts = *it;
    return true;
}

void NORVOInterface_Z3::setHMIUiUpdateInterfaceWidgetPtr(QWidget *owner, QString fileName,
                                                         Hmi_v0::HMI_UiUpdateInterface *iface)
{
    m_textInterfaces.append(TextInterfaceEntry{owner, fileName, iface});
}

void NORVOInterface_Z3::removeHMIUiUpdateInterfaceWidgetPtr(QWidget *owner, Hmi_v0::HMI_UiUpdateInterface *iface)
{
    for (int i = int(m_textInterfaces.size()) - 1; i >= 0; --i) {
        if (m_textInterfaces.at(i).owner == owner && m_textInterfaces.at(i).iface == iface)
            m_textInterfaces.removeAt(i);
    }
}

void NORVOInterface_Z3::inadequateOperationAuthority(int authority)
{
    Q_EMIT authorityRefused(authority);
}

int NORVOInterface_Z3::maxChannelCount() const { return m_channelCount; }
void NORVOInterface_Z3::setKeypadModeSize(int size) { m_keypadModeSize = size; }
int NORVOInterface_Z3::keypadModeSize() const { return m_keypadModeSize; }

void NORVOInterface_Z3::setWidgetDefaultFont(QWidget *widget)
{
    if (widget)
        widget->setFont(initialization()->m_defaultFont);
}

void NORVOInterface_Z3::setSystemLanguages(const QStringList &fontFamilies)
{
    m_families = fontFamilies.mid(0, MaxLanguages);
    if (m_families.isEmpty())
        m_families.append(QFont().family());
    if (m_currentLanguage >= m_families.size())
        setCurrentLanguageIndex(0);
}

void NORVOInterface_Z3::setCurrentLanguageIndex(int index)
{
    if (index < 0 || index >= m_families.size() || index == m_currentLanguage)
        return;
    m_currentLanguage = index;
    Q_EMIT currentLanguageChanged(index);
}

void NORVOInterface_Z3::setWordLibrary(const QMap<int, QStringList> &library)
{
    m_wordLibrary = library;
    Q_EMIT wordLibraryChanged();
}

void NORVOInterface_Z3::setWordLibraryEntry(int id, const QStringList &texts)
{
    m_wordLibrary.insert(id, texts);
    Q_EMIT wordLibraryChanged();
}

void NORVOInterface_Z3::setMaxChannelCount(int count)
{
    if (count >= 1)
        m_channelCount = count;
}

void NORVOInterface_Z3::setDefaultWidgetFont(const QFont &font) { m_defaultFont = font; }
QFont NORVOInterface_Z3::defaultWidgetFont() const { return m_defaultFont; }

QList<NORVOInterface_Z3::TextInterfaceEntry> NORVOInterface_Z3::textInterfaces() const
{
    return m_textInterfaces;
}
