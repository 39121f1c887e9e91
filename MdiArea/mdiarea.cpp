#include "mdiarea.h"

#include "backgroundfill.h"
#include "cascadeplacement.h"
#include "containedcontrols.h"
#include "designerchildren.h"
#include "designerhost.h"
#include "norvointerface_z3.h"
#include "subwindow.h"
#include "widgetfactory.h"

#include <QEvent>
#include <QPointer>

HMI_REGISTER_WIDGET(MdiArea)

namespace {
// Marks a panel deleted in Designer: no longer part of the form, kept hidden with what is on it.
const char *const RemovedPanel = "_hmi_removedPanel";
} // namespace

class MdiArea::Private
{
public:
    explicit Private(MdiArea *q)
        : q(q)
        , backgroundColor(q->palette().color(QPalette::Window))
    {
    }

    MdiArea *const q;
    QList<QPointer<SubWindow>> subWindows;
    QPointer<SubWindow> active;
    QStringList hiddenNames;
    CascadePlacement cascade;
    bool autoHide = false;
    QString activeName;
    QColor backgroundColor;
    bool initializing = true;

    QWidget *formWindow() const { return DesignerHost::formWindowOf(q); }

    void markDirty() const
    {
        DesignerHost *host = DesignerHost::instance();
        if (QWidget *fw = formWindow(); host && fw)
            host->markDirty(fw);
    }

    // The panels among the children, in child order (deleted ones left out).
    QList<SubWindow *> childPanels() const
    {
        QList<SubWindow *> panels;
        for (SubWindow *panel : q->findChildren<SubWindow *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (!panel->property(RemovedPanel).toBool())
                panels << panel;
        }
        return panels;
    }

    SubWindow *childNamed(const QString &name) const
    {
        for (SubWindow *panel : childPanels()) {
            if (panel->objectName() == name)
                return panel;
        }
        return nullptr;
    }

    QString newName() const
    {
        // The next number; a name a panel still has is skipped.
        int number = int(subWindows.size()) + 1;
        QString name;
        do {
            name = QStringLiteral("subWindow_%1").arg(number++);
        } while (childNamed(name));
        return name;
    }

    // The panels a form brought, once: at the first polish (Designer and uic have made them by
    // then) or at the latest at the first show.
    void collectPanels()
    {
        if (collected)
            return;
        collected = true;
        for (SubWindow *panel : childPanels()) {
            if (!subWindows.contains(panel))
                subWindows << panel;
        }
        if (!active)
            active = childNamed(activeName);
        if (active)
            active->setActive(true);
    }

    void hideInactive()
    {
        if (!autoHide || formWindow())
            return;
        for (const QPointer<SubWindow> &panel : std::as_const(subWindows)) {
            if (panel && panel != active)
                panel->hide();
        }
    }

    bool collected = false;
};

MdiArea::MdiArea(QWidget *parent)
    : QFrame(parent)
    , d(new Private(this))
{
    NORVOInterface_Z3::setWidgetDefaultFont(this);
    setFrameShape(QFrame::StyledPanel);
    if (DesignerHost *host = DesignerHost::instance(); host && d->formWindow()) {
        connect(host, &DesignerHost::selectionChanged, this, [this](QWidget *formWindow) {
            if (formWindow == d->formWindow())
                slotActived();
        });
    }
}

MdiArea::~MdiArea() = default;

QString MdiArea::activeSubWindow() const
{
    if (d->active)
        d->activeName = d->active->objectName();
    return d->activeName;
}

void MdiArea::setActiveSubWindow(const QString &name)
{
    d->activeName = name;
    SubWindow *panel = d->childNamed(name);
    if (!panel)
        return; // a form sets the name before its panels exist; the first show takes it up
    if (d->active && d->active != panel)
        d->active->setActive(false);
    panel->setActive(true);
    d->active = panel;
    d->activeName = panel->objectName();
    d->markDirty();
}

void MdiArea::setActiveSubWindow(SubWindow *panel)
{
    if (!panel || panel == d->active || !d->autoHide || d->formWindow())
        return;
    if (d->active)
        d->active->hide();
    d->active = panel;
}

bool MdiArea::autoHide() const { return d->autoHide; }
void MdiArea::setAutoHide(bool on) { d->autoHide = on; }
QColor MdiArea::backgroundColor() const { return d->backgroundColor; }

void MdiArea::setBackgroundColor(const QColor &color)
{
    d->backgroundColor = color;
    BackgroundFill::apply(this, color);
}

