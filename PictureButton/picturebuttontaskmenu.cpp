#include "picturebuttontaskmenu.h"

#include "picturebuttontextlisteditor.h"
#include "ui_picturebuttoneditor.h"

PictureButtonTaskMenu::PictureButtonTaskMenu(PictureButton *button, QObject *parent)
    : PropertyTaskMenu(button, parent)
{
}

PictureButtonTaskMenu::~PictureButtonTaskMenu() = default;

QWidget *PictureButtonTaskMenu::createPreview() const
{
    return new PictureButton;
}

std::unique_ptr<QObject> PictureButtonTaskMenu::buildEditor(QDialog *dialog, QWidget *preview,
                                                            QDesignerFormWindowInterface *formWindow)
{
    m_ui = std::make_unique<Ui::PictureButtonEditor>();
    m_ui->setupUi(dialog); // object name, title, 742 x 496, the textEdit tab first
    return std::make_unique<PictureButtonTextListEditor>(qobject_cast<PictureButton *>(widget()),
                                                         qobject_cast<PictureButton *>(preview), formWindow,
                                                         m_ui->mTextPropertyEditor);
}

PictureButtonTaskMenuFactory::PictureButtonTaskMenuFactory(QExtensionManager *parent)
    : WidgetTaskMenuFactory<PictureButton, PictureButtonTaskMenu>(parent)
{
}
