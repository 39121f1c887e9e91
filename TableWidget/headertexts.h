#ifndef HEADERTEXTS_H
#define HEADERTEXTS_H

#include "hmiwidgets_export.h"
#include "textdata.h"

#include <QByteArray>
#include <QFont>
#include <QList>

#include <optional>

class QTableWidget;

// The column headers' texts per language ("headerTextInfoBuffer"): one list of text records per
// column, in column order, stored in the multi-slot text-info form. A column's first record gives
// the texts and fonts and may name a word-library entry.
class HMIWIDGETS_EXPORT HeaderTexts
{
public:
    // A header row of a very wide table; more is not a header buffer.
    static constexpr int MaxColumns = 1000;

    // False (and no texts) for a buffer that cannot be read.
    bool decode(const QByteArray &buffer);
    QByteArray encode() const;

    bool isEmpty() const { return m_columns.isEmpty(); }
    int count() const { return m_columns.size(); }
    const QList<QList<TextData>> &columns() const { return m_columns; }
    void setColumns(const QList<QList<TextData>> &columns) { m_columns = columns; }

    // The column's text and font in a language, when the column has an entry.
    bool hasEntry(int column) const;
    QString text(int column, int language) const;
    std::optional<QFont> font(int column, int language) const;

    // Texts of records that name a word-library entry, from the library. With clearMissing, a
    // record whose entry cannot be fetched loses its texts.
    void refreshFromWordLibrary(bool clearMissing);
    // One record per column from the table's header items: the header's "multiTexts=" texts when
    // it has them, else its text in every language, with the header's font.
    void buildFrom(const QTableWidget *table, int languageCount);
    void trimTo(int columnCount);

private:
    QList<QList<TextData>> m_columns;
};

#endif
