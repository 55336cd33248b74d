// SPDX-License-Identifier: MIT
#include "desk/chart/pathwatcher.h"

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

} // namespace

PathWatcher::PathWatcher(int delay, QObject* parent)
    : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(delay);
    connect(&m_timer, &QTimer::timeout, this, &PathWatcher::changed);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &PathWatcher::tellSoon);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &PathWatcher::tellSoon);
}

PathWatcher::~PathWatcher() = default;

void PathWatcher::tellSoon()
{
    // Not put off by every further change: the owner sees a long import go on.
    if (!m_timer.isActive())
        m_timer.start();
}

void PathWatcher::watch(const QStringList& paths)
{
    QSet<QString> wanted = existingOf(paths);
    // Once more after the directories above are watched: one may have come to be in between.
    for (int round = 0; round < 2; ++round) {
        const QStringList files = m_watcher.files();
        const QStringList directories = m_watcher.directories();
        QSet<QString> watched(files.begin(), files.end());
        watched.unite(QSet<QString>(directories.begin(), directories.end()));
        const QStringList gone = (watched - wanted).values();
        if (!gone.isEmpty())
            m_watcher.removePaths(gone);
        const QStringList come = (wanted - watched).values();
        if (come.isEmpty())
            return;
        m_watcher.addPaths(come);
        wanted = existingOf(paths);
    }
}

} // namespace vexdesk
