#ifndef FUNCTIONBUTTON_H
#define FUNCTIONBUTTON_H

#include "hmiuiupdateinterface.h"
#include "hmiwidgets_export.h"
#include "paintedbutton.h"
#include "updatevariableinterface.h"

#include <QByteArray>
#include <QColor>
#include <QStringList>

#include <memory>

// The general-purpose operator soft key: a press writes one controller bit; further bits enable,
// show and colour it, and a controller value can pick its caption from a table. Captions follow the
// panel language. Button groups create it in rows.
class HMIWIDGETS_EXPORT FunctionButton : public PaintedButton,
                                         public norvo_v0::UpdateVariableInterface,
                                         public Hmi_v0::HMI_UiUpdateInterface
{
    Q_OBJECT
    Q_PROPERTY(Language language READ getLanguage WRITE setLanguage DESIGNABLE false)
    Q_PROPERTY(QStringList textList READ getTextList WRITE setTextList)
    Q_PROPERTY(QColor textColorEnabled READ textColorEnabled WRITE SetTextColorEnabled)
    Q_PROPERTY(QColor textColorDisabled READ textColorDisabled WRITE SetTextColorDisabled)
    Q_PROPERTY(QColor buttonColorNormal READ buttonColorNormal WRITE SetButtonColorNormal RESET ResetButtonColorNormal)
    Q_PROPERTY(QColor buttonColorPushed READ buttonColorPushed WRITE SetButtonColorPushed RESET ResetButtonColorPushed)
    Q_PROPERTY(QColor buttonColorHot READ buttonColorHot WRITE SetButtonColorHot RESET ResetButtonColorHot)
    Q_PROPERTY(QColor buttonColorDisabled READ buttonColorDisabled WRITE SetButtonColorDisabled RESET ResetButtonColorDisabled)
    Q_PROPERTY(int comId READ comId WRITE setComId)
    Q_PROPERTY(int channel READ channel WRITE SetChannel)
    Q_PROPERTY(BitType enabledBitType READ enabledBitType WRITE SetEnabledBitType)
    Q_PROPERTY(int enabledAddress READ enabledAddress WRITE SetEnabledAddress)
    Q_PROPERTY(int enabledBitIndex READ enabledBitIndex WRITE SetEnabledBitIndex)
    Q_PROPERTY(BitType visibleBitType READ visibleBitType WRITE SetVisibleBitType)
    Q_PROPERTY(int visibleAddress READ visibleAddress WRITE SetVisibleAddress)
    Q_PROPERTY(int visibleBitIndex READ visibleBitIndex WRITE SetVisibleBitIndex)
    Q_PROPERTY(bool bitOnVisible READ bitOnVisible WRITE SetBitOnVisible)
    Q_PROPERTY(BitType colorBitType READ colorBitType WRITE SetColorBitType)
    Q_PROPERTY(int colorAddress READ colorAddress WRITE SetColorAddress)
    Q_PROPERTY(int colorBitIndex READ colorBitIndex WRITE SetColorBitIndex)
    Q_PROPERTY(QColor onTextColor READ textColorOn WRITE SetTextColorOn)
    Q_PROPERTY(QColor onButtonColor READ buttonColorOn WRITE SetButtonColorOn)
    Q_PROPERTY(int group READ group WRITE setGroup)
    Q_PROPERTY(int id READ id WRITE setID)
    Q_PROPERTY(UserLevel lowestEnablingUserLevel READ lowestEnablingUserLevel WRITE setLowestEnablingUserLevel)
    Q_PROPERTY(UserLevel lowestVisibleUserLevel READ lowestVisibleUserLevel WRITE setLowestVisibleUserLevel)
    Q_PROPERTY(int operationalAuthority READ getOperationalAuthority WRITE setOperationalAuthority)
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled)
    Q_PROPERTY(Action action READ action WRITE SetAction)
    Q_PROPERTY(WriteBitType writeBitType READ writeBitType WRITE SetWriteBitType)
    Q_PROPERTY(int writeAddress READ writeAddress WRITE SetWriteAddress)
    Q_PROPERTY(int writeBitIndex READ writeBitIndex WRITE SetWriteBitIndex)
    Q_PROPERTY(DataClass textControlDataClass READ textControlDataClass WRITE SetTextControlDataClass)
    Q_PROPERTY(int textControlAddress READ textControlAddress WRITE SetTextControlAddress)
    Q_PROPERTY(QStringList textValueList READ textValueList WRITE SetTextValueList)
    Q_PROPERTY(QStringList textStringList READ textStringList WRITE SetTextStringList)
    Q_PROPERTY(bool ChnNoVarEnable READ ChnNoVarEnable WRITE SetChnNoVarEnable)
    Q_PROPERTY(QByteArray MapBuffer READ MapBuffer WRITE SetMapBuffer DESIGNABLE false)
    Q_PROPERTY(QByteArray textInfoBuffer READ textInfoBuffer WRITE SetTextInfoBuffer DESIGNABLE false)
    Q_PROPERTY(int wordLibId READ wordLibId WRITE setWordLibId)

