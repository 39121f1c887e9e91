#ifndef HMIUIUPDATEINTERFACE_H
#define HMIUIUPDATEINTERFACE_H

#include "textdata.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace Hmi_v0 {

// Text and language callbacks the HMI (and its translation tool in Designer) uses on a widget.
// The virtual order is part of the contract with the HMI library: do not reorder.
class HMI_UiUpdateInterface
{
public:
    virtual ~HMI_UiUpdateInterface() = default;
    virtual void updateLanguage(int index) { Q_UNUSED(index) }
    virtual void reservedOperation1(int) {}
    virtual void reservedOperation2(int) {}
    virtual void reservedOperation3(int) {}
    virtual void upDatePluginTextfromWordLib() {}
    virtual void getPluginNameAndListType(QString &name, int &listType)
    {
        Q_UNUSED(name)
        Q_UNUSED(listType)
    }
    virtual void getPluginNameAndTransText(QList<QList<TextData>> &texts) { Q_UNUSED(texts) }
    virtual void getPluginNameAndTransText(QList<TextData> &texts) { Q_UNUSED(texts) }
    virtual void setPluginTransText(QList<QStringList> &texts) { Q_UNUSED(texts) }
};

} // namespace Hmi_v0

#endif
