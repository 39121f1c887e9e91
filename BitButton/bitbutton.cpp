#include "bitbutton.h"

#include "bitaddress.h"
#include "bitwriteaction.h"
#include "bufferwarning.h"
#include "controllerbinding.h"
#include "designercommit.h"
#include "designertextregistration.h"
#include "enumvalue.h"
#include "fontmapcodec.h"
#include "languagestate.h"
#include "momentarypress.h"
#include "norvointerface_z3.h"
#include "textinfocodec.h"
#include "widgetfactory.h"

#include <QEvent>

namespace {
constexpr int MonitorItem = 0;
constexpr int EnabledItem = 1;
constexpr int VisibleItem = 2;
constexpr int OnSlot = 0;
constexpr int OffSlot = 1;

const PaintedButton::FaceColors DefaultColors{QColor(240, 240, 240), QColor(192, 192, 192), QColor(208, 208, 208),
                                              QColor(176, 176, 176), QColor(208, 208, 208)};
} // namespace

HMI_REGISTER_WIDGET(BitButton)

class BitButton::Private
{
public:
    explicit Private(BitButton *q)
        : binding(q, q)
        , momentary(q, binding)
    {
    }

    ControllerBinding binding;
    MomentaryPress momentary; // after the binding: destroyed first, so it can still write a release
    QColor onTextColor = Qt::black;
    QColor offTextColor = Qt::black;
    QString onText = QStringLiteral("ON");
    QString offText = QStringLiteral("OFF");
    QStringList onTextList;
    QStringList offTextList;
    Language language = language_0;
    BitAddress readBit{I_BIT, 0, 0};
    BitAddress writeBit{None, 0, 0};
    BitAddress enabledBit;
    BitAddress visibleBit;
    bool bitOnVisible = true;
    Action action = SetOn;
    State state = Off;
    UserLevel enablingLevel = NoLevel;
    UserLevel visibleLevel = NoLevel;

    QByteArray mapBuffer;
    FontMapCodec::Maps fontMaps;
    QByteArray textInfoBuffer;
    QList<QList<TextData>> records; // slot 0 On, slot 1 Off; empty until a buffer or translation sets them
    QList<QFont> onFonts;
    LanguageState language_;
    std::unique_ptr<DesignerTextRegistration> designerRegistration;

    bool hasSlot(int slot) const { return slot < records.size() && !records.at(slot).isEmpty(); }
    TextData *slotRecord(int slot) { return hasSlot(slot) ? &records[slot][0] : nullptr; }
    QStringList slotTexts(int slot) const { return hasSlot(slot) ? records.at(slot).at(0).texts : QStringList(); }
};

BitButton::BitButton(QWidget *parent)
    : PaintedButton(DefaultColors, parent)
    , d(new Private(this))
{
    NORVOInterface_Z3::setWidgetDefaultFont(this);
    setText(d->offText);
    connect(this, &AbstractButton::pressed, this, &BitButton::slotPressed);
    connect(this, &AbstractButton::released, this, &BitButton::slotReleased);
    d->designerRegistration = std::make_unique<DesignerTextRegistration>(this, this);
}

BitButton::~BitButton() = default;

QSize BitButton::sizeHint() const { return QSize(100, 30); }
QSize BitButton::minimumSizeHint() const { return QSize(10, 10); }

QColor BitButton::textColorOn() const { return d->onTextColor; }
QColor BitButton::textColorOff() const { return d->offTextColor; }

void BitButton::SetTextColorOn(const QColor &color)
{
    d->onTextColor = color;
    update();
}

void BitButton::SetTextColorOff(const QColor &color)
{
    d->offTextColor = color;
    update();
}

void BitButton::ResetTextColorOn() { SetTextColorOn(Qt::black); }
void BitButton::ResetTextColorOff() { SetTextColorOff(Qt::black); }
QString BitButton::onText() const { return d->onText; }
QString BitButton::offText() const { return d->offText; }

void BitButton::SetOnText(const QString &text)
{
    d->onText = text;
    showCaption();
}

void BitButton::SetOffText(const QString &text)
{
    d->offText = text;
    showCaption();
}

// The caption shown is the base's text; keeping it in step here spares the painting a second pass.
void BitButton::showCaption()
{
    setText(d->state == On ? d->onText : d->offText);
    update();
}

