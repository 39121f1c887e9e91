#ifndef DYNAMICIMAGETASKMENU_H
#define DYNAMICIMAGETASKMENU_H

#include "dynamicimage.h"
#include "propertytaskmenu.h"

#include <memory>

namespace Ui {
class DynamicImageEditor;
}

// "Edit Properties..." of a dynamic image: the Dynamic Image Editor, whose Pictures page is run by
// an ImageListEditor.
class DynamicImageTaskMenu : public PropertyTaskMenu
{
    Q_OBJECT
public:
    DynamicImageTaskMenu(DynamicImage *widget, QObject *parent);
    ~DynamicImageTaskMenu() override;

protected:
    QWidget *createPreview() const override;
    std::unique_ptr<QObject> buildEditor(QDialog *dialog, QWidget *preview,
                                         QDesignerFormWindowInterface *formWindow) override;

private:
    std::unique_ptr<Ui::DynamicImageEditor> m_ui;
};

class DynamicImageTaskMenuFactory : public WidgetTaskMenuFactory<DynamicImage, DynamicImageTaskMenu>
{
    Q_OBJECT
public:
    explicit DynamicImageTaskMenuFactory(QExtensionManager *parent);
};

#endif
