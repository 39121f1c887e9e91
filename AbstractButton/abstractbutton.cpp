#include "abstractbutton.h"

#include "siblingbuttons.h"

#include <QAbstractItemView>
#include <QBasicTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QStyle>

#include <utility>

class AbstractButton::Private
{
public:
    explicit Private(AbstractButton *button)
        : q(button)
    {
    }

    void init();
    void grabShortcutKeys(const QKeySequence &sequence);
    void releaseShortcutKeys();
    void refresh();
    void completeClick();
    bool moveFocus(int key);

    // Each returns false when a connected slot deleted the button; the caller must then stop at once.
    bool emitPressed();
    bool emitReleased();
    bool emitClicked();

    AbstractButton *const q;

    QString text;
    QIcon icon;
    QSize iconSize{-1, -1};
    Qt::Alignment alignment = Qt::AlignCenter;
    QKeySequence shortcut;
    QList<int> shortcutIds;
    QKeySequence savedShortcut;
    bool checkable = false;
    bool checked = false;
    bool autoRepeat = false;
    bool autoExclusive = false;
    bool down = false;
    bool blockRefresh = false;
    bool pressed = false;
    QBasicTimer repeatTimer;
    QBasicTimer animateTimer;
    QBasicTimer delayTimer;
    int autoRepeatDelay = 300;
    int autoRepeatInterval = 100;
    QSizePolicy::ControlType controlType = QSizePolicy::DefaultType;
    bool deylayTrigger = false;
    int deylayTriggerInterval = 1000;
};

void AbstractButton::Private::init()
{
    q->setFocusPolicy(Qt::FocusPolicy(q->style()->styleHint(QStyle::SH_Button_FocusPolicy)));
    q->setSizePolicy(QSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed, controlType));
    q->setAttribute(Qt::WA_WState_OwnSizePolicy, false);
    q->setForegroundRole(QPalette::ButtonText);
    q->setBackgroundRole(QPalette::Button);
}

// Every key of the sequence becomes a shortcut of its own, so that either key of a two-key
// sequence triggers the button.
void AbstractButton::Private::grabShortcutKeys(const QKeySequence &sequence)
{
    for (int i = 0; i < sequence.count(); ++i)
        shortcutIds.append(q->grabShortcut(QKeySequence(sequence[i])));
}

void AbstractButton::Private::releaseShortcutKeys()
{
    for (int id : std::as_const(shortcutIds))
        q->releaseShortcut(id);
    shortcutIds.clear();
}

void AbstractButton::Private::refresh()
{
    if (!blockRefresh)
        q->update();
}

bool AbstractButton::Private::emitPressed()
{
    QPointer<AbstractButton> guard(q);
    emit q->pressed();
    return !guard.isNull();
}

bool AbstractButton::Private::emitReleased()
{
    QPointer<AbstractButton> guard(q);
    emit q->released();
    return !guard.isNull();
}

bool AbstractButton::Private::emitClicked()
{
    QPointer<AbstractButton> guard(q);
    emit q->clicked(checked);
    return !guard.isNull();
}

void AbstractButton::Private::completeClick()
{
    delayTimer.stop();
    blockRefresh = true;
    down = false;
    // The checked member of an exclusive group stays checked when clicked again.
    const bool keepsChecked = checked && autoExclusive && SiblingButtons::checkedMember(q) == q;
    if (!keepsChecked) {
        QPointer<AbstractButton> guard(q);
        q->nextCheckState();
        if (!guard)
            return;
    }
    blockRefresh = false;
    refresh();
    q->repaint();
    if (emitReleased())
        emitClicked();
}

bool AbstractButton::Private::moveFocus(int key)
{
    QPointer<AbstractButton> target = SiblingButtons::arrowTarget(q, key);
    if (!target)
        return false;
    if (autoExclusive && checked && target->isCheckable()) {
        target->click();
        if (!target)
            return false;
    }
    const bool backward = key == Qt::Key_Up || key == Qt::Key_Left;
    target->setFocus(backward ? Qt::BacktabFocusReason : Qt::TabFocusReason);
    return true;
}

