#ifndef BUTTONPAINTER_H
#define BUTTONPAINTER_H

#include "buttonface.h"
#include "buttonlook.h"
#include "hmiwidgets_export.h"

#include <QRect>

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
    ButtonPainter(AbstractButton *button, const ButtonLook &look);

    // Body, icon and caption, in that order, each with its own antialiased painter.
    void paint(const ButtonFace &face) const;

    void paintBody(const ButtonFace &face) const;
    void paintIcon() const;
    void paintCaption(const QColor &pen) const;

    // Where the icon goes, and where and how the caption is drawn (including the pressed shift).
    QRect iconRect() const;
    QRect captionRect() const;
    Qt::Alignment captionFlags() const;

    bool isSunken() const;

private:
    AbstractButton *m_button;
    ButtonLook m_look;
};

#endif // BUTTONPAINTER_H
