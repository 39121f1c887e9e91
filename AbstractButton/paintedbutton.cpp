#include "paintedbutton.h"

#include "buttonpainter.h"
#include "enumvalue.h"

#include <algorithm>

const PaintedButton::FaceColors PaintedButton::InteractionColors{QColor(240, 240, 240), QColor(192, 192, 192),
                                                                 QColor(128, 217, 234), QColor(176, 176, 176),
                                                                 QColor(208, 208, 208)};

PaintedButton::PaintedButton(const FaceColors &defaultColors, QWidget *parent)
    : AbstractButton(parent)
    , m_defaultColors(defaultColors)
    , m_colors(defaultColors)
{
}

void PaintedButton::SetBorderEnabled(bool enabled)
{
    m_look.borderEnabled = enabled;
    update();
}

void PaintedButton::SetBorderColor(const QColor &color)
{
    m_look.borderColor = color;
    update();
}

void PaintedButton::SetIconPosition(EButtonPosition position)
{
    if (assignEnum(this, "iconPosition", m_look.iconPosition, position))
        update();
}

void PaintedButton::SetIconSpace(int space)
{
    m_look.iconSpace = space;
    update();
}

void PaintedButton::SetTextSpace(int space)
{
    m_look.textSpace = space;
    update();
}

void PaintedButton::setCornersRadius(int radius)
{
    m_look.cornersRadius = std::max(0, radius);
    update();
}

void PaintedButton::ResetBorderEnabled() { SetBorderEnabled(ButtonLook().borderEnabled); }
void PaintedButton::ResetBorderColor() { SetBorderColor(ButtonLook().borderColor); }
void PaintedButton::ResetIconPosition() { SetIconPosition(ButtonLook().iconPosition); }
void PaintedButton::ResetIconSpace() { SetIconSpace(ButtonLook().iconSpace); }
void PaintedButton::ResetTextSpace() { SetTextSpace(ButtonLook().textSpace); }

void PaintedButton::setColor(FaceState state, const QColor &color)
{
    m_colors[size_t(state)] = color;
    faceColorChanged(state);
    update();
}

void PaintedButton::setPicture(FaceState state, const QPixmap &picture)
{
    m_pictures[size_t(state)] = picture;
    update();
}

void PaintedButton::SetButtonColorNormal(const QColor &color) { setColor(FaceState::Normal, color); }
void PaintedButton::SetButtonColorPushed(const QColor &color) { setColor(FaceState::Pushed, color); }
void PaintedButton::SetButtonColorHot(const QColor &color) { setColor(FaceState::Hot, color); }
void PaintedButton::SetButtonColorCheckedHot(const QColor &color) { setColor(FaceState::CheckedHot, color); }
void PaintedButton::SetButtonColorDisabled(const QColor &color) { setColor(FaceState::Disabled, color); }
void PaintedButton::ResetButtonColorNormal() { setColor(FaceState::Normal, m_defaultColors[size_t(FaceState::Normal)]); }
void PaintedButton::ResetButtonColorPushed() { setColor(FaceState::Pushed, m_defaultColors[size_t(FaceState::Pushed)]); }
void PaintedButton::ResetButtonColorHot() { setColor(FaceState::Hot, m_defaultColors[size_t(FaceState::Hot)]); }
void PaintedButton::ResetButtonColorCheckedHot() { setColor(FaceState::CheckedHot, m_defaultColors[size_t(FaceState::CheckedHot)]); }
void PaintedButton::ResetButtonColorDisabled() { setColor(FaceState::Disabled, m_defaultColors[size_t(FaceState::Disabled)]); }
void PaintedButton::SetPictureNormal(const QPixmap &picture) { setPicture(FaceState::Normal, picture); }
void PaintedButton::SetPicturePushed(const QPixmap &picture) { setPicture(FaceState::Pushed, picture); }
void PaintedButton::SetPictureHot(const QPixmap &picture) { setPicture(FaceState::Hot, picture); }
void PaintedButton::SetPictureCheckedHot(const QPixmap &picture) { setPicture(FaceState::CheckedHot, picture); }
void PaintedButton::SetPictureDisabled(const QPixmap &picture) { setPicture(FaceState::Disabled, picture); }
void PaintedButton::ResetPictureNormal() { setPicture(FaceState::Normal, QPixmap()); }
void PaintedButton::ResetPicturePushed() { setPicture(FaceState::Pushed, QPixmap()); }
void PaintedButton::ResetPictureHot() { setPicture(FaceState::Hot, QPixmap()); }
void PaintedButton::ResetPictureCheckedHot() { setPicture(FaceState::CheckedHot, QPixmap()); }
void PaintedButton::ResetPictureDisabled() { setPicture(FaceState::Disabled, QPixmap()); }

void PaintedButton::paintEvent(QPaintEvent *)
{
    ButtonPainter(this, m_look, &m_renderCache).paint(face());
}

// The base's focus handling is replaced: the flag only decides the focus frame.
void PaintedButton::focusInEvent(QFocusEvent *)
{
    m_focus = true;
    update();
}

void PaintedButton::focusOutEvent(QFocusEvent *)
{
    m_focus = false;
    update();
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
void PaintedButton::enterEvent(QEnterEvent *)
#else
void PaintedButton::enterEvent(QEvent *)
#endif
{
}

void PaintedButton::leaveEvent(QEvent *)
{
}
