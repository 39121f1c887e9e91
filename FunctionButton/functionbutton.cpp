#include "functionbutton.h"

#include "bitaddress.h"
#include "bitwriteaction.h"
#include "captiontexts.h"
#include "controllerbinding.h"
#include "designerhost.h"
#include "designertextregistration.h"
#include "enumvalue.h"
#include "languagestate.h"
#include "norvointerface_z3.h"
#include "widgetfactory.h"

#include <QEvent>
#include <QMap>

namespace {
constexpr int EnabledItem = 0;
constexpr int VisibleItem = 1;
constexpr int ColorItem = 2;
constexpr int TextControlItem = 3;
} // namespace

HMI_REGISTER_WIDGET(FunctionButton)

class FunctionButton::Private
{
public:
    explicit Private(FunctionButton *q)
        : binding(q, q)
        , captions(q)
    {
    }

    ControllerBinding binding;
    CaptionTexts captions;
    Language language = language_0;
    QColor textColorEnabled = Qt::black;
    QColor textColorDisabled = QColor(192, 192, 192);
    QColor onTextColor = Qt::black;
    QColor onButtonColor = QColor(240, 240, 240);
    // Working copies shown by the painting: the colour bit and setButtonColor change them.
    QColor shownTextColor = Qt::black;
    QColor shownNormalColor = QColor(240, 240, 240);
    BitAddress enabledBit;
    BitAddress visibleBit;
    BitAddress colorBit;
    BitAddress writeBit;
    bool bitOnVisible = true;
    bool chnNoVarEnable = false;
    int group = -1;
    int id = -1;
    UserLevel enablingLevel = NoLevel;
    UserLevel visibleLevel = NoLevel;
    Action action = SetOn;
    DataClass textControlDataClass = None_Var;
    int textControlAddress = 0;
    QStringList textValueList;
    QStringList textStringList;
    QMap<int, QStringList> captionTable;

    std::unique_ptr<DesignerTextRegistration> designerRegistration;
};

FunctionButton::FunctionButton(QWidget *parent)
    : PaintedButton(InteractionColors, parent)
    , d(new Private(this))
{
    NORVOInterface_Z3::setWidgetDefaultFont(this);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
    connect(this, &AbstractButton::pressed, this, &FunctionButton::slotPressed);
    connect(this, &AbstractButton::released, this, &FunctionButton::slotReleased);
    d->designerRegistration = std::make_unique<DesignerTextRegistration>(this, this);
}

FunctionButton::~FunctionButton() = default;

QSize FunctionButton::sizeHint() const { return QSize(100, 30); }
QSize FunctionButton::minimumSizeHint() const { return QSize(20, 10); }

FunctionButton::Language FunctionButton::getLanguage() const { return d->language; }
void FunctionButton::setLanguage(Language language) { assignEnum(this, "language", d->language, language); }
QStringList FunctionButton::getTextList() const { return d->captions.textList; }

void FunctionButton::setTextList(const QStringList &texts) { d->captions.setTextList(texts, d->language); }

QColor FunctionButton::textColorEnabled() const { return d->textColorEnabled; }

void FunctionButton::SetTextColorEnabled(const QColor &color)
{
    d->textColorEnabled = color;
    d->shownTextColor = color;
    update();
}

QColor FunctionButton::textColorDisabled() const { return d->textColorDisabled; }

void FunctionButton::SetTextColorDisabled(const QColor &color)
{
    d->textColorDisabled = color;
    update();
}

QColor FunctionButton::textColorOn() const { return d->onTextColor; }

void FunctionButton::SetTextColorOn(const QColor &color)
{
    d->onTextColor = color;
    update();
}

QColor FunctionButton::buttonColorOn() const { return d->onButtonColor; }

void FunctionButton::SetButtonColorOn(const QColor &color)
{
    d->onButtonColor = color;
    update();
}

void FunctionButton::faceColorChanged(FaceState state)
{
    if (state == FaceState::Normal)
        d->shownNormalColor = buttonColorNormal();
}