AbstractButton::AbstractButton(QWidget *parent)
    : QWidget(parent)
    , d(new Private(this))
{
    d->init();
    setFocusPolicy(Qt::NoFocus);
}

AbstractButton::~AbstractButton() = default;

void AbstractButton::setText(const QString &text)
{
    if (d->text == text)
        return;
    d->text = text;
    update();
    updateGeometry();
}

QString AbstractButton::text() const
{
    return d->text;
}

void AbstractButton::setIcon(const QIcon &icon)
{
    d->icon = icon;
    update();
    updateGeometry();
}

QIcon AbstractButton::icon() const
{
    return d->icon;
}

void AbstractButton::setIconSize(const QSize &size)
{
    if (d->iconSize == size)
        return;
    d->iconSize = size;
    update();
    updateGeometry();
}

QSize AbstractButton::iconSize() const
{
    if (d->iconSize.isValid())
        return d->iconSize;
    const int e = style()->pixelMetric(QStyle::PM_ButtonIconSize, nullptr, this);
    return QSize(e, e);
}

void AbstractButton::setShortcut(const QKeySequence &key)
{
    d->releaseShortcutKeys();
    d->shortcut = key;
    d->savedShortcut = key;
    d->grabShortcutKeys(key);
}

QKeySequence AbstractButton::shortcut() const
{
    return d->shortcut;
}

void AbstractButton::setShortcutEnabled(bool enable)
{
    if (enable && !d->shortcutIds.isEmpty())
        return; // already grabbed: grabbing again would only renumber the same keys
    d->releaseShortcutKeys();
    if (enable)
        d->grabShortcutKeys(d->savedShortcut);
    else
        d->savedShortcut = d->shortcut;
}

void AbstractButton::setCheckable(bool checkable)
{
    if (d->checkable == checkable)
        return;
    d->checkable = checkable;
    d->checked = false;
}

bool AbstractButton::isCheckable() const
{
    return d->checkable;
}

void AbstractButton::setChecked(bool checked)
{
    if (!d->checkable || checked == d->checked)
        return;
    if (!checked && d->autoExclusive && SiblingButtons::checkedMember(this) == this)
        return;

    QPointer<AbstractButton> guard(this);
    d->checked = checked;
    if (!d->blockRefresh)
        checkStateSet();
    if (!guard)
        return;
    d->refresh();
    if (checked) {
        if (AbstractButton *previous = SiblingButtons::checkedMember(this)) {
            if (previous != this)
                previous->setChecked(false);
        }
    }
    if (guard)
        emit toggled(checked);
}

bool AbstractButton::isChecked() const
{
    return d->checked;
}

void AbstractButton::toggle()
{
    setChecked(!d->checked);
}

void AbstractButton::setDown(bool down)
{
    if (d->down == down)
        return;
    d->down = down;
    d->refresh();
    if (d->autoRepeat && down)
        d->repeatTimer.start(d->autoRepeatDelay, this);
    else
        d->repeatTimer.stop();
    if (d->deylayTrigger && down)
        d->delayTimer.start(d->deylayTriggerInterval, this);
    else
        d->delayTimer.stop();
}

bool AbstractButton::isDown() const
{
    return d->down;
}

void AbstractButton::setAutoRepeat(bool autoRepeat)
{
    if (d->autoRepeat == autoRepeat)
        return;
    d->autoRepeat = autoRepeat;
    if (autoRepeat && d->down)
        d->repeatTimer.start(d->autoRepeatDelay, this);
    else
        d->repeatTimer.stop();
}

bool AbstractButton::autoRepeat() const
{
    return d->autoRepeat;
}

void AbstractButton::setAutoRepeatDelay(int msec)
{
    d->autoRepeatDelay = msec;
}

int AbstractButton::autoRepeatDelay() const
{
    return d->autoRepeatDelay;
}

void AbstractButton::setAutoRepeatInterval(int msec)
{
    d->autoRepeatInterval = msec;
}

