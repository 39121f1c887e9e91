#ifndef TEXTINFOCODEC_H
#define TEXTINFOCODEC_H

#include "hexframe.h"
#include "hmiwidgets_export.h"
#include "textdata.h"

#include <QByteArray>
#include <QList>

// What a text-buffer reader takes: the first slots and the first records of each slot that the widget
// uses; the rest of the buffer is not read (older and other editors store more). A buffer of more bytes
// over all its layers than the expansion limit is malformed as a whole.
struct TextInfoLimits
{
    int slotCount = 2;   // the bit button's On and Off
    int recordCount = 1; // the buttons keep one record per slot
    qint64 expansion = HexFrame::DefaultExpansionLimit;
};

// The stored form of a widget's text records ("textInfoBuffer").
// A slot is the hex text of a compressed data stream: qint32 1, qint32 count, the records.
// The multi-slot form wraps the slotRecords the same way: qint32 1, qint32 count, one QByteArray per slot.
class HMIWIDGETS_EXPORT TextInfoCodec
{
public:
    using Limits = TextInfoLimits;

    static QByteArray encodeSlot(const QList<TextData> &records);
    static bool decodeSlot(const QByteArray &buffer, QList<TextData> *records, const Limits &limits = Limits());

    static QByteArray encodeSlots(const QList<QList<TextData>> &slotRecords);
    static bool decodeSlots(const QByteArray &buffer, QList<QList<TextData>> *slotRecords,
                            const Limits &limits = Limits());

private:
    static bool decodeSlot(const QByteArray &buffer, QList<TextData> *records, int maxRecords,
                           HexFrame::Budget &budget);
};

#endif
