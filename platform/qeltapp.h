#ifndef QELTAPP_H
#define QELTAPP_H

#include "hmiplatform_export.h"

#include <QRect>
#include <QString>
#include <QVariant>

class QWidget;

namespace norvo_v0 {

class UpdateVariableInterface;

// The panel application's service for controller variables and the soft keypad.
// Every operation is virtual so that a panel application, the simulated controller and tests can
// each supply their own. Channels are 0-based; 0x10000 in a registration means the current channel.
class HMIPLATFORM_EXPORT QeltApp
{
public:
    enum BitType {
        None_BIT = -1,
        I_BIT = 0, O_BIT, C_BIT, S_BIT, A_BIT, Cn_BIT, Tm_BIT,
        User_BIT, Mcm_BIT, Sys_BIT, Reg_BIT, Bus_BIT, Com_BIT
    };
    enum DataClass { None = -1, User = 0, Mcm, Sys, Reg, Bus, Com };

    static constexpr int CurrentChannel = 0x10000;
    static constexpr int CurrentChannelAddress = 40017; // common word holding the 1-based current channel

    QeltApp();
    QeltApp(const QeltApp &) = delete;
    QeltApp &operator=(const QeltApp &) = delete;
    virtual ~QeltApp();

    virtual bool getBit(int channel, int bitType, int address, int bitIndex, int comId) = 0;
    virtual void setBit(int channel, BitType bitType, int address, int bitIndex, bool value, int comId) = 0;
    virtual int getData(int channel, DataClass dataClass, int address, int comId) = 0;
    virtual void setData(int channel, DataClass dataClass, int address, int value, int comId) = 0;
    virtual void registerUIVariable(QWidget *form, QWidget *widget, UpdateVariableInterface *callback,
                                    int index, int comId, int channel, int dataClass, int address,
                                    int bitType, int bitIndex, int format1, int format2, int format3,
                                    int format4, int reserved, bool asText) = 0;
    virtual void removeUIVariable(QWidget *form, QWidget *widget) = 0;
    virtual void startUpdateUI(QWidget *form) = 0;
    virtual void stopUpdateUI() = 0;
    virtual QString showKeypad(bool *ok, int radix, const QString &text, int positionMode,
                               const QRect &customGeometry, const QRect &itemRect, const QRect &formRect,
                               QWidget *parent, int maxLength, int decimals, double lowest,
                               double highest) = 0;

    // The form's "QeltApp" property carries the pointer as a void*, which only the application can
    // put there: a form file can express numbers and texts, never a pointer.
    static QVariant toVariant(QeltApp *app);
    // The application object behind a "QeltApp" value, or null: only a pointer-typed value that points
    // at an application object alive in this process is accepted.
    static QeltApp *fromVariant(const QVariant &value);
    // Whether p is an application object that exists now.
    static bool isLive(const void *p);
};

} // namespace norvo_v0

#endif
