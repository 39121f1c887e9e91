#include "hexinflater.h"

#include "hexframe.h"

#include <zlib.h>

#include <algorithm>

namespace {
constexpr int InputChunk = 64 * 1024; // compressed bytes decoded from hex at a time
} // namespace

class HexInflater::Private
{
public:
    ~Private()
    {
        if (open)
            inflateEnd(&zs);
    }

    // The next chunk of compressed bytes from the hex text; false at its end or at a bad digit.
    bool nextInput()
    {
        const qint64 digits = std::min<qint64>(qint64(InputChunk) * 2, text.size() - hexPos);
        if (digits < 2)
            return false;
        input.resize(int(digits / 2));
        const char *t = text.constData() + hexPos;
        for (int i = 0; i < input.size(); ++i) {
            const int high = HexFrame::hexDigit(t[2 * i]);
            const int low = HexFrame::hexDigit(t[2 * i + 1]);
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

    QByteArray text;
    qint64 hexPos = 0;
    QByteArray input;
    QByteArray out;
    qint64 claimed = 0;
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

bool HexInflater::open(const QByteArray &hexText, qint64 limit)
{
    d.reset(new Private);
    d->text = hexText.trimmed();
    if (d->text.size() < 8 || d->text.size() % 2 != 0)
        return false;
    quint32 claimed = 0;
    for (int i = 0; i < 8; ++i) {
        const int v = HexFrame::hexDigit(d->text.at(i));
        if (v < 0)
            return false;
        claimed = (claimed << 4) | quint32(v);
    }
    if (qint64(claimed) > limit)
        return false;
    d->claimed = claimed;
    d->hexPos = 8;
    if (claimed == 0) {
        d->done = true;
        return true;
    }
    if (inflateInit(&d->zs) != Z_OK)
        return false;
    d->open = true;
    return true;
}

qint64 HexInflater::claimedSize() const { return d->claimed; }
bool HexInflater::finished() const { return d->done; }
bool HexInflater::failed() const { return d->bad; }
const QByteArray &HexInflater::data() const { return d->out; }

bool HexInflater::ensure(qint64 size)
{
    while (d->out.size() < size && !d->done)
        grow(std::max<qint64>(size - d->out.size(), 64 * 1024));
    return d->out.size() >= size;
}

bool HexInflater::grow(qint64 step)
{
    if (d->done || !d->open)
        return false;
    const qint64 before = d->out.size();
    const qint64 target = std::min(d->claimed, before + std::max<qint64>(step, 1));
    d->out.resize(int(target));
    d->zs.next_out = reinterpret_cast<Bytef *>(d->out.data() + before);
    d->zs.avail_out = uInt(target - before);
    while (d->zs.avail_out > 0) {
        if (d->zs.avail_in == 0 && !d->nextInput()) {
            d->done = true; // the text ended (or went bad) before the stream did
            d->bad = true;
            break;
        }
        const int rc = inflate(&d->zs, Z_NO_FLUSH);
        if (rc == Z_STREAM_END) {
            d->done = true;
            break;
        }
        if (rc != Z_OK && rc != Z_BUF_ERROR) {
            d->done = true;
            d->bad = true;
            break;
        }
        if (rc == Z_BUF_ERROR && d->zs.avail_in > 0)
            break; // no progress possible
    }
    const qint64 produced = target - qint64(d->zs.avail_out);
    d->out.resize(int(produced));
    if (!d->done && produced == d->claimed) {
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
        d->bad = d->bad || rc != Z_STREAM_END || d->zs.avail_out == 0;
        d->done = true;
    }
    if (d->done && d->open) {
        inflateEnd(&d->zs);
        d->open = false;
    }
    return produced > before;
}
