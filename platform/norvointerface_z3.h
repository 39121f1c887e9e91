#ifndef NORVOINTERFACE_Z3_H
#define NORVOINTERFACE_Z3_H

#include "hmiplatform_export.h"

#include <QFont>
#include <QList>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QStringList>

class QWidget;
namespace Hmi_v0 { class HMI_UiUpdateInterface; }

// The HMI-wide settings the widgets read: languages, word library, channels, default font,
// and the registry of widgets' text interfaces used by the translation tool.
class HMIPLATFORM_EXPORT NORVOInterface_Z3 : public QObject
{
    Q_OBJECT
public:
    struct TextInterfaceEntry
    {
        QWidget *owner = nullptr;
        QString fileName;
        Hmi_v0::HMI_UiUpdateInterface *iface = nullptr;
    };

    static NORVOInterface_Z3 *initialization();
    static NORVOInterface_Z3 *init();

    int currentLanguageIndex() const;
    int getSystemLanguageCount() const;
    QStringList getSystemLanguageFamilys() const;
    bool getWordLibraryDatasUsedId(int id, QStringList &texts) const;
    void setHMIUiUpdateInterfaceWidgetPtr(QWidget *owner, QString fileName, Hmi_v0::HMI_UiUpdateInterface *iface);
    void removeHMIUiUpdateInterfaceWidgetPtr(QWidget *owner, Hmi_v0::HMI_UiUpdateInterface *iface);
    void inadequateOperationAuthority(int authority);
    int maxChannelCount() const;
    void setKeypadModeSize(int size);
    int keypadModeSize() const;
    static void setWidgetDefaultFont(QWidget *widget);

    // Configuration by the panel application and by tests.
    void setSystemLanguages(const QStringList &fontFamilies); // one family per language, at most 10
    void setCurrentLanguageIndex(int index);
    void setWordLibrary(const QMap<int, QStringList> &library);
    void setWordLibraryEntry(int id, const QStringList &texts);
    void setMaxChannelCount(int count);
    void setDefaultWidgetFont(const QFont &font);
    QFont defaultWidgetFont() const;
    QList<TextInterfaceEntry> textInterfaces() const;
    // Back to the settings of a fresh process (tests).
    void resetToDefaults();

Q_SIGNALS:
    void authorityRefused(int authority);
    void currentLanguageChanged(int index);
    void wordLibraryChanged();

private:
    NORVOInterface_Z3();

    QStringList m_families;
    int m_currentLanguage = 0;
    QMap<int, QStringList> m_wordLibrary;
    int m_channelCount = 4;
    int m_keypadModeSize = 0;
    QFont m_defaultFont;
    QList<TextInterfaceEntry> m_textInterfaces;
};

#endif
