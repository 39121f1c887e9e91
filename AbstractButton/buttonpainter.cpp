#include "buttonpainter.h"

#include "abstractbutton.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>

namespace {

// Spacing and icon size come from properties that take any int. Bounded to the largest size a widget
// can have, the sums and differences below stay far from int overflow.
constexpr int GeometryLimit = QWIDGETSIZE_MAX;
int bounded(int value)
{
    return std::clamp(value, -GeometryLimit, GeometryLimit);
}
QSize boundedSize(const QSize &size)
{
    return QSize(std::clamp(size.width(), 0, GeometryLimit), std::clamp(size.height(), 0, GeometryLimit));
}

// Lines are drawn through pixel centres so that each bevel edge covers exactly one pixel row or column
// despite antialiasing. The corner diagonals go first, so that the straight edges keep their colour up
// to their end pixels.
void drawBevel(QPainter &p, const QRect &b, int k, const QColor &first, const QColor &second)
{
    const int L = b.left(), T = b.top(), R = b.right(), B = b.bottom();
    const QPen firstPen(first, 0);
    const QPen secondPen(second, 0);
    p.save();
    p.translate(0.5, 0.5);
    p.setPen(secondPen);
    p.drawLine(R, B - k, R - k, B);
    p.drawLine(L + k, B, L, B - k);
    p.setPen(firstPen);
    p.drawLine(L, T + k, L + k, T);
    p.drawLine(R - k, T, R, T + k);
    p.setPen(secondPen);
    p.drawLine(R, T + k, R, B - k);
    p.drawLine(R - k, B, L + k, B);
    p.setPen(firstPen);
    p.drawLine(L + k, T, R - k, T);
    p.drawLine(L, T + k, L, B - k);
    p.restore();
}

} // namespace

ButtonPainter::ButtonPainter(AbstractButton *button, const ButtonLook &look, ButtonRenderCache *cache)
    : m_button(button)
    , m_look(look)
    , m_cache(cache)
{
}

void ButtonPainter::paint(const ButtonFace &face) const
{
    QPainter p(m_button);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal dpr = m_button->devicePixelRatioF();
    if (m_cache && ButtonRenderCache::isCheap(m_button->size(), dpr)) {
        const QPixmap body = m_cache->body(bodyKey(face), m_button->size(), dpr, [this, &face](QPainter &bp) {
            bp.setRenderHint(QPainter::Antialiasing);
            drawBody(bp, face);
        });
        p.drawPixmap(0, 0, body);
        paintFocusFrame(p, face);
    } else {
        if (m_cache)
            m_cache->clear();
        paintBody(p, face);
    }
    paintIcon(p);
    paintCaption(p, m_button->isEnabled() ? face.captionColor : face.disabledCaptionColor);
}

// Everything drawBody() reads, and nothing else: buttons differing only in caption, icon or focus
// share one body.
QString ButtonPainter::bodyKey(const ButtonFace &face) const
{
    QString key = QStringLiteral("hmi-button-body");
    const auto add = [&key](qint64 value) {
        key += QLatin1Char(':');
        key += QString::number(value, 16);
    };
    add(m_button->width());
    add(m_button->height());
    add(qRound64(m_button->devicePixelRatioF() * 1000));
    add(m_look.borderEnabled ? qint64(m_look.borderColor.rgba64()) : -1);
    add(m_look.cornersRadius);
    if (face.picture.isNull()) {
        add(qint64(face.bodyColor.rgba64()));
        const bool bevel = hasBevel(face);
        add(bevel ? (isSunken() ? 2 : 1) : 0);
        if (bevel) {
            const QPalette &pal = m_button->palette();
            add(qint64(pal.color(QPalette::Light).rgba64()));
            add(qint64(pal.color(QPalette::Dark).rgba64()));
        }
    } else {
        key += QStringLiteral(":picture");
        add(face.picture.cacheKey());
    }
    return key;
}

bool ButtonPainter::isSunken() const
{
    return m_button->isDown() || (m_button->isCheckable() && m_button->isChecked());
}

bool ButtonPainter::hasBevel(const ButtonFace &face) const
{
    return face.picture.isNull() && m_button->isEnabled();
}

void ButtonPainter::paintBody(QPainter &p, const ButtonFace &face) const
{
    drawBody(p, face);
    paintFocusFrame(p, face);
}

void ButtonPainter::paintFocusFrame(QPainter &p, const ButtonFace &face) const
{
    if (face.focusFrame) {
        const QRect current = hasBevel(face) ? bevelRect() : m_button->rect();
        p.save();
        p.setPen(QPen(Qt::black, 0, Qt::DotLine));
        p.setBrush(Qt::NoBrush);
        p.translate(0.5, 0.5);
        p.drawRect(QRectF(QPointF(current.left() + 2, current.top() + 2),
                          QPointF(current.right() - 2, current.bottom() - 2)));
        p.restore();
    }
}

