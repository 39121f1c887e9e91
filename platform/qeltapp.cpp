#include "qeltapp.h"

#include <QMetaType>

#include <set>

namespace norvo_v0 {

namespace {
// Every application object registers itself here, so that a pointer read from a widget property is
// used only while it designates one. The GUI thread creates and destroys them; no lock.
std::set<const void *> &liveApps()
{
    static std::set<const void *> apps;
    return apps;
}
} // namespace

QeltApp::QeltApp()
{
    liveApps().insert(this);
}

QeltApp::~QeltApp()
{
    liveApps().erase(this);
}

bool QeltApp::isLive(const void *p)
{
    return p && liveApps().count(p) != 0;
}

QVariant QeltApp::toVariant(QeltApp *app)
{
    return QVariant::fromValue(static_cast<void *>(app));
}

QeltApp *QeltApp::fromVariant(const QVariant &value)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    const int type = value.metaType().id();
#else
    const int type = value.userType();
#endif
    if (type != QMetaType::VoidStar)
        return nullptr;
    void *p = value.value<void *>();
    return isLive(p) ? static_cast<QeltApp *>(p) : nullptr;
}

} // namespace norvo_v0
