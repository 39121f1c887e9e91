#ifndef TABLEDECLARATION_H
#define TABLEDECLARATION_H

#include <QByteArray>
#include <QString>
#include <QStringView>

class QXmlStreamWriter;

// uic builds a custom widget's <column> headers only when the form declares the class as extending
// QTableWidget. This finds how far a form declares the table's class and writes the declaration as
// Designer does.
class TableDeclaration
{
public:
    enum class Found {
        Entry,       // a <customwidget> for the class: left as it is, whatever it extends
        ListOnly,    // a <customwidgets> list without one: the entry goes at its end
        Nothing      // the list goes among the root's children where Designer puts it
    };

    static Found find(const QByteArray &form);
    // Whether a child of the form's root comes after <customwidgets> in Designer's order.
    static bool follows(QStringView rootChild);
    // The <customwidget> entry, or the <customwidgets> list holding it, each element on a line of its
    // own starting at level times unit.
    static void writeEntry(QXmlStreamWriter *out, int level, const QString &unit);
    static void writeList(QXmlStreamWriter *out, int level, const QString &unit);
};

#endif
