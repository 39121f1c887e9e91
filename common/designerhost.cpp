#include "designerhost.h"

#include <QUndoCommand>

#include <QPointer>

namespace {
QPointer<DesignerHost> &installedHost()
{
    static QPointer<DesignerHost> host;
    return host;
}
} // namespace

DesignerHost::DesignerHost(QObject *parent)
    : QObject(parent)
{
}

DesignerHost::~DesignerHost() = default;

DesignerHost *DesignerHost::instance()
{
    return installedHost().data();
}

void DesignerHost::install(DesignerHost *host)
{
    installedHost() = host;
}

QWidget *DesignerHost::formWindowOf(QWidget *widget)
{
    DesignerHost *host = instance();
    return host && widget ? host->formWindow(widget) : nullptr;
}

void DesignerHost::exposeItemToEditor(QTableWidgetItem *) const
{
}

QWidget *DesignerHost::previewForm(const QWidget *) const
{
    return nullptr;
}

bool DesignerHost::isManaged(QWidget *, QWidget *) const
{
    return false;
}

void DesignerHost::ensureUniqueName(QWidget *, QWidget *) {}

void DesignerHost::pushCommand(QWidget *, QUndoCommand *command)
{
    command->redo();
    delete command;
}
