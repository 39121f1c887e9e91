#ifndef PAINTEDBUTTON_H
#define PAINTEDBUTTON_H

#include "abstractbutton.h"
#include "buttonface.h"
#include "buttonrendercache.h"
#include "buttonlook.h"
#include "hmiwidgets_export.h"
#include "interactionstate.h"

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
    // The five looks of a body, indexed by the interaction state they belong to.
    using FaceState = InteractionState;
    using FaceColors = std::array<QColor, 5>; // Normal, Pushed, Hot, CheckedHot, Disabled
    // The face colours of the buttons whose looks follow interaction (function, keypad, picture).
    static const FaceColors InteractionColors;

    bool borderEnabled() const { return m_look.borderEnabled; }
    QColor borderColor() const { return m_look.borderColor; }
    EButtonPosition iconPosition() const { return m_look.iconPosition; }
    int iconSpace() const { return m_look.iconSpace; }
    int textSpace() const { return m_look.textSpace; }
    int cornersRadius() const { return m_look.cornersRadius; }
    const ButtonLook &look() const { return m_look; }

    QColor faceColor(FaceState state) const { return m_colors[size_t(state)]; }
    QPixmap facePicture(FaceState state) const { return m_pictures[size_t(state)]; }
    QColor buttonColorNormal() const { return faceColor(FaceState::Normal); }
    QColor buttonColorPushed() const { return faceColor(FaceState::Pushed); }
    QColor buttonColorHot() const { return faceColor(FaceState::Hot); }
    QColor buttonColorCheckedHot() const { return faceColor(FaceState::CheckedHot); }
    QColor buttonColorDisabled() const { return faceColor(FaceState::Disabled); }
    QPixmap pictureNormal() const { return facePicture(FaceState::Normal); }
    QPixmap picturePushed() const { return facePicture(FaceState::Pushed); }
    QPixmap pictureHot() const { return facePicture(FaceState::Hot); }
    QPixmap pictureCheckedHot() const { return facePicture(FaceState::CheckedHot); }
    QPixmap pictureDisabled() const { return facePicture(FaceState::Disabled); }

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
    ButtonRenderCache m_renderCache;
};

#endif
