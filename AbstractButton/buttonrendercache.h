#ifndef BUTTONRENDERCACHE_H
#define BUTTONRENDERCACHE_H

#include "buttonface.h"
#include "buttonlook.h"
#include "hmiwidgets_export.h"

#include <QFont>
#include <QPalette>
#include <QPixmap>
#include <QString>

#include <array>

// The last looks a button painted, so that a button switching between its on and off look on
// every controller update blits a pixmap instead of drawing shapes and laying out text again.
class HMIWIDGETS_EXPORT ButtonRenderCache
{
public:
    // Everything the painting reads.
    struct Key
    {
        QSize size;
        qreal dpr = 1;
        ButtonFace face;
        ButtonLook look;
        QString text;
        QFont font;
        qint64 iconKey = 0;
        QSize iconSize;
        int alignment = 0;
        bool enabled = true;
        bool down = false;
        bool checked = false;
        bool checkable = false;
        QRgb light = 0;
        QRgb dark = 0;

        bool operator==(const Key &o) const;
    };

    // Images worth keeping: a button of ordinary size. A huge one is drawn directly, since two
    // full-size images would cost far more memory than the drawing they save.
    static constexpr qint64 MaxCachedBytes = 1024 * 1024;
    static bool isCheap(const QSize &size, qreal devicePixelRatio);

    const QPixmap *find(const Key &key) const;
    void insert(const Key &key, const QPixmap &pixmap);
    void clear();
    bool isEmpty() const;

private:
    struct Entry
    {
        Key key;
        QPixmap pixmap;
        bool used = false;
    };
    std::array<Entry, 2> m_entries;
    size_t m_next = 0;
};

#endif
