#ifndef PICTUREBUTTONTASKMENU_H
#define PICTUREBUTTONTASKMENU_H

#include "PictureButton.h"
#include "propertytaskmenu.h"

#include <memory>

namespace Ui {
class PictureButtonEditor;
}

// "Edit Properties..." of a picture button: the Picture Button Editor, whose captions, fonts and
// caption colour are committed by PictureButtonTextListEditor.
class PictureButtonTaskMenu : public PropertyTaskMenu
{
    Q_OBJECT
public:
    PictureButtonTaskMenu(PictureButton *button, QObject *parent);
    ~PictureButtonTaskMenu() override;

protected:
    QWidget *createPreview() const override;
    std::unique_ptr<QObject> buildEditor(QDialog *dialog, QWidget *preview,
                                         QDesignerFormWindowInterface *formWindow) override;

private:
    std::unique_ptr<Ui::PictureButtonEditor> m_ui;
};

class PictureButtonTaskMenuFactory : public WidgetTaskMenuFactory<PictureButton, PictureButtonTaskMenu>
{
    Q_OBJECT
public:
    explicit PictureButtonTaskMenuFactory(QExtensionManager *parent);
};

#endif
