#include "dynamicimagetaskmenu.h"
#include "customwidgetplugin.h"
#include "ui_dynamicimageeditor.h"
#include "widgetpluginregistry.h"

HMI_EDITOR_TASK_MENU_INSTANCE(DynamicImage, DynamicImageEditor, ImageListEditor)
HMI_WIDGET_PLUGIN(DynamicImage, DynamicImageTaskMenuFactory, QStringLiteral("Display Widgets"), QStringLiteral(":/DynamicImage.png"),
                  QStringLiteral("dynamicimage.h"),
                  CustomWidgetPlugin::fixedDomXml(QStringLiteral("DynamicImage"), QStringLiteral("dynamicImage"), 60, 60))
