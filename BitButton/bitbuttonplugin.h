#ifndef BITBUTTONPLUGIN_H
#define BITBUTTONPLUGIN_H

#include "customwidgetplugin.h"
#include "bitbutton.h"
#include "bitbuttontaskmenu.h"

// The bit button's entry in Designer's widget box ("Buttons"), with its task menu.
class BitButtonPlugin : public TypedWidgetPlugin<BitButton, BitButtonTaskMenuFactory>
{
    Q_OBJECT
public:
    explicit BitButtonPlugin(QObject *parent = nullptr);
};

#endif
