#ifndef BUTTONPAINTER_H
#define BUTTONPAINTER_H

#include "buttonface.h"
#include "buttonlook.h"
#include "buttonrendercache.h"
#include "hmiwidgets_export.h"

#include <QRect>

class QPainter;

class AbstractButton;

// The painting shared by all painted buttons: body (picture, or rounded colour body with a bevel),
// border, focus frame, the base's icon and caption. It asks the button only for base state (enabled,
// down, checked, icon, text, alignment, font); everything a kind of button decides comes in the look
// and the face.
//
//     void MyButton::paintEvent(QPaintEvent *)
//     {
//         ButtonPainter(this, m_look).paint(currentFace());
//     }
class HMIWIDGETS_EXPORT ButtonPainter
{
public:
    // With a cache, the body is blitted from an image shared by all buttons of the same size and look.
    ButtonPainter(AbstractButton *button, const ButtonLook &look, ButtonRenderCache *cache = nullptr);

    // Body, icon and caption, in that order, with one antialiased painter.
    void paint(const ButtonFace &face) const;

    void paintBody(QPainter &p, const ButtonFace &face) const;
    void paintIcon(QPainter &p) const;
    void paintCaption(QPainter &p, const QColor &pen) const;

    // Where the icon goes, and where and how the caption is drawn (including the pressed shift).
    QRect iconRect() const;
    QRect captionRect() const;
    Qt::Alignment captionFlags() const;

    bool isSunken() const;

private:
    bool hasBevel(const ButtonFace &face) const;
    QRect bevelRect() const;
    QString bodyKey(const ButtonFace &face) const;
    void paintFocusFrame(QPainter &p, const ButtonFace &face) const;
    void drawBody(QPainter &p, const ButtonFace &face) const;

    AbstractButton *m_button;
    ButtonLook m_look;
    ButtonRenderCache *m_cache;
};

#endif // BUTTONPAINTER_H
