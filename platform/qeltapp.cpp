#include "qeltapp.h"

namespace norvo_v0 {

QeltApp::~QeltApp() = default;

QVariant QeltApp::toVariant(QeltApp *app)
{
    return QVariant::fromValue(static_cast<void *>(app));
}

QeltApp *QeltApp::fromVariant(const QVariant &value)
{
    if (!value.isValid())
        return nullptr;
    if (value.canConvert<void *>()) {
        if (void *p = value.value<void *>())
            return static_cast<QeltApp *>(p);
    }
    // Applications that store the address as an integer.
    bool ok = false;
    const qulonglong address = value.toULongLong(&ok);
    return ok && address ? reinterpret_cast<QeltApp *>(quintptr(address)) : nullptr;
}

} // namespace norvo_v0