int FunctionButton::comId() const { return d->binding.comId(); }
void FunctionButton::setComId(int comId) { d->binding.setComId(comId); }
int FunctionButton::channel() const { return d->binding.channel(); }
void FunctionButton::SetChannel(int channel) { d->binding.setChannel(channel); }
FunctionButton::BitType FunctionButton::enabledBitType() const { return BitType(d->enabledBit.type); }
void FunctionButton::SetEnabledBitType(BitType type) { setBitType(this, "enabledBitType", d->enabledBit, type); }
int FunctionButton::enabledAddress() const { return d->enabledBit.address; }
void FunctionButton::SetEnabledAddress(int address) { d->enabledBit.address = address; }
int FunctionButton::enabledBitIndex() const { return d->enabledBit.bitIndex; }
void FunctionButton::SetEnabledBitIndex(int index) { setBitIndex(d->enabledBit, index); }
FunctionButton::BitType FunctionButton::visibleBitType() const { return BitType(d->visibleBit.type); }
void FunctionButton::SetVisibleBitType(BitType type) { setBitType(this, "visibleBitType", d->visibleBit, type); }
int FunctionButton::visibleAddress() const { return d->visibleBit.address; }
void FunctionButton::SetVisibleAddress(int address) { d->visibleBit.address = address; }
int FunctionButton::visibleBitIndex() const { return d->visibleBit.bitIndex; }
void FunctionButton::SetVisibleBitIndex(int index) { setBitIndex(d->visibleBit, index); }
bool FunctionButton::bitOnVisible() const { return d->bitOnVisible; }
void FunctionButton::SetBitOnVisible(bool onVisible) { d->bitOnVisible = onVisible; }
FunctionButton::BitType FunctionButton::colorBitType() const { return BitType(d->colorBit.type); }
void FunctionButton::SetColorBitType(BitType type) { setBitType(this, "colorBitType", d->colorBit, type); }
int FunctionButton::colorAddress() const { return d->colorBit.address; }
void FunctionButton::SetColorAddress(int address) { d->colorBit.address = address; }
int FunctionButton::colorBitIndex() const { return d->colorBit.bitIndex; }
void FunctionButton::SetColorBitIndex(int index) { setBitIndex(d->colorBit, index); }
int FunctionButton::group() const { return d->group; }
void FunctionButton::setGroup(int group) { d->group = group; }
int FunctionButton::id() const { return d->id; }
void FunctionButton::setID(int id) { d->id = id; }
FunctionButton::UserLevel FunctionButton::lowestEnablingUserLevel() const { return d->enablingLevel; }
void FunctionButton::setLowestEnablingUserLevel(UserLevel level) { assignEnum(this, "lowestEnablingUserLevel", d->enablingLevel, level); }
FunctionButton::UserLevel FunctionButton::lowestVisibleUserLevel() const { return d->visibleLevel; }
void FunctionButton::setLowestVisibleUserLevel(UserLevel level) { assignEnum(this, "lowestVisibleUserLevel", d->visibleLevel, level); }
int FunctionButton::getOperationalAuthority() const { return d->binding.operationalAuthority(); }
void FunctionButton::setOperationalAuthority(int authority) { d->binding.setOperationalAuthority(authority); }
bool FunctionButton::isEnabled() const { return d->binding.enabledRequest(); }
FunctionButton::Action FunctionButton::action() const { return d->action; }
void FunctionButton::SetAction(Action action) { assignEnum(this, "action", d->action, action); }
FunctionButton::WriteBitType FunctionButton::writeBitType() const { return WriteBitType(d->writeBit.type); }
void FunctionButton::SetWriteBitType(WriteBitType type) { setBitType(this, "writeBitType", d->writeBit, type); }
int FunctionButton::writeAddress() const { return d->writeBit.address; }

void FunctionButton::SetWriteAddress(int address)
{
    if (address >= 0)
        d->writeBit.address = address;
}

int FunctionButton::writeBitIndex() const { return d->writeBit.bitIndex; }

void FunctionButton::SetWriteBitIndex(int index) { setBitIndex(d->writeBit, index); }

FunctionButton::DataClass FunctionButton::textControlDataClass() const { return d->textControlDataClass; }
void FunctionButton::SetTextControlDataClass(DataClass dataClass) { assignEnum(this, "textControlDataClass", d->textControlDataClass, dataClass); }
int FunctionButton::textControlAddress() const { return d->textControlAddress; }

void FunctionButton::SetTextControlAddress(int address)
{
    if (address >= 0)
        d->textControlAddress = address;
}

QStringList FunctionButton::textValueList() const { return d->textValueList; }
void FunctionButton::SetTextValueList(const QStringList &values) { d->textValueList = values; }
QStringList FunctionButton::textStringList() const { return d->textStringList; }
void FunctionButton::SetTextStringList(const QStringList &captions) { d->textStringList = captions; }
// Kept for the application only: this button writes and registers on its own channel.
bool FunctionButton::ChnNoVarEnable() const { return d->chnNoVarEnable; }
void FunctionButton::SetChnNoVarEnable(bool enable) { d->chnNoVarEnable = enable; }

void FunctionButton::setEnabled(bool enabled) { d->binding.setEnabledRequest(enabled); }
void FunctionButton::updateAuthority(int authority) { d->binding.updateAuthority(authority); }

void FunctionButton::setButtonColor(QString name)
{
    const QStringList parts = name.split(QLatin1Char(','));
    QColor color;
    if (parts.size() == 3)
        color = QColor(parts.at(0).toInt(), parts.at(1).toInt(), parts.at(2).toInt());
    else
        color = QColor(name); // an unknown name gives an invalid colour, as the named-colour lookup does
    d->shownNormalColor = color;
    update();
}

