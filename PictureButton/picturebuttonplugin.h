#ifndef PICTUREBUTTONPLUGIN_H
#define PICTUREBUTTONPLUGIN_H

#include "customwidgetplugin.h"
#include "PictureButton.h"
#include "picturebuttontaskmenu.h"

// Offers PictureButton in Designer's widget box, under "Buttons".
class PictureButtonPlugin : public TypedWidgetPlugin<PictureButton, PictureButtonTaskMenuFactory>
{
    Q_OBJECT
public:
    explicit PictureButtonPlugin(QObject *parent = nullptr);
};

#endif
