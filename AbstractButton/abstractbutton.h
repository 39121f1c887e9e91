#ifndef ABSTRACTBUTTON_H
#define ABSTRACTBUTTON_H

#include "hmiwidgets_export.h"

#include <QIcon>
#include <QKeySequence>
#include <QWidget>

#include <memory>


// Button base of the painted operator buttons. Besides the usual press/release/click/toggle handling it
// offers a delayed trigger for held buttons, a keyPress() signal for every key, and shortcuts whose keys
// each trigger the button on their own.
class HMIWIDGETS_EXPORT AbstractButton : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(QIcon icon READ icon WRITE setIcon)
    Q_PROPERTY(QSize iconSize READ iconSize WRITE setIconSize)
    Q_PROPERTY(QKeySequence shortcut READ shortcut WRITE setShortcut)
    Q_PROPERTY(bool checkable READ isCheckable WRITE setCheckable)
    Q_PROPERTY(bool checked READ isChecked WRITE setChecked NOTIFY toggled)
    Q_PROPERTY(bool autoRepeat READ autoRepeat WRITE setAutoRepeat)
    Q_PROPERTY(bool autoExclusive READ autoExclusive WRITE setAutoExclusive)
    Q_PROPERTY(int autoRepeatDelay READ autoRepeatDelay WRITE setAutoRepeatDelay)
    Q_PROPERTY(int autoRepeatInterval READ autoRepeatInterval WRITE setAutoRepeatInterval)
    Q_PROPERTY(bool down READ isDown WRITE setDown DESIGNABLE false)
    Q_PROPERTY(Qt::Alignment alignment READ alignment WRITE setAlignment)
    Q_PROPERTY(bool deylayTrigger READ deylayTrigger WRITE setDeylayTrigger)
    Q_PROPERTY(int deylayTriggerInterval READ deylayTriggerInterval WRITE setDeylayTriggerInterval)

public:
    enum EButtonPosition : int {
        PositionTop = 0,
        PositionBottom = 1,
        PositionLeft = 2,
        PositionRight = 3,
        PositionMid = 4
    };
    Q_ENUM(EButtonPosition)

    explicit AbstractButton(QWidget *parent = nullptr);
    ~AbstractButton() override;

    void setText(const QString &text);
    QString text() const;

    void setIcon(const QIcon &icon);
    QIcon icon() const;
    QSize iconSize() const;

    void setShortcut(const QKeySequence &key);
    QKeySequence shortcut() const;
    // Releases or re-grabs the shortcut keys while keeping the sequence.
    void setShortcutEnabled(bool enable);

    void setCheckable(bool checkable);
    bool isCheckable() const;
    bool isChecked() const;

    void setDown(bool down);
    bool isDown() const;

    void setAutoRepeat(bool autoRepeat);
    bool autoRepeat() const;
    void setAutoRepeatDelay(int msec);
    int autoRepeatDelay() const;
    void setAutoRepeatInterval(int msec);
    int autoRepeatInterval() const;

    void setAutoExclusive(bool autoExclusive);
    bool autoExclusive() const;

    void setAlignment(Qt::Alignment alignment);
    Qt::Alignment alignment() const;

    void setDeylayTrigger(bool enable);
    bool deylayTrigger() const;
    void setDeylayTriggerInterval(int msec);
    int deylayTriggerInterval() const;

    // Whether the operator could click the button now: enabled, and neither it nor a parent within its
    // window hidden. Every other route to its action (shortcut, key, the click slots, a press slot
    // called by name) is refused when this is false.
    bool takesInput() const;

public Q_SLOTS:
    void setIconSize(const QSize &size);
    void animateClick(int msec = 100);
    void click();
    void toggle();
    void setChecked(bool checked);

Q_SIGNALS:
    void pressed();
    void released();
    void clicked(bool checked = false);
    void toggled(bool checked);
    void pressDelayTrigger();
    void keyPress(int keyValue);

protected:
    virtual bool hitButton(const QPoint &pos) const;
    virtual void checkStateSet();
    virtual void nextCheckState();

    bool event(QEvent *e) override;
    void mousePressEvent(QMouseEvent *e) override;
    void mouseReleaseEvent(QMouseEvent *e) override;
    void mouseMoveEvent(QMouseEvent *e) override;
    void keyPressEvent(QKeyEvent *e) override;
    void keyReleaseEvent(QKeyEvent *e) override;
    void timerEvent(QTimerEvent *e) override;
    void focusInEvent(QFocusEvent *e) override;
    void focusOutEvent(QFocusEvent *e) override;
    void changeEvent(QEvent *e) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};

#endif // ABSTRACTBUTTON_H
