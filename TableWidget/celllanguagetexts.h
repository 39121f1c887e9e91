#ifndef CELLLANGUAGETEXTS_H
#define CELLLANGUAGETEXTS_H

#include "hmiwidgets_export.h"
#include "textdata.h"

#include <QByteArray>
#include <QList>

// A text cell's texts per language, kept in its status-tip role as the bytes of a Qt 4.8 data
// stream holding a list of text records; the first record holds the texts and fonts.
namespace CellLanguageTexts {

// At most one record per language: more is not a cell's texts.
HMIWIDGETS_EXPORT bool decode(const QByteArray &bytes, QList<TextData> *records);
HMIWIDGETS_EXPORT QByteArray encode(const QList<TextData> &records);

} // namespace CellLanguageTexts

#endif
