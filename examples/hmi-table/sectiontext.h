#ifndef SECTIONTEXT_H
#define SECTIONTEXT_H

#include "tablecells.h"

#include <QStringList>

// The what's-this text of a table item is a list of sections joined by "##8!&*_": a cell's binding
// first, then "multiTexts=" with the item's text in every panel language joined by "##!&*_"; a column
// header holds "multiTexts=..." and "columnWidth=N". This class builds an item from its languages and
// binding or width, and takes an item apart again when that rebuilds exactly the same item.
class SectionText
{
public:
    static constexpr int MaxLanguages = 10; // the panel switches between at most ten
    static constexpr int MaxColumnWidth = 100000;
    static QString sectionSeparator();
    static QString languageSeparator();

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
    // kept only if it could be read.
    static bool splitHeader(const TableCells::Item &item, QStringList *languages, int *width);
};

#endif
