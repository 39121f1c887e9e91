#include "bitbuttontextlistedit.h"

#include "designerhost.h"
#include "fontmapcodec.h"
#include "languagestate.h"
#include "norvointerface_z3.h"
#include "textinfocodec.h"
#include "textpropertyeditor_z12.h"
#include "ui_bitbuttoneditor.h"

namespace {

NORVOInterface_Z3 *hmi()
{
    return NORVOInterface_Z3::initialization();
}

} // namespace

BitButtonTextListEdit::BitButtonTextListEdit(BitButton *widget, BitButton *preview,
                                             QDesignerFormWindowInterface *formWindow, Ui::BitButtonEditor *ui,
                                             QObject *parent)
    : QObject(parent)
    , m_widget(widget)
    , m_preview(preview)
    , m_formWindow(formWindow)
    , m_ui(ui)
    , m_editor(ui->mTextPropertyEditor)
{
    load();

    connect(m_editor, &textPropertyEditor_Z12::textChange, this, &BitButtonTextListEdit::textChanged);
    connect(m_editor, &textPropertyEditor_Z12::fontChange, this, &BitButtonTextListEdit::fontChanged);
    connect(m_editor, &textPropertyEditor_Z12::colorChange, this, &BitButtonTextListEdit::colorChanged);
    connect(m_ui->onEditedRadioButton, &QAbstractButton::clicked, this, &BitButtonTextListEdit::radioBtnClicked);
    connect(m_ui->offEditedRadioButton, &QAbstractButton::clicked, this, &BitButtonTextListEdit::radioBtnClicked);

    m_ui->onEditedRadioButton->setChecked(true);
    showState(BitButton::On);
    if (m_preview) {
        m_preview->SetOnText(m_widget->onText());
        m_preview->SetOffText(m_widget->offText());
        m_preview->SetTextColorOn(m_onColor);
        m_preview->SetTextColorOff(m_offColor);
    }
}

BitButtonTextListEdit::~BitButtonTextListEdit() = default;

void BitButtonTextListEdit::load()
{
    FontMapCodec::Maps maps;
    if (FontMapCodec::decode(m_widget->MapBuffer(), &maps))
        m_fontMap = maps.captionFonts;
    QList<QList<TextData>> stored;
    TextInfoCodec::decodeSlots(m_widget->textInfoBuffer(), &stored);
    m_onRecords = stored.value(0);
    m_offRecords = stored.value(1);
    completeRecords(m_onRecords, m_widget->getOnTextList(), m_widget->onText());
    completeRecords(m_offRecords, m_widget->getOffTextList(), m_widget->offText());
    m_onColor = m_widget->textColorOn();
    m_offColor = m_widget->textColorOff();
}

void BitButtonTextListEdit::completeRecords(QList<TextData> &records, const QStringList &textList,
                                            const QString &text) const
{
    if (records.isEmpty()) {
        QStringList texts = textList;
        if (texts.isEmpty()) {
            for (int language = 0; language < hmi()->getSystemLanguageCount(); ++language)
                texts.append(text);
        }
        // The caption on the form wins over a stale list entry of the current language.
        const int current = hmi()->currentLanguageIndex();
        if (current >= 0 && current < texts.size() && texts.at(current) != text)
            texts[current] = text;
        TextData record;
        record.wordLibId = -1;
        record.texts = texts;
        records.append(record);
    }
    TextData &first = records.first();
    LanguageState::refreshFromWordLibrary(first);
    if (first.fonts.isEmpty())
        first.fonts = startFonts();
}

QList<QFont> BitButtonTextListEdit::startFonts() const
{
    // Fonts an older form keeps in MapBuffer move into the records, which Ok stores instead.
    QList<QFont> fonts = m_fontMap.values();
    if (!fonts.isEmpty())
        return fonts;
    // A button left at the panel's default size takes each language's own family.
    QFont font = m_widget->font();
    const QStringList families = hmi()->getSystemLanguageFamilys();
    for (const QString &family : families) {
        if (font.pointSize() == 9)
            font.setFamily(family);
        fonts.append(font);
    }
    return fonts;
}

QList<TextData> &BitButtonTextListEdit::records(BitButton::State state)
{
    return state == BitButton::On ? m_onRecords : m_offRecords;
}

QColor &BitButtonTextListEdit::color(BitButton::State state)
{
    return state == BitButton::On ? m_onColor : m_offColor;
}

void BitButtonTextListEdit::showState(BitButton::State state)
{
    m_edited = state;
    QList<TextData> &shown = records(state);
    if (!shown.isEmpty())
        LanguageState::refreshFromWordLibrary(shown.first());
    m_editor->setTextColor(color(state));
    m_editor->setTextDataList(shown);
}

