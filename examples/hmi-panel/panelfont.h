#ifndef PANELFONT_H
#define PANELFONT_H

#include <QFont>

// The panel's own font resolution, the same on every Qt major: without it a Qt 5 panel takes the
// platform's 12 pt font and a 100 dpi screen (points a twelfth larger), a Qt 6 panel 9 pt at 96 dpi,
// and a form looks different on each.
class PanelFont
{
public:
    // Before the application object exists: points are counted at 96 per inch, as Qt 6 does.
    static void prepareApplication();
    // The panel's standard font: 9 pt, the size the caption editors store for a language's font
    // when the designer chose none, so such captions match everything else on the screen.
    static QFont standard();
    // Makes standard() the application's font and the widgets' default font.
    static void apply();
};

#endif
