#include "keypadbutton.h"

#include "controllerbinding.h"
#include "enumvalue.h"
#include "norvointerface_z3.h"
#include "widgetfactory.h"

#include <QEvent>

namespace {
constexpr int LanguageCount = 10;
} // namespace

HMI_REGISTER_WIDGET(KeypadButton)

class KeypadButton::Private
{
public:
    explicit Private(KeypadButton *q)
        : binding(q, q)
    {
    }

    ControllerBinding binding; // authority, the enabled request and the application pointer
    Language language = language_0;
    QStringList textList;
    QColor textColorEnabled = Qt::black;
    QColor textColorDisabled = QColor(192, 192, 192);
    QChar character;
    bool shiftEnabled = false;
    CommandType command = None;
    UserLevel enablingLevel = NoLevel;
    UserLevel visibleLevel = NoLevel;
};

KeypadButton::KeypadButton(QWidget *parent)
    : PaintedButton(InteractionColors, parent)
    , d(new Private(this))
{
    NORVOInterface_Z3::setWidgetDefaultFont(this);
    setText(QStringLiteral("KeypadButton"));
    d->textList.clear();
}

KeypadButton::~KeypadButton() = default;

QSize KeypadButton::sizeHint() const { return QSize(100, 30); }
QSize KeypadButton::minimumSizeHint() const { return QSize(20, 10); }

void KeypadButton::updateData(int, int) {}

KeypadButton::Language KeypadButton::getLanguage() const { return d->language; }
void KeypadButton::setLanguage(Language language) { assignEnum(d->language, language); }

void KeypadButton::setText(const QString &text)
{
    if (d->textList.isEmpty())
        d->textList = QStringList(LanguageCount, text);
    AbstractButton::setText(text);
    update();
}

QStringList KeypadButton::getTextList() const { return d->textList; }
void KeypadButton::setTextList(const QStringList &texts) { d->textList = texts; }
QColor KeypadButton::textColorEnabled() const { return d->textColorEnabled; }

void KeypadButton::SetTextColorEnabled(const QColor &color)
{
    d->textColorEnabled = color;
    update();
}

void KeypadButton::ResetTextColorEnabled() { SetTextColorEnabled(Qt::black); }
QColor KeypadButton::textColorDisabled() const { return d->textColorDisabled; }

void KeypadButton::SetTextColorDisabled(const QColor &color)
{
    d->textColorDisabled = color;
    update();
}

void KeypadButton::ResetTextColorDisabled() { SetTextColorDisabled(QColor(192, 192, 192)); }
QChar KeypadButton::character() const { return d->character; }
void KeypadButton::setCharacter(QChar character) { d->character = character; }
bool KeypadButton::shiftEnabled() const { return d->shiftEnabled; }
void KeypadButton::setShiftEnabled(bool enabled) { d->shiftEnabled = enabled; }
KeypadButton::CommandType KeypadButton::command() const { return d->command; }
void KeypadButton::setCommand(CommandType command) { assignEnum(d->command, command); }
KeypadButton::UserLevel KeypadButton::lowestEnablingUserLevel() const { return d->enablingLevel; }
void KeypadButton::setLowestEnablingUserLevel(UserLevel level) { assignEnum(d->enablingLevel, level); }
KeypadButton::UserLevel KeypadButton::lowestVisibleUserLevel() const { return d->visibleLevel; }
void KeypadButton::setLowestVisibleUserLevel(UserLevel level) { assignEnum(d->visibleLevel, level); }
int KeypadButton::getOperationalAuthority() const { return d->binding.operationalAuthority(); }
void KeypadButton::setOperationalAuthority(int authority) { d->binding.setOperationalAuthority(authority); }
bool KeypadButton::isEnabled() const { return d->binding.enabledRequest(); }
void KeypadButton::setEnabled(bool enabled) { d->binding.setEnabledRequest(enabled); }
void KeypadButton::updateAuthority(int authority) { d->binding.updateAuthority(authority); }

void KeypadButton::updateLanguage(int index)
{
    // A caption list shorter than the language keeps the caption shown.
    if (index < 0 || index >= LanguageCount || index == d->language || d->textList.isEmpty())
        return;
    d->language = Language(index);
    if (index < d->textList.size())
        setText(d->textList.at(index));
}

// The form holding the keys decides what a key does; the key itself sends nothing.
void KeypadButton::butnClick() {}

bool KeypadButton::event(QEvent *event)
{
    if (event->type() == QEvent::Polish)
        d->binding.attachToForm(); // kept for the form; the key uses no controller variable
    return PaintedButton::event(event);
}

ButtonFace KeypadButton::face() const
{
    ButtonFace face;
    FaceState state = interactionState(*this, hasFocusFlag());
    if (state == FaceState::CheckedHot)
        state = FaceState::Pushed; // this button has no checked-hot look
    face.bodyColor = faceColor(state);
    face.picture = facePicture(state);
    face.captionColor = QWidget::isEnabled() ? d->textColorEnabled : d->textColorDisabled;
    face.focusFrame = hasFocus();
    return face;
}