int AbstractButton::autoRepeatInterval() const
{
    return d->autoRepeatInterval;
}

void AbstractButton::setAutoExclusive(bool autoExclusive)
{
    d->autoExclusive = autoExclusive;
}

bool AbstractButton::autoExclusive() const
{
    return d->autoExclusive;
}

void AbstractButton::setAlignment(Qt::Alignment alignment)
{
    d->alignment = alignment;
    if (isVisible())
        update();
}

Qt::Alignment AbstractButton::alignment() const
{
    return d->alignment;
}

void AbstractButton::setDeylayTrigger(bool enable)
{
    d->deylayTrigger = enable;
}

bool AbstractButton::deylayTrigger() const
{
    return d->deylayTrigger;
}

void AbstractButton::setDeylayTriggerInterval(int msec)
{
    d->deylayTriggerInterval = msec;
}

int AbstractButton::deylayTriggerInterval() const
{
    return d->deylayTriggerInterval;
}

bool AbstractButton::takesInput() const
{
    if (!isEnabled())
        return false;
    // Hidden on purpose (a visible bit, a page turned away, a soft-key group not shown), not merely
    // never shown yet.
    for (const QWidget *w = this; w && !w->isWindow(); w = w->parentWidget()) {
        if (w->isHidden() && w->testAttribute(Qt::WA_WState_ExplicitShowHide))
            return false;
    }
    return true;
}

void AbstractButton::animateClick(int msec)
{
    if (!takesInput())
        return;
    if (d->checkable && (focusPolicy() & Qt::ClickFocus))
        setFocus();
    setDown(true);
    repaint();
    if (!d->animateTimer.isActive() && !d->emitPressed())
        return;
    d->animateTimer.start(msec, this);
}

void AbstractButton::click()
{
    if (!takesInput())
        return;
    d->down = true;
    if (!d->emitPressed())
        return;
    d->down = false;
    QPointer<AbstractButton> guard(this);
    nextCheckState();
    if (guard && d->emitReleased())
        d->emitClicked();
}

bool AbstractButton::hitButton(const QPoint &pos) const
{
    return rect().contains(pos);
}

void AbstractButton::checkStateSet()
{
}

void AbstractButton::nextCheckState()
{
    if (d->checkable)
        setChecked(!d->checked);
}

bool AbstractButton::event(QEvent *e)
{
    if (!isEnabled()) {
        switch (e->type()) {
        case QEvent::TabletPress:
        case QEvent::TabletRelease:
        case QEvent::TabletMove:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::HoverMove:
        case QEvent::HoverEnter:
        case QEvent::HoverLeave:
        case QEvent::ContextMenu:
        case QEvent::Wheel:
            return true;
        default:
            break;
        }
    }

    if (e->type() == QEvent::Hide) {
        // A hidden button cannot be released by the operator: it goes up without a click.
        d->pressed = false;
        setDown(false);
    } else if (e->type() == QEvent::Shortcut) {
        auto *se = static_cast<QShortcutEvent *>(e);
        if (!d->shortcutIds.contains(se->shortcutId()))
            return false;
        if (se->isAmbiguous()) {
            setFocus(Qt::ShortcutFocusReason);
            window()->setAttribute(Qt::WA_KeyboardFocusChange);
        } else if (!d->animateTimer.isActive()) {
            animateClick(100);
        }
        return true;
    }
    return QWidget::event(e);
}

void AbstractButton::mousePressEvent(QMouseEvent *e)
{
    if (e->button() != Qt::LeftButton || !hitButton(e->pos())) {
        e->ignore();
        return;
    }
    setDown(true);
    d->pressed = true;
    repaint();
    if (d->emitPressed())
        e->accept();
}

void AbstractButton::mouseReleaseEvent(QMouseEvent *e)
{
    d->pressed = false;
    if (e->button() != Qt::LeftButton || !d->down) {
        e->ignore();
        return;
    }
    if (hitButton(e->pos())) {
        d->repeatTimer.stop();
        d->delayTimer.stop();
        QPointer<AbstractButton> guard(this);
        d->completeClick();
        if (guard)
            e->accept();
    } else {
        setDown(false);
        e->ignore();
        d->delayTimer.stop();
    }
}

