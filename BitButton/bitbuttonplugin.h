#ifndef BITBUTTONPLUGIN_H
#define BITBUTTONPLUGIN_H

#include "customwidgetplugin.h"

// The bit button's entry in Designer's widget box ("Buttons"), with its task menu.
class BitButtonPlugin : public CustomWidgetPlugin
{
    Q_OBJECT
public:
    explicit BitButtonPlugin(QObject *parent = nullptr);

    QWidget *createWidget(QWidget *parent) override;

protected:
    QExtensionFactory *createTaskMenuFactory(QExtensionManager *manager) const override;
};

#endif
