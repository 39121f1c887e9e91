#ifndef PICTUREBUTTONPLUGIN_H
#define PICTUREBUTTONPLUGIN_H

#include "customwidgetplugin.h"

// Offers PictureButton in Designer's widget box, under "Buttons".
class PictureButtonPlugin : public CustomWidgetPlugin
{
    Q_OBJECT
public:
    explicit PictureButtonPlugin(QObject *parent = nullptr);

    QWidget *createWidget(QWidget *parent) override;

protected:
    QExtensionFactory *createTaskMenuFactory(QExtensionManager *manager) const override;
};

#endif
