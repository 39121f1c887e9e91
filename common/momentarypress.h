#ifndef MOMENTARYPRESS_H
#define MOMENTARYPRESS_H

#include "bitwriteaction.h"
#include "hmiwidgets_export.h"

#include <QObject>

#include <optional>

class ControllerBinding;
class QWidget;

// A held momentary press of a button (KeepOn, KeepOff) and the one write that ends it. A jog key must
// not stay set because its press ended some other way than a release: the button disabled (enabled
// bit, authority) or hidden (visible bit, its form) while held, a modal dialog blocking its window, the
// window deactivated, focus lost, the mouse let go anywhere (outside the button, over a popup or a widget
// that grabbed the mouse), or the button destroyed. Whatever comes first writes the release
// value, on the channel the press used; anything after that writes nothing.
class HMIWIDGETS_EXPORT MomentaryPress : public QObject
{
    Q_OBJECT
public:
    MomentaryPress(QWidget *button, const ControllerBinding &binding);
    ~MomentaryPress() override;

    // Starts holding; a press already held on another bit is ended first.
    void hold(const BitWrite &release);
    // Writes the release of a held press, once.
    void end();
    bool isHeld() const { return m_release.has_value(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *const m_button;
    const ControllerBinding &m_binding;
    std::optional<BitWrite> m_release;
};

#endif
