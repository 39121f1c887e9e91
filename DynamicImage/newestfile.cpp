#include "newestfile.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QRegularExpression>

NewestFile::NewestFile(int maxEntries)
    : m_maxEntries(maxEntries)
{
}

NewestFile::~NewestFile() = default;

void NewestFile::setPath(const QString &path)
{
    m_path = path;
    forget();
}

void NewestFile::setNameFilters(const QStringList &filters)
{
    // Made into expressions at the first listing: most pictures never list a folder.
    m_nameFilters = filters;
    m_filters.clear();
    forget();
}

bool NewestFile::matches(const QString &name) const
{
    if (m_filters.isEmpty())
        return true;
    for (const QRegularExpression &filter : m_filters) {
        if (filter.match(name).hasMatch())
            return true;
    }
    return false;
}

void NewestFile::forget()
{
    m_changed = true;
    m_newest.clear();
    m_truncated = false;
    if (m_watcher && !m_watcher->files().isEmpty())
        m_watcher->removePaths(m_watcher->files());
    if (m_watcher && !m_watcher->directories().isEmpty())
        m_watcher->removePaths(m_watcher->directories());
}

QString NewestFile::poll()
{
    if (m_path.isEmpty())
        return QString();
    const bool watched = m_watcher && !m_watcher->directories().isEmpty();
    if (m_changed || !watched || ++m_pollsSinceListing >= ListingEveryPolls)
        list();
    return m_newest;
}

void NewestFile::list()
{
    ++m_listings;
    m_changed = false;
    m_pollsSinceListing = 0;
    const QString before = m_newest;
    const QDateTime beforeTime = m_newestTime;
    const qint64 beforeSize = m_newestSize;
    m_newest.clear();
    m_newestSize = -1;
    m_truncated = false;
    if (!QFileInfo(m_path).isDir()) {
        watch({});
        return;
    }
    // As a folder's name filters: wildcards, any case.
    if (m_filters.size() != m_nameFilters.size()) {
        for (const QString &filter : std::as_const(m_nameFilters))
            m_filters.append(QRegularExpression(QRegularExpression::wildcardToRegularExpression(filter),
                                                QRegularExpression::CaseInsensitiveOption));
    }
    // Files only (links followed), no pipes or devices: those are not pictures and would block. Every
    // entry read counts, matching or not.
    QDirIterator entries(m_path, QDir::Files);
    QDateTime newestTime;
    QString newestName;
    QStringList files;
    int read = 0;
    while (entries.hasNext()) {
        if (++read > m_maxEntries) {
            m_truncated = true;
            break;
        }
        entries.next();
        if (!matches(entries.fileName()))
            continue;
        const QFileInfo info = entries.fileInfo();
        const QDateTime time = info.lastModified();
        const QString name = info.fileName();
        if (newestName.isEmpty() || time > newestTime || (time == newestTime && name < newestName)) {
            newestTime = time;
            newestName = name;
            m_newestSize = info.size();
        }
        if (files.size() <= MaxWatchedFiles)
            files.append(m_path + QLatin1Char('/') + name);
    }
    if (!newestName.isEmpty())
        m_newest = m_path + QLatin1Char('/') + newestName;
    m_newestTime = newestTime;
    // Written again within the file system's time stamp and at the same size, only the watcher knows.
    if (m_newest != before || m_newestTime != beforeTime || m_newestSize != beforeSize || m_newestRewritten)
        ++m_version;
    m_newestRewritten = false;
    if (files.size() > MaxWatchedFiles)
        files = m_newest.isEmpty() ? QStringList() : QStringList{m_newest};
    watch(files);
}

void NewestFile::watch(const QStringList &files)
{
    if (!m_watcher) {
        m_watcher = std::make_unique<QFileSystemWatcher>();
        QObject::connect(m_watcher.get(), &QFileSystemWatcher::directoryChanged, m_watcher.get(), [this] { m_changed = true; });
        QObject::connect(m_watcher.get(), &QFileSystemWatcher::fileChanged, m_watcher.get(), [this](const QString &file) {
            m_changed = true;
            m_newestRewritten = m_newestRewritten || file == m_newest;
        });
    }
    const QStringList old = m_watcher->files();
    if (old != files) {
        if (!old.isEmpty())
            m_watcher->removePaths(old);
        if (!files.isEmpty())
            m_watcher->addPaths(files);
    }
    const bool folder = QFileInfo(m_path).isDir();
    if (folder && m_watcher->directories().isEmpty())
        m_watcher->addPath(m_path);
    else if (!folder && !m_watcher->directories().isEmpty())
        m_watcher->removePaths(m_watcher->directories());
}
