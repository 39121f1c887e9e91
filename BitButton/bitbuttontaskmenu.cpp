#include "bitbuttontaskmenu.h"

#include "bitbuttontextlistedit.h"
#include "ui_bitbuttoneditor.h"

#include <QDialog>

BitButtonTaskMenu::BitButtonTaskMenu(BitButton *button, QObject *parent)
    : PropertyTaskMenu(button, parent)
{
}

BitButtonTaskMenu::~BitButtonTaskMenu() = default;

QWidget *BitButtonTaskMenu::createPreview() const
{
    return new BitButton;
}

std::unique_ptr<QObject> BitButtonTaskMenu::buildEditor(QDialog *dialog, QWidget *preview,
                                                        QDesignerFormWindowInterface *formWindow)
{
    // The object name, title, size and start page (Geometry) come with the layout.
    m_ui = std::make_unique<Ui::BitButtonEditor>();
    m_ui->setupUi(dialog);
    auto *button = qobject_cast<BitButton *>(widget());
    auto *previewButton = qobject_cast<BitButton *>(preview);
    if (!button || !previewButton)
        return nullptr;
    return std::make_unique<BitButtonTextListEdit>(button, previewButton, formWindow, m_ui.get());
}

BitButtonTaskMenuFactory::BitButtonTaskMenuFactory(QExtensionManager *parent)
    : WidgetTaskMenuFactory<BitButton, BitButtonTaskMenu>(parent)
{
}
