#include "captionlisteditor.h"

#include "abstractbutton.h"
#include "fontmapcodec.h"
#include "formwindowhost.h"
#include "languagestate.h"
#include "norvointerface_z3.h"
#include "textinfocodec.h"
#include "textpropertyeditor_z12.h"

#include <QtDesigner/QDesignerFormWindowInterface>

namespace {

NORVOInterface_Z3 *hmi()
{
    return NORVOInterface_Z3::initialization();
}

// A button without stored records: one record from its caption list, or from its caption in
// every language; the current language shows the caption the button has now.
TextData recordOfCaption(const AbstractButton &widget)
{
    QStringList texts = widget.property("textList").toStringList();
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
QList<QFont> fontsOf(const AbstractButton &widget, const QMap<int, QFont> &fontMap)
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

CaptionListEditor::CaptionListEditor(AbstractButton *widget, AbstractButton *preview,
                                     QDesignerFormWindowInterface *formWindow, textPropertyEditor_Z12 *editor,
                                     QObject *parent)
    : QObject(parent)
    , m_widget(widget)
    , m_preview(preview)
    , m_formWindow(formWindow)
    , m_editor(editor)
{
    if (m_widget && m_editor)
        load();
}

CaptionListEditor::~CaptionListEditor() = default;

void CaptionListEditor::load()
{
    FontMapCodec::Maps maps;
    if (!FontMapCodec::decode(m_widget->property("MapBuffer").toByteArray(), &maps))
        maps = FontMapCodec::Maps();
    QList<TextData> records;
    if (!TextInfoCodec::decodeSlot(m_widget->property("textInfoBuffer").toByteArray(), &records))
        records.clear();

    if (records.isEmpty())
        records.append(recordOfCaption(*m_widget));
    TextData &first = records.first();
    LanguageState::refreshFromWordLibrary(first);
    if (first.fonts.isEmpty())
        first.fonts = fontsOf(*m_widget, maps.captionFonts);
    m_color = m_widget->property("textColorEnabled").value<QColor>();

    textPropertyEditor_Z12 *texts = m_editor;
    connect(texts, &textPropertyEditor_Z12::textChange, this, &CaptionListEditor::textChanged);
    connect(texts, &textPropertyEditor_Z12::fontChange, this, &CaptionListEditor::fontChanged);
    connect(texts, &textPropertyEditor_Z12::colorChange, this, &CaptionListEditor::colorChanged);
    texts->setTextColor(m_color);
    texts->setTextDataList(records);
    if (m_preview)
        m_preview->setProperty("textColorEnabled", m_color);
}

void CaptionListEditor::accept()
{
    if (!m_widget || !m_editor)
        return;
    QList<TextData> records = m_editor->getTextDataList();
    const QString caption = m_widget->text();
    // The fonts travel in the records from now on.
    commit("MapBuffer", QByteArray());
    const QFont font = m_widget->QWidget::font();
    commit("textInfoBuffer", TextInfoCodec::encodeSlot(records));
    // The buffer's setter applies the new records' caption and font at once; Designer takes what
    // the button shows as the value to undo to, so both get their old values back until they are
    // recorded below. Undoing the buffer alone would leave the new font in place.
    const QFont newFont = m_widget->QWidget::font();
    m_widget->setText(caption);
    if (m_commitFont) {
        m_widget->QWidget::setFont(font);
        commit("font", newFont);
    }
    commit("textColorEnabled", m_color);
    if (records.isEmpty())
        return;
    LanguageState::refreshFromWordLibrary(records.first());
    commit("text", LanguageState::textAt(records.first().texts, hmi()->currentLanguageIndex()));
}

void CaptionListEditor::commit(const char *name, const QVariant &value)
{
    // Through the form window's cursor, so Designer records the change in the dialog's undo step
    // and saves it; the text buffers are hidden from the property editor, which the cursor minds.
    if (m_formWindow)
        FormWindowHost::setCursorProperty(m_formWindow, m_widget, QString::fromLatin1(name), value);
    else
        m_widget->setProperty(name, value);
}

void CaptionListEditor::textChanged(const QString &text)
{
    if (m_preview)
        m_preview->setText(text);
}

void CaptionListEditor::fontChanged(const QFont &font)
{
    if (m_preview)
        m_preview->setFont(font);
}

void CaptionListEditor::colorChanged(const QColor &color)
{
    m_color = color;
    if (m_preview)
        m_preview->setProperty("textColorEnabled", color);
}

void CaptionListEditor::languageBtnClick() {}

void CaptionListEditor::planTextChanged() {}

void CaptionListEditor::currentLanguageChanged(int index)
{
    Q_UNUSED(index)
}