QStringList BitButton::getOnTextList() const { return d->onTextList; }
QStringList BitButton::getOffTextList() const { return d->offTextList; }
void BitButton::setOnTextList(const QStringList &texts) { d->onTextList = texts; }
void BitButton::setOffTextList(const QStringList &texts) { d->offTextList = texts; }

void BitButton::setFont(const QFont &font)
{
    QWidget::setFont(font);
    update();
}

void BitButton::setLabelFont(const QFont &font) { setFont(font); }

int BitButton::comId() const { return d->binding.comId(); }
void BitButton::setComId(int comId) { d->binding.setComId(comId); }
int BitButton::channel() const { return d->binding.channel(); }
void BitButton::SetChannel(int channel) { d->binding.setChannel(channel); }
BitButton::ReadBitType BitButton::readBitType() const { return ReadBitType(d->readBit.type); }
void BitButton::SetReadBitType(ReadBitType type) { setBitType(this, "readBitType", d->readBit, type); }
int BitButton::readAddress() const { return d->readBit.address; }
void BitButton::SetReadAddress(int address) { d->readBit.address = address; }
int BitButton::readBitIndex() const { return d->readBit.bitIndex; }
void BitButton::SetReadBitIndex(int index) { setBitIndex(d->readBit, index); }
BitButton::WriteBitType BitButton::writeBitType() const { return WriteBitType(d->writeBit.type); }
void BitButton::SetWriteBitType(WriteBitType type) { setBitType(this, "writeBitType", d->writeBit, type); }
int BitButton::writeAddress() const { return d->writeBit.address; }
void BitButton::SetWriteAddress(int address) { d->writeBit.address = address; }
int BitButton::writeBitIndex() const { return d->writeBit.bitIndex; }
void BitButton::SetWriteBitIndex(int index) { setBitIndex(d->writeBit, index); }
BitButton::ReadBitType BitButton::enabledBitType() const { return ReadBitType(d->enabledBit.type); }
void BitButton::SetEnabledBitType(ReadBitType type) { setBitType(this, "enabledBitType", d->enabledBit, type); }
int BitButton::enabledAddress() const { return d->enabledBit.address; }
void BitButton::SetEnabledAddress(int address) { d->enabledBit.address = address; }
int BitButton::enabledBitIndex() const { return d->enabledBit.bitIndex; }
void BitButton::SetEnabledBitIndex(int index) { setBitIndex(d->enabledBit, index); }
BitButton::ReadBitType BitButton::visibleBitType() const { return ReadBitType(d->visibleBit.type); }
void BitButton::SetVisibleBitType(ReadBitType type) { setBitType(this, "visibleBitType", d->visibleBit, type); }
int BitButton::visibleAddress() const { return d->visibleBit.address; }
void BitButton::SetVisibleAddress(int address) { d->visibleBit.address = address; }
int BitButton::visibleBitIndex() const { return d->visibleBit.bitIndex; }
void BitButton::SetVisibleBitIndex(int index) { setBitIndex(d->visibleBit, index); }
bool BitButton::bitOnVisible() const { return d->bitOnVisible; }
void BitButton::SetBitOnVisible(bool onVisible) { d->bitOnVisible = onVisible; }
bool BitButton::ChnNoVarEnable() const { return d->binding.chnNoVarEnable(); }
void BitButton::SetChnNoVarEnable(bool enable) { d->binding.setChnNoVarEnable(enable); }
BitButton::Action BitButton::action() const { return d->action; }
void BitButton::SetAction(Action action) { assignEnum(this, "action", d->action, action); }

BitButton::State BitButton::state() const { return d->state; }

void BitButton::SetState(State state)
{
    if (assignEnum(this, "state", d->state, state))
        showCaption();
}

void BitButton::setBitOn(bool on) { d->state = on ? On : Off; }
int BitButton::getOperationalAuthority() const { return d->binding.operationalAuthority(); }
void BitButton::setOperationalAuthority(int authority) { d->binding.setOperationalAuthority(authority); }
bool BitButton::isEnabled() const { return d->binding.enabledRequest(); }
BitButton::UserLevel BitButton::lowestEnablingUserLevel() const { return d->enablingLevel; }
void BitButton::setLowestEnablingUserLevel(UserLevel level) { assignEnum(this, "lowestEnablingUserLevel", d->enablingLevel, level); }
BitButton::UserLevel BitButton::lowestVisibleUserLevel() const { return d->visibleLevel; }
void BitButton::setLowestVisibleUserLevel(UserLevel level) { assignEnum(this, "lowestVisibleUserLevel", d->visibleLevel, level); }
BitButton::Language BitButton::getLanguage() const { return d->language; }
void BitButton::setLanguage(Language language) { assignEnum(this, "language", d->language, language); }

