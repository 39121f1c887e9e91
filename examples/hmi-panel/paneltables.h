#ifndef PANELTABLES_H
#define PANELTABLES_H

#include <QString>
#include <QStringList>

class QWidget;

// What the panel does with the parameter tables of a form, by the form's own dynamic properties:
// "ncProgram" (a file, relative to the form's folder) with "ncCodeSigns" shows a table as that NC
// program; "bitMonitor" ("channel,bit type,start address,bit count,title type") turns it into a bit
// monitor. The form's first InputWidget is the input line of every table.
class PanelTables
{
public:
    // Returns what could not be set up, one line each.
    static QStringList setUp(QWidget *form, const QString &formFolder);
};

#endif
