#ifndef TEXTINFOCODEC_H
#define TEXTINFOCODEC_H

#include "hmiwidgets_export.h"
#include "textdata.h"

#include <QByteArray>
#include <QList>

// The stored form of a widget's text records ("textInfoBuffer").
// A slot is the hex text of a compressed data stream: qint32 1, qint32 count, the records.
// The multi-slot form wraps the slotRecords the same way: qint32 1, qint32 count, one QByteArray per slot.
class HMIWIDGETS_EXPORT TextInfoCodec
{
public:
    static QByteArray encodeSlot(const QList<TextData> &records);
    static bool decodeSlot(const QByteArray &buffer, QList<TextData> *records);

    static QByteArray encodeSlots(const QList<QList<TextData>> &slotRecords);
    static bool decodeSlots(const QByteArray &buffer, QList<QList<TextData>> *slotRecords);
};

#endif
