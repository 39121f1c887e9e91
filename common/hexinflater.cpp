#include "hexinflater.h"

#include "hexframe.h"

#include <QList>

#include <zlib.h>

#include <algorithm>
#include <cstring>

namespace {
constexpr int InputChunk = 64 * 1024; // compressed bytes decoded from hex at a time
constexpr int SizeDigits = 8;         // the claimed size before the zlib stream
constexpr int WindowBits = 15;
constexpr int MaxDictionary = 1 << WindowBits;
// Checkpoints hold up to 32 KiB each: their number is bounded whatever the spacing asked for.
constexpr qint64 MaxCheckpoints = 256;

// Hex digit values by character, -1 for any other: the whole stored text passes through here.
struct HexDigits
{
    signed char value[256];
    constexpr HexDigits() : value()
    {
        for (int c = 0; c < 256; ++c)
            value[c] = c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
    }
};
constexpr HexDigits Digits;

// Where raw inflating can start again: a block boundary of the stream.
struct Checkpoint
{
    qint64 out = 0;    // output offset
    qint64 hexPos = 0; // the hex digits of the next whole compressed byte
    int bits = 0;      // bits of the byte before it still to be read
    uLong adler = 1;   // check sum of the output before out
    QByteArray dictionary;
};
} // namespace

class HexInflater::Private
{
public:
    ~Private()
    {
        if (open)
            inflateEnd(&zs);
    }

    // The byte whose two hex digits start at pos, or -1.
    int byteAt(qint64 pos) const
    {
        if (pos < 0 || pos + 2 > text.size())
            return -1;
        const int high = HexFrame::hexDigit(text.at(pos));
        const int low = HexFrame::hexDigit(text.at(pos + 1));
        return high < 0 || low < 0 ? -1 : (high << 4) | low;
    }

    // The next chunk of compressed bytes from the hex text; false at its end or at a bad digit.
    bool nextInput()
    {
        const qint64 digits = std::min<qint64>(qint64(InputChunk) * 2, text.size() - hexPos);
        if (digits < 2)
            return false;
        input.resize(int(digits / 2));
        const auto *t = reinterpret_cast<const unsigned char *>(text.constData() + hexPos);
        for (int i = 0; i < input.size(); ++i) {
            const int high = Digits.value[t[2 * i]];
            const int low = Digits.value[t[2 * i + 1]];
            if (high < 0 || low < 0) {
                bad = true;
                input.resize(i);
                break;
            }
            input[i] = char((high << 4) | low);
        }
        hexPos += qint64(input.size()) * 2;
        zs.next_in = reinterpret_cast<Bytef *>(input.data());
        zs.avail_in = uInt(input.size());
        return input.size() > 0;
    }

    // The zlib trailer after the raw stream matches the output's check sum.
    bool trailerMatches()
    {
        uLong stored = 0;
        for (int i = 0; i < 4; ++i) {
            if (zs.avail_in == 0 && !nextInput())
                return false;
            stored = (stored << 8) | *zs.next_in;
            ++zs.next_in;
            --zs.avail_in;
        }
        return stored == adler;
    }

    void addCheckpoint()
    {
        const qint64 at = base + (reinterpret_cast<char *>(zs.next_out) - out.data());
        if (at < checkpoints.last().out + spacing)
            return;
        Checkpoint point{at, hexPos - 2 * qint64(zs.avail_in), zs.data_type & 7, adler, QByteArray(MaxDictionary, Qt::Uninitialized)};
        uInt length = 0;
        if (inflateGetDictionary(&zs, reinterpret_cast<Bytef *>(point.dictionary.data()), &length) != Z_OK)
            return;
        point.dictionary.resize(int(length));
        checkpoints.append(point);
    }

    // Inflates again from point on: the window is empty at its offset.
    bool restart(const Checkpoint &point)
    {
        if (open) {
            inflateReset(&zs);
        } else {
            zs = z_stream{};
            if (inflateInit2(&zs, -WindowBits) != Z_OK)
                return false;
            open = true;
        }
        zs.avail_in = 0;
        hexPos = point.hexPos;
        if (point.bits > 0)
            inflatePrime(&zs, point.bits, byteAt(point.hexPos - 2) >> (8 - point.bits));
        if (!point.dictionary.isEmpty())
            inflateSetDictionary(&zs, reinterpret_cast<const Bytef *>(point.dictionary.constData()), uInt(point.dictionary.size()));
        adler = point.adler;
        base = point.out;
        out.resize(0);
        done = false;
        bad = false;
        return true;
    }

    // Lets go of the bytes before offset, a step at a time so that the bytes kept move seldom. They
    // move to the front of the same allocation, which then serves the whole stream.
    void dropBefore(qint64 offset)
    {
        const qint64 drop = std::clamp<qint64>(offset - base, 0, out.size());
        if (drop > 0 && (drop >= spacing / 2 || drop == out.size())) {
            std::memmove(out.data(), out.constData() + drop, size_t(out.size() - drop));
            out.resize(int(out.size() - drop));
            base += drop;
        }
    }

    QByteArray text;
    qint64 hexPos = 0;
    QByteArray input;
    QByteArray out;
    qint64 base = 0; // output offset of out
    qint64 claimed = 0;
    qint64 spacing = HexInflater::DefaultCheckpointSpacing;
    QList<Checkpoint> checkpoints; // by output offset, the stream's start first
    uLong adler = 1;
    z_stream zs{};
    bool open = false;
    bool done = false;
    bool bad = false;
};

