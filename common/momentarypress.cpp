#include "momentarypress.h"

#include "controllerbinding.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMouseEvent>
#include <QWidget>

MomentaryPress::MomentaryPress(QWidget *button, const ControllerBinding &binding)
    : m_button(button)
    , m_binding(binding)
{
    m_button->installEventFilter(this);
}

MomentaryPress::~MomentaryPress()
{
    end();
}

void MomentaryPress::hold(const BitWrite &release)
{
    const bool sameBit = m_release && m_release->channel == release.channel
                         && m_release->bit.type == release.bit.type && m_release->bit.address == release.bit.address
                         && m_release->bit.bitIndex == release.bit.bitIndex;
    if (!sameBit)
        end();
    m_release = release;
    // The release of the mouse may reach another widget (a popup, a mouse grab) or land outside the
    // button, which then reports no release: any left-button release in the application ends the press.
    if (QCoreApplication *app = QCoreApplication::instance())
        app->installEventFilter(this);
}

void MomentaryPress::end()
{
    if (!m_release)
        return;
    const BitWrite release = *m_release;
    m_release.reset(); // before writing: an application that re-enters the button finds nothing held
    if (QCoreApplication *app = QCoreApplication::instance())
        app->removeEventFilter(this);
    m_binding.writeBitOn(release.channel, release.bit.type, release.bit.address, release.bit.bitIndex,
                         release.value);
}

bool MomentaryPress::eventFilter(QObject *watched, QEvent *event)
{
    if (m_release && event->type() == QEvent::MouseButtonRelease
        && static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton) {
        end();
    } else if (m_release && watched == m_button) {
        switch (event->type()) {
        case QEvent::Hide:
        case QEvent::FocusOut:
        case QEvent::WindowBlocked: // a modal dialog now takes the input: the release would never come
        case QEvent::WindowDeactivate: // forwarded by the window to its children
            end();
            break;
        case QEvent::EnabledChange:
            if (!m_button->isEnabled())
                end();
            break;
        case QEvent::ActivationChange:
            if (!m_button->isActiveWindow())
                end();
            break;
        default:
            break;
        }
    }
    return QObject::eventFilter(watched, event);
}
