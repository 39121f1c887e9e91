#pragma once

#include "textdata.h"

#include <QFont>
#include <QList>
#include <QStringList>

// One language record as the text codecs and editors hold it.
inline TextData textRecord(const QStringList &texts, int wordLibId = -1, const QList<QFont> &fonts = {})
{
    TextData record;
    record.wordLibId = wordLibId;
    record.texts = texts;
    record.fonts = fonts;
    return record;
}
