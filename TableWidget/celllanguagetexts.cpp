#include "celllanguagetexts.h"

#include "storedstream.h"

#include <QDataStream>
#include <QIODevice>

namespace CellLanguageTexts {

bool decode(const QByteArray &bytes, QList<TextData> *records)
{
    records->clear();
    QDataStream in(bytes);
    StoredStream::prepare(in);
    return readTextRecords(in, records, TextData::MaxLanguages);
}

QByteArray encode(const QList<TextData> &records)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    StoredStream::prepare(out);
    writeTextRecords(out, records);
    return bytes;
}

} // namespace CellLanguageTexts
