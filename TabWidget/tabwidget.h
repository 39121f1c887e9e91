#ifndef TABWIDGET_H
#define TABWIDGET_H

#include "hmiuiupdateinterface.h"
#include "hmiwidgets_export.h"
#include "stackedwidget.h"
#include "updatevariableinterface.h"

#include <QColor>
#include <QStringList>
#include <QWidget>

#include <memory>

class QTabBar;

// The operator panel's tab container: a tab bar over a stack of pages. Each tab has its text in the
// panel languages, its text colour and an authority threshold; a bound controller word can decide
// which tabs exist. Pages are plain child widgets known by their tag ("tab_1", "tab_2", ...), so a
// form keeps them, with what the panel builder put on them, whatever order the tabs are in.
class HMIWIDGETS_EXPORT TabWidget : public QWidget,
                                    public norvo_v0::UpdateVariableInterface,
                                    public Hmi_v0::HMI_UiUpdateInterface
{
    Q_OBJECT
    Q_PROPERTY(QStringList tabTexts READ tabTexts WRITE setTabTexts DESIGNABLE false)
    Q_PROPERTY(QStringList tabTextColors READ tabTextColors WRITE setTabTextColors DESIGNABLE false)
    Q_PROPERTY(QStringList operationalAuthoritys READ operationalAuthoritys WRITE setOperationalAuthoritys DESIGNABLE false)
    Q_PROPERTY(int tabsCount READ tabsCount WRITE setTabsCount)
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex)
    Q_PROPERTY(QString currentTabText READ currentTabText WRITE setCurrentTabText DESIGNABLE false)
    Q_PROPERTY(QColor currentTabTextColor READ currentTabTextColor WRITE setCurrentTabTextColor DESIGNABLE false)
    Q_PROPERTY(int currentTabOperationalAuthority READ getCurrentTabOperationalAuthority WRITE setCurrentTabOperationalAuthority DESIGNABLE false)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)
    Q_PROPERTY(QColor selectedTabColor READ selectedTabColor WRITE setSelectedTabColor)
    Q_PROPERTY(int comId READ comId WRITE setComId)
    Q_PROPERTY(int channel READ channel WRITE setChannel)
    Q_PROPERTY(DataClass dataClass READ dataClass WRITE setDataClass)
    Q_PROPERTY(int address READ address WRITE setAddress)
    Q_PROPERTY(UserLevel lowestEnablingUserLevel READ lowestEnablingUserLevel WRITE setLowestEnablingUserLevel DESIGNABLE false)
    Q_PROPERTY(UserLevel lowestVisibleUserLevel READ lowestVisibleUserLevel WRITE setLowestVisibleUserLevel DESIGNABLE false)
    Q_PROPERTY(QStringList multiTextList READ multiTextList WRITE setMultiTextList DESIGNABLE false)
    Q_PROPERTY(Language language READ language WRITE setLanguage DESIGNABLE false)
    Q_PROPERTY(QByteArray textInfoBuffer READ textInfoBuffer WRITE SetTextInfoBuffer DESIGNABLE false)

public:
    enum DataClass : int { None = -1, User = 0, Mcm = 1, Sys = 2, Reg = 3, Bus = 4, Com = 5 };
    Q_ENUM(DataClass)
    enum UserLevel : int { NoLevel = 0, Level1, Level2, Level3, Level4, Level5, Level6, Level7, Level8, Level9 };
    Q_ENUM(UserLevel)
    enum Language : int {
        language_0 = 0, language_1, language_2, language_3, language_4,
        language_5, language_6, language_7, language_8, language_9
    };
    Q_ENUM(Language)

    // A panel has a handful of tabs; the bound word's 32 bits name the first 32 of them.
    static constexpr int MaxTabs = 100;

    Q_INVOKABLE explicit TabWidget(QWidget *parent = nullptr);
    ~TabWidget() override;

    QStringList tabTexts() const;
    void setTabTexts(const QStringList &texts);
    QStringList tabTextColors() const;
    void setTabTextColors(const QStringList &colors);
    QStringList operationalAuthoritys() const;
    void setOperationalAuthoritys(const QStringList &authorities);
    int tabsCount() const;
    void setTabsCount(int count);
    int currentIndex() const;
    void setCurrentIndex(int index);
    QString currentTabText() const;
    void setCurrentTabText(const QString &text);
    QColor currentTabTextColor() const;
    void setCurrentTabTextColor(const QColor &color);
    int getCurrentTabOperationalAuthority() const;
    void setCurrentTabOperationalAuthority(int authority);
    QColor backgroundColor() const;
    void setBackgroundColor(const QColor &color);
    QColor selectedTabColor() const;
    void setSelectedTabColor(const QColor &color);
    int comId() const;
    void setComId(int comId);
    int channel() const;
    void setChannel(int channel);
    DataClass dataClass() const;
    void setDataClass(DataClass dataClass);
    int address() const;
    void setAddress(int address);
    UserLevel lowestEnablingUserLevel() const;
    void setLowestEnablingUserLevel(UserLevel level);
    UserLevel lowestVisibleUserLevel() const;
    void setLowestVisibleUserLevel(UserLevel level);
    QStringList multiTextList() const;
    void setMultiTextList(const QStringList &texts);
    Language language() const;
    void setLanguage(Language language);
    QByteArray textInfoBuffer() const;
    void SetTextInfoBuffer(const QByteArray &buffer);

    QTabBar *tabBar() const;
    StackedWidget *stackedWidget() const;
    // The first child whose tag (status tip) is tag, or null.
    QWidget *findTab(const QString &tag) const;
    void insertTab(int index);
    void removeTab(int index);
    // The controller's last word of present tabs (-1: all).
    int visibleMask() const;

    void updateData(int index, int value) override;
    using norvo_v0::UpdateVariableInterface::updateData;
    void upDatePluginTextfromWordLib() override;
    void getPluginNameAndListType(QString &name, int &listType) override;
    void getPluginNameAndTransText(QList<QList<TextData>> &texts) override;
    void setPluginTransText(QList<QStringList> &texts) override;

public Q_SLOTS:
    void showTab(int index);
    void tabMoved(int from, int to);
    void updateAuthority(int level);
    void updateLanguage(int index) override;
    void refreshlanguage(int index);
    void setQeltAppAndFormPtr(void *app, void *form);

Q_SIGNALS:
    void currentChanged(int index);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};

#endif
