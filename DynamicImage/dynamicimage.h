#ifndef DYNAMICIMAGE_H
#define DYNAMICIMAGE_H

#include "hmiwidgets_export.h"
#include "updatevariableinterface.h"

#include <QStringList>
#include <QWidget>

#include <memory>

// A picture out of a list, chosen by a controller word (a machine state, a tool, a step), or the
// newest picture of a folder a camera writes into. Animated pictures play while the widget is
// attached to the application; a controller bit may show or hide it.
class HMIWIDGETS_EXPORT DynamicImage : public QWidget, public norvo_v0::UpdateVariableInterface
{
    Q_OBJECT
    Q_PROPERTY(QStringList images READ images WRITE setImages)
    Q_PROPERTY(int index READ index WRITE setIndex)
    Q_PROPERTY(bool scaledContents READ scaledContents WRITE setScaledContents)
    Q_PROPERTY(bool autoLoadImage READ autoLoadImage WRITE setAutoLoadImage)
    Q_PROPERTY(QString autoLoadPath READ autoLoadPath WRITE setAutoLoadPath)
    Q_PROPERTY(QStringList nameFilters READ nameFilters WRITE setNameFilters)
    Q_PROPERTY(int comId READ comId WRITE setComId)
    Q_PROPERTY(int channel READ channel WRITE setChannel)
    Q_PROPERTY(DataClass dataClass READ dataClass WRITE setDataClass)
    Q_PROPERTY(int address READ address WRITE setAddress)
    Q_PROPERTY(UserLevel lowestVisibleUserLevel READ lowestVisibleUserLevel WRITE setLowestVisibleUserLevel)
    Q_PROPERTY(int operationalAuthority READ operationalAuthority WRITE setOperationalAuthority)
    Q_PROPERTY(int top READ top WRITE setTop DESIGNABLE false STORED false)
    Q_PROPERTY(int left READ left WRITE setLeft DESIGNABLE false STORED false)
    Q_PROPERTY(int width READ width WRITE setWidth DESIGNABLE false STORED false)
    Q_PROPERTY(int height READ height WRITE setHeight DESIGNABLE false STORED false)
    Q_PROPERTY(BitType visibleBitType READ visibleBitType WRITE SetVisibleBitType)
    Q_PROPERTY(int visibleAddress READ visibleAddress WRITE SetVisibleAddress)
    Q_PROPERTY(int visibleBitIndex READ visibleBitIndex WRITE SetVisibleBitIndex)
    Q_PROPERTY(bool bitOnVisible READ bitOnVisible WRITE SetBitOnVisible)
    Q_PROPERTY(bool ChnNoVarEnable READ ChnNoVarEnable WRITE SetChnNoVarEnable)

public:
    enum DataClass : int { NoneData = -1, User = 0, Mcm = 1, Sys = 2, Reg = 3, Bus = 4, Com = 5 };
    Q_ENUM(DataClass)
    enum UserLevel : int { NoLevel = 0, Level1, Level2, Level3, Level4, Level5, Level6, Level7, Level8, Level9 };
    Q_ENUM(UserLevel)
    enum BitType : int {
        None = -1, I_BIT = 0, O_BIT, C_BIT, S_BIT, A_BIT, Cn_BIT, Tm_BIT,
        User_BIT, Mcm_BIT, Sys_BIT, Reg_BIT, Bus_BIT, Com_BIT
    };
    Q_ENUM(BitType)

    // A picture larger than this is not decoded (a file's header can claim any size), and a scaled
    // picture is made no larger: twice a 4K screen, 64 MiB a frame.
    static constexpr qint64 MaxPixels = 4096LL * 4096LL;
    static constexpr int AutoLoadInterval = 300;

    Q_INVOKABLE explicit DynamicImage(QWidget *parent = nullptr);
    ~DynamicImage() override;

    QStringList images() const;
    void setImages(const QStringList &images);
    int index() const;
    void setIndex(const int &index);
    bool scaledContents() const;
    void setScaledContents(const bool &scaled);
    bool autoLoadImage() const;
    void setAutoLoadImage(bool on);
    QString autoLoadPath() const;
    void setAutoLoadPath(const QString &path);
    QStringList nameFilters() const;
    void setNameFilters(const QStringList &filters);
    int comId() const;
    void setComId(int comId);
    int channel() const;
    void setChannel(int channel);
    DataClass dataClass() const;
    void setDataClass(DataClass dataClass);
    int address() const;
    void setAddress(int address);
    UserLevel lowestVisibleUserLevel() const;
    void setLowestVisibleUserLevel(UserLevel level);
    int operationalAuthority() const;
    void setOperationalAuthority(int authority);
    int top() const;
    void setTop(int top);
    int left() const;
    void setLeft(int left);
    int width() const;
    void setWidth(int width);
    int height() const;
    void setHeight(int height);
    BitType visibleBitType() const;
    void SetVisibleBitType(BitType type);
    int visibleAddress() const;
    void SetVisibleAddress(int address);
    int visibleBitIndex() const;
    void SetVisibleBitIndex(int index);
    bool bitOnVisible() const;
    void SetBitOnVisible(bool on);
    bool ChnNoVarEnable() const;
    void SetChnNoVarEnable(bool enable);

    // Whether the shown picture is playing (an animation, attached).
    bool isPlaying() const;
    // The picture shown now (null for none).
    QPixmap currentPixmap() const;
    // How many polls of the auto-load folder listed it.
    int folderListings() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    void updateData(int index, int value) override;
    using norvo_v0::UpdateVariableInterface::updateData;

public Q_SLOTS:
    void updateImage();
    void updateAuthority(int level);
    void setQeltAppAndFormPtr(void *app, void *form);

Q_SIGNALS:
    void clicked();
    void doubleClicked();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};

#endif
