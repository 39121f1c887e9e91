#include "wordlibraryfile.h"

#include "regularfile.h"
#include "textfilelines.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

QString WordLibraryFile::besideForm(const QString &formFile)
{
    return QFileInfo(formFile).absoluteDir().filePath(QStringLiteral("words.tsv"));
}

bool WordLibraryFile::readFile(const QString &fileName)
{
    RegularFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        m_words.clear();
        m_problems = QStringList{QStringLiteral("%1: %2").arg(fileName, file.errorString())};
        return false;
    }
    return read(&file);
}

bool WordLibraryFile::readBesideForm(const QString &formFile)
{
    m_words.clear();
    m_problems.clear();
    const QString file = formFile.isEmpty() ? QString() : besideForm(formFile);
    if (file.isEmpty() || !QFileInfo::exists(file))
        return false;
    readFile(file);
    return true;
}

bool WordLibraryFile::read(QIODevice *device)
{
    m_words.clear();
    m_problems.clear();
    int unreported = 0;
    // A file of garbage lines yields one note per line: keep the first hundred and count the rest.
    const auto note = [&](const QString &problem) {
        if (m_problems.size() < 100)
            m_problems << problem;
        else
            ++unreported;
    };
    // A word is a caption: a line far longer than any caption is a wrong file, not a word.
    TextFileLines lines(device, 64 * 1024, MaxBytes);
    while (!lines.atEnd()) {
        const QString line = lines.next();
        const int number = lines.count();
        if (line.trimmed().isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        QStringList parts = line.split(QLatin1Char('\t'));
        bool ok = false;
        const int id = parts.takeFirst().trimmed().toInt(&ok);
        if (!ok || id < 0) {
            note(QStringLiteral("line %1: no word id (a number from 0) in front").arg(number));
            continue;
        }
        if (m_words.contains(id)) {
            note(QStringLiteral("line %1: word %2 is given twice; the first is kept").arg(number).arg(id));
            continue;
        }
        if (m_words.size() >= MaxWords) {
            note(QStringLiteral("line %1: more than %2 words; the rest is left out").arg(number).arg(MaxWords));
            break;
        }
        if (parts.size() > MaxLanguages) {
            note(QStringLiteral("line %1: texts beyond %2 languages are left out").arg(number).arg(MaxLanguages));
            parts.erase(parts.begin() + MaxLanguages, parts.end());
        }
        m_words.insert(id, parts);
    }
    if (unreported > 0)
        m_problems << QStringLiteral("and %1 more problems").arg(unreported);
    if (lines.stoppedEarly())
        m_problems << QStringLiteral("read up to %1 MiB; the rest is left out").arg(MaxBytes / (1024 * 1024));
    return m_problems.isEmpty();
}
