#ifndef SECTIONTEXT_H
#define SECTIONTEXT_H

#include "tablecells.h"

#include <QStringList>

// A table item as the cell file names it: its texts per language, and a cell's binding or a header's
// width. The sections themselves are the library's (TableSections); this class adds the cell's binding
// in front of them, and takes an item apart only when that rebuilds exactly the same item, so that
// reading a form and writing it again changes nothing.
class SectionText
{
public:
    static constexpr int MaxColumnWidth = 100000;

    // The display text is the first language; a single language adds no section.
    static TableCells::Item cell(const QStringList &languages, const QString &binding);
    // Always succeeds: when the what's-this text is not a binding followed by a multiTexts section
    // that starts with the display text, the languages are the display text alone and the binding is
    // the whole what's-this text.
    static void splitCell(const TableCells::Item &item, QStringList *languages, QString *binding);

    // width < 0: none.
    static TableCells::Item header(const QStringList &languages, int width);
    // False when the header holds something else (other sections, a multiTexts section that does not
    // start with its text, a malformed width): then the languages are its text alone and the width is
    // kept only if the panel could read it.
    static bool splitHeader(const TableCells::Item &item, QStringList *languages, int *width);
};

#endif
