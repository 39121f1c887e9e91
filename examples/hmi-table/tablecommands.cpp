#include "tablecommands.h"

#include "cellfile.h"
#include "formtableeditor.h"
#include "formtablereader.h"
#include "tablestore.h"

#include <QFile>
#include <QSaveFile>

#include <cstdio>

namespace {

int refuse(const QString &file, qint64 line, const QString &message)
{
    const QString where = line > 0 ? QStringLiteral("%1:%2").arg(file).arg(line) : file;
    std::fprintf(stderr, "hmi-table: %s: %s\n", qPrintable(where), qPrintable(message));
    return 1;
}

void note(const QString &file, const QStringList &notes)
{
    for (const QString &n : notes)
        std::fprintf(stderr, "hmi-table: %s: note: %s\n", qPrintable(file), qPrintable(n));
}

bool load(const QString &file, qint64 limit, QByteArray *bytes)
{
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly)) {
        refuse(file, 0, QStringLiteral("cannot read: %1").arg(in.errorString()));
        return false;
    }
    // The size of a regular file; a pipe or device is read up to the limit and checked after.
    if (in.size() > limit) {
        refuse(file, 0, QStringLiteral("larger than %1 MiB").arg(limit / (1024 * 1024)));
        return false;
    }
    *bytes = in.read(limit + 1);
    if (bytes->size() > limit) {
        refuse(file, 0, QStringLiteral("larger than %1 MiB").arg(limit / (1024 * 1024)));
        return false;
    }
    if (in.error() != QFile::NoError) {
        refuse(file, 0, QStringLiteral("cannot read: %1").arg(in.errorString()));
        return false;
    }
    return true;
}

bool save(const QString &file, const QByteArray &bytes)
{
    if (file.isEmpty()) {
        QFile out;
        if (out.open(stdout, QIODevice::WriteOnly) && out.write(bytes) == bytes.size() && out.flush())
            return true;
        refuse(QStringLiteral("standard output"), 0, QStringLiteral("cannot write: %1").arg(out.errorString()));
        return false;
    }
    // Written aside and renamed over: a failed write leaves the old file whole.
    QSaveFile out(file);
    if (out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size() && out.commit())
        return true;
    refuse(file, 0, QStringLiteral("cannot write: %1").arg(out.errorString()));
    return false;
}

} // namespace

int TableCommands::write(const QString &formFile, const QString &tableName, const QString &cellsFile,
                         const QString &outFile)
{
    QByteArray text;
    if (!load(cellsFile, CellFile::MaxFileBytes, &text))
        return 1;
    TableCells cells;
    Problem problem;
    if (!CellFile::parse(text, &cells, &problem))
        return refuse(cellsFile, problem.line, problem.message);
    text.clear();
    StoredTable stored;
    QString error;
    if (!TableStore::store(cells, &stored, &error))
        return refuse(cellsFile, 0, error);
    cells = TableCells();
    QByteArray form;
    if (!load(formFile, MaxFormBytes, &form))
        return 1;
    QByteArray edited;
    if (!FormTableEditor::write(form, tableName, stored, &edited, &problem))
        return refuse(formFile, problem.line, problem.message);
    return save(outFile.isEmpty() ? formFile : outFile, edited) ? 0 : 1;
}

int TableCommands::read(const QString &formFile, const QString &tableName, const QString &outFile)
{
    QByteArray form;
    if (!load(formFile, MaxFormBytes, &form))
        return 1;
    StoredTable stored;
    Problem problem;
    QStringList notes;
    if (!FormTableReader::read(form, tableName, &stored, &problem, &notes))
        return refuse(formFile, problem.line, problem.message);
    form.clear();
    TableCells cells;
    QString error;
    if (!TableStore::load(stored, &cells, &error, &notes))
        return refuse(formFile, 0, QStringLiteral("table \"%1\": %2").arg(tableName, error));
    const QByteArray text = CellFile::format(cells, &notes);
    note(formFile, notes);
    return save(outFile, text) ? 0 : 1;
}