void AbstractButton::mouseMoveEvent(QMouseEvent *e)
{
    if (!(e->buttons() & Qt::LeftButton) || !d->pressed) {
        e->ignore();
        return;
    }
    const bool inside = hitButton(e->pos());
    if (inside == d->down) {
        e->setAccepted(inside);
        return;
    }
    setDown(inside);
    repaint();
    const bool alive = inside ? d->emitPressed() : d->emitReleased();
    if (alive)
        e->accept();
}

void AbstractButton::keyPressEvent(QKeyEvent *e)
{
    QPointer<AbstractButton> guard(this);
    emit keyPress(e->key());
    if (!guard)
        return;

    bool forward = true;
    switch (e->key()) {
    case Qt::Key_Select:
    case Qt::Key_Space:
        if (!e->isAutoRepeat()) {
            setDown(true);
            repaint();
            d->emitPressed();
            // A press sent in code (a soft key) has no key to let go: it is a whole click, or the
            // press would hold its bit until some later release.
            if (!e->spontaneous() && guard && d->down)
                d->completeClick();
        }
        break;
    case Qt::Key_Escape:
        if (d->down) {
            setDown(false);
            repaint();
            d->emitReleased();
        } else {
            e->ignore();
        }
        break;
    case Qt::Key_Up:
    case Qt::Key_Left:
        forward = false;
        Q_FALLTHROUGH();
    case Qt::Key_Right:
    case Qt::Key_Down: {
        QWidget *pw = parentWidget();
        const bool inItemView = pw && qobject_cast<QAbstractItemView *>(pw->parentWidget());
        if (d->autoExclusive || inItemView) {
            if (!d->moveFocus(e->key()))
                e->ignore();
        } else {
            focusNextPrevChild(forward);
        }
        break;
    }
    default:
        e->ignore();
        break;
    }
}

void AbstractButton::keyReleaseEvent(QKeyEvent *e)
{
    if (!e->isAutoRepeat())
        d->repeatTimer.stop();
    if (d->deylayTrigger)
        d->delayTimer.stop();

    switch (e->key()) {
    case Qt::Key_Select:
    case Qt::Key_Space:
        if (!e->isAutoRepeat() && d->down)
            d->completeClick();
        break;
    default:
        e->ignore();
        break;
    }
}

void AbstractButton::timerEvent(QTimerEvent *e)
{
    if (e->timerId() == d->repeatTimer.timerId()) {
        d->repeatTimer.start(d->autoRepeatInterval, this);
        if (d->down) {
            QPointer<AbstractButton> guard(this);
            nextCheckState();
            if (guard && d->emitReleased() && d->emitClicked())
                d->emitPressed();
        }
    } else if (e->timerId() == d->animateTimer.timerId()) {
        d->animateTimer.stop();
        // A button that went up meanwhile (disabled, hidden, Escape, focus lost) was not clicked.
        if (d->down)
            d->completeClick();
    } else if (e->timerId() == d->delayTimer.timerId()) {
        d->delayTimer.stop();
        emit pressDelayTrigger();
    } else {
        QWidget::timerEvent(e);
    }
}

void AbstractButton::focusInEvent(QFocusEvent *e)
{
    SiblingButtons::restrictTabFocus(this);
    QWidget::focusInEvent(e);
}

void AbstractButton::focusOutEvent(QFocusEvent *e)
{
    // A popup opened from the button (a menu, the soft keypad) must not cancel its press.
    if (e->reason() != Qt::PopupFocusReason && d->down) {
        d->down = false;
        d->delayTimer.stop();
        update();
    }
    QWidget::focusOutEvent(e);
}

void AbstractButton::changeEvent(QEvent *e)
{
    if (e->type() == QEvent::EnabledChange && !isEnabled())
        setDown(false);
    QWidget::changeEvent(e);
}