void BitButton::updateAuthority(int authority) { d->binding.updateAuthority(authority); }
void BitButton::setEnabled(bool enabled) { d->binding.setEnabledRequest(enabled); }

bool BitButton::event(QEvent *event)
{
    if (event->type() == QEvent::Polish && !d->binding.isAttached() && d->binding.attachToForm()) {
        d->binding.registerBit(MonitorItem, d->readBit.type, d->readBit.address, d->readBit.bitIndex);
        d->binding.registerBit(EnabledItem, d->enabledBit.type, d->enabledBit.address, d->enabledBit.bitIndex);
        d->binding.registerBit(VisibleItem, d->visibleBit.type, d->visibleBit.address, d->visibleBit.bitIndex);
    }
    return PaintedButton::event(event);
}

void BitButton::updateData(int index, int value)
{
    switch (index) {
    case MonitorItem:
        SetState(value != 0 ? On : Off);
        break;
    case EnabledItem:
        d->binding.setEnabledRequest(value != 0);
        break;
    case VisibleItem:
        setVisible(d->bitOnVisible ? value != 0 : value == 0);
        break;
    default:
        break;
    }
}

void BitButton::slotPressed()
{
    if (!takesInput()) // called by name on a key the operator could not press
        return;
    if (const auto release = BitWriteAction::press(d->binding, d->action, d->writeBit))
        d->momentary.hold(*release);
}

// Other ends of a held press (disabled, hidden, blocked, deactivated, focus lost, destroyed) are
// watched by the momentary press itself.
void BitButton::slotReleased() { d->momentary.end(); }

void BitButton::resetRegisterReadBitData(int nChannel, int nBitType, int nAddress, int nBitIndex)
{
    if (!ControllerBinding::acceptsAddress(nChannel, nBitType, nAddress, I_BIT, Com_BIT))
        return;
    d->binding.setChannelIndex(nChannel - 1);
    d->readBit = BitAddress{nBitType, nAddress, nBitIndex};
    if (const auto value = d->binding.reregisterBit(MonitorItem, nBitType, nAddress, nBitIndex))
        updateData(MonitorItem, *value ? 1 : 0);
}

void BitButton::resetRegisterWriteBitData(int nChannel, int nBitType, int nAddress, int nBitIndex)
{
    if (!ControllerBinding::acceptsAddress(nChannel, nBitType, nAddress, User, Com))
        return;
    d->binding.setChannelIndex(nChannel - 1);
    d->writeBit = BitAddress{nBitType, nAddress, nBitIndex};
}

ButtonFace BitButton::face() const
{
    ButtonFace face;
    const bool on = d->state == On;
    // After setBitOn the base's text may still show the other state; catching up costs one more paint.
    const_cast<BitButton *>(this)->setText(on ? d->onText : d->offText);
    // Hot and checked-hot looks are kept but not shown by this button.
    const FaceState state = !QWidget::isEnabled() ? FaceState::Disabled : on ? FaceState::Pushed : FaceState::Normal;
    face.bodyColor = faceColor(state);
    face.picture = facePicture(state);
    face.captionColor = on ? d->onTextColor : d->offTextColor;
    face.focusFrame = hasFocusFlag();
    return face;
}

// ---- Texts and languages

QByteArray BitButton::MapBuffer() const { return d->mapBuffer; }

void BitButton::SetMapBuffer(const QByteArray &buffer)
{
    d->mapBuffer = buffer;
    FontMapCodec::Maps maps;
    if (FontMapCodec::decode(buffer, &maps)) {
        d->fontMaps = maps;
        setFont(d->fontMaps.captionFonts[d->language_.current()]);
    } else if (!buffer.trimmed().isEmpty()) {
        warnUnreadableBuffer(this, "MapBuffer");
    }
    update();
}

QByteArray BitButton::textInfoBuffer() const { return d->textInfoBuffer; }