HexInflater::HexInflater()
    : d(new Private)
{
}

HexInflater::~HexInflater() = default;

bool HexInflater::open(const QByteArray &hexText, qint64 limit, qint64 checkpointSpacing)
{
    d.reset(new Private);
    d->text = hexText.trimmed();
    if (d->text.size() < SizeDigits || d->text.size() % 2 != 0)
        return false;
    quint32 claimed = 0;
    for (int i = 0; i < SizeDigits; ++i) {
        const int v = HexFrame::hexDigit(d->text.at(i));
        if (v < 0)
            return false;
        claimed = (claimed << 4) | quint32(v);
    }
    if (qint64(claimed) > limit)
        return false;
    d->claimed = claimed;
    d->spacing = std::max({checkpointSpacing, qint64(claimed) / MaxCheckpoints, qint64(1024)});
    d->done = true;
    if (claimed == 0)
        return true;
    // The zlib header is read here: the stream is inflated raw, so that it can start again at any
    // checkpoint, and its check sum is compared with the trailer at its end.
    const int method = d->byteAt(SizeDigits);
    const int flags = d->byteAt(SizeDigits + 2);
    d->bad = method < 0 || flags < 0 || (method & 0x0f) != Z_DEFLATED || (method >> 4) + 8 > WindowBits
             || (method * 256 + flags) % 31 != 0 || (flags & 0x20) != 0;
    if (d->bad)
        return true; // the data ends before it starts
    d->checkpoints.append(Checkpoint{0, SizeDigits + 4, 0, 1, QByteArray()});
    return d->restart(d->checkpoints.first());
}

qint64 HexInflater::claimedSize() const { return d->claimed; }
bool HexInflater::finished() const { return d->done; }
bool HexInflater::failed() const { return d->bad; }
const QByteArray &HexInflater::data() const { return d->out; }
qint64 HexInflater::base() const { return d->base; }
int HexInflater::checkpointCount() const { return int(d->checkpoints.size()); }
qint64 HexInflater::stepSize() const { return d->spacing / 16; }

bool HexInflater::ensure(qint64 end)
{
    while (d->base + d->out.size() < end && grow(std::max<qint64>(end - d->base - d->out.size(), stepSize()))) {
    }
    return d->base + d->out.size() >= end;
}

void HexInflater::seek(qint64 offset)
{
    if (d->checkpoints.isEmpty())
        return;
    const qint64 end = d->base + d->out.size();
    const auto after = std::upper_bound(d->checkpoints.cbegin(), d->checkpoints.cend(), offset,
                                        [](qint64 at, const Checkpoint &point) { return at < point.out; });
    const Checkpoint &from = *(after == d->checkpoints.cbegin() ? after : after - 1);
    if ((offset < d->base || from.out > end) && !d->restart(from))
        return;
    // A quarter of the spacing is kept behind, for readers stepping back a little.
    const qint64 behind = d->spacing / 4;
    for (;;) {
        d->dropBefore(offset - behind);
        if (d->base + d->out.size() >= offset || !grow(std::min<qint64>(offset - d->base - d->out.size(), behind)))
            break;
    }
}

bool HexInflater::grow(qint64 step)
{
    if (d->done || !d->open)
        return false;
    const qint64 before = d->out.size();
    const qint64 target = std::min(d->claimed - d->base, before + std::max<qint64>(step, 1));
    d->out.resize(int(target));
    d->zs.next_out = reinterpret_cast<Bytef *>(d->out.data() + before);
    d->zs.avail_out = uInt(target - before);
    while (d->zs.avail_out > 0) {
        if (d->zs.avail_in == 0 && !d->nextInput()) {
            d->done = true; // the text ended (or went bad) before the stream did
            d->bad = true;
            break;
        }
        Bytef *const from = d->zs.next_out;
        // Stops at block ends too, where the state can be saved.
        const int rc = inflate(&d->zs, Z_BLOCK);
        d->adler = adler32(d->adler, from, uInt(d->zs.next_out - from));
        if (rc == Z_STREAM_END) {
            d->done = true;
            d->bad = d->bad || !d->trailerMatches();
            break;
        }
        if (rc != Z_OK && rc != Z_BUF_ERROR) {
            d->done = true;
            d->bad = true;
            break;
        }
        if (rc == Z_BUF_ERROR && d->zs.avail_in > 0)
            break; // no progress possible
        if ((d->zs.data_type & 128) && !(d->zs.data_type & 64))
            d->addCheckpoint();
    }
    const qint64 produced = target - qint64(d->zs.avail_out);
    d->out.resize(int(produced));
    if (!d->done && d->base + produced == d->claimed) {
        // Everything claimed is there; the stream must end now, or it is longer than it said.
        char extra = 0;
        d->zs.next_out = reinterpret_cast<Bytef *>(&extra);
        d->zs.avail_out = 1;
        int rc = Z_OK;
        while (rc == Z_OK && d->zs.avail_out == 1) {
            if (d->zs.avail_in == 0 && !d->nextInput())
                break;
            rc = inflate(&d->zs, Z_NO_FLUSH);
        }
        d->bad = d->bad || rc != Z_STREAM_END || d->zs.avail_out == 0 || !d->trailerMatches();
        d->done = true;
    }
    if (d->done && d->open) {
        inflateEnd(&d->zs);
        d->open = false;
    }
    return produced > before;
}
