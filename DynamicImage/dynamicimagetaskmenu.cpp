#include "dynamicimagetaskmenu.h"

#include "imagelisteditor.h"
#include "ui_dynamicimageeditor.h"

#include <QDialog>

DynamicImageTaskMenu::DynamicImageTaskMenu(DynamicImage *widget, QObject *parent)
    : PropertyTaskMenu(widget, parent)
{
}

DynamicImageTaskMenu::~DynamicImageTaskMenu() = default;

QWidget *DynamicImageTaskMenu::createPreview() const
{
    return new DynamicImage;
}

std::unique_ptr<QObject> DynamicImageTaskMenu::buildEditor(QDialog *dialog, QWidget *preview,
                                                           QDesignerFormWindowInterface *formWindow)
{
    m_ui = std::make_unique<Ui::DynamicImageEditor>();
    m_ui->setupUi(dialog);
    auto *widget = qobject_cast<DynamicImage *>(this->widget());
    auto *previewImage = qobject_cast<DynamicImage *>(preview);
    if (!widget || !previewImage)
        return nullptr;
    return std::make_unique<ImageListEditor>(widget, previewImage, formWindow, m_ui.get());
}

DynamicImageTaskMenuFactory::DynamicImageTaskMenuFactory(QExtensionManager *parent)
    : WidgetTaskMenuFactory<DynamicImage, DynamicImageTaskMenu>(parent)
{
}
