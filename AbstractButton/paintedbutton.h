#ifndef PAINTEDBUTTON_H
#define PAINTEDBUTTON_H

#include "abstractbutton.h"
#include "buttonface.h"
#include "buttonlook.h"
#include "hmiwidgets_export.h"

#include <QColor>
#include <QPixmap>

#include <array>

// The appearance every painted operator button has: border, corner radius, icon placement, five
// body colours and five body pictures (normal, pushed, hot, checked-hot, disabled) and the focus flag.
// A kind of button decides in face() which of them its current state shows; painting is shared.
class HMIWIDGETS_EXPORT PaintedButton : public AbstractButton
{
    Q_OBJECT
    Q_PROPERTY(bool borderEnabled READ borderEnabled WRITE SetBorderEnabled RESET ResetBorderEnabled)
    Q_PROPERTY(QColor borderColor READ borderColor WRITE SetBorderColor RESET ResetBorderColor)
    Q_PROPERTY(EButtonPosition iconPosition READ iconPosition WRITE SetIconPosition RESET ResetIconPosition)
    Q_PROPERTY(int iconSpace READ iconSpace WRITE SetIconSpace RESET ResetIconSpace)
    Q_PROPERTY(int textSpace READ textSpace WRITE SetTextSpace RESET ResetTextSpace)
    Q_PROPERTY(int cornersRadius READ cornersRadius WRITE setCornersRadius)

public:
    enum FaceState { Normal = 0, Pushed, Hot, CheckedHot, Disabled };
    using FaceColors = std::array<QColor, 5>; // by FaceState

    bool borderEnabled() const { return m_look.borderEnabled; }
    QColor borderColor() const { return m_look.borderColor; }
    EButtonPosition iconPosition() const { return m_look.iconPosition; }
    int iconSpace() const { return m_look.iconSpace; }
    int textSpace() const { return m_look.textSpace; }
    int cornersRadius() const { return m_look.cornersRadius; }
    const ButtonLook &look() const { return m_look; }

    QColor faceColor(FaceState state) const { return m_colors[state]; }
    QPixmap facePicture(FaceState state) const { return m_pictures[state]; }
    QColor buttonColorNormal() const { return m_colors[Normal]; }
    QColor buttonColorPushed() const { return m_colors[Pushed]; }
    QColor buttonColorHot() const { return m_colors[Hot]; }
    QColor buttonColorCheckedHot() const { return m_colors[CheckedHot]; }
    QColor buttonColorDisabled() const { return m_colors[Disabled]; }
    QPixmap pictureNormal() const { return m_pictures[Normal]; }
    QPixmap picturePushed() const { return m_pictures[Pushed]; }
    QPixmap pictureHot() const { return m_pictures[Hot]; }
    QPixmap pictureCheckedHot() const { return m_pictures[CheckedHot]; }
    QPixmap pictureDisabled() const { return m_pictures[Disabled]; }

    // Focus flag: set while the button has keyboard focus.
    bool hasFocusFlag() const { return m_focus; }

public Q_SLOTS:
    void SetBorderEnabled(bool enabled);
    void SetBorderColor(const QColor &color);
    void SetIconPosition(EButtonPosition position);
    void SetIconSpace(int space);
    void SetTextSpace(int space);
    void setCornersRadius(int radius);
    void ResetBorderEnabled();
    void ResetBorderColor();
    void ResetIconPosition();
    void ResetIconSpace();
    void ResetTextSpace();

    void SetButtonColorNormal(const QColor &color);
    void SetButtonColorPushed(const QColor &color);
    void SetButtonColorHot(const QColor &color);
    void SetButtonColorCheckedHot(const QColor &color);
    void SetButtonColorDisabled(const QColor &color);
    void ResetButtonColorNormal();
    void ResetButtonColorPushed();
    void ResetButtonColorHot();
    void ResetButtonColorCheckedHot();
    void ResetButtonColorDisabled();
    void SetPictureNormal(const QPixmap &picture);
    void SetPicturePushed(const QPixmap &picture);
    void SetPictureHot(const QPixmap &picture);
    void SetPictureCheckedHot(const QPixmap &picture);
    void SetPictureDisabled(const QPixmap &picture);
    void ResetPictureNormal();
    void ResetPicturePushed();
    void ResetPictureHot();
    void ResetPictureCheckedHot();
    void ResetPictureDisabled();

protected:
    PaintedButton(const FaceColors &defaultColors, QWidget *parent);

    // What the current state shows; called on every paint.
    virtual ButtonFace face() const = 0;
    // Called when a body colour changes, so a button can refresh colours derived from it.
    virtual void faceColorChanged(FaceState state) { Q_UNUSED(state) }

    void paintEvent(QPaintEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    void enterEvent(QEnterEvent *event) override;
#else
    void enterEvent(QEvent *event) override;
#endif
    void leaveEvent(QEvent *event) override;

private:
    void setColor(FaceState state, const QColor &color);
    void setPicture(FaceState state, const QPixmap &picture);

    ButtonLook m_look;
    const FaceColors m_defaultColors;
    FaceColors m_colors;
    std::array<QPixmap, 5> m_pictures;
    bool m_focus = false;
};

#endif
