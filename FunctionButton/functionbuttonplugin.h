#ifndef FUNCTIONBUTTONPLUGIN_H
#define FUNCTIONBUTTONPLUGIN_H

#include "customwidgetplugin.h"
#include "functionbutton.h"
#include "functionbuttontaskmenu.h"

// Offers FunctionButton in Designer's widget box, under "Buttons".
class FunctionButtonPlugin : public TypedWidgetPlugin<FunctionButton, FunctionButtonTaskMenuFactory>
{
    Q_OBJECT
public:
    explicit FunctionButtonPlugin(QObject *parent = nullptr);
};

#endif
