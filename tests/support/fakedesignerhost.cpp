#include "fakedesignerhost.h"

#include <QFileInfo>
#include <QDir>
#include <QWidget>

FakeDesignerHost::FakeDesignerHost(QWidget *formWindow, QObject *parent)
    : DesignerHost(parent)
    , m_formWindow(formWindow)
{
    install(this);
}

FakeDesignerHost::~FakeDesignerHost()
{
    if (instance() == this)
        install(nullptr);
}

QWidget *FakeDesignerHost::formWindow(QWidget *widget) const
{
    if (!m_formWindow)
        return nullptr;
    for (QWidget *w = widget; w; w = w->parentWidget()) {
        if (w == m_formWindow)
            return m_formWindow;
    }
    return nullptr;
}

QString FakeDesignerHost::fileName(QWidget *) const
{
    return m_fileName;
}

QString FakeDesignerHost::projectPath(QWidget *) const
{
    return m_fileName.isEmpty() ? QDir::currentPath() : QFileInfo(m_fileName).absolutePath();
}

void FakeDesignerHost::setSheetProperty(QWidget *widget, const QString &name, const QVariant &value)
{
    log << QStringLiteral("setSheetProperty");
    changes.append({widget, name, value, false});
    widget->setProperty(name.toLatin1().constData(), value);
}

void FakeDesignerHost::setUndoableProperty(QWidget *widget, const QString &name, const QVariant &value)
{
    log << QStringLiteral("setUndoableProperty");
    changes.append({widget, name, value, true});
    widget->setProperty(name.toLatin1().constData(), value);
}

void FakeDesignerHost::beginCommand(QWidget *, const QString &)
{
    log << QStringLiteral("beginCommand");
}

void FakeDesignerHost::endCommand(QWidget *)
{
    log << QStringLiteral("endCommand");
}

void FakeDesignerHost::clearSelection(QWidget *)
{
    log << QStringLiteral("clearSelection");
    m_selection.clear();
}

void FakeDesignerHost::selectWidget(QWidget *, QWidget *widget, bool select)
{
    log << (select ? QStringLiteral("select") : QStringLiteral("deselect"));
    if (select)
        m_selection.insert(widget);
    else
        m_selection.remove(widget);
}

bool FakeDesignerHost::isSelected(QWidget *, QWidget *widget) const
{
    return m_selection.contains(widget);
}

void FakeDesignerHost::manageWidget(QWidget *, QWidget *widget)
{
    log << QStringLiteral("manageWidget");
    managed.append(widget);
}

void FakeDesignerHost::unmanageWidget(QWidget *, QWidget *widget)
{
    log << QStringLiteral("unmanageWidget");
    managed.removeAll(widget);
}

void FakeDesignerHost::markDirty(QWidget *)
{
    log << QStringLiteral("markDirty");
}

void FakeDesignerHost::refreshEditors(QWidget *)
{
    log << QStringLiteral("refreshEditors");
}
