#include "buttongroup.h"

#include "abstractbutton.h"
#include "controllerbinding.h"
#include "designerhost.h"
#include "enumvalue.h"
#include "functionbutton.h"
#include "norvointerface_z3.h"
#include "qeltapp.h"
#include "widgetfactory.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QKeySequence>
#include <QMetaMethod>
#include <QPointer>

namespace {

// The two widget attributes set on every key of the bar (numbered 138 and 139 in the original bar's
// toolkit, where they had no name). A soft-key bar needs two things of its keys beyond a plain button:
// a press on a key is the key's alone, never reaching the bar or the form behind it, and a touch panel
// (the usual input of a machine panel) delivers its touches to the key as it would a mouse press.
constexpr Qt::WidgetAttribute KeyAttributes[] = {Qt::WA_NoMousePropagation, Qt::WA_AcceptTouchEvents};

// Soft key n answers function key Fn.
QKeySequence functionKey(int n)
{
    return QKeySequence(int(Qt::Key_F1) + n - 1);
}

QString buttonObjectName(int group, int index)
{
    return QStringLiteral("functionButton%1%2").arg(group, 2, 10, QLatin1Char('0')).arg(index, 2, 10, QLatin1Char('0'));
}

using ButtonList = QList<QPointer<FunctionButton>>;

} // namespace

HMI_REGISTER_WIDGET(ButtonGroup)

class ButtonGroup::Private
{
public:
    explicit Private(ButtonGroup *q)
        : q(q)
    {
    }

    ButtonList *shown() { return currentGroup - 1 < groups.size() ? &groups[currentGroup - 1] : nullptr; }
    QWidget *formWindow() const { return DesignerHost::formWindowOf(q); }

    FunctionButton *makeButton(int group, int index, int ordinaryCount);
    void writeThroughSheet(FunctionButton *button, const char *name, const QVariant &value) const;
    void manage(FunctionButton *button) const;
    void unmanage(FunctionButton *button) const;
    void refreshDesigner() const;
    void sideConstraints(FunctionButton *button) const;
    void layOut(const ButtonList &list);
    void takeOut(const ButtonList &list);
    void build();
    void placeLoaded(const QList<FunctionButton *> &loaded);
    void apply(const QStringList &list);
    void clickErrorDialog();

    ButtonGroup *const q;
    int groupCount = 1;
    int buttonCount = 8;
    int currentGroup = 1;
    Direction direction = Horizontal;
    bool sideVisible = true;
    int sideWidth = 30;
    UserLevel enablingLevel = NoLevel;
    UserLevel visibleLevel = NoLevel;
    bool shortcutEnabled = true;
    bool built = false;
    QBoxLayout *layout = nullptr;
    QList<ButtonList> groups; // group - 1 -> "<<", the ordinary buttons, ">>"
    QList<QStringList> snapshots;
    QPointer<QObject> errorDialog;
    void *app = nullptr;
    void *form = nullptr;
};

FunctionButton *ButtonGroup::Private::makeButton(int group, int index, int ordinaryCount)
{
    auto *button = new FunctionButton(q);
    button->hide(); // shown when laid out
    button->setObjectName(buttonObjectName(group, index));
    for (Qt::WidgetAttribute attribute : KeyAttributes)
        button->setAttribute(attribute);
    button->setGroup(group);
    button->setID(index);
    QString caption = QString::number(group);
    int key = index;
    if (index == 0) {
        caption = QStringLiteral("<<");
        key = ordinaryCount + 1;
    } else if (index == ordinaryCount + 1) {
        caption = QStringLiteral(">>");
        key = ordinaryCount + 2;
    }
    button->setText(caption);
    button->setShortcut(functionKey(key));
    if (!shortcutEnabled)
        button->setShortcutEnabled(false);
    return button;
}

// In Designer a property set in code is saved only when the sheet holds it and marks it changed.
void ButtonGroup::Private::writeThroughSheet(FunctionButton *button, const char *name, const QVariant &value) const
{
    DesignerHost *host = DesignerHost::instance();
    if (!host || !formWindow())
        return;
    host->setSheetProperty(button, QString::fromLatin1(name), value);
    host->markPropertyChanged(button, QString::fromLatin1(name));
}

void ButtonGroup::Private::manage(FunctionButton *button) const
{
    DesignerHost *host = DesignerHost::instance();
    QWidget *fw = formWindow();
    if (!host || !fw)
        return;
    host->manageWidget(fw, button);
    writeThroughSheet(button, "text", button->text());
    writeThroughSheet(button, "shortcut", button->shortcut());
    writeThroughSheet(button, "group", button->group());
    writeThroughSheet(button, "id", button->id());
}

