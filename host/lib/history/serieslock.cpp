// SPDX-License-Identifier: MIT
#include <vexdesk/history/serieslock.h>

#include "systemfile.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>
#include <QtCore/QSysInfo>
#include <QtCore/QThread>

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <vector>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::SeriesLocks)
};

QString lockPath(const RestorePlace& place, const QString& series)
{
    return QStringLiteral("%1/locks/%2.lock").arg(place.path, series);
}

Failure cannotBeMade(const QString& path, int error)
{
    return {Text::tr("Невозможно создать файл блокировки %1").arg(path), qt_error_string(error)};
}

// The number of a process may be another one's by now.
bool mayRun(const LockHolder& holder)
{
    if (::kill(static_cast<pid_t>(holder.process), 0) != 0 && errno == ESRCH)
        return false;
    const QString program =
        QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(holder.process)))
            .fileName();
    return program.isEmpty() || program.startsWith(holder.program);
}

// The lock file as it is, without an object that could take it.
std::optional<LockHolder> holderOf(const QString& path)
{
    if (isMissing(path))
        return std::nullopt;
    const QLockFile lock(path);
    LockHolder holder;
    if (const auto state = fileState(path))
        holder.since = state->modified;
    if (!lock.getLockInfo(&holder.process, &holder.host, &holder.program))
        return holder;
    const bool isHere = holder.host.isEmpty() || holder.host == QSysInfo::machineHostName();
    holder.runsHere = isHere && mayRun(holder);
    return holder;
}

