// Feeds arbitrary bytes to the decoders of the stored text and font buffers and of a table's contents,
// spans, header texts, word map and cell text records. The first byte picks
// how the rest reaches them: as the hex text itself, as a compressed block, or as the uncompressed
// stream (framed here, so the stream readers see every input rather than only valid zlib data).
#include "fuzzapplication.h"
#include "celllanguagetexts.h"
#include "cellspans.h"
#include "fontmapcodec.h"
#include "headertexts.h"
#include "hexframe.h"
#include "tablecontents.h"
#include "tablewordmap.h"
#include "textinfocodec.h"

#include <QGuiApplication>
#include <QTableWidgetItem>

#include <cstdint>
#include <cstdlib>

HMI_FUZZ_APPLICATION()

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    const QByteArray rest(reinterpret_cast<const char *>(data + 1), int(size - 1));
    QByteArray buffer;
    switch (data[0] % 3) {
    case 0:
        buffer = rest;
        break;
    case 1:
        buffer = rest.toHex();
        break;
    default:
        buffer = qCompress(rest).toHex();
        break;
    }
    QList<TextData> records;
    TextInfoCodec::decodeSlot(buffer, &records);
    QList<QList<TextData>> slotRecords;
    TextInfoCodec::decodeSlots(buffer, &slotRecords);
    FontMapCodec::Maps maps;
    FontMapCodec::decode(buffer, &maps);
    QList<CellSpans::Span> spans;
    CellSpans::decode(buffer, &spans);
    HeaderTexts headers;
    headers.decode(buffer);
    TableWordMap wordMap;
    wordMap.decode(buffer);
    CellLanguageTexts::decode(rest, &records);
    TableContents contents;
    // Checkpoints as close as they go, so that the rows read out of order below are inflated again
    // from them.
    if (contents.load(buffer, 0)) {
        QList<TableContents::Roles> cells;
        const int rows = contents.rowCount();
        for (int r : {rows - 1, 0, 1, rows / 2}) // out of order first: the row index must cope
            contents.readRow(r, contents.columnCount(), &cells);
        for (int r = 0; r < rows && r < 200; ++r) {
            if (contents.readRow(r, 8, &cells)) {
                for (const TableContents::Roles &roles : cells)
                    (void)TableContents::makeItem(roles);
            }
        }
    }
    return 0;
}