void ButtonGroup::Private::unmanage(FunctionButton *button) const
{
    DesignerHost *host = DesignerHost::instance();
    if (QWidget *fw = formWindow(); host && fw && button)
        host->unmanageWidget(fw, button);
}

void ButtonGroup::Private::refreshDesigner() const
{
    DesignerHost *host = DesignerHost::instance();
    if (QWidget *fw = formWindow(); host && fw)
        host->refreshEditors(fw);
}

void ButtonGroup::Private::sideConstraints(FunctionButton *button) const
{
    if (direction == Horizontal) {
        button->setMaximumHeight(QWIDGETSIZE_MAX);
        button->setMaximumWidth(sideWidth);
        button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Minimum);
    } else {
        button->setMaximumWidth(QWIDGETSIZE_MAX);
        button->setMaximumHeight(sideWidth);
        button->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    }
}

void ButtonGroup::Private::layOut(const ButtonList &list)
{
    for (int i = 0; i < list.size(); ++i) {
        FunctionButton *button = list.at(i);
        if (!button)
            continue;
        if (i == 0 || i == list.size() - 1) {
            sideConstraints(button);
            button->setVisible(sideVisible);
        } else {
            button->show();
        }
        layout->addWidget(button, 0);
    }
}

void ButtonGroup::Private::takeOut(const ButtonList &list)
{
    for (FunctionButton *button : list) {
        if (!button)
            continue;
        layout->removeWidget(button);
        button->hide();
    }
}

// A loaded form brings the buttons: each goes to its group's list at its id. Buttons whose group or id
// the bar cannot have stay hidden children; a gap in the ids stays empty.
void ButtonGroup::Private::placeLoaded(const QList<FunctionButton *> &loaded)
{
    groups = QList<ButtonList>();
    for (int g = 0; g < groupCount; ++g)
        groups.append(ButtonList());
    for (FunctionButton *button : loaded) {
        button->hide();
        for (Qt::WidgetAttribute attribute : KeyAttributes)
            button->setAttribute(attribute);
        const int g = button->group();
        const int id = button->id();
        if (g < 1 || g > groupCount || id < 0 || id > MaxCount + 1)
            continue;
        ButtonList &list = groups[g - 1];
        while (list.size() <= id)
            list.append(nullptr);
        if (list.at(id))
            continue; // a second button with the same place
        list[id] = button;
        if (DesignerHost *host = DesignerHost::instance(); host && formWindow())
            host->manageWidget(formWindow(), button);
    }
}

void ButtonGroup::Private::build()
{
    if (built)
        return;
    const QList<FunctionButton *> loaded = q->findChildren<FunctionButton *>(QString(), Qt::FindDirectChildrenOnly);
    if (!loaded.isEmpty()) {
        placeLoaded(loaded);
    } else {
        // Every group gets its buttons now, so that any group can be shown later; the shown one is
        // laid out below, the others stay hidden.
        for (int g = 1; g <= groupCount; ++g) {
            ButtonList list;
            for (int i = 0; i <= buttonCount + 1; ++i)
                list.append(makeButton(g, i, buttonCount));
            groups.append(list);
        }
    }
    layout = new QBoxLayout(direction == Horizontal ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, q);
    layout->setSpacing(1);
    layout->setContentsMargins(0, 0, 0, 0); // keys edge to edge, as a row of hardware keys
    if (ButtonList *list = shown())
        layOut(*list);
    if (loaded.isEmpty()) {
        for (const ButtonList &list : std::as_const(groups)) {
            for (FunctionButton *button : list)
                manage(button);
        }
    } else if (ButtonList *list = shown()) {
        for (FunctionButton *button : std::as_const(*list)) {
            if (button)
                button->setShortcutEnabled(shortcutEnabled);
        }
    }
    if (!app) {
        // Only an application object the panel put on the form is taken.
        if (QWidget *dialog = ControllerBinding::findForm(q)) {
            if (norvo_v0::QeltApp *found = norvo_v0::QeltApp::fromVariant(dialog->property("QeltApp"))) {
                app = found;
                form = dialog;
            }
        }
    }
    built = true;
}

void ButtonGroup::Private::apply(const QStringList &list)
{
    ButtonList *buttons = shown();
    if (!buttons)
        return;
    for (int i = 0; i < buttons->size() && 2 * i + 1 < list.size(); ++i) {
        if (FunctionButton *button = buttons->at(i)) {
            button->setText(list.at(2 * i));
            button->setEnabled(list.at(2 * i + 1) == QLatin1String("true"));
        }
    }
}

