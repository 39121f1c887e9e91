#ifndef HEXINFLATER_H
#define HEXINFLATER_H

#include "hmiwidgets_export.h"

#include <QByteArray>

#include <memory>

// Reads a stored buffer (hex text of a qCompress block) only as far as asked: hex digits are turned
// into bytes and inflated in steps, so a reader that needs the first rows of a long table pays for
// those rows, not for the whole buffer. The claimed size is checked against a limit before anything
// is inflated; a non-hex character, a corrupt stream or output beyond the claim ends the data there.
class HMIWIDGETS_EXPORT HexInflater
{
public:
    HexInflater();
    ~HexInflater();
    HexInflater(const HexInflater &) = delete;
    HexInflater &operator=(const HexInflater &) = delete;

    // False for text that is not a block, or whose claimed size is above limit.
    bool open(const QByteArray &hexText, qint64 limit);
    qint64 claimedSize() const;
    // Inflates until at least size bytes are there or the data ends; true when they are there.
    bool ensure(qint64 size);
    // Inflates a further step (at least step bytes, fewer at the end); false when nothing more comes.
    bool grow(qint64 step);
    // Everything that will ever be there is there.
    bool finished() const;
    // Finished early: the text or the stream was corrupt, or longer than it claimed.
    bool failed() const;
    const QByteArray &data() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

#endif
