#ifndef CAPTIONTEXTS_H
#define CAPTIONTEXTS_H

#include "hmiwidgets_export.h"
#include "languagestate.h"
#include "textdata.h"

#include <QByteArray>
#include <QFont>
#include <QList>
#include <QMap>
#include <QStringList>

#include <optional>

class AbstractButton;

// The captions of a button with one text slot (the function and picture buttons): one caption per
// language, as a plain list or, once a buffer or a translation gives them, as text records with a
// word-library link and fonts, plus the per-language font map of older forms. The panel language picks
// the caption and font the button shows. Fonts are applied to the widget directly (QWidget::setFont).
class HMIWIDGETS_EXPORT CaptionTexts
{
public:
    explicit CaptionTexts(AbstractButton *button);

    QStringList textList;
    QList<TextData> records;
    QMap<int, QFont> fontMap; // language -> font, from MapBuffer
    LanguageState language;

    // Takes the list; the caption shown stays in it: when it is missing, it replaces the entry of
    // language (when the list has one).
    void setTextList(const QStringList &texts, int language);

    TextData *firstRecord() { return records.isEmpty() ? nullptr : &records[0]; }
    const TextData *firstRecord() const { return records.isEmpty() ? nullptr : &records[0]; }

    QByteArray textInfoBuffer() const { return m_textInfoBuffer; }
    // Stores the value; reads its records (an unreadable one is no data, with a warning), refreshes a
    // word-library record, takes its texts, applies its font for the current language when it has one
    // and shows the caption.
    void setTextInfoBuffer(const QByteArray &buffer);
    QByteArray mapBuffer() const { return m_mapBuffer; }
    // Stores the value and reads its first map into fontMap; false (fontMap kept) when unreadable.
    bool setMapBuffer(const QByteArray &buffer);

    // The panel language: the caption, then the record's font for it or, for a record without fonts,
    // noFontFallback (when given) replaced by the map's font for it.
    void updateLanguage(int index, const std::optional<QFont> &noFontFallback);
    int wordLibId() const;
    void setWordLibId(int id);
    void upDatePluginTextfromWordLib();
    // The records, or made, when there are none, from made.
    QList<TextData> transTexts(const TextData &made) const;
    void setPluginTransText(const QList<QStringList> &texts);

    void showCurrentCaption();

private:
    AbstractButton *const m_button;
    QByteArray m_textInfoBuffer;
    QByteArray m_mapBuffer;
};

#endif
