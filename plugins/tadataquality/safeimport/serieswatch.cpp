// SPDX-License-Identifier: MIT
#include "serieswatch.h"

#include <QtCore/QFileInfo>

namespace tadata {

namespace {

// The series' own directory, or what is there of the way to it; null where not even the store is.
QString existingOf(const QDir& root, const QString& series)
{
    for (QString below = series; !below.isEmpty(); below = below.section(u'/', 0, -2)) {
        if (QFileInfo(root.filePath(below)).isDir())
            return root.filePath(below);
        if (!below.contains(u'/'))
            break;
    }
    return root.exists() ? root.path() : QString();
}

} // namespace

SeriesWatch::SeriesWatch(QObject* parent)
    : QObject(parent)
{
    constexpr int calm = 200; // milliseconds: a command changes one day after the other
    m_calm.setInterval(calm);
    m_calm.setSingleShot(true);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_calm,
            qOverload<>(&QTimer::start));
    connect(&m_calm, &QTimer::timeout, this, &SeriesWatch::changed);
}

SeriesWatch::~SeriesWatch() = default;

void SeriesWatch::follow(const QDir& root, const QStringList& series)
{
    QStringList directories;
    for (const QString& one : series.mid(0, mostSeries)) {
        const QString directory = existingOf(root, one);
        if (!directory.isEmpty() && !directories.contains(directory))
            directories.append(directory);
    }
    // A directory that went is followed no more, though another one may have its name by now.
    if (directories == m_directories && m_watcher.directories().size() == directories.size())
        return;
    pause();
    m_directories = directories;
    resume();
}

void SeriesWatch::pause()
{
    m_calm.stop();
    const QStringList watched = m_watcher.directories();
    if (!watched.isEmpty())
        m_watcher.removePaths(watched);
}

void SeriesWatch::resume()
{
    if (!m_directories.isEmpty())
        m_watcher.addPaths(m_directories);
}

} // namespace tadata
