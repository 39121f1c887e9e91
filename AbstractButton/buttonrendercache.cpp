#include "buttonrendercache.h"

bool ButtonRenderCache::Key::operator==(const Key &o) const
{
    return size == o.size && dpr == o.dpr && face.bodyColor == o.face.bodyColor
           && face.picture.cacheKey() == o.face.picture.cacheKey() && face.captionColor == o.face.captionColor
           && face.focusFrame == o.face.focusFrame && look.borderEnabled == o.look.borderEnabled
           && look.borderColor == o.look.borderColor && look.cornersRadius == o.look.cornersRadius
           && look.iconPosition == o.look.iconPosition && look.iconSpace == o.look.iconSpace
           && look.textSpace == o.look.textSpace && text == o.text && iconKey == o.iconKey
           && iconSize == o.iconSize && alignment == o.alignment && enabled == o.enabled && down == o.down
           && checked == o.checked && checkable == o.checkable && light == o.light && dark == o.dark
           && font == o.font;
}

bool ButtonRenderCache::isCheap(const QSize &size, qreal devicePixelRatio)
{
    const qreal pixels = qreal(qMax(0, size.width())) * qMax(0, size.height()) * devicePixelRatio * devicePixelRatio;
    return pixels * 4 <= qreal(MaxCachedBytes);
}

void ButtonRenderCache::clear()
{
    m_entries = {};
    m_next = 0;
}

bool ButtonRenderCache::isEmpty() const
{
    for (const Entry &e : m_entries) {
        if (e.used)
            return false;
    }
    return true;
}

const QPixmap *ButtonRenderCache::find(const Key &key) const
{
    for (const Entry &e : m_entries) {
        if (e.used && e.key == key)
            return &e.pixmap;
    }
    return nullptr;
}

void ButtonRenderCache::insert(const Key &key, const QPixmap &pixmap)
{
    Entry &e = m_entries[m_next];
    e.key = key;
    e.pixmap = pixmap;
    e.used = true;
    m_next = (m_next + 1) % m_entries.size();
}
