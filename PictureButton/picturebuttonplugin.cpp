#include "picturebuttontaskmenu.h"
#include "customwidgetplugin.h"
#include "ui_picturebuttoneditor.h"
#include "widgetpluginregistry.h"

HMI_EDITOR_TASK_MENU_INSTANCE(PictureButton, PictureButtonEditor, PictureButtonTextListEditor)
HMI_WIDGET_PLUGIN(PictureButton, PictureButtonTaskMenuFactory, QStringLiteral("Buttons"), QStringLiteral(":/PictureButton.png"),
                  QStringLiteral("PictureButton.h"),
                  CustomWidgetPlugin::textButtonDomXml(QStringLiteral("PictureButton"), QStringLiteral("pictureButton"), 100, 30,
                                                       QStringLiteral("PictureButton"), {QStringLiteral("text")}))
