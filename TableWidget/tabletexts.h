#ifndef TABLETEXTS_H
#define TABLETEXTS_H

#include "hmiwidgets_export.h"
#include "textdata.h"

#include <QList>
#include <QStringList>

class HeaderTexts;
class QTableWidget;
class QTableWidgetItem;
class VisibleRowRegistrar;

// The table's texts in the panel language: column headers from the header records (or their
// "multiTexts=" section), text cells of the rows on screen from their status-tip records (or their
// own "multiTexts=" section); and the list of these texts the translation tool works on.
class HMIWIDGETS_EXPORT TableTexts
{
public:
    TableTexts(QTableWidget *table, VisibleRowRegistrar *registrar, HeaderTexts *headers);

    void refresh(int firstRow, int lastRow, int language);
    // Makes the first selectable item, row by row from column 0, the current one.
    void selectFirstSelectable();

    // For the translation tool: the header records (one list per column), then one list per text
    // cell that has texts per language, row by row; it hands back one text list per entry, in the
    // same order.
    QList<QList<TextData>> translatable();
    // Takes the translated texts back; returns how many entries were used.
    int applyTranslations(const QList<QStringList> &texts);

private:
    QList<QTableWidgetItem *> translatableCells();
    bool isTextCell(QTableWidgetItem *item);

    QTableWidget *const m_table;
    VisibleRowRegistrar *const m_registrar;
    HeaderTexts *const m_headers;
};

#endif
