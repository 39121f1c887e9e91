#include "celllanguagetexts.h"

#include "storedstream.h"

#include <QDataStream>
#include <QIODevice>

namespace CellLanguageTexts {

namespace {
constexpr int MinRecordSize = 3 * 4 + 4 + 4; // three ints, two list counts
}

bool decode(const QByteArray &bytes, QList<TextData> *records)
{
    records->clear();
    QDataStream in(bytes);
    StoredStream::prepare(in);
    qint32 count = 0;
    if (!StoredStream::readCount(in, count, MinRecordSize, TextData::MaxLanguages))
        return false;
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

QByteArray encode(const QList<TextData> &records)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    StoredStream::prepare(out);
    out << qint32(records.size());
    for (const TextData &record : records)
        out << record;
    return bytes;
}

} // namespace CellLanguageTexts
