#ifndef INPUTWIDGET_H
#define INPUTWIDGET_H

#include "hmiplatform_export.h"

#include <QLineEdit>

// The panel's input line: the field an operator types a value into for another widget (a table
// cell), which commits it. It shows its tool tip at once when told why an entry was refused.
class HMIPLATFORM_EXPORT InputWidget : public QLineEdit
{
    Q_OBJECT
public:
    Q_INVOKABLE explicit InputWidget(QWidget *parent = nullptr);

    // Sets the tool tip and shows it over the field (when the field is on screen).
    void showToolTip(const QString &text);
};

#endif
