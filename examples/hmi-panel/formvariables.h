#ifndef FORMVARIABLES_H
#define FORMVARIABLES_H

#include "formwidget.h"

#include <QByteArray>
#include <QList>
#include <QString>

// One controller variable a widget of a form shows or writes, with the 0-based channel and the link
// a running panel resolves for it (a current-channel widget: the channel a panel starts on).
struct FormVariable
{
    int widget = -1; // index into the form document's widgets
    int comId = 0;
    int channel = 0;
    int dataClass = -1; // a word, or with bitType -1 ...
    int bitType = -1;   // ... a bit
    int address = 0;
    int bitIndex = 0;
    bool writes = false;
    qint64 line = 0;
    QString property; // the property at that line, when one

    bool sameVariable(const FormVariable &other) const;
};

// The variables of a form, found the way the panel meets them: what the widgets register when the
// form is loaded and attached to a recording controller (so the widgets' own rules for channel, link
// and which properties count), the bit a button's press writes ("writeBitType", "writeAddress",
// "writeBitIndex" of any widget that has them), and every bound table cell, which the operator edits
// through the keypad. Lines come from the form document: the address property giving the variable,
// the cell binding it, or the widget's own line.
class FormVariables
{
public:
    static QList<FormVariable> collect(const QByteArray &form, const QList<FormWidget> &widgets);
};

#endif
