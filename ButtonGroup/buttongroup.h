#ifndef BUTTONGROUP_H
#define BUTTONGROUP_H

#include "hmiwidgets_export.h"
#include "updatevariableinterface.h"

#include <QStringList>
#include <QVariant>
#include <QWidget>

#include <memory>

class FunctionButton;

// A soft-key bar: a row (or column) of function buttons bound to the function keys, in groups of
// which one is shown at a time. Each group holds buttonCount ordinary buttons framed by the narrower
// "<<" and ">>" side buttons. Its slots switch the shown group, relabel and enable the shown buttons
// with a way back, and switch the keyboard shortcuts off and on. The bar itself reads and writes no
// controller variable; it hands the application to its buttons.
//
// The buttons are built on the first resize: new ones for a new bar, or the ones a loaded form holds,
// placed by their group and id properties. Before that, count, group, direction and side-button
// settings are only stored.
class HMIWIDGETS_EXPORT ButtonGroup : public QWidget, public norvo_v0::UpdateVariableInterface
{
    Q_OBJECT
    Q_PROPERTY(int groupCount READ groupCount WRITE setGroupCount)
    Q_PROPERTY(int buttonCount READ buttonCount WRITE setButtonCount)
    Q_PROPERTY(int currentGroup READ currentGroup WRITE setCurrentGroup)
    Q_PROPERTY(Direction direction READ direction WRITE setDirection)
    Q_PROPERTY(bool twoSideButtonsVisible READ twoSideButtonsVisible WRITE setTwoSideButtonsVisible)
    Q_PROPERTY(int twoSideButtonsWidth READ twoSideButtonsWidth WRITE setTwoSideButtonsWidth)
    Q_PROPERTY(UserLevel lowestEnablingUserLevel READ lowestEnablingUserLevel WRITE setLowestEnablingUserLevel)
    Q_PROPERTY(UserLevel lowestVisibleUserLevel READ lowestVisibleUserLevel WRITE setLowestVisibleUserLevel)
    Q_PROPERTY(bool shortcutEnabled READ shortcutEnabled WRITE setShortcutEnabled)

public:
    enum Direction : int { Horizontal = 0, Vertical = 1 };
    Q_ENUM(Direction)
    enum UserLevel : int { NoLevel = 0, Level1, Level2, Level3, Level4, Level5, Level6, Level7, Level8, Level9 };
    Q_ENUM(UserLevel)

    static constexpr int MaxCount = 20;

    Q_INVOKABLE explicit ButtonGroup(QWidget *parent = nullptr);
    ~ButtonGroup() override;

    int groupCount() const;
    void setGroupCount(int count);
    int buttonCount() const;
    void setButtonCount(int count);
    int currentGroup() const;
    void setCurrentGroup(int group);
    Direction direction() const;
    void setDirection(Direction direction);
    bool twoSideButtonsVisible() const;
    void setTwoSideButtonsVisible(bool visible);
    int twoSideButtonsWidth() const;
    void setTwoSideButtonsWidth(int width);
    UserLevel lowestEnablingUserLevel() const;
    void setLowestEnablingUserLevel(UserLevel level);
    UserLevel lowestVisibleUserLevel() const;
    void setLowestVisibleUserLevel(UserLevel level);
    bool shortcutEnabled() const;

    // The buttons of the shown group, "<<" first and ">>" last (empty before the build).
    QList<FunctionButton *> shownButtons() const;
    // The buttons of group (1-based), or empty.
    QList<FunctionButton *> buttonsOfGroup(int group) const;
    bool isBuilt() const;

    void updateData(int index, int value) override;
    using norvo_v0::UpdateVariableInterface::updateData;

public Q_SLOTS:
    // Pushes the shown buttons' captions and enabled requests, then applies list as pairs of caption
    // and "true"/"false", button by button; buttons past the last complete pair keep their state.
    void setCurrentButtonGroup(QStringList list);
    void restorePreviousButtonGroup();
    void setShortcutEnabled(bool enable);
    void setErrorDlgPtr(QObject *pt);
    void hideErrorDlg();
    void updateLanguage(int index);
    void setQeltAppAndFormPtr(void *app, void *form);

private Q_SLOTS:
    void slotPropertyChanged(QString name, QVariant value);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};

#endif
