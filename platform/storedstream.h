#ifndef STOREDSTREAM_H
#define STOREDSTREAM_H

#include "hmiplatform_export.h"

#include <QFont>
#include <QList>
#include <QMap>
#include <QStringList>

class QDataStream;

// Data streams of stored buffers: Qt 4.8 format on every Qt major, containers read with counts
// checked against the bytes left, so a corrupt count fails instead of allocating.
namespace StoredStream {

HMIPLATFORM_EXPORT void prepare(QDataStream &stream);

// Reads a count and checks it against maxCount and that count * minElementSize bytes remain; sets
// ReadCorruptData if not. maxCount is what the format can mean (ten languages, a widget's slots).
HMIPLATFORM_EXPORT bool readCount(QDataStream &in, quint32 &count, int minElementSize, quint32 maxCount);
HMIPLATFORM_EXPORT bool readCount(QDataStream &in, qint32 &count, int minElementSize, qint32 maxCount);

HMIPLATFORM_EXPORT bool readStringList(QDataStream &in, QStringList &list, int maxCount);
HMIPLATFORM_EXPORT void writeStringList(QDataStream &out, const QStringList &list);
HMIPLATFORM_EXPORT bool readFontList(QDataStream &in, QList<QFont> &list, int maxCount);
HMIPLATFORM_EXPORT void writeFontList(QDataStream &out, const QList<QFont> &list);
// QMap<int, QFont> as Qt 4 streams it: count, then the pairs from the last key to the first.
HMIPLATFORM_EXPORT bool readFontMap(QDataStream &in, QMap<int, QFont> &map, int maxCount);
HMIPLATFORM_EXPORT void writeFontMap(QDataStream &out, const QMap<int, QFont> &map);

} // namespace StoredStream

#endif
