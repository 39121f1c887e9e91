#ifndef FORMTABLEEDITOR_H
#define FORMTABLEEDITOR_H

#include "problem.h"
#include "storedtable.h"

#include <QByteArray>

// Rewrites a parameter table in a .ui form. The table gets its rowCount, columnCount, data and
// mergeCells properties (mergeCells removed when there are no spans) and new <column> headers; its
// <item> and <row> elements go, since QUiLoader and uic would build every one of them eagerly. A form
// that does not declare the table's class as a custom widget gets the declaration (see
// TableDeclaration). The rest of the form is copied token by token, keeping its attribute order,
// whitespace and comments.
class FormTableEditor
{
public:
    // The form's problems as FormTableReader reports them, or a header text a form cannot hold.
    static bool write(const QByteArray &form, const QString &name, const StoredTable &table, QByteArray *out,
                      Problem *problem);
};

#endif