void ButtonGroup::Private::clickErrorDialog()
{
    QObject *dialog = errorDialog;
    errorDialog = nullptr;
    if (auto *button = qobject_cast<QAbstractButton *>(dialog))
        button->click();
    else if (auto *own = qobject_cast<AbstractButton *>(dialog))
        own->click();
}

ButtonGroup::ButtonGroup(QWidget *parent)
    : QWidget(parent)
    , d(new Private(this))
{
    NORVOInterface_Z3::setWidgetDefaultFont(this);
    if (DesignerHost *host = DesignerHost::instance())
        connect(host, &DesignerHost::propertyChanged, this, &ButtonGroup::slotPropertyChanged);
}

ButtonGroup::~ButtonGroup() = default;

int ButtonGroup::groupCount() const { return d->groupCount; }

void ButtonGroup::setGroupCount(int count)
{
    if (count < 1 || count > MaxCount)
        return;
    if (!d->built) {
        d->groupCount = count;
        return;
    }
    for (int g = d->groupCount + 1; g <= count; ++g) {
        ButtonList list;
        for (int i = 0; i <= d->buttonCount + 1; ++i) {
            FunctionButton *button = d->makeButton(g, i, d->buttonCount);
            if (i == 0 || i == d->buttonCount + 1)
                d->sideConstraints(button);
            list.append(button);
            d->manage(button);
        }
        d->groups.append(list);
    }
    if (count < d->groupCount) {
        if (d->currentGroup > count)
            setCurrentGroup(count);
        while (d->groups.size() > count) {
            for (FunctionButton *button : d->groups.takeLast())
                d->unmanage(button); // stays a hidden child
        }
    }
    d->groupCount = count;
    d->refreshDesigner();
}

int ButtonGroup::buttonCount() const { return d->buttonCount; }

void ButtonGroup::setButtonCount(int count)
{
    if (count < 1 || count > MaxCount)
        return;
    ButtonList *list = d->built ? d->shown() : nullptr;
    if (!list || list->size() < 2) {
        d->buttonCount = count;
        return;
    }
    const int old = int(list->size()) - 2;
    for (int i = old + 1; i <= count; ++i) {
        FunctionButton *button = d->makeButton(d->currentGroup, i, count);
        list->insert(i, button);
        const int before = list->last() ? d->layout->indexOf(list->last()) : -1;
        d->layout->insertWidget(before < 0 ? d->layout->count() : before, button, 0);
        button->show();
        d->manage(button);
    }
    for (int i = old; i > count; --i) {
        FunctionButton *button = list->takeAt(i);
        if (!button)
            continue;
        d->layout->removeWidget(button);
        d->unmanage(button);
        button->hide(); // stays a child
    }
    if (count > old) {
        if (FunctionButton *first = list->first()) {
            first->setShortcut(functionKey(count + 1));
            d->writeThroughSheet(first, "shortcut", first->shortcut());
        }
        if (FunctionButton *last = list->last()) {
            last->setShortcut(functionKey(count + 2));
            d->writeThroughSheet(last, "shortcut", last->shortcut());
        }
    }
    if (FunctionButton *last = list->last()) {
        last->setID(count + 1);
        d->writeThroughSheet(last, "id", count + 1);
    }
    d->buttonCount = count;
    d->refreshDesigner();
}

int ButtonGroup::currentGroup() const { return d->currentGroup; }

void ButtonGroup::setCurrentGroup(int group)
{
    if (group < 1 || group > d->groupCount || group == d->currentGroup)
        return;
    d->clickErrorDialog();
    if (!d->built) {
        d->currentGroup = group;
        return;
    }
    if (ButtonList *list = d->shown())
        d->takeOut(*list);
    d->currentGroup = group;
    if (ButtonList *list = d->shown())
        d->layOut(*list);
}

ButtonGroup::Direction ButtonGroup::direction() const { return d->direction; }

