#ifndef KEYPADDESCRIPTION_H
#define KEYPADDESCRIPTION_H

#include "hmiplatform_export.h"

#include <QPointer>
#include <QString>
#include <QWidget>

class QRect;

// What an entry on the soft keypad is for. The keypad operation of the application carries only
// numbers (radix, limits, rectangles), so a widget that opens the keypad says the parameter's name
// and unit in two dynamic properties of its own while the keypad is open; the keypad reads them from
// the widget under the edited item.
class HMIPLATFORM_EXPORT KeypadDescription
{
public:
    static constexpr const char *NameProperty = "keypadName";
    static constexpr const char *UnitProperty = "keypadUnit";

    QString name;
    QString unit;

    // Sets the two properties on widget for as long as this guard lives (not past the widget).
    class Scope
    {
    public:
        Scope(QWidget *widget, const QString &name, const QString &unit);
        ~Scope();
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        QPointer<QWidget> m_widget;
    };

    // The description given by the widget under the centre of itemRect (global coordinates) or one
    // of its ancestors; the focus widget's when nothing there gives one; empty otherwise.
    static KeypadDescription at(const QRect &itemRect);
};

#endif
