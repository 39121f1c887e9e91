#include "mdiareataskmenu.h"

#include "designerhost.h"
#include "panelpresence.h"
#include "subwindow.h"
#include "ui_mdiareaeditor.h"

#include <QDialog>
#include <QListWidget>

MdiAreaTaskMenu::MdiAreaTaskMenu(MdiArea *area, QObject *parent)
    : EditTaskMenu(area, parent)
{
}

MdiAreaTaskMenu::~MdiAreaTaskMenu() = default;

MdiArea *MdiAreaTaskMenu::area() const
{
    return qobject_cast<MdiArea *>(widget());
}

void MdiAreaTaskMenu::editState()
{
    MdiArea *target = area();
    if (!target)
        return;
    QDialog dialog(target->window());
    m_ui = std::make_unique<Ui::MdiAreaEditor>();
    m_ui->setupUi(&dialog);
    connect(m_ui->newButton, &QPushButton::clicked, this, &MdiAreaTaskMenu::on_newButton_clicked);
    connect(m_ui->deleteButton, &QPushButton::clicked, this, &MdiAreaTaskMenu::on_deleteButton_clicked);
    const QString active = target->activeSubWindow();
    for (const QString &name : target->getSubwindows()) {
        auto *item = new QListWidgetItem(name, m_ui->listWidget);
        if (name == active)
            m_ui->listWidget->setCurrentItem(item);
    }
    m_dialog = &dialog;
    const int result = dialog.exec();
    m_dialog = nullptr;
    // The area may have gone while the dialog was open.
    if (result == QDialog::Accepted && area() && m_ui->listWidget->currentItem())
        area()->setActiveSubWindow(m_ui->listWidget->currentItem()->text());
    m_ui.reset();
}

void MdiAreaTaskMenu::on_newButton_clicked()
{
    MdiArea *target = area();
    if (!target || !m_ui)
        return;
    // One undo step each, so that undo takes back this panel and nothing done before it.
    auto *made = new PanelPresence(target);
    pushCommand(made);
    SubWindow *panel = made->panel();
    if (!panel)
        return;
    auto *item = new QListWidgetItem(panel->objectName(), m_ui->listWidget);
    m_ui->listWidget->setCurrentItem(item);
}

void MdiAreaTaskMenu::on_deleteButton_clicked()
{
    MdiArea *target = area();
    QListWidgetItem *item = m_ui ? m_ui->listWidget->currentItem() : nullptr;
    if (!target || !item)
        return;
    if (SubWindow *panel = target->subWindow(item->text()))
        pushCommand(new PanelPresence(target, panel));
    delete item;
}

void MdiAreaTaskMenu::pushCommand(QUndoCommand *command)
{
    DesignerHost *host = DesignerHost::instance();
    QWidget *formWindow = DesignerHost::formWindowOf(area());
    if (host && formWindow) {
        host->pushCommand(formWindow, command);
    } else {
        command->redo();
        delete command;
    }
}

MdiAreaTaskMenuFactory::MdiAreaTaskMenuFactory(QExtensionManager *parent)
    : WidgetTaskMenuFactory<MdiArea, MdiAreaTaskMenu>(parent)
{
}
