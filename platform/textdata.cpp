#include "textdata.h"

#include "storedstream.h"

#include <QDataStream>

#include <algorithm>
#include <climits>

bool TextData::operator==(const TextData &other) const
{
    return firstValue == other.firstValue && secondValue == other.secondValue
           && wordLibId == other.wordLibId && texts == other.texts && fonts == other.fonts;
}

QDataStream &operator<<(QDataStream &out, const TextData &data)
{
    out << qint32(data.firstValue) << qint32(data.secondValue) << qint32(data.wordLibId);
    StoredStream::writeStringList(out, data.texts);
    StoredStream::writeFontList(out, data.fonts);
    return out;
}

QDataStream &operator>>(QDataStream &in, TextData &data)
{
    TextData read;
    qint32 first = 0, second = 0, id = -1;
    in >> first >> second >> id;
    if (in.status() != QDataStream::Ok)
        return in;
    read.firstValue = first;
    read.secondValue = second;
    read.wordLibId = id;
    if (!StoredStream::readStringList(in, read.texts, TextData::MaxLanguages)
        || !StoredStream::readFontList(in, read.fonts, TextData::MaxLanguages))
        return in;
    data = read;
    return in;
}

bool readTextRecords(QDataStream &in, QList<TextData> *records, int maxCount, bool takeFirst)
{
    constexpr int MinRecordSize = 3 * 4 + 4 + 4; // three ints, two list counts
    qint32 count = 0;
    if (!StoredStream::readCount(in, count, MinRecordSize, takeFirst ? INT_MAX : maxCount))
        return false;
    count = std::min(count, qint32(std::max(0, maxCount)));
    QList<TextData> read;
    for (qint32 i = 0; i < count; ++i) {
        TextData record;
        in >> record;
        if (in.status() != QDataStream::Ok)
            return false;
        read.append(record);
    }
    *records = read;
    return true;
}

void writeTextRecords(QDataStream &out, const QList<TextData> &records)
{
    out << qint32(records.size());
    for (const TextData &record : records)
        out << record;
}
