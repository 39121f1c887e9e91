#include "keyfacebutton.h"

#include "controllerbinding.h"

#include <QEvent>

KeyFaceButton::KeyFaceButton(QWidget *parent)
    : PaintedButton(InteractionColors, parent)
    , m_binding(std::make_unique<ControllerBinding>(this, nullptr))
{
}

KeyFaceButton::~KeyFaceButton() = default;

void KeyFaceButton::SetTextColorEnabled(const QColor &color)
{
    m_textColorEnabled = color;
    update();
}

void KeyFaceButton::ResetTextColorEnabled() { SetTextColorEnabled(Qt::black); }

void KeyFaceButton::SetTextColorDisabled(const QColor &color)
{
    m_textColorDisabled = color;
    update();
}

void KeyFaceButton::ResetTextColorDisabled() { SetTextColorDisabled(QColor(192, 192, 192)); }
int KeyFaceButton::getOperationalAuthority() const { return m_binding->operationalAuthority(); }
void KeyFaceButton::setOperationalAuthority(int authority) { m_binding->setOperationalAuthority(authority); }
bool KeyFaceButton::isEnabled() const { return m_binding->enabledRequest(); }
void KeyFaceButton::setEnabled(bool enabled) { m_binding->setEnabledRequest(enabled); }
void KeyFaceButton::updateAuthority(int authority) { m_binding->updateAuthority(authority); }

bool KeyFaceButton::event(QEvent *event)
{
    if (event->type() == QEvent::Polish)
        m_binding->attachToForm(); // kept for the form; no controller variable is used
    return PaintedButton::event(event);
}

ButtonFace KeyFaceButton::face() const
{
    ButtonFace face;
    FaceState state = interactionState(*this, hasFocusFlag());
    if (state == FaceState::CheckedHot)
        state = FaceState::Pushed; // these keys have no checked-hot look
    face.bodyColor = faceColor(state);
    face.picture = facePicture(state);
    face.captionColor = m_textColorEnabled;
    face.disabledCaptionColor = m_textColorDisabled;
    face.focusFrame = hasFocus();
    return face;
}
