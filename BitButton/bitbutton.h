#ifndef BITBUTTON_H
#define BITBUTTON_H

#include "hmiuiupdateinterface.h"
#include "hmiwidgets_export.h"
#include "paintedbutton.h"
#include "updatevariableinterface.h"

#include <QByteArray>
#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QStringList>

#include <memory>

// Push button for one controller bit: shows a monitor bit as On or Off and writes a write bit with
// its action when pressed and released. Enabled and visible bits, the operator's authority and the
// panel language (per-language captions and fonts) follow the controller and the HMI.
class HMIWIDGETS_EXPORT BitButton : public PaintedButton,
                                    public norvo_v0::UpdateVariableInterface,
                                    public Hmi_v0::HMI_UiUpdateInterface
{
    Q_OBJECT
    Q_PROPERTY(QColor onTextColor READ textColorOn WRITE SetTextColorOn RESET ResetTextColorOn)
    Q_PROPERTY(QColor offTextColor READ textColorOff WRITE SetTextColorOff RESET ResetTextColorOff)
    Q_PROPERTY(QString onText READ onText WRITE SetOnText)
    Q_PROPERTY(QString offText READ offText WRITE SetOffText)
    Q_PROPERTY(Language language READ getLanguage WRITE setLanguage DESIGNABLE false)
    Q_PROPERTY(QStringList onTextList READ getOnTextList WRITE setOnTextList DESIGNABLE false)
    Q_PROPERTY(QStringList offTextList READ getOffTextList WRITE setOffTextList DESIGNABLE false)
    Q_PROPERTY(QColor offButtonColor READ buttonColorNormal WRITE SetButtonColorNormal RESET ResetButtonColorNormal)
    Q_PROPERTY(QColor onButtonColor READ buttonColorPushed WRITE SetButtonColorPushed RESET ResetButtonColorPushed)
    Q_PROPERTY(QPixmap offPicture READ pictureNormal WRITE SetPictureNormal RESET ResetPictureNormal)
    Q_PROPERTY(QPixmap onPicture READ picturePushed WRITE SetPicturePushed RESET ResetPicturePushed)
    Q_PROPERTY(int comId READ comId WRITE setComId)
    Q_PROPERTY(int channel READ channel WRITE SetChannel)
    Q_PROPERTY(ReadBitType readBitType READ readBitType WRITE SetReadBitType)
    Q_PROPERTY(int readAddress READ readAddress WRITE SetReadAddress)
    Q_PROPERTY(int readBitIndex READ readBitIndex WRITE SetReadBitIndex)
    Q_PROPERTY(WriteBitType writeBitType READ writeBitType WRITE SetWriteBitType)
    Q_PROPERTY(int writeAddress READ writeAddress WRITE SetWriteAddress)
    Q_PROPERTY(int writeBitIndex READ writeBitIndex WRITE SetWriteBitIndex)
    Q_PROPERTY(Action action READ action WRITE SetAction)
    Q_PROPERTY(State state READ state WRITE SetState DESIGNABLE false)
    Q_PROPERTY(ReadBitType enabledBitType READ enabledBitType WRITE SetEnabledBitType)
    Q_PROPERTY(int enabledAddress READ enabledAddress WRITE SetEnabledAddress)
    Q_PROPERTY(int enabledBitIndex READ enabledBitIndex WRITE SetEnabledBitIndex)
    Q_PROPERTY(ReadBitType visibleBitType READ visibleBitType WRITE SetVisibleBitType)
    Q_PROPERTY(int visibleAddress READ visibleAddress WRITE SetVisibleAddress)
    Q_PROPERTY(int visibleBitIndex READ visibleBitIndex WRITE SetVisibleBitIndex)
    Q_PROPERTY(bool bitOnVisible READ bitOnVisible WRITE SetBitOnVisible)
    Q_PROPERTY(int operationalAuthority READ getOperationalAuthority WRITE setOperationalAuthority)
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled)
    Q_PROPERTY(UserLevel lowestEnablingUserLevel READ lowestEnablingUserLevel WRITE setLowestEnablingUserLevel DESIGNABLE false)
    Q_PROPERTY(UserLevel lowestVisibleUserLevel READ lowestVisibleUserLevel WRITE setLowestVisibleUserLevel DESIGNABLE false)
    Q_PROPERTY(bool ChnNoVarEnable READ ChnNoVarEnable WRITE SetChnNoVarEnable)
    Q_PROPERTY(QByteArray MapBuffer READ MapBuffer WRITE SetMapBuffer DESIGNABLE false)
    Q_PROPERTY(QFont font READ font WRITE setFont DESIGNABLE false)
    Q_PROPERTY(QByteArray textInfoBuffer READ textInfoBuffer WRITE SetTextInfoBuffer DESIGNABLE false)

