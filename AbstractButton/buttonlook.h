#ifndef BUTTONLOOK_H
#define BUTTONLOOK_H

#include "abstractbutton.h"

#include <QColor>

// Appearance settings that every painted button has, with the defaults they all share. The button's own
// setters validate (a negative radius is stored as 0) before storing here.
struct ButtonLook
{
    bool borderEnabled = true;
    QColor borderColor = Qt::black;
    int cornersRadius = 5;
    AbstractButton::EButtonPosition iconPosition = AbstractButton::PositionLeft;
    int iconSpace = 5;
    int textSpace = 5;
};

#endif // BUTTONLOOK_H
