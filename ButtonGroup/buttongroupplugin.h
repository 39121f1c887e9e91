#ifndef BUTTONGROUPPLUGIN_H
#define BUTTONGROUPPLUGIN_H

#include "customwidgetplugin.h"

// Offers ButtonGroup in Designer's widget box, under "Buttons".
class ButtonGroupPlugin : public CustomWidgetPlugin
{
    Q_OBJECT
public:
    explicit ButtonGroupPlugin(QObject *parent = nullptr);

    QWidget *createWidget(QWidget *parent) override;

protected:
    QExtensionFactory *createTaskMenuFactory(QExtensionManager *manager) const override;
};

#endif
