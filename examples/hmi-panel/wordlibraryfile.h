#ifndef WORDLIBRARYFILE_H
#define WORDLIBRARYFILE_H

#include <QMap>
#include <QStringList>

class QIODevice;

// The panel's word library as a panel builder writes it: a UTF-8 text file, one word per line,
// "id<TAB>text in language 0<TAB>text in language 1 ...". Empty lines and lines starting with '#' are
// skipped. A line without a number in front, or an id given twice, is reported with its line number
// and left out; the rest of the file still counts. Only a regular file is read, and no more than
// MaxBytes of it.
class WordLibraryFile
{
public:
    static constexpr int MaxWords = 100000;
    static constexpr qint64 MaxBytes = 16 * 1024 * 1024;
    static constexpr int MaxLanguages = 10;

    // The library a panel uses for a form when none is named: "words.tsv" beside the form.
    static QString besideForm(const QString &formFile);

    bool read(QIODevice *device);
    bool readFile(const QString &fileName);
    // Reads the library beside formFile when there is one; false, with nothing read and no problem,
    // when there is none (an unsaved form, named by an empty text, has none either).
    bool readBesideForm(const QString &formFile);

    const QMap<int, QStringList> &words() const { return m_words; }
    // "line N: ..." for every line left out; the reason when the file cannot be opened.
    const QStringList &problems() const { return m_problems; }

private:
    QMap<int, QStringList> m_words;
    QStringList m_problems;
};

#endif
