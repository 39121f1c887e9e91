#ifndef BUTTONFACE_H
#define BUTTONFACE_H

#include <QColor>
#include <QPixmap>

// What a painted button shows in its current state. Each kind of button fills this from its own state
// rules; the painting itself is the same for all of them.
struct ButtonFace
{
    QColor bodyColor;    // filled body, used while picture is null
    QPixmap picture;     // replaces the filled body when not null
    QColor captionColor;
    // The caption while the button is disabled. Every kind is greyed the same way (flat body in its
    // disabled colour or picture, this caption); kinds with a disabled text colour property put it here.
    QColor disabledCaptionColor = QColor(192, 192, 192);
    bool focusFrame = false;
};

#endif // BUTTONFACE_H
