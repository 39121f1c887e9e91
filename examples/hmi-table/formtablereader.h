#ifndef FORMTABLEREADER_H
#define FORMTABLEREADER_H

#include "problem.h"
#include "storedtable.h"

#include <QByteArray>
#include <QStringList>

// Finds a parameter table in a .ui form (Qt Designer XML) and reads what it stores: the "data" and
// "mergeCells" byte arrays (<cstring>) and the texts of its <column> headers.
class FormTableReader
{
public:
    static QString tableClass() { return QStringLiteral("TableWidget"); }

    // False with the problem, and its line where there is one, for a form that is not well-formed,
    // has no TableWidget named name or more than one, or stores data or mergeCells as anything but
    // a byte array. Notes say what of the table the cell file does not carry.
    static bool read(const QByteArray &form, const QString &name, StoredTable *table, Problem *problem,
                     QStringList *notes = nullptr);
};

#endif
