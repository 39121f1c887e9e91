#ifndef BUTTONRENDERCACHE_H
#define BUTTONRENDERCACHE_H

#include "hmiwidgets_export.h"

#include <QPixmap>
#include <QString>

#include <functional>

class QPainter;

// Button bodies (filled shape, border and bevel) shared by all buttons through QPixmapCache, keyed by
// size and by everything the body shows. A panel's keys mostly share a few sizes and looks, so a
// thousand buttons cost a handful of images; the caption and icon are drawn on top of the body.
class HMIWIDGETS_EXPORT ButtonRenderCache
{
public:
    // Images worth keeping: a button of ordinary size. A huge one is drawn directly, since an image
    // of it would cost far more memory than the drawing it saves.
    static constexpr qint64 MaxCachedBytes = 1024 * 1024;
    static bool isCheap(const QSize &size, qreal devicePixelRatio);

    // The body under key, drawn by draw into a transparent image when no button holds it yet.
    QPixmap body(const QString &key, const QSize &size, qreal devicePixelRatio,
                 const std::function<void(QPainter &)> &draw);
    // Forgets the body this button used (a button grown past the limit keeps none).
    void clear();
    bool isEmpty() const;
    // The body this button used last, while the shared cache holds it.
    QPixmap current() const;

private:
    QString m_key;
};

#endif