// A process may end between making its lock and writing who it is. Whoever is still about to write
// has the file locked by the system, or is at it this moment.
void removeIfUnfinished(const QString& path)
{
    constexpr int moment = 2;
    const std::optional<LockHolder> holder = holderOf(path);
    const QDateTime modified = QFileInfo(path).lastModified();
    if (!holder || holder->process != 0 || modified.secsTo(QDateTime::currentDateTime()) < moment)
        return;
    const QByteArray name = QFile::encodeName(path);
    const Descriptor file(::open(name.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    if (file.isOpen() && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0 &&
        QFileInfo(path).lastModified() == modified)
        ::unlink(name.constData());
}

Failure heldBySomebody(const QString& path, const QString& series)
{
    return {Text::tr("Серию %1 сейчас меняет другая программа; блокировка: %2").arg(series, path)};
}

Failure heldBy(const QString& path, const QString& series)
{
    const LockHolder holder = holderOf(path).value_or(LockHolder());
    if (holder.process == 0)
        return heldBySomebody(path, series);
    return {Text::tr("Серию %1 сейчас меняет %2 (процесс %3, компьютер %4); блокировка: %5")
                .arg(series, holder.program, QString::number(holder.process), holder.host, path)};
}

// In the order of code points the characters beyond 16 bits come last: their halves lie below
// others.
char16_t rank(QChar character)
{
    const char16_t unit = character.unicode();
    if (unit >= 0xe000)
        return static_cast<char16_t>(unit - 0x800);
    return static_cast<char16_t>(unit >= 0xd800 ? unit + 0x2000 : unit);
}

bool isBefore(const QString& left, const QString& right)
{
    return std::lexicographical_compare(
        left.begin(), left.end(), right.begin(), right.end(),
        [](QChar one, QChar other) { return rank(one) < rank(other); });
}

// What came of waiting for a lock.
struct LockWait
{
    enum class End { Taken, Held, CannotBeMade };
    End end = End::Held;
    int error = 0; // of the system, where it cannot be made
};

constexpr unsigned long pause = 20; // ms between two looks at a lock

// One of a process that runs no more does not count.
LockWait waitForLock(QLockFile& lock, std::chrono::milliseconds wait, const std::atomic<bool>* stop)
{
    lock.setStaleLockTime(0);
    const QDeadlineTimer end(wait);
    for (;;) {
        errno = 0;
        if (lock.tryLock(0))
            return {LockWait::End::Taken};
        // The call that has failed was the last one.
        const int error = errno;
        if (lock.error() != QLockFile::LockFailedError)
            return {LockWait::End::CannotBeMade, error};
        if (stop && *stop)
            return {};
        removeIfUnfinished(lock.fileName());
        if (end.hasExpired())
            return {};
        QThread::msleep(pause);
    }
}

// Users for whom nothing can be made beside the store have their lock files where nobody else
// looks: each of them holds the directory of the series alone, by a lock of the system. Those whose
// lock files everybody sees hold it together: among them the files decide. A file system without
// such locks has none, and a directory that may not be read.
bool waitForDirectory(const Descriptor& directory, bool alone, const QDeadlineTimer& end,
                      const std::atomic<bool>* stop)
{
    while (::flock(directory.get(), (alone ? LOCK_EX : LOCK_SH) | LOCK_NB) != 0 &&
           errno == EWOULDBLOCK) {
        if ((stop && *stop) || end.hasExpired())
            return false;
        QThread::msleep(pause);
    }
    return true;
}

} // namespace

class SeriesLocks::Private final
{
public:
    Outcome take(const RestorePlace& place, const QString& series, const QDeadlineTimer& end,
                 const std::atomic<bool>* stop)
    {
        const QString path = lockPath(place, series);
        if (!makeDirectory(QFileInfo(path).path()))
            return cannotBeMade(path, errno);
        auto lock = std::make_unique<QLockFile>(path);
        const LockWait wait =
            waitForLock(*lock, std::chrono::milliseconds(end.remainingTime()), stop);
        switch (wait.end) {
        case LockWait::End::Taken:
            locks.push_back(std::move(lock));
            return takeDirectory(place, series, end, stop);
        case LockWait::End::CannotBeMade:
            return cannotBeMade(path, wait.error);
        case LockWait::End::Held:
            break;
        }
        return heldBy(path, series);
    }

    std::vector<std::unique_ptr<QLockFile>> locks;
    std::vector<std::unique_ptr<Descriptor>> directories;

private:
    Outcome takeDirectory(const RestorePlace& place, const QString& series,
                          const QDeadlineTimer& end, const std::atomic<bool>* stop)
    {
        const QString path = QStringLiteral("%1/%2").arg(place.root, series);
        const int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
        auto directory =
            std::make_unique<Descriptor>(::open(QFile::encodeName(path).constData(), flags));
        if (!waitForDirectory(*directory, !place.isBesideStore(), end, stop))
            return heldBySomebody(path, series);
        directories.push_back(std::move(directory));
        return {};
    }
};

SeriesLocks::SeriesLocks()
    : m_d(std::make_unique<Private>())
{}

SeriesLocks::~SeriesLocks() = default;

Outcome SeriesLocks::take(const RestorePlace& place, const QStringList& series,
                          std::chrono::milliseconds wait, const std::atomic<bool>* stop)
{
    const QDeadlineTimer end(wait);
    const QStringList sorted = sortedByCodePoint(series);
    for (const QString& one : sorted) {
        if (Outcome taken = m_d->take(place, one, end, stop); !taken) {
            release();
            return taken;
        }
    }
    for (const QString& one : sorted)
        removeLeftovers(QStringLiteral("%1/%2").arg(place.root, one));
    return {};
}

void SeriesLocks::release()
{
    m_d->directories.clear();
    m_d->locks.clear();
}

std::optional<LockHolder> lockHolder(const RestorePlace& place, const QString& series)
{
    return holderOf(lockPath(place, series));
}

Outcome removeLock(const RestorePlace& place, const QString& series)
{
    QFile lock(lockPath(place, series));
    return lock.remove() ? Outcome()
                         : Failure{Text::tr("Невозможно удалить файл блокировки %1: %2")
                                       .arg(lock.fileName(), lock.errorString())};
}

QStringList sortedByCodePoint(QStringList texts)
{
    texts.removeDuplicates();
    std::sort(texts.begin(), texts.end(), isBefore);
    return texts;
}

} // namespace vexdesk