void BitButtonTextListEdit::keepEdits()
{
    records(m_edited) = m_editor->getTextDataList();
    color(m_edited) = m_editor->getTextColor();
}

void BitButtonTextListEdit::shareFonts(BitButton::State from, BitButton::State to)
{
    const QList<TextData> &source = records(from);
    QList<TextData> &target = records(to);
    if (!source.isEmpty() && !target.isEmpty())
        target.first().fonts = source.first().fonts;
}

void BitButtonTextListEdit::radioBtnClicked(bool)
{
    const BitButton::State clicked = m_ui->onEditedRadioButton->isChecked() ? BitButton::On : BitButton::Off;
    if (clicked == m_edited)
        return;
    const BitButton::State left = m_edited;
    keepEdits();
    // Both captions are drawn in the same font.
    shareFonts(left, clicked);
    showState(clicked);
}

void BitButtonTextListEdit::textChanged(const QString &text)
{
    if (!m_preview)
        return;
    if (m_edited == BitButton::On)
        m_preview->SetOnText(text);
    else
        m_preview->SetOffText(text);
}

void BitButtonTextListEdit::fontChanged(const QFont &font)
{
    if (m_preview)
        m_preview->setLabelFont(font);
}

void BitButtonTextListEdit::colorChanged(const QColor &newColor)
{
    color(m_edited) = newColor;
    if (!m_preview)
        return;
    if (m_edited == BitButton::On)
        m_preview->SetTextColorOn(newColor);
    else
        m_preview->SetTextColorOff(newColor);
}

void BitButtonTextListEdit::changedPreviewState()
{
    if (m_preview)
        m_preview->SetState(m_ui->previewOnRadioButton->isChecked() ? BitButton::On : BitButton::Off);
}

void BitButtonTextListEdit::stateRadioBtnClick(bool checked)
{
    if (checked)
        changedPreviewState();
}

void BitButtonTextListEdit::accept()
{
    if (!m_widget)
        return;
    keepEdits();
    // What the other state would get on a switch, so that Ok leaves both with the same fonts.
    shareFonts(m_edited, m_edited == BitButton::On ? BitButton::Off : BitButton::On);

    // The fonts now travel in the records.
    commit("MapBuffer", QByteArray());
    commit("textInfoBuffer", TextInfoCodec::encodeSlots({m_onRecords, m_offRecords}));
    commit("onTextColor", m_onColor);
    commit("offTextColor", m_offColor);
    const int current = hmi()->currentLanguageIndex();
    for (QList<TextData> *list : {&m_onRecords, &m_offRecords}) {
        if (!list->isEmpty())
            LanguageState::refreshFromWordLibrary(list->first());
    }
    commit("onText", m_onRecords.isEmpty() ? QString() : LanguageState::textAt(m_onRecords.first().texts, current));
    commit("offText", m_offRecords.isEmpty() ? QString() : LanguageState::textAt(m_offRecords.first().texts, current));
    if (m_preview)
        commit("state", int(m_preview->state()));
}

void BitButtonTextListEdit::commit(const char *name, const QVariant &value)
{
    // Through the form window's cursor Designer records an undoable change and saves the property
    // with the form; the host also takes the buffers the property editor does not show.
    DesignerHost *host = DesignerHost::instance();
    if (m_formWindow && host)
        host->setUndoableProperty(m_widget, QString::fromLatin1(name), value);
    else
        m_widget->setProperty(name, value);
}

void BitButtonTextListEdit::languageBtnClick() {}
void BitButtonTextListEdit::planTextChanged() {}
void BitButtonTextListEdit::currentLanguageChanged(int) {}
void BitButtonTextListEdit::fontComboboxIndexChanged(const QString &) {}
void BitButtonTextListEdit::fontPointSizeChanged(int) {}
void BitButtonTextListEdit::CheckBox_Bold_StateChanged(bool) {}
void BitButtonTextListEdit::CheckBox_Italic_StateChanged(bool) {}
void BitButtonTextListEdit::CheckBox_Underline_StateChanged(bool) {}
void BitButtonTextListEdit::comboboxCurrentIndexChanged(int) {}
void BitButtonTextListEdit::onPlainTextEditTextChanged() {}
void BitButtonTextListEdit::offPlainTextEditTextChanged() {}
void BitButtonTextListEdit::onLangBtnClick() {}
void BitButtonTextListEdit::offLangBtnClick() {}
void BitButtonTextListEdit::setFontInfo(const QFont &) {}
