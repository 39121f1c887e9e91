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

QString FakeDesignerHost::projectPath(QWidget *) const
{
    return m_fileName.isEmpty() ? QDir::currentPath() : QFileInfo(m_fileName).absolutePath();
}

void FakeDesignerHost::apply(const PropertyChange &change)
{
    log << (change.undoable ? QStringLiteral("setUndoableProperty") : QStringLiteral("setSheetProperty"));
    changes.append(change);
    change.widget->setProperty(change.name.toLatin1().constData(), change.value);
}
