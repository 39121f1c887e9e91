#include "keypadbutton.h"

#include "enumvalue.h"
#include "languagestate.h"
#include "norvointerface_z3.h"
#include "widgetfactory.h"

namespace {
constexpr int LanguageCount = 10;
} // namespace

HMI_REGISTER_WIDGET(KeypadButton)

class KeypadButton::Private
{
public:
    Language language = language_0;
    QStringList textList;
    QChar character;
    bool shiftEnabled = false;
    CommandType command = None;
    UserLevel enablingLevel = NoLevel;
    UserLevel visibleLevel = NoLevel;
};

KeypadButton::KeypadButton(QWidget *parent)
    : KeyFaceButton(parent)
    , d(new Private)
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
void KeypadButton::setLanguage(Language language) { assignEnum(this, "language", d->language, language); }

void KeypadButton::setText(const QString &text)
{
    if (d->textList.isEmpty())
        d->textList = perLanguage(LanguageCount, text);
    AbstractButton::setText(text);
    update();
}

QStringList KeypadButton::getTextList() const { return d->textList; }
void KeypadButton::setTextList(const QStringList &texts) { d->textList = texts; }
QChar KeypadButton::character() const { return d->character; }
void KeypadButton::setCharacter(QChar character) { d->character = character; }
bool KeypadButton::shiftEnabled() const { return d->shiftEnabled; }
void KeypadButton::setShiftEnabled(bool enabled) { d->shiftEnabled = enabled; }
KeypadButton::CommandType KeypadButton::command() const { return d->command; }
void KeypadButton::setCommand(CommandType command) { assignEnum(this, "command", d->command, command); }
KeypadButton::UserLevel KeypadButton::lowestEnablingUserLevel() const { return d->enablingLevel; }
void KeypadButton::setLowestEnablingUserLevel(UserLevel level) { assignEnum(this, "lowestEnablingUserLevel", d->enablingLevel, level); }
KeypadButton::UserLevel KeypadButton::lowestVisibleUserLevel() const { return d->visibleLevel; }
void KeypadButton::setLowestVisibleUserLevel(UserLevel level) { assignEnum(this, "lowestVisibleUserLevel", d->visibleLevel, level); }

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