void ButtonGroup::setDirection(Direction direction)
{
    if (!acceptEnum(this, "direction", direction))
        return;
    if (!d->built) {
        d->direction = direction;
        return;
    }
    const QRect r = geometry();
    if ((direction == Vertical && r.width() > r.height()) || (direction == Horizontal && r.width() <= r.height()))
        setGeometry(r.x(), r.y(), r.height(), r.width());
    d->direction = direction;
    if (ButtonList *list = d->shown(); list && !list->isEmpty()) {
        for (FunctionButton *side : {list->first(), list->last()}) {
            if (side)
                d->sideConstraints(side);
        }
    }
    d->layout->setDirection(direction == Horizontal ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

bool ButtonGroup::twoSideButtonsVisible() const { return d->sideVisible; }

void ButtonGroup::setTwoSideButtonsVisible(bool visible)
{
    d->sideVisible = visible;
    if (ButtonList *list = d->built ? d->shown() : nullptr; list && !list->isEmpty()) {
        for (FunctionButton *side : {list->first(), list->last()}) {
            if (side)
                side->setVisible(visible);
        }
    }
}

int ButtonGroup::twoSideButtonsWidth() const { return d->sideWidth; }

void ButtonGroup::setTwoSideButtonsWidth(int width)
{
    if (width < 0 || width > QWIDGETSIZE_MAX)
        return;
    d->sideWidth = width;
    if (ButtonList *list = d->built ? d->shown() : nullptr; list && !list->isEmpty()) {
        for (FunctionButton *side : {list->first(), list->last()}) {
            if (side && d->direction == Horizontal)
                side->setMaximumWidth(width);
            else if (side)
                side->setMaximumHeight(width);
        }
    }
}

ButtonGroup::UserLevel ButtonGroup::lowestEnablingUserLevel() const { return d->enablingLevel; }
void ButtonGroup::setLowestEnablingUserLevel(UserLevel level) { assignEnum(this, "lowestEnablingUserLevel", d->enablingLevel, level); }
ButtonGroup::UserLevel ButtonGroup::lowestVisibleUserLevel() const { return d->visibleLevel; }
void ButtonGroup::setLowestVisibleUserLevel(UserLevel level) { assignEnum(this, "lowestVisibleUserLevel", d->visibleLevel, level); }
bool ButtonGroup::shortcutEnabled() const { return d->shortcutEnabled; }
bool ButtonGroup::isBuilt() const { return d->built; }

QList<FunctionButton *> ButtonGroup::shownButtons() const { return buttonsOfGroup(d->currentGroup); }

QList<FunctionButton *> ButtonGroup::buttonsOfGroup(int group) const
{
    QList<FunctionButton *> out;
    if (group >= 1 && group <= d->groups.size()) {
        for (FunctionButton *button : d->groups.at(group - 1))
            out.append(button);
    }
    return out;
}

void ButtonGroup::updateData(int, int) {}

void ButtonGroup::setCurrentButtonGroup(QStringList list)
{
    QStringList snapshot;
    if (ButtonList *buttons = d->shown()) {
        for (FunctionButton *button : std::as_const(*buttons)) {
            if (button)
                snapshot << button->text() << QLatin1String(button->isEnabled() ? "true" : "false");
            else
                snapshot << QString() << QStringLiteral("true");
        }
    }
    d->snapshots.append(snapshot);
    d->apply(list);
}

void ButtonGroup::restorePreviousButtonGroup()
{
    if (!d->snapshots.isEmpty())
        d->apply(d->snapshots.takeLast());
}

void ButtonGroup::setShortcutEnabled(bool enable)
{
    d->shortcutEnabled = enable;
    if (ButtonList *buttons = d->shown()) {
        for (FunctionButton *button : std::as_const(*buttons)) {
            if (button)
                button->setShortcutEnabled(enable);
        }
    }
}

void ButtonGroup::setErrorDlgPtr(QObject *pt) { d->errorDialog = pt; }
void ButtonGroup::hideErrorDlg() { d->clickErrorDialog(); }
void ButtonGroup::updateLanguage(int) {}

void ButtonGroup::setQeltAppAndFormPtr(void *app, void *form)
{
    d->app = app;
    d->form = form;
    const QByteArray signature = QMetaObject::normalizedSignature("setQeltAppAndFormPtr(void*,void*)");
    for (QObject *child : children()) {
        if (child->metaObject()->indexOfMethod(signature.constData()) < 0)
            continue;
        QMetaObject::invokeMethod(child, "setQeltAppAndFormPtr", Qt::DirectConnection, Q_ARG(void *, app),
                                  Q_ARG(void *, form));
    }
}

void ButtonGroup::slotPropertyChanged(QString name, QVariant value)
{
    DesignerHost *host = DesignerHost::instance();
    if (!host || host->propertyEditorObject() != this || name != QLatin1String("focusPolicy"))
        return;
    for (FunctionButton *button : findChildren<FunctionButton *>(QString(), Qt::FindDirectChildrenOnly)) {
        host->setSheetProperty(button, name, value);
        host->markPropertyChanged(button, name);
    }
}

void ButtonGroup::resizeEvent(QResizeEvent *)
{
    d->build();
}
