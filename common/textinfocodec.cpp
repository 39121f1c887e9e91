#include "textinfocodec.h"

#include "hexframe.h"
#include "storedstream.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <climits>

namespace {
constexpr qint32 FormatVersion = 1;
// Smallest stream size of a slot byte array.
constexpr int MinSlotSize = 4;

// The count in front of a list whose first maxUsed elements the reader takes: the rest is not read. A
// count the bytes left cannot hold is malformed all the same.
bool readUsedCount(QDataStream &in, qint32 &used, int minElementSize, int maxUsed)
{
    qint32 count = 0;
    if (!StoredStream::readCount(in, count, minElementSize, INT_MAX))
        return false;
    used = std::min(count, qint32(std::max(0, maxUsed)));
    return true;
}
} // namespace

QByteArray TextInfoCodec::encodeSlot(const QList<TextData> &records)
{
    QByteArray data;
    QDataStream out(&data, QIODevice::WriteOnly);
    StoredStream::prepare(out);
    out << FormatVersion;
    writeTextRecords(out, records);
    return HexFrame::encode(data);
}

bool TextInfoCodec::decodeSlot(const QByteArray &buffer, QList<TextData> *records, const Limits &limits)
{
    HexFrame::Budget budget(limits.expansion);
    return decodeSlot(buffer, records, limits.recordCount, budget);
}

bool TextInfoCodec::decodeSlot(const QByteArray &buffer, QList<TextData> *records, int maxRecords,
                               HexFrame::Budget &budget)
{
    QByteArray data;
    if (!HexFrame::decode(buffer, &data, budget))
        return false;
    QDataStream in(data);
    StoredStream::prepare(in);
    qint32 version = 0;
    in >> version; // any version is read the same way
    return readTextRecords(in, records, maxRecords, true);
}

QByteArray TextInfoCodec::encodeSlots(const QList<QList<TextData>> &slotRecords)
{
    QByteArray data;
    QDataStream out(&data, QIODevice::WriteOnly);
    StoredStream::prepare(out);
    out << FormatVersion << qint32(slotRecords.size());
    for (const QList<TextData> &slot : slotRecords)
        out << encodeSlot(slot);
    return HexFrame::encode(data);
}

bool TextInfoCodec::decodeSlots(const QByteArray &buffer, QList<QList<TextData>> *slotRecords,
                                const Limits &limits)
{
    HexFrame::Budget budget(limits.expansion); // shared by the outer layer and every slot
    QByteArray data;
    if (!HexFrame::decode(buffer, &data, budget))
        return false;
    QDataStream in(data);
    StoredStream::prepare(in);
    qint32 version = 0;
    in >> version;
    qint32 count = 0;
    if (!readUsedCount(in, count, MinSlotSize, limits.slotCount))
        return false;
    QList<QList<TextData>> read;
    read.reserve(count);
    for (qint32 i = 0; i < count; ++i) {
        QByteArray slotText;
        in >> slotText;
        if (in.status() != QDataStream::Ok)
            return false;
        QList<TextData> records; // an empty slot text stands for a slot without records
        if (!slotText.isEmpty() && !decodeSlot(slotText, &records, limits.recordCount, budget))
            return false;
        read.append(records);
    }
    *slotRecords = read;
    return true;
}
