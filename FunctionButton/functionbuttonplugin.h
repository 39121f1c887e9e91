#ifndef FUNCTIONBUTTONPLUGIN_H
#define FUNCTIONBUTTONPLUGIN_H

#include "customwidgetplugin.h"

// Offers FunctionButton in Designer's widget box, under "Buttons".
class FunctionButtonPlugin : public CustomWidgetPlugin
{
    Q_OBJECT
public:
    explicit FunctionButtonPlugin(QObject *parent = nullptr);

    QWidget *createWidget(QWidget *parent) override;

protected:
    QExtensionFactory *createTaskMenuFactory(QExtensionManager *manager) const override;
};

#endif
