#include "captiontexts.h"

#include "abstractbutton.h"
#include "bufferwarning.h"
#include "designercommit.h"
#include "fontmapcodec.h"
#include "norvointerface_z3.h"
#include "textinfocodec.h"

CaptionTexts::CaptionTexts(AbstractButton *button)
    : m_button(button)
{
}

void CaptionTexts::setTextList(const QStringList &texts, int languageIndex)
{
    textList = texts;
    const QString caption = m_button->text();
    if (languageIndex >= 0 && languageIndex < textList.size() && !textList.contains(caption))
        textList[languageIndex] = caption;
}

void CaptionTexts::showCurrentCaption()
{
    m_button->setText(LanguageState::textAt(textList, language.current()));
}

void CaptionTexts::setTextInfoBuffer(const QByteArray &buffer)
{
    m_textInfoBuffer = buffer;
    QList<TextData> read;
    if (buffer.isEmpty())
        return;
    if (!TextInfoCodec::decodeSlot(buffer, &read)) {
        warnUnreadableBuffer(m_button, "textInfoBuffer");
        return;
    }
    records = read;
    TextData *record = firstRecord();
    if (!record)
        return;
    LanguageState::refreshFromWordLibrary(*record);
    textList = record->texts;
    language.clampTo(int(textList.size()));
    if (const auto font = LanguageState::fontAt(record->fonts, language.current()))
        m_button->QWidget::setFont(*font);
    showCurrentCaption();
}

bool CaptionTexts::setMapBuffer(const QByteArray &buffer)
{
    m_mapBuffer = buffer;
    FontMapCodec::Maps maps;
    if (!FontMapCodec::decode(buffer, &maps)) {
        if (!buffer.trimmed().isEmpty())
            warnUnreadableBuffer(m_button, "MapBuffer");
        return false;
    }
    fontMap = maps.captionFonts;
    return true;
}

void CaptionTexts::updateLanguage(int index, const std::optional<QFont> &noFontFallback)
{
    if (!language.accepts(index) || textList.isEmpty())
        return;
    language.markApplied(index);
    m_button->setText(LanguageState::textAt(textList, index));
    const TextData *record = firstRecord();
    if (record && !record->fonts.isEmpty()) {
        if (const auto font = LanguageState::fontAt(record->fonts, index))
            m_button->QWidget::setFont(*font);
        return;
    }
    if (fontMap.contains(index))
        m_button->QWidget::setFont(fontMap.value(index));
    else if (noFontFallback)
        m_button->QWidget::setFont(*noFontFallback);
}

int CaptionTexts::wordLibId() const
{
    const TextData *record = firstRecord();
    return record ? record->wordLibId : -1;
}

void CaptionTexts::setWordLibId(int id)
{
    if (TextData *record = firstRecord()) {
        record->wordLibId = id;
        LanguageState::refreshFromWordLibrary(*record);
        textList = record->texts;
    } else {
        QStringList texts;
        if (NORVOInterface_Z3::initialization()->getWordLibraryDatasUsedId(id, texts))
            textList = texts;
    }
    language.clampTo(int(textList.size()));
    // Without captions (no record and no word-library entry) there is nothing to show instead of the
    // caption the button has; blanking it would only lose it.
    if (!textList.isEmpty())
        showCurrentCaption();
}

void CaptionTexts::upDatePluginTextfromWordLib()
{
    TextData *record = firstRecord();
    if (!record || record->wordLibId == -1)
        return;
    if (LanguageState::refreshFromWordLibrary(*record)) {
        textList = record->texts;
        showCurrentCaption();
    } else {
        textList.clear();
        m_button->setText(QString());
    }
}

QList<TextData> CaptionTexts::transTexts(const TextData &made) const
{
    return records.isEmpty() ? QList<TextData>{made} : records;
}

void CaptionTexts::setPluginTransText(const QList<QStringList> &texts)
{
    if (texts.isEmpty())
        return;
    if (TextData *record = firstRecord()) {
        const int id = record->wordLibId;
        record->texts = id == -1 ? texts.first() : QStringList();
        const QByteArray buffer = TextInfoCodec::encodeSlot(records);
        if (!DesignerCommit::setProperty(m_button, "textInfoBuffer", buffer))
            m_textInfoBuffer = buffer;
        if ((record = firstRecord())) { // the commit may have re-read the records
            LanguageState::refreshFromWordLibrary(*record);
            textList = record->texts;
        }
    } else {
        textList = texts.first();
        DesignerCommit::setProperty(m_button, "textList", textList);
    }
    showCurrentCaption();
}
