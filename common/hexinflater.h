#ifndef HEXINFLATER_H
#define HEXINFLATER_H

#include "hmiwidgets_export.h"

#include <QByteArray>

#include <memory>

// Reads a stored buffer (hex text of a qCompress block) only as far as asked: hex digits are turned
// into bytes and inflated in steps, so a reader that needs the first rows of a long table pays for
// those rows, not for the whole buffer. The claimed size is checked against a limit before anything
// is inflated; a non-hex character, a corrupt stream or output beyond the claim ends the data there.
// Only a window of the inflated bytes is held: a reader moving on lets go of what lies behind it, and
// going back to bytes let go inflates again from the nearest checkpoint before them (the inflate state
// saved at a block boundary every checkpointSpacing bytes of output), not from the start.
class HMIWIDGETS_EXPORT HexInflater
{
public:
    static constexpr qint64 DefaultCheckpointSpacing = 1024 * 1024;

    HexInflater();
    ~HexInflater();
    HexInflater(const HexInflater &) = delete;
    HexInflater &operator=(const HexInflater &) = delete;

    // False for text that is not a block, or whose claimed size is above limit.
    bool open(const QByteArray &hexText, qint64 limit, qint64 checkpointSpacing = DefaultCheckpointSpacing);
    qint64 claimedSize() const;
    // Inflates until the bytes up to offset end (in the whole output) are held or the data ends; true
    // when they are held.
    bool ensure(qint64 end);
    // Inflates a further step (at least step bytes, fewer at the end); false when nothing more comes.
    bool grow(qint64 step);
    // A step that suits the checkpoint spacing.
    qint64 stepSize() const;
    // Makes the window start at or a little before offset: lets go of the bytes further behind, or
    // inflates again from a checkpoint when offset lies before the window. Bytes after it stay.
    void seek(qint64 offset);
    // Everything that will ever be there has been inflated.
    bool finished() const;
    // Finished early: the text or the stream was corrupt, or longer than it claimed.
    bool failed() const;
    // The bytes held: the output from offset base() on.
    const QByteArray &data() const;
    qint64 base() const;
    int checkpointCount() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

#endif