void BitButton::SetTextInfoBuffer(const QByteArray &buffer)
{
    d->textInfoBuffer = buffer;
    QList<QList<TextData>> records;
    if (buffer.isEmpty())
        return;
    if (!TextInfoCodec::decodeSlots(buffer, &records)) {
        warnUnreadableBuffer(this, "textInfoBuffer");
        return;
    }
    d->records = records;
    for (QList<TextData> &slot : d->records) {
        if (!slot.isEmpty())
            LanguageState::refreshFromWordLibrary(slot[0]);
    }
    d->onTextList = d->slotTexts(OnSlot);
    d->offTextList = d->slotTexts(OffSlot);
    d->onFonts = d->hasSlot(OnSlot) ? d->records.at(OnSlot).at(0).fonts : QList<QFont>();
    d->language_.clampTo(int(d->onTextList.size()));
    if (const auto font = LanguageState::fontAt(d->onFonts, d->language_.current()))
        setFont(*font);
}

void BitButton::updateLanguage(int index)
{
    if (!d->language_.accepts(index) || d->onTextList.isEmpty() || d->offTextList.isEmpty())
        return;
    d->language_.markApplied(index);
    if (index < d->onTextList.size())
        d->onText = d->onTextList.at(index);
    if (index < d->offTextList.size())
        d->offText = d->offTextList.at(index);
    if (const auto font = LanguageState::fontAt(d->onFonts, index))
        QWidget::setFont(*font);
    else if (d->fontMaps.captionFonts.contains(index))
        QWidget::setFont(d->fontMaps.captionFonts.value(index));
    showCaption();
}

void BitButton::getPluginNameAndListType(QString &name, int &listType)
{
    name = objectName();
    listType = 2;
}

void BitButton::getPluginNameAndTransText(QList<QList<TextData>> &texts)
{
    texts.clear();
    if (!d->records.isEmpty()) {
        texts = d->records;
        return;
    }
    QList<QFont> fonts = d->fontMaps.captionFonts.values();
    if (fonts.isEmpty()) {
        for (int i = 0; i < NORVOInterface_Z3::initialization()->getSystemLanguageCount(); ++i)
            fonts.append(font());
    }
    TextData on;
    on.texts = d->onTextList.isEmpty() ? QStringList{d->onText} : d->onTextList;
    on.fonts = fonts;
    TextData off;
    off.texts = d->offTextList.isEmpty() ? QStringList{d->offText} : d->offTextList;
    off.fonts = fonts;
    texts = {{on}, {off}};
}

void BitButton::setPluginTransText(QList<QStringList> &texts)
{
    if (texts.size() < 2)
        return;
    if (d->records.isEmpty()) {
        d->onTextList = texts.at(OnSlot);
        d->offTextList = texts.at(OffSlot);
        DesignerCommit::setProperty(this, "onTextList", d->onTextList);
    } else {
        for (int slot : {OnSlot, OffSlot}) {
            if (TextData *record = d->slotRecord(slot))
                record->texts = record->wordLibId != -1 ? QStringList() : texts.at(slot);
        }
        const QByteArray buffer = TextInfoCodec::encodeSlots(d->records);
        if (!DesignerCommit::setProperty(this, "textInfoBuffer", buffer))
            d->textInfoBuffer = buffer;
        for (int slot : {OnSlot, OffSlot}) {
            if (TextData *record = d->slotRecord(slot))
                LanguageState::refreshFromWordLibrary(*record);
        }
        d->onTextList = d->slotTexts(OnSlot);
        d->offTextList = d->slotTexts(OffSlot);
    }
    const int current = d->language_.current();
    if (current >= 0 && current < d->onTextList.size())
        d->onText = d->onTextList.at(current);
    if (current >= 0 && current < d->offTextList.size())
        d->offText = d->offTextList.at(current);
    showCaption();
}

void BitButton::upDatePluginTextfromWordLib()
{
    if (d->records.isEmpty())
        return;
    const int current = d->language_.current();
    auto refresh = [&](int slot, QStringList &list, QString &caption) {
        TextData *record = d->slotRecord(slot);
        if (!record || record->wordLibId == -1)
            return;
        if (LanguageState::refreshFromWordLibrary(*record)) {
            list = record->texts;
            caption = LanguageState::textAt(list, current);
        } else {
            list.clear();
            caption.clear();
        }
    };
    refresh(OnSlot, d->onTextList, d->onText);
    refresh(OffSlot, d->offTextList, d->offText);
    showCaption();
}