QRect ButtonPainter::bevelRect() const
{
    const QRect r = m_button->rect();
    return QRect(QPoint(r.left() + 2, r.top() + 2), QPoint(r.right() - 1, r.bottom() - 1));
}

void ButtonPainter::drawBody(QPainter &p, const ButtonFace &face) const
{
    const QRect r = m_button->rect();
    if (face.picture.isNull()) {
        if (m_look.borderEnabled)
            p.setPen(QPen(m_look.borderColor, 0));
        else
            p.setPen(Qt::NoPen);
        p.setBrush(face.bodyColor);
        const qreal radius = m_look.cornersRadius;
        p.drawRoundedRect(QRectF(r), radius, radius, Qt::AbsoluteSize);

        if (hasBevel(face)) {
            const QPalette &pal = m_button->palette();
            const QColor light = pal.color(QPalette::Light);
            const QColor dark = pal.color(QPalette::Dark);
            if (isSunken())
                drawBevel(p, bevelRect(), m_look.cornersRadius / 2, dark, light);
            else
                drawBevel(p, bevelRect(), m_look.cornersRadius / 2, light, dark);
        }
    } else {
        p.drawPixmap(r, face.picture);
        if (m_look.borderEnabled) {
            p.setPen(QPen(m_look.borderColor, 0));
            p.setBrush(Qt::NoBrush);
            p.drawRect(QRectF(r));
        }
    }
}

QRect ButtonPainter::iconRect() const
{
    const int w = m_button->width();
    const int h = m_button->height();
    const QSize size = boundedSize(m_button->iconSize());
    const int space = bounded(m_look.iconSpace);
    int x = (w - size.width()) / 2;
    int y = (h - size.height()) / 2;
    switch (m_look.iconPosition) {
    case AbstractButton::PositionTop: y = space; break;
    case AbstractButton::PositionBottom: y = h - space - size.height(); break;
    case AbstractButton::PositionLeft: x = space; break;
    case AbstractButton::PositionRight: x = w - space - size.width(); break;
    case AbstractButton::PositionMid: break;
    }
    return QRect(QPoint(x, y), size);
}

void ButtonPainter::paintIcon(QPainter &p) const
{
    const QIcon icon = m_button->icon();
    if (icon.isNull())
        return;
    const QRect target = iconRect();
    if (!target.intersects(m_button->rect()))
        return;
    // An icon larger than the button is requested at most at the button's size, then stretched: a
    // scalable icon must not render an image of whatever size the property holds.
    const QSize request = target.size().boundedTo(m_button->size());
    p.drawPixmap(target, icon.pixmap(request, QIcon::Normal, QIcon::Off));
}

QRect ButtonPainter::captionRect() const
{
    QRect t(QPoint(0, 0), m_button->size());
    if (!m_button->icon().isNull()) {
        const QSize icon = boundedSize(m_button->iconSize());
        const int gap = bounded(m_look.textSpace) + bounded(m_look.iconSpace);
        switch (m_look.iconPosition) {
        case AbstractButton::PositionTop: t.translate(0, gap + icon.height()); break;
        case AbstractButton::PositionBottom: t.translate(0, -(gap + icon.height())); break;
        case AbstractButton::PositionLeft: t.translate(gap + icon.width(), 0); break;
        case AbstractButton::PositionRight: t.translate(-(gap + icon.width()), 0); break;
        case AbstractButton::PositionMid: break;
        }
    }
    if (m_button->isDown() || m_button->isChecked())
        t.translate(1, 1);
    return t;
}

Qt::Alignment ButtonPainter::captionFlags() const
{
    if (m_button->icon().isNull())
        return m_button->alignment();
    switch (m_look.iconPosition) {
    case AbstractButton::PositionTop: return Qt::AlignHCenter | Qt::AlignTop;
    case AbstractButton::PositionBottom: return Qt::AlignHCenter | Qt::AlignBottom;
    case AbstractButton::PositionLeft: return Qt::AlignLeft | Qt::AlignVCenter;
    case AbstractButton::PositionRight: return Qt::AlignRight | Qt::AlignVCenter;
    case AbstractButton::PositionMid: break;
    }
    return m_button->alignment();
}

void ButtonPainter::paintCaption(QPainter &p, const QColor &pen) const
{
    p.setPen(pen);
    p.setFont(m_button->font());
    p.drawText(captionRect(), int(captionFlags()), m_button->text());
}
