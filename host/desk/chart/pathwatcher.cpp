// SPDX-License-Identifier: MIT
#include "desk/chart/pathwatcher.h"

#include "desk/chart/readerthreads.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QHash>
#include <QtCore/QSet>

#include <fcntl.h>
#include <mutex>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace vexdesk {

namespace {

// Which file or directory has a name, and who may read it.
struct Look
{
    dev_t device = 0;
    ino_t inode = 0;
    mode_t mode = 0;
    uid_t owner = 0;
    gid_t group = 0;

    bool isSameFile(const Look& other) const
    {
        return device == other.device && inode == other.inode;
    }
    bool operator==(const Look&) const = default;
};

// None of what is not there or cannot be reached.
std::optional<Look> lookAt(const QString& path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    return Look{status.st_dev, status.st_ino, status.st_mode, status.st_uid, status.st_gid};
}

// Others cannot be watched.
bool isReadable(const QString& path)
{
    return ::faccessat(AT_FDCWD, QFile::encodeName(path).constData(), R_OK, AT_EACCESS) == 0;
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

/// What watches, in the thread. A directory does not tell that it was moved away, nor that it may
/// be read: those above it do. They change for many reasons, and only what becomes of the next
/// directory on the way to a path is told.
class PathWatcher::Watch final : public QFileSystemWatcher
{
public:
    explicit Watch(std::shared_ptr<Ear> ear);

    void watchOnly(const QStringList& paths);

private:
    void take(const QString& path);
    void addAbove(const QString& path);
    void removeOthers();
    bool addMissing();

    const std::shared_ptr<Ear> m_ear;
    QSet<QString> m_wanted;
    QHash<QString, std::optional<Look>> m_seen; // what is wanted and all above it, when watched
    QHash<QString, std::optional<Look>> m_told; // the same, when a change of it was told last
    QHash<QString, QStringList> m_below;        // of what is above alone, those that were seen
};

PathWatcher::Watch::Watch(std::shared_ptr<Ear> ear)
    : m_ear(std::move(ear))
{
    connect(this, &QFileSystemWatcher::directoryChanged, this, &Watch::take);
    connect(this, &QFileSystemWatcher::fileChanged, this, &Watch::take);
}

void PathWatcher::Watch::take(const QString& path)
{
    bool isAnother = m_wanted.contains(path);
    // What was moved away and comes back is another change: the owner may have looked in between.
    for (const QString& one : m_below.value(path)) {
        const std::optional<Look> seen = lookAt(one);
        isAnother = isAnother || seen != m_told.value(one);
        m_told.insert(one, seen);
    }
    if (isAnother)
        m_ear->tell();
}

void PathWatcher::Watch::watchOnly(const QStringList& paths)
{
    const QHash<QString, std::optional<Look>> before = std::exchange(m_seen, {});
    const QHash<QString, std::optional<Look>> told = std::exchange(m_told, {});
    m_wanted.clear();
    m_below.clear();
    for (const QString& path : paths)
        m_wanted.insert(QDir::cleanPath(path));
    for (const QString& path : std::as_const(m_wanted)) {
        m_seen.insert(path, lookAt(path));
        addAbove(path);
    }
    bool isAnother = false;
    for (auto seen = m_seen.begin(); seen != m_seen.end(); ++seen) {
        const std::optional<Look> known = before.value(seen.key());
        // The system tells of it later, when it is what was seen last, and so no change any more.
        isAnother = isAnother || told.value(seen.key(), seen.value()) != seen.value();
        // What has the name of another one is watched anew.
        if (known && seen.value() && !known->isSameFile(*seen.value()))
            removePath(seen.key());
    }
    m_told = m_seen;
    removeOthers();
    if (addMissing() || isAnother)
        m_ear->tell();
}

void PathWatcher::Watch::addAbove(const QString& path)
{
    const QString above = QFileInfo(path).path();
    if (above == path)
        return;
    const bool isSeen = m_seen.contains(above);
    if (!m_wanted.contains(above))
        m_below[above].append(path);
    if (isSeen)
        return;
    m_seen.insert(above, lookAt(above));
    addAbove(above);
}

void PathWatcher::Watch::removeOthers()
{
    QStringList others;
    for (const QString& path : files() + directories()) {
        if (!m_seen.value(path))
            others.append(path);
    }
    if (!others.isEmpty())
        removePaths(others);
}

// Whether any path has come to those that are watched.
bool PathWatcher::Watch::addMissing()
{
    const QStringList paths = files() + directories();
    const QSet<QString> watched(paths.begin(), paths.end());
    QStringList come;
    for (auto seen = m_seen.begin(); seen != m_seen.end(); ++seen) {
        if (seen.value() && !watched.contains(seen.key()) && isReadable(seen.key()))
            come.append(seen.key());
    }
    // One that cannot be watched does not count, or it would be told of without end.
    return !come.isEmpty() && addPaths(come).size() < come.size();
}

PathWatcher::PathWatcher(int delay, QObject* parent)
    : QObject(parent)
    , m_thread(new QThread)
    , m_ear(std::make_shared<Ear>())
    , m_watch(new Watch(m_ear))
{
    m_ear->owner = this;
    constexpr int laterDelay = 5000; // ms
    m_timer.setInterval(delay);
    m_later.setInterval(laterDelay);
    for (QTimer* const timer : {&m_timer, &m_later}) {
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, &PathWatcher::changed);
    }
    connect(m_thread, &QThread::finished, m_watch, &QObject::deleteLater);
    connect(
        m_thread, &QThread::finished, m_thread, [ear = m_ear] { ear->wait(); },
        Qt::DirectConnection);
    m_watch->moveToThread(m_thread);
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

void PathWatcher::tellLater()
{
    if (!m_later.isActive())
        m_later.start();
}

void PathWatcher::watch(const QStringList& paths)
{
    watchMany([paths] { return paths; });
}

void PathWatcher::watchMany(std::function<QStringList()> paths)
{
    QMetaObject::invokeMethod(
        m_watch, [watch = m_watch, paths = std::move(paths)] { watch->watchOnly(paths()); });
}

} // namespace vexdesk