// ---- Attachment and controller values

bool FunctionButton::event(QEvent *event)
{
    if (event->type() == QEvent::Polish)
        init();
    return PaintedButton::event(event);
}

void FunctionButton::init()
{
    if (!d->binding.isAttached()) {
        if (d->binding.attachToForm())
            registerItems();
        rebuildCaptionTable();
    }
    if (DesignerHost *host = DesignerHost::instance(); host && DesignerHost::formWindowOf(this)) {
        host->markPropertyChanged(this, QStringLiteral("group"));
        host->markPropertyChanged(this, QStringLiteral("id"));
    }
}

void FunctionButton::setQeltAppAndFormPtr(void *app, void *form)
{
    d->binding.attach(app, form);
    registerItems();
    rebuildCaptionTable();
}

void FunctionButton::registerItems()
{
    const ControllerBinding &b = d->binding;
    b.registerBit(EnabledItem, d->enabledBit.type, d->enabledBit.address, d->enabledBit.bitIndex);
    b.registerBit(VisibleItem, d->visibleBit.type, d->visibleBit.address, d->visibleBit.bitIndex);
    b.registerBit(ColorItem, d->colorBit.type, d->colorBit.address, d->colorBit.bitIndex);
    b.registerData(TextControlItem, d->textControlDataClass, d->textControlAddress);
}

void FunctionButton::rebuildCaptionTable()
{
    d->captionTable.clear();
    if (d->textValueList.size() != d->textStringList.size())
        return;
    for (int i = 0; i < d->textValueList.size(); ++i)
        d->captionTable.insert(d->textValueList.at(i).toInt(), d->textStringList.at(i).split(QLatin1Char(';')));
}

void FunctionButton::updateData(int index, int value)
{
    switch (index) {
    case EnabledItem:
        setEnabled(value != 0);
        break;
    case VisibleItem:
        setVisible(d->bitOnVisible ? value != 0 : value == 0);
        break;
    case ColorItem:
        d->shownTextColor = value != 0 ? d->onTextColor : d->textColorEnabled;
        d->shownNormalColor = value != 0 ? d->onButtonColor : buttonColorNormal();
        update();
        break;
    case TextControlItem: {
        const auto it = d->captionTable.constFind(value);
        if (it != d->captionTable.constEnd()) {
            d->captions.textList = *it;
            setText(LanguageState::textAt(d->captions.textList, d->language));
        }
        break;
    }
    default:
        break;
    }
}

void FunctionButton::slotPressed()
{
    if (takesInput()) // not when called by name on a key the operator could not press
        BitWriteAction::press(d->binding, d->action, d->writeBit);
}

// A release writes nothing: KeepOn and KeepOff act as SetOn and SetOff on this button.
void FunctionButton::slotReleased() {}

ButtonFace FunctionButton::face() const
{
    ButtonFace face;
    const FaceState state = interactionState(*this, hasFocusFlag());
    face.bodyColor = state == FaceState::Normal ? d->shownNormalColor : faceColor(state);
    face.picture = facePicture(state);
    face.captionColor = d->shownTextColor;
    face.disabledCaptionColor = d->textColorDisabled;
    face.focusFrame = d->binding.isAttached() && hasFocus();
    return face;
}

// ---- Texts and languages

QByteArray FunctionButton::MapBuffer() const { return d->captions.mapBuffer(); }

void FunctionButton::SetMapBuffer(const QByteArray &buffer)
{
    if (d->captions.setMapBuffer(buffer) && !d->captions.fontMap.isEmpty())
        setFont(d->captions.fontMap.value(d->language, QFont()));
}

QByteArray FunctionButton::textInfoBuffer() const { return d->captions.textInfoBuffer(); }
void FunctionButton::SetTextInfoBuffer(const QByteArray &buffer) { d->captions.setTextInfoBuffer(buffer); }
void FunctionButton::updateLanguage(int index) { d->captions.updateLanguage(index, std::nullopt); }
int FunctionButton::wordLibId() const { return d->captions.wordLibId(); }
void FunctionButton::setWordLibId(int id) { d->captions.setWordLibId(id); }
void FunctionButton::upDatePluginTextfromWordLib() { d->captions.upDatePluginTextfromWordLib(); }

void FunctionButton::getPluginNameAndListType(QString &name, int &listType)
{
    name = objectName();
    listType = 1;
}

void FunctionButton::getPluginNameAndTransText(QList<TextData> &texts)
{
    TextData made;
    made.texts = d->captions.textList;
    if (made.texts.isEmpty())
        made.texts = perLanguage(NORVOInterface_Z3::initialization()->getSystemLanguageCount(), text());
    texts = d->captions.transTexts(made);
}

void FunctionButton::setPluginTransText(QList<QStringList> &texts) { d->captions.setPluginTransText(texts); }
