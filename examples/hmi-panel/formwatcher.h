#ifndef FORMWATCHER_H
#define FORMWATCHER_H

#include "filestamp.h"

#include <QElapsedTimer>
#include <QFileSystemWatcher>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QTimer>

// Says when files change on disk as an editor saves them. Designer writes a new file and renames it
// over the old one, which ends a watch on the file itself, so the folders are watched too. A save is
// a burst of changes: they are told once, when the files have been still for SettleMs (or, while
// they keep changing, every MaxWaitMs), and only when the size or time of one of the files changed.
class FormWatcher : public QObject
{
    Q_OBJECT
public:
    static constexpr int SettleMs = 300;
    static constexpr int MaxWaitMs = 3000;

    // Files that do not exist yet are watched for through their folder.
    explicit FormWatcher(const QStringList &files, QObject *parent = nullptr);

Q_SIGNALS:
    void changed();

private:
    void noteChange();
    void settle();
    void watchFiles();

    QStringList m_files;
    QList<FileStamp> m_stamps;
    QFileSystemWatcher m_watcher;
    QTimer m_settle;
    QElapsedTimer m_pending;
};

#endif
