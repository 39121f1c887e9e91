#ifndef BUTTONGROUPPLUGIN_H
#define BUTTONGROUPPLUGIN_H

#include "customwidgetplugin.h"
#include "buttongroup.h"
#include "buttongrouptaskmenu.h"

// Offers ButtonGroup in Designer's widget box, under "Buttons".
class ButtonGroupPlugin : public TypedWidgetPlugin<ButtonGroup, ButtonGroupTaskMenuFactory>
{
    Q_OBJECT
public:
    explicit ButtonGroupPlugin(QObject *parent = nullptr);
};

#endif