QStringList MdiArea::getSubwindows() const
{
    QStringList names;
    for (const QPointer<SubWindow> &panel : d->subWindows) {
        if (panel)
            names << panel->objectName();
    }
    return names;
}

QStringList MdiArea::hideSubwindows() const { return d->hiddenNames; }
void MdiArea::setHideSubwindows(const QStringList &names) { d->hiddenNames = names; }
SubWindow *MdiArea::subWindow(const QString &name) const { return d->childNamed(name); }
SubWindow *MdiArea::activePanel() const { return d->active; }

void MdiArea::slotActived()
{
    DesignerHost *host = DesignerHost::instance();
    QWidget *fw = d->formWindow();
    if (!host || !fw)
        return;
    SubWindow *selected = nullptr;
    int count = 0;
    for (const QPointer<SubWindow> &panel : std::as_const(d->subWindows)) {
        if (panel && host->isSelected(fw, panel)) {
            selected = panel;
            ++count;
        }
    }
    if (count != 1 || selected == d->active)
        return;
    if (d->active)
        d->active->setActive(false);
    selected->setActive(true);
    d->active = selected;
}

SubWindow *MdiArea::addSubWindow()
{
    auto *panel = new SubWindow(this);
    panel->setObjectName(d->newName());
    panel->raise();
    if (d->active)
        d->active->setActive(false);
    panel->setActive(true);
    panel->setGeometry(d->cascade.next(rect()));
    panel->show();
    d->active = panel;
    d->subWindows << panel;
    if (DesignerHost *host = DesignerHost::instance(); host && d->formWindow()) {
        DesignerChildren::adopt(this, panel, false);
        host->ensureUniqueName(d->formWindow(), panel);
        DesignerChildren::refresh(this);
        d->markDirty();
    }
    return panel;
}

void MdiArea::removeSubWindow(const QString &name)
{
    QWidget *fw = d->formWindow();
    SubWindow *panel = fw ? d->childNamed(name) : nullptr;
    if (!panel)
        return;
    // Never deleted: Designer may still refer to it, or to what is on it, in its undo history.
    DesignerChildren::release(this, panel);
    d->subWindows.removeAll(panel);
    if (d->active == panel)
        d->active = nullptr;
    if (d->activeName == name)
        d->activeName.clear(); // no longer in the form: not saved as the active one
    panel->setActive(false);
    panel->hide();
    panel->setProperty(RemovedPanel, true);
    DesignerChildren::refresh(this);
    d->markDirty();
}

void MdiArea::restoreSubWindow(SubWindow *panel)
{
    if (!panel || panel->parentWidget() != this || !panel->property(RemovedPanel).toBool() || !d->formWindow())
        return;
    panel->setProperty(RemovedPanel, QVariant());
    DesignerChildren::readopt(this, panel, false);
    // Back in its place among the panels, which follow the order they were made in.
    d->subWindows.clear();
    for (SubWindow *child : d->childPanels())
        d->subWindows << child;
    panel->show();
    DesignerChildren::refresh(this);
    d->markDirty();
}

void MdiArea::hideSubWindow()
{
    if (!d->active)
        return;
    SubWindow *panel = d->active;
    panel->hide();
    if (!d->hiddenNames.contains(panel->objectName()))
        d->hiddenNames << panel->objectName();
    d->active = nullptr;
    d->markDirty();
}

void MdiArea::setSubWindowVisible(const QString &name, bool visible)
{
    SubWindow *panel = d->childNamed(name);
    if (!panel)
        return;
    panel->setVisible(visible);
    if (visible) {
        panel->setActive(false);
        d->hiddenNames.removeAll(name);
    } else {
        if (!d->hiddenNames.contains(name))
            d->hiddenNames << name;
        if (d->active == panel)
            d->active = nullptr;
    }
    d->markDirty();
}

void MdiArea::setQeltAppAndFormPtr(void *app, void *form)
{
    QList<QWidget *> panels;
    for (SubWindow *panel : d->childPanels())
        panels << panel;
    ContainedControls::attach(panels, app, form);
}

void MdiArea::showEvent(QShowEvent *event)
{
    QFrame::showEvent(event);
    if (d->initializing) {
        d->collectPanels();
        d->hideInactive();
    }
    d->initializing = false;
}

bool MdiArea::event(QEvent *event)
{
    const bool handled = QFrame::event(event);
    if (event->type() == QEvent::Polish) {
        d->collectPanels();
        // The active panel's name is saved even while it is the first.
        if (DesignerHost *host = DesignerHost::instance(); host && d->formWindow())
            host->markPropertyChanged(this, QStringLiteral("activeSubWindow"));
    }
    return handled;
}
