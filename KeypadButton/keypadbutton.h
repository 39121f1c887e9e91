#ifndef KEYPADBUTTON_H
#define KEYPADBUTTON_H

#include "hmiwidgets_export.h"
#include "keyfacebutton.h"
#include "updatevariableinterface.h"

#include <QChar>
#include <QStringList>

#include <memory>

// One key of an on-screen keypad form. It describes the key (the character it types, with a shifted
// variant, or the editing command it stands for) for the form that holds it, shows a caption per
// language and follows the operator's authority; it sends nothing itself: its outputs are the button
// base's signals.
class HMIWIDGETS_EXPORT KeypadButton : public KeyFaceButton, public norvo_v0::UpdateVariableInterface
{
    Q_OBJECT
    Q_PROPERTY(Language language READ getLanguage WRITE setLanguage)
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(QStringList textList READ getTextList WRITE setTextList)
    Q_PROPERTY(QChar character READ character WRITE setCharacter)
    Q_PROPERTY(CommandType command READ command WRITE setCommand)
    Q_PROPERTY(UserLevel lowestEnablingUserLevel READ lowestEnablingUserLevel WRITE setLowestEnablingUserLevel)
    Q_PROPERTY(UserLevel lowestVisibleUserLevel READ lowestVisibleUserLevel WRITE setLowestVisibleUserLevel)

public:
    enum CommandType : int {
        None = 0, Enter = 1, Escape = 2, Clear = 3, Backspace = 4, Increase = 5, Decrease = 6,
        Shift = 7, CapsLock = 8, ShowPassword = 9
    };
    Q_ENUM(CommandType)
    enum UserLevel : int { NoLevel = 0, Level1, Level2, Level3, Level4, Level5, Level6, Level7, Level8, Level9 };
    Q_ENUM(UserLevel)
    enum Language : int {
        language_0 = 0, language_1, language_2, language_3, language_4,
        language_5, language_6, language_7, language_8, language_9
    };
    Q_ENUM(Language)

    Q_INVOKABLE explicit KeypadButton(QWidget *parent = nullptr);
    ~KeypadButton() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    void updateData(int index, int value) override;
    using norvo_v0::UpdateVariableInterface::updateData;

public Q_SLOTS:
    Language getLanguage() const;
    void setLanguage(Language language);
    // With no captions per language yet, the first caption becomes every language's.
    void setText(const QString &text);
    QString text() const { return AbstractButton::text(); }
    QStringList getTextList() const;
    void setTextList(const QStringList &texts);
    QChar character() const;
    void setCharacter(QChar character);
    bool shiftEnabled() const;
    void setShiftEnabled(bool enabled);
    CommandType command() const;
    void setCommand(CommandType command);
    UserLevel lowestEnablingUserLevel() const;
    void setLowestEnablingUserLevel(UserLevel level);
    UserLevel lowestVisibleUserLevel() const;
    void setLowestVisibleUserLevel(UserLevel level);
    void updateLanguage(int index);

private Q_SLOTS:
    void butnClick();

protected:

private:
    class Private;
    std::unique_ptr<Private> const d;
};

#endif
