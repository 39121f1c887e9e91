#ifndef UPDATEVARIABLEINTERFACE_H
#define UPDATEVARIABLEINTERFACE_H

#include <QString>

namespace norvo_v0 {

// Callback through which the application hands controller values to a widget.
// The virtual order is part of the contract with the application: do not reorder.
class UpdateVariableInterface
{
public:
    virtual ~UpdateVariableInterface() = default;
    virtual void updateData(int index, int value)
    {
        Q_UNUSED(index)
        Q_UNUSED(value)
    }
    virtual void updateData(int index, const QString &text)
    {
        Q_UNUSED(index)
        Q_UNUSED(text)
    }
};

} // namespace norvo_v0

#endif
