#include "PictureButton.h"

#include "captiontexts.h"
#include "controllerbinding.h"
#include "designertextregistration.h"
#include "enumvalue.h"
#include "norvointerface_z3.h"
#include "widgetfactory.h"

#include <QApplication>
#include <QEvent>
#include <QHash>
#include <QKeyEvent>

namespace {

const QHash<QString, int> &softKeyTable()
{
    static const QHash<QString, int> table = [] {
        QHash<QString, int> t{{QStringLiteral("Backspace"), Qt::Key_Backspace}, {QStringLiteral("Enter"), Qt::Key_Enter},
                              {QStringLiteral("Delete"), Qt::Key_Delete},       {QStringLiteral("Home"), Qt::Key_Home},
                              {QStringLiteral("End"), Qt::Key_End},             {QStringLiteral("PageUp"), Qt::Key_PageUp},
                              {QStringLiteral("PageDown"), Qt::Key_PageDown},   {QStringLiteral("Space"), Qt::Key_Space},
                              {QStringLiteral("Left"), Qt::Key_Left},           {QStringLiteral("Up"), Qt::Key_Up},
                              {QStringLiteral("Right"), Qt::Key_Right},         {QStringLiteral("Down"), Qt::Key_Down}};
        for (int i = 1; i <= 12; ++i)
            t.insert(QStringLiteral("F%1").arg(i), Qt::Key_F1 + i - 1);
        return t;
    }();
    return table;
}

} // namespace

HMI_REGISTER_WIDGET(PictureButton)

class PictureButton::Private
{
public:
    explicit Private(PictureButton *q)
        : captions(q)
    {
    }

    CaptionTexts captions;
    Language language = language_0;
    bool softKeyEnabled = false;
    QString softKeyChar = QStringLiteral("1");
    QFont initialFont;
    bool shown = false;
    std::unique_ptr<DesignerTextRegistration> designerRegistration;
};

PictureButton::PictureButton(QWidget *parent)
    : KeyFaceButton(parent)
    , d(new Private(this))
{
    NORVOInterface_Z3::setWidgetDefaultFont(this);
    d->initialFont = QWidget::font();
    AbstractButton::setText(QStringLiteral("PictureButton"));
    connect(this, &AbstractButton::clicked, this, &PictureButton::slotClicked);
    d->designerRegistration = std::make_unique<DesignerTextRegistration>(this, this);
}

PictureButton::~PictureButton() = default;

QSize PictureButton::sizeHint() const { return QSize(100, 30); }
QSize PictureButton::minimumSizeHint() const { return QSize(20, 10); }

PictureButton::Language PictureButton::getLanguage() const { return d->language; }
void PictureButton::setLanguage(Language language) { assignEnum(this, "language", d->language, language); }

void PictureButton::setText(const QString &text)
{
    AbstractButton::setText(text);
    update();
}

QStringList PictureButton::getTextList() const { return d->captions.textList; }
void PictureButton::setTextList(const QStringList &texts) { d->captions.setTextList(texts, d->language); }
bool PictureButton::softKeyEnabled() const { return d->softKeyEnabled; }
void PictureButton::setSoftKeyEnabled(bool enabled) { d->softKeyEnabled = enabled; }
QString PictureButton::softKeyChar() const { return d->softKeyChar; }

void PictureButton::setSoftKeyChar(const QString &key)
{
    d->softKeyChar = softKeyTable().contains(key) ? key : key.left(1);
}

QPair<int, QString> PictureButton::softKey(const QString &softKeyChar)
{
    if (softKeyChar.size() == 1)
        return {uchar(softKeyChar.at(0).toUpper().toLatin1()), softKeyChar};
    const int key = softKeyTable().value(softKeyChar, 0);
    return {key, key == Qt::Key_Space ? QStringLiteral(" ") : QString()};
}

// The key goes to whatever holds the application's focus when the operator clicks: a press only, as a
// hardware keypad would deliver a key that is typed rather than held.
void PictureButton::slotClicked(bool)
{
    QWidget *target = QApplication::focusWidget();
    if (!d->softKeyEnabled || !target || !takesInput())
        return;
    const auto [key, text] = softKey(d->softKeyChar);
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text, false, 1);
    QCoreApplication::sendEvent(target, &press);
}

QFont PictureButton::font() const { return d->captions.fontMap.value(d->language, d->initialFont); }

void PictureButton::setFont(const QFont &font)
{
    if (d->shown)
        return;
    d->initialFont = font;
    QWidget::setFont(font);
}

void PictureButton::setPluginFont(const QFont &font) { QWidget::setFont(font); }
QFont PictureButton::initFont() const { return d->initialFont; }
QByteArray PictureButton::MapBuffer() const { return d->captions.mapBuffer(); }

void PictureButton::SetMapBuffer(const QByteArray &buffer)
{
    if (d->captions.setMapBuffer(buffer))
        QWidget::setFont(font());
}

QByteArray PictureButton::textInfoBuffer() const { return d->captions.textInfoBuffer(); }
void PictureButton::SetTextInfoBuffer(const QByteArray &buffer) { d->captions.setTextInfoBuffer(buffer); }
int PictureButton::wordLibId() const { return d->captions.wordLibId(); }
void PictureButton::setWordLibId(int id) { d->captions.setWordLibId(id); }
void PictureButton::updateLanguage(int index) { d->captions.updateLanguage(index, d->initialFont); }
void PictureButton::upDatePluginTextfromWordLib() { d->captions.upDatePluginTextfromWordLib(); }

void PictureButton::getPluginNameAndListType(QString &name, int &listType)
{
    name = objectName();
    listType = 1;
}

void PictureButton::getPluginNameAndTransText(QList<TextData> &texts)
{
    TextData made;
    made.firstValue = -1;
    made.texts = d->captions.textList.isEmpty() ? QStringList{text()} : d->captions.textList;
    made.fonts = d->captions.fontMap.values();
    if (made.fonts.isEmpty())
        made.fonts = perLanguage(NORVOInterface_Z3::initialization()->getSystemLanguageCount(), font());
    texts = d->captions.transTexts(made);
}

void PictureButton::setPluginTransText(QList<QStringList> &texts) { d->captions.setPluginTransText(texts); }

void PictureButton::setQeltAppAndFormPtr(void *app, void *form) { binding().attach(app, form); }

bool PictureButton::event(QEvent *event)
{
    if (event->type() == QEvent::Show)
        d->shown = true; // the initial font is frozen from now on
    return KeyFaceButton::event(event);
}
