#ifndef TABLEWORDMAP_H
#define TABLEWORDMAP_H

#include "hmiwidgets_export.h"
#include "textdata.h"

#include <QByteArray>
#include <QFont>
#include <QList>
#include <QMap>

// The table's word-library link ("mapBuffer"): hex text of a compressed Qt 4.8 data stream holding,
// each only while the stream has data left, a font per language and a list of per-column text
// records. Kept with the form for the translation tool; the table shows its texts from the header
// buffer and the cells.
class HMIWIDGETS_EXPORT TableWordMap
{
public:
    static constexpr int MaxEntries = 1000;

    bool decode(const QByteArray &buffer);
    QByteArray encode() const;

    QMap<int, QFont> fonts;
    QList<TextData> entries;
};

#endif
