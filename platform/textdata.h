#ifndef TEXTDATA_H
#define TEXTDATA_H

#include "hmiplatform_export.h"

#include <QFont>
#include <QList>
#include <QMetaType>
#include <QStringList>

class QDataStream;

// The texts of one text slot in every language, as the text property editor keeps them.
struct HMIPLATFORM_EXPORT TextData
{
    // One text and one font per language; a stored record with more is malformed.
    static constexpr int MaxLanguages = 10;

    int firstValue = 0;
    int secondValue = 0;
    int wordLibId = -1;
    QStringList texts;   // index = language
    QList<QFont> fonts;  // index = language; may be empty

    bool operator==(const TextData &other) const;
    bool operator!=(const TextData &other) const { return !(*this == other); }
};

// Data stream layout: int, int, int, QStringList, QList<QFont>. Malformed input (lists longer than
// MaxLanguages included) sets the stream status and leaves the record unchanged.
HMIPLATFORM_EXPORT QDataStream &operator<<(QDataStream &out, const TextData &data);
HMIPLATFORM_EXPORT QDataStream &operator>>(QDataStream &in, TextData &data);

// A list of records as the stored buffers hold it: qint32 count, then the records. The count is checked
// against maxCount and the bytes left before anything is read; false (records untouched) when malformed.
// With takeFirst a longer list is no fault: its first maxCount records are read and the rest left unread.
HMIPLATFORM_EXPORT bool readTextRecords(QDataStream &in, QList<TextData> *records, int maxCount,
                                        bool takeFirst = false);
HMIPLATFORM_EXPORT void writeTextRecords(QDataStream &out, const QList<TextData> &records);

Q_DECLARE_METATYPE(TextData)

#endif
