#ifndef NEWESTFILE_H
#define NEWESTFILE_H

#include "hmiwidgets_export.h"

#include <QDateTime>
#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <memory>

class QFileSystemWatcher;

// The newest picture of a folder that a camera or a measuring program fills. A listing reads the
// folder once, without sorting it, and keeps the newest matching regular file (the first name among
// equally new ones); it reads no more than MaxEntries entries, matching or not, and tells when the
// folder holds more. A file-system watcher on the folder and on its pictures (up to MaxWatchedFiles of them, else
// on the newest alone) tells when a listing is due: a file created, removed, renamed, touched or
// rewritten. Polls in between cost nothing; every ListingEveryPolls polls the folder is listed anyway,
// for what a watcher cannot see (a picture rewritten in place among more than it watches, a network
// share). Without a watch (none to be had) every poll lists.
class HMIWIDGETS_EXPORT NewestFile
{
public:
    static constexpr int MaxEntries = 10000;
    static constexpr int MaxWatchedFiles = 64;
    static constexpr int ListingEveryPolls = 10;

    explicit NewestFile(int maxEntries = MaxEntries);
    ~NewestFile();

    void setPath(const QString &path);
    QString path() const { return m_path; }
    void setNameFilters(const QStringList &filters);

    // The newest matching file's path (folder + "/" + name), or empty for none or no folder.
    QString poll();
    // How many polls listed the folder (for the benchmark and tests).
    int listings() const { return m_listings; }
    // Counts the changes of the newest file: another file, or the same one written again.
    int version() const { return m_version; }
    // Whether the last listing stopped at MaxEntries.
    bool truncated() const { return m_truncated; }

private:
    void forget();
    bool matches(const QString &name) const;
    void list();
    void watch(const QStringList &files);

    const int m_maxEntries;
    QString m_path;
    QStringList m_nameFilters;
    QList<QRegularExpression> m_filters;
    std::unique_ptr<QFileSystemWatcher> m_watcher;
    bool m_changed = true; // by the watcher, or never listed
    int m_pollsSinceListing = 0;
    int m_listings = 0;
    bool m_truncated = false;
    QString m_newest;
    QDateTime m_newestTime;
    qint64 m_newestSize = -1;
    bool m_newestRewritten = false;
    int m_version = 0;
};

#endif
