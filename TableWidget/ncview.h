#ifndef NCVIEW_H
#define NCVIEW_H

#include "hmiwidgets_export.h"
#include "ncprogram.h"

#include <QList>

#include <memory>
#include <vector>

class QIODevice;
class QTableWidget;

// The table showing an NC program: one row a line, one column a code sign. The lines are read once;
// a line is split into its words and a row's items made (the words, their trailing text in role 1032,
// the line number and the text before the first word in its header) when the row comes near the
// screen, so a long program opens like a short one.
class HMIWIDGETS_EXPORT NcView
{
public:
    static constexpr int TrailingRole = 1032;
    // Far more than any program a panel edits; it bounds what a file can make the table hold.
    static constexpr int MaxLines = 1000000;

    explicit NcView(QTableWidget *table);
    ~NcView();

    bool isActive() const { return m_program != nullptr; }
    // Replaces the table's rows and columns with the program read from file. Returns the lines over
    // MaxLines that were left out.
    int show(const QStringList &codeSigns, QIODevice *file, int *cutLines);
    // Makes the items of the rows around first ... last.
    void cover(int first, int last);
    // The line of a row as the table holds it now.
    QString lineAt(int row) const;

private:
    void makeRow(int row);

    QTableWidget *const m_table;
    std::unique_ptr<NcProgram> m_program;
    QStringList m_lines; // upper-cased, of the rows not made yet
    std::vector<bool> m_made;
};

#endif
