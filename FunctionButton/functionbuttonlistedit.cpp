#include "functionbuttonlistedit.h"

#include "fontmapcodec.h"
#include "formwindowhost.h"
#include "functionbutton.h"
#include "languagestate.h"
#include "norvointerface_z3.h"
#include "textinfocodec.h"
#include "textpropertyeditor_z12.h"
#include "ui_functionbuttoneditor.h"

#include <QtDesigner/QDesignerFormWindowInterface>

namespace {

NORVOInterface_Z3 *hmi()
{
    return NORVOInterface_Z3::initialization();
}

// A button without stored records: one record from its caption list, or from its caption in
// every language; the current language shows the caption the button has now.
TextData recordOfCaption(const FunctionButton &widget)
{
    QStringList texts = widget.getTextList();
    if (texts.isEmpty()) {
        for (int i = 0; i < hmi()->getSystemLanguageCount(); ++i)
            texts.append(widget.text());
    }
    const int current = hmi()->currentLanguageIndex();
    if (current >= 0 && current < texts.size() && texts.at(current) != widget.text())
        texts[current] = widget.text();
    TextData record;
    record.wordLibId = -1;
    record.texts = texts;
    return record;
}

// One font per language: the stored font map, or else the button's font, in the language's
// family when it has the panel's standard size.
QList<QFont> fontsOf(const FunctionButton &widget, const QMap<int, QFont> &fontMap)
{
    QList<QFont> fonts = fontMap.values();
    if (!fonts.isEmpty())
        return fonts;
    QFont font = widget.font();
    const QStringList families = hmi()->getSystemLanguageFamilys();
    for (const QString &family : families) {
        if (font.pointSize() == 9)
            font.setFamily(family);
        fonts.append(font);
    }
    return fonts;
}

} // namespace

functionButtonListEdit::functionButtonListEdit(FunctionButton *widget, FunctionButton *preview,
                                               QDesignerFormWindowInterface *formWindow,
                                               Ui::FunctionButtonEditor *ui, QObject *parent)
    : QObject(parent)
    , m_widget(widget)
    , m_preview(preview)
    , m_formWindow(formWindow)
    , m_ui(ui)
{
    if (m_widget && editor())
        load();
}

functionButtonListEdit::~functionButtonListEdit() = default;

textPropertyEditor_Z12 *functionButtonListEdit::editor() const
{
    return m_ui ? m_ui->mTextPropertyEditor : nullptr;
}

void functionButtonListEdit::load()
{
    FontMapCodec::Maps maps;
    if (!FontMapCodec::decode(m_widget->MapBuffer(), &maps))
        maps = FontMapCodec::Maps();
    QList<TextData> records;
    if (!TextInfoCodec::decodeSlot(m_widget->textInfoBuffer(), &records))
        records.clear();

    if (records.isEmpty())
        records.append(recordOfCaption(*m_widget));
    TextData &first = records.first();
    LanguageState::refreshFromWordLibrary(first);
    if (first.fonts.isEmpty())
        first.fonts = fontsOf(*m_widget, maps.captionFonts);
    m_color = m_widget->textColorEnabled();

    textPropertyEditor_Z12 *texts = editor();
    connect(texts, &textPropertyEditor_Z12::textChange, this, &functionButtonListEdit::textChanged);
    connect(texts, &textPropertyEditor_Z12::fontChange, this, &functionButtonListEdit::fontChanged);
    connect(texts, &textPropertyEditor_Z12::colorChange, this, &functionButtonListEdit::colorChanged);
    texts->setTextColor(m_color);
    texts->setTextDataList(records);
    if (m_preview)
        m_preview->SetTextColorEnabled(m_color);
}

void functionButtonListEdit::accept()
{
    if (!m_widget || !editor())
        return;
    QList<TextData> records = editor()->getTextDataList();
    const QString caption = m_widget->text();
    // The fonts travel in the records from now on.
    commit("MapBuffer", QByteArray());
    const QFont font = m_widget->font();
    commit("textInfoBuffer", TextInfoCodec::encodeSlot(records));
    // The buffer's setter applies the new records' caption and font at once; Designer takes what
    // the button shows as the value to undo to, so both get their old values back until they are
    // recorded below. Undoing the buffer alone would leave the new font in place.
    const QFont newFont = m_widget->font();
    m_widget->setText(caption);
    m_widget->setFont(font);
    commit("font", newFont);
    commit("textColorEnabled", m_color);
    if (records.isEmpty())
        return;
    LanguageState::refreshFromWordLibrary(records.first());
    commit("text", LanguageState::textAt(records.first().texts, hmi()->currentLanguageIndex()));
}

void functionButtonListEdit::commit(const char *name, const QVariant &value)
{
    // Through the form window's cursor, so Designer records the change in the dialog's undo step
    // and saves it; the text buffers are hidden from the property editor, which the cursor minds.
    if (m_formWindow)
        FormWindowHost::setCursorProperty(m_formWindow, m_widget, QString::fromLatin1(name), value);
    else
        m_widget->setProperty(name, value);
}

void functionButtonListEdit::textChanged(const QString &text)
{
    if (m_preview)
        m_preview->setText(text);
}

void functionButtonListEdit::fontChanged(const QFont &font)
{
    if (m_preview)
        m_preview->setFont(font);
}

void functionButtonListEdit::colorChanged(const QColor &color)
{
    m_color = color;
    if (m_preview)
        m_preview->SetTextColorEnabled(color);
}

void functionButtonListEdit::languageBtnClick() {}

void functionButtonListEdit::planTextChanged() {}

void functionButtonListEdit::currentLanguageChanged(int index)
{
    Q_UNUSED(index)
}
