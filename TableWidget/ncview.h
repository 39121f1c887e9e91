#ifndef NCVIEW_H
#define NCVIEW_H

#include "hmiwidgets_export.h"
#include "ncprogram.h"

#include <QByteArray>
#include <QList>

#include <memory>
#include <vector>

class QIODevice;
class QTableWidget;

// The table showing an NC program: one row a line, one column a code sign. The lines are read once;
// a line is split into its words and a row's items made (the words, their trailing text in role 1032,
// the line number and the text before the first word in its header) when the row comes near the
// screen, so a long program opens like a short one.
// Lines end with LF, CR-LF or CR alone. Letters a-z are upper-cased so that words are found whatever
// their case; every other byte comes back as it was read: a program that is not UTF-8 is taken byte
// for byte (as Latin-1) and written back so, with the line end the file had. A program larger than a
// table shows is shown up to the limits and never written back: it would lose its rest.
class HMIWIDGETS_EXPORT NcView
{
public:
    static constexpr int TrailingRole = 1032;
    // Far more than any program a panel edits: a screen shows a few dozen lines.
    static constexpr int MaxLines = 200000;
    static constexpr qint64 MaxBytes = 16 * 1024 * 1024;

    explicit NcView(QTableWidget *table);
    ~NcView();

    bool isActive() const { return m_program != nullptr; }
    // Replaces the table's rows and columns with the program read from file.
    void show(const QStringList &codeSigns, QIODevice *file);
    // Why the program shown is not the whole file (then it must not be written back); empty when it is.
    QString notWhole() const { return m_notWhole; }
    // Makes the items of the rows around first ... last.
    void cover(int first, int last);
    // The line of a row as the table holds it now.
    QString lineAt(int row) const;
    // Writes every row's line in the program's encoding and line end; false when the device fails.
    bool write(QIODevice *file) const;

private:
    void makeRow(int row);

    QTableWidget *const m_table;
    std::unique_ptr<NcProgram> m_program;
    QStringList m_lines; // of the rows not made yet
    std::vector<bool> m_made;
    bool m_latin1 = false;
    QByteArray m_lineEnd = "\n";
    QString m_notWhole;
};

#endif
