#ifndef TABLEITEMBOUNDS_H
#define TABLEITEMBOUNDS_H

#include <QByteArray>
#include <QList>
#include <QString>

// Qt's form loader makes every <item row column> of a table and hands it to the table, which drops
// it, never freed, when the cell lies outside the rows and columns the table has at that moment. A
// form can list any number of such items, and the panel reloads forms: they are found here, from
// the rows and columns the table gets from its properties and <row>/<column> elements, so that the
// loader leaves them out and the checker names them.
class TableItemBounds
{
public:
    struct Stray
    {
        QString className;
        QString objectName;
        qint64 line = 0;
        int row = 0;
        int column = 0;
        int rows = 0;
        int columns = 0;
        qint64 start = 0; // the <item> element within the form's text, in characters
        qint64 end = 0;
    };

    // The items of the form's tables that lie outside them, in document order; none for text that
    // is no readable XML (the loader refuses it anyway).
    static QList<Stray> find(const QString &form);
    // "item (row 0, column 5) lies outside the table's 2 rows and 1 column; it is left out"
    static QString problem(const Stray &stray);
    // The form without its stray items, each left out with a warning naming its table; the bytes
    // as they are when there is none.
    static QByteArray withoutStray(const QByteArray &form);
};

#endif
