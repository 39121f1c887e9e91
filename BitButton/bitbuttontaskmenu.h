#ifndef BITBUTTONTASKMENU_H
#define BITBUTTONTASKMENU_H

#include "bitbutton.h"
#include "propertytaskmenu.h"

#include <memory>

namespace Ui {
class BitButtonEditor;
}

// "Edit Properties..." of a bit button: the Bit Button Editor, whose texts page is run by a
// BitButtonTextListEdit.
class BitButtonTaskMenu : public PropertyTaskMenu
{
    Q_OBJECT
public:
    BitButtonTaskMenu(BitButton *button, QObject *parent);
    ~BitButtonTaskMenu() override;

protected:
    QWidget *createPreview() const override;
    std::unique_ptr<QObject> buildEditor(QDialog *dialog, QWidget *preview,
                                         QDesignerFormWindowInterface *formWindow) override;

private:
    // The companion reads the fields through it until the dialog has closed.
    std::unique_ptr<Ui::BitButtonEditor> m_ui;
};

class BitButtonTaskMenuFactory : public WidgetTaskMenuFactory<BitButton, BitButtonTaskMenu>
{
    Q_OBJECT
public:
    explicit BitButtonTaskMenuFactory(QExtensionManager *parent);
};

#endif