public:
    enum ReadBitType : int {
        None_BIT = -1,
        I_BIT = 0, O_BIT, C_BIT, S_BIT, A_BIT, Cn_BIT, Tm_BIT,
        User_BIT, Mcm_BIT, Sys_BIT, Reg_BIT, Bus_BIT, Com_BIT
    };
    Q_ENUM(ReadBitType)
    enum WriteBitType : int { None = -1, User = 7, Mcm = 8, Sys = 9, Reg = 10, Bus = 11, Com = 12 };
    Q_ENUM(WriteBitType)
    enum Action : int { SetOn = 0, SetOff = 1, KeepOn = 2, KeepOff = 3, Invert = 4 };
    Q_ENUM(Action)
    enum State : int { Off = 0, On = 1 };
    Q_ENUM(State)
    enum UserLevel : int { NoLevel = 0, Level1, Level2, Level3, Level4, Level5, Level6, Level7, Level8, Level9 };
    Q_ENUM(UserLevel)
    enum Language : int {
        language_0 = 0, language_1, language_2, language_3, language_4,
        language_5, language_6, language_7, language_8, language_9
    };
    Q_ENUM(Language)

    Q_INVOKABLE explicit BitButton(QWidget *parent = nullptr);
    ~BitButton() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // Appearance
    QColor textColorOn() const;
    QColor textColorOff() const;
    void SetTextColorOn(const QColor &color);
    void SetTextColorOff(const QColor &color);
    void ResetTextColorOn();
    void ResetTextColorOff();
    QString onText() const;
    QString offText() const;
    void SetOnText(const QString &text);
    void SetOffText(const QString &text);
    QStringList getOnTextList() const;
    QStringList getOffTextList() const;
    void setOnTextList(const QStringList &texts);
    void setOffTextList(const QStringList &texts);
    void setFont(const QFont &font);
    void setLabelFont(const QFont &font);

    // Addresses: setters only store; use the resetRegister slots on a live button.
    int comId() const;
    void setComId(int comId);
    int channel() const;
    void SetChannel(int channel);
    ReadBitType readBitType() const;
    void SetReadBitType(ReadBitType type);
    int readAddress() const;
    void SetReadAddress(int address);
    int readBitIndex() const;
    void SetReadBitIndex(int index);
    WriteBitType writeBitType() const;
    void SetWriteBitType(WriteBitType type);
    int writeAddress() const;
    void SetWriteAddress(int address);
    int writeBitIndex() const;
    void SetWriteBitIndex(int index);
    ReadBitType enabledBitType() const;
    void SetEnabledBitType(ReadBitType type);
    int enabledAddress() const;
    void SetEnabledAddress(int address);
    int enabledBitIndex() const;
    void SetEnabledBitIndex(int index);
    ReadBitType visibleBitType() const;
    void SetVisibleBitType(ReadBitType type);
    int visibleAddress() const;
    void SetVisibleAddress(int address);
    int visibleBitIndex() const;
    void SetVisibleBitIndex(int index);
    bool bitOnVisible() const;
    void SetBitOnVisible(bool onVisible);
    bool ChnNoVarEnable() const;
    void SetChnNoVarEnable(bool enable);
    Action action() const;
    void SetAction(Action action);

    // State and authority
    State state() const;
    void SetState(State state);
    void setBitOn(bool on);
    int getOperationalAuthority() const;
    void setOperationalAuthority(int authority);
    // The enabled request, which the enabled bit and setEnabled set.
    bool isEnabled() const;
    UserLevel lowestEnablingUserLevel() const;
    void setLowestEnablingUserLevel(UserLevel level);
    UserLevel lowestVisibleUserLevel() const;
    void setLowestVisibleUserLevel(UserLevel level);
    Language getLanguage() const;
    void setLanguage(Language language);

    // Texts
    QByteArray MapBuffer() const;
    void SetMapBuffer(const QByteArray &buffer);
    QByteArray textInfoBuffer() const;
    void SetTextInfoBuffer(const QByteArray &buffer);

    void updateData(int index, int value) override;
    using norvo_v0::UpdateVariableInterface::updateData;

    void upDatePluginTextfromWordLib() override;
    void getPluginNameAndListType(QString &name, int &listType) override;
    void getPluginNameAndTransText(QList<QList<TextData>> &texts) override;
    using Hmi_v0::HMI_UiUpdateInterface::getPluginNameAndTransText;
    void setPluginTransText(QList<QStringList> &texts) override;

public Q_SLOTS:
    void slotPressed();
    void slotReleased();
    void updateLanguage(int index) override;
    void updateAuthority(int authority);
    void setEnabled(bool enabled);
    void resetRegisterReadBitData(int nChannel, int nBitType, int nAddress, int nBitIndex);
    void resetRegisterWriteBitData(int nChannel, int nBitType, int nAddress, int nBitIndex);

protected:
    bool event(QEvent *event) override;
    ButtonFace face() const override;

private:
    void showCaption();

    class Private;
    std::unique_ptr<Private> const d;
};

#endif
