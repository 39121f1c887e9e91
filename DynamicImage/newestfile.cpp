#include "newestfile.h"

#include <QFileInfo>

NewestFile::NewestFile()
{
    m_dir.setFilter(QDir::Files);
    m_dir.setSorting(QDir::Time);
}

void NewestFile::setPath(const QString &path)
{
    m_path = path;
    m_dir.setPath(path);
    forget();
}

void NewestFile::setNameFilters(const QStringList &filters)
{
    m_dir.setNameFilters(filters);
    forget();
}

void NewestFile::forget()
{
    m_known = false;
    m_newest.clear();
}

QString NewestFile::poll()
{
    if (m_path.isEmpty())
        return QString();
    const QFileInfo folder(m_path);
    if (!folder.isDir()) {
        forget(); // gone: list it again when it comes back
        return QString();
    }
    const QDateTime folderTime = folder.lastModified();
    // A folder changed just now may change again within the same time stamp: until its time is
    // a moment old, it is listed on every poll.
    const bool settled = folderTime.msecsTo(QDateTime::currentDateTime()) > 2000;
    if (m_known && settled && folderTime == m_folderTime) {
        if (m_newest.isEmpty())
            return QString();
        const QFileInfo newest(m_newest);
        if (newest.lastModified() == m_newestTime && newest.size() == m_newestSize)
            return m_newest;
    }
    ++m_listings;
    m_dir.refresh();
    const QStringList entries = m_dir.entryList();
    m_folderTime = folderTime;
    m_known = true;
    m_newest = entries.isEmpty() ? QString() : m_path + QLatin1Char('/') + entries.first();
    if (!m_newest.isEmpty()) {
        const QFileInfo newest(m_newest);
        m_newestTime = newest.lastModified();
        m_newestSize = newest.size();
    }
    return m_newest;
}
