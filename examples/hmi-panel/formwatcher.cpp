#include "formwatcher.h"

#include <QFileInfo>

FormWatcher::FormWatcher(const QStringList &files, QObject *parent)
    : QObject(parent)
{
    for (const QString &file : files) {
        m_files << QFileInfo(file).absoluteFilePath();
        m_stamps << FileStamp::of(m_files.constLast());
        const QString folder = QFileInfo(m_files.constLast()).absolutePath();
        if (!m_watcher.directories().contains(folder))
            m_watcher.addPath(folder);
    }
    watchFiles();
    m_settle.setSingleShot(true);
    m_settle.setInterval(SettleMs);
    connect(&m_settle, &QTimer::timeout, this, &FormWatcher::settle);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &FormWatcher::noteChange);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &FormWatcher::noteChange);
}

void FormWatcher::watchFiles()
{
    // A file renamed over, or made anew, is no longer (or not yet) watched.
    const QStringList watched = m_watcher.files();
    for (const QString &file : std::as_const(m_files)) {
        if (!watched.contains(file) && QFileInfo(file).isFile())
            m_watcher.addPath(file);
    }
}

void FormWatcher::noteChange()
{
    if (!m_settle.isActive())
        m_pending.start();
    if (!m_settle.isActive() || m_pending.elapsed() < MaxWaitMs - SettleMs)
        m_settle.start();
}

void FormWatcher::settle()
{
    watchFiles();
    bool changedNow = false;
    for (int i = 0; i < m_files.size(); ++i) {
        const FileStamp now = FileStamp::of(m_files.at(i));
        if (now != m_stamps.at(i)) {
            m_stamps[i] = now;
            changedNow = true;
        }
    }
    if (changedNow)
        Q_EMIT changed();
}
