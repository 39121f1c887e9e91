#include "buttonrendercache.h"

#include <QPainter>
#include <QPixmapCache>

bool ButtonRenderCache::isCheap(const QSize &size, qreal devicePixelRatio)
{
    const qreal pixels = qreal(qMax(0, size.width())) * qMax(0, size.height()) * devicePixelRatio * devicePixelRatio;
    return pixels * 4 <= qreal(MaxCachedBytes);
}

QPixmap ButtonRenderCache::body(const QString &key, const QSize &size, qreal devicePixelRatio,
                                const std::function<void(QPainter &)> &draw)
{
    m_key = key;
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    pixmap = QPixmap(size * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    draw(p);
    p.end();
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

void ButtonRenderCache::clear()
{
    m_key.clear();
}

bool ButtonRenderCache::isEmpty() const
{
    return m_key.isEmpty();
}

QPixmap ButtonRenderCache::current() const
{
    QPixmap pixmap;
    if (!m_key.isEmpty())
        QPixmapCache::find(m_key, &pixmap);
    return pixmap;
}
