#ifndef NEWESTFILE_H
#define NEWESTFILE_H

#include "hmiwidgets_export.h"

#include <QDateTime>
#include <QDir>
#include <QString>
#include <QStringList>

// The newest file of a folder that a camera or a measuring program fills. A poll lists and sorts
// the folder only when it changed since the last listing (its modification time, or the newest
// file's own time or size, as for a file written again in place) or changed so recently that a
// further change could share its time stamp: a poll of an unchanged folder of thousands of files
// costs two file lookups.
class HMIWIDGETS_EXPORT NewestFile
{
public:
    NewestFile();

    void setPath(const QString &path);
    QString path() const { return m_path; }
    void setNameFilters(const QStringList &filters);

    // The newest matching file's path (folder + "/" + name), or empty for none or no folder.
    QString poll();
    // How many polls listed the folder (for the benchmark and tests).
    int listings() const { return m_listings; }

private:
    void forget();

    QString m_path;
    QDir m_dir;
    int m_listings = 0;
    bool m_known = false; // the stamps below describe the folder as last listed
    QDateTime m_folderTime;
    QString m_newest;
    QDateTime m_newestTime;
    qint64 m_newestSize = -1;
};

#endif
