#ifndef DYNAMICIMAGEPLUGIN_H
#define DYNAMICIMAGEPLUGIN_H

#include "customwidgetplugin.h"
#include "dynamicimage.h"
#include "dynamicimagetaskmenu.h"

// The dynamic image's entry in Designer's widget box ("Display Widgets"), with its task menu.
class DynamicImagePlugin : public TypedWidgetPlugin<DynamicImage, DynamicImageTaskMenuFactory>
{
    Q_OBJECT
public:
    explicit DynamicImagePlugin(QObject *parent = nullptr);
};

#endif
