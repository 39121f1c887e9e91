#ifndef PANELTABLES_H
#define PANELTABLES_H

#include <QString>
#include <QStringList>

class QWidget;
class TableWidget;

// What the panel does with the parameter tables of a form, by the form's own dynamic properties:
// "ncProgram" (a file, relative to the form's folder) with "ncCodeSigns" shows a table as that NC
// program; "bitMonitor" ("channel,bit type,start address,bit count,title type") turns it into a bit
// monitor. The form's first InputWidget is the input line of every table.
class PanelTables
{
public:
    // Returns what could not be set up, one line each.
    static QStringList setUp(QWidget *form, const QString &formFolder);
    // The table the panel's Find, Find next and Jump act on: the one the operator last used while it
    // is on screen, else the one on the page shown, else any on screen; null when none is, so that a
    // search never goes silently to a table the operator cannot see.
    static TableWidget *searchTable(QWidget *form, TableWidget *lastUsed);
};

#endif
