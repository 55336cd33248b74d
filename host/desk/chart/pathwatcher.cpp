// SPDX-License-Identifier: MIT
#include "desk/chart/pathwatcher.h"

#include "desk/chart/readerthreads.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSet>

namespace vexdesk {

namespace {

QString nearestExisting(QString path)
{
    while (!QFileInfo::exists(path)) {
        const QString above = QFileInfo(path).path();
        if (above == path)
            return QString();
        path = above;
    }
    return path;
}

QSet<QString> existingOf(const QStringList& paths)
{
    QSet<QString> existing;
    for (const QString& path : paths)
        existing.insert(nearestExisting(path));
    existing.remove(QString());
    return existing;
}

// Whether any path has come to those that are watched.
bool watchOnly(QFileSystemWatcher& watcher, const QSet<QString>& wanted)
{
    const QStringList paths = watcher.files() + watcher.directories();
    const QSet<QString> watched(paths.begin(), paths.end());
    const QStringList gone = (watched - wanted).values();
    if (!gone.isEmpty())
        watcher.removePaths(gone);
    const QStringList come = (wanted - watched).values();
    // One that cannot be watched does not count, or it would be told of without end.
    return !come.isEmpty() && watcher.addPaths(come).size() < come.size();
}

} // namespace

/// What the thread tells a change to: nobody once the watcher is gone.
struct PathWatcher::Ear
{
    std::mutex mutex;
    PathWatcher* owner = nullptr;

    void tell()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (owner)
            QMetaObject::invokeMethod(owner, &PathWatcher::tellSoon, Qt::QueuedConnection);
    }
    // For whoever holds it. That the thread ends after it was told to, and goes after it has ended,
    // is settled inside Qt, where those who look for races do not look.
    void wait() { const std::lock_guard<std::mutex> lock(mutex); }
};

PathWatcher::PathWatcher(int delay, QObject* parent)
    : QObject(parent)
    , m_thread(new QThread)
    , m_watcher(new QFileSystemWatcher)
    , m_ear(std::make_shared<Ear>())
{
    m_ear->owner = this;
    m_timer.setSingleShot(true);
    m_timer.setInterval(delay);
    connect(&m_timer, &QTimer::timeout, this, &PathWatcher::changed);
    connect(m_watcher, &QFileSystemWatcher::directoryChanged, this, &PathWatcher::tellSoon);
    connect(m_watcher, &QFileSystemWatcher::fileChanged, this, &PathWatcher::tellSoon);
    connect(m_thread, &QThread::finished, m_watcher, &QObject::deleteLater);
    connect(
        m_thread, &QThread::finished, m_thread, [ear = m_ear] { ear->wait(); },
        Qt::DirectConnection);
    m_watcher->moveToThread(m_thread);
    m_thread->start();
}

PathWatcher::~PathWatcher()
{
    {
        const std::lock_guard<std::mutex> lock(m_ear->mutex);
        m_ear->owner = nullptr;
        m_thread->quit();
    }
    startReading([thread = m_thread, ear = m_ear] {
        thread->wait();
        ear->wait();
        delete thread;
    });
}

void PathWatcher::tellSoon()
{
    // Not put off by every further change: the owner sees a long import go on.
    if (!m_timer.isActive())
        m_timer.start();
}

void PathWatcher::watch(const QStringList& paths)
{
    watchMany([paths] { return paths; });
}

void PathWatcher::watchMany(std::function<QStringList()> paths)
{
    QMetaObject::invokeMethod(m_watcher,
                              [watcher = m_watcher, ear = m_ear, paths = std::move(paths)] {
                                  if (watchOnly(*watcher, existingOf(paths())))
                                      ear->tell();
                              });
}

} // namespace vexdesk