public:
    enum DataClass : int { None_Var = -1, User_Var = 0, Mcm_Var, Sys_Var, Reg_Var, Bus_Var, Com_Var };
    Q_ENUM(DataClass)
    enum BitType : int {
        None = -1,
        I_BIT = 0, O_BIT, C_BIT, S_BIT, A_BIT, Cn_BIT, Tm_BIT,
        User_BIT, Mcm_BIT, Sys_BIT, Reg_BIT, Bus_BIT, Com_BIT
    };
    Q_ENUM(BitType)
    enum WriteBitType : int { None_BIT = -1, User = 7, Mcm = 8, Sys = 9, Reg = 10, Bus = 11, Com = 12 };
    Q_ENUM(WriteBitType)
    enum Action : int { SetOn = 0, SetOff = 1, KeepOn = 2, KeepOff = 3, Invert = 4 };
    Q_ENUM(Action)
    enum UserLevel : int { NoLevel = 0, Level1, Level2, Level3, Level4, Level5, Level6, Level7, Level8, Level9 };
    Q_ENUM(UserLevel)
    enum Language : int {
        language_0 = 0, language_1, language_2, language_3, language_4,
        language_5, language_6, language_7, language_8, language_9
    };
    Q_ENUM(Language)

    Q_INVOKABLE explicit FunctionButton(QWidget *parent = nullptr);
    ~FunctionButton() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    Language getLanguage() const;
    void setLanguage(Language language);
    QStringList getTextList() const;
    void setTextList(const QStringList &texts);
    QColor textColorEnabled() const;
    void SetTextColorEnabled(const QColor &color);
    QColor textColorDisabled() const;
    void SetTextColorDisabled(const QColor &color);
    QColor textColorOn() const;
    void SetTextColorOn(const QColor &color);
    QColor buttonColorOn() const;
    void SetButtonColorOn(const QColor &color);

    int comId() const;
    void setComId(int comId);
    int channel() const;
    void SetChannel(int channel);
    BitType enabledBitType() const;
    void SetEnabledBitType(BitType type);
    int enabledAddress() const;
    void SetEnabledAddress(int address);
    int enabledBitIndex() const;
    void SetEnabledBitIndex(int index);
    BitType visibleBitType() const;
    void SetVisibleBitType(BitType type);
    int visibleAddress() const;
    void SetVisibleAddress(int address);
    int visibleBitIndex() const;
    void SetVisibleBitIndex(int index);
    bool bitOnVisible() const;
    void SetBitOnVisible(bool onVisible);
    BitType colorBitType() const;
    void SetColorBitType(BitType type);
    int colorAddress() const;
    void SetColorAddress(int address);
    int colorBitIndex() const;
    void SetColorBitIndex(int index);
    int group() const;
    void setGroup(int group);
    int id() const;
    void setID(int id);
    UserLevel lowestEnablingUserLevel() const;
    void setLowestEnablingUserLevel(UserLevel level);
    UserLevel lowestVisibleUserLevel() const;
    void setLowestVisibleUserLevel(UserLevel level);
    int getOperationalAuthority() const;
    void setOperationalAuthority(int authority);
    // The enabled request, which the enable bit and setEnabled set.
    bool isEnabled() const;
    Action action() const;
    void SetAction(Action action);
    WriteBitType writeBitType() const;
    void SetWriteBitType(WriteBitType type);
    int writeAddress() const;
    void SetWriteAddress(int address);
    int writeBitIndex() const;
    void SetWriteBitIndex(int index);
    DataClass textControlDataClass() const;
    void SetTextControlDataClass(DataClass dataClass);
    int textControlAddress() const;
    void SetTextControlAddress(int address);
    QStringList textValueList() const;
    void SetTextValueList(const QStringList &values);
    QStringList textStringList() const;
    void SetTextStringList(const QStringList &captions);
    bool ChnNoVarEnable() const;
    void SetChnNoVarEnable(bool enable);
    QByteArray MapBuffer() const;
    void SetMapBuffer(const QByteArray &buffer);
    QByteArray textInfoBuffer() const;
    void SetTextInfoBuffer(const QByteArray &buffer);
    int wordLibId() const;

    void updateData(int index, int value) override;
    using norvo_v0::UpdateVariableInterface::updateData;

    void upDatePluginTextfromWordLib() override;
    void getPluginNameAndListType(QString &name, int &listType) override;
    void getPluginNameAndTransText(QList<TextData> &texts) override;
    using Hmi_v0::HMI_UiUpdateInterface::getPluginNameAndTransText;
    void setPluginTransText(QList<QStringList> &texts) override;

public Q_SLOTS:
    void setEnabled(bool enabled);
    void setButtonColor(QString name);
    void updateLanguage(int index) override;
    void updateAuthority(int authority);
    void setQeltAppAndFormPtr(void *app, void *form);
    void setWordLibId(int id);

private Q_SLOTS:
    void slotPressed();
    void slotReleased();

protected:
    bool event(QEvent *event) override;
    ButtonFace face() const override;
    void faceColorChanged(FaceState state) override;

private:
    void init();
    void registerItems();
    void rebuildCaptionTable();

    class Private;
    std::unique_ptr<Private> const d;
};

#endif
