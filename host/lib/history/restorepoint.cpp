// SPDX-License-Identifier: MIT
#include <vexdesk/history/restorepoint.h>

#include "restorefiles.h"
#include "touchedfiles.h"

#include <vexdesk/history/filestate.h>
#include <vexdesk/history/serieslock.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>
#include <QtCore/QThread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <optional>
#include <utility>

namespace vexdesk {

using restore::Text;

namespace {

// Whether somebody else has it. Where the file system knows no such locks nobody is seen to.
bool isTaken(int descriptor, int how)
{
    return ::flock(descriptor, how | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

int openDirectory(const QString& path)
{
    return ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

// One making or removing of points at a time. It is an open directory that is locked, so that
// nothing is left of a process that ends.
class PlaceLock final
{
public:
    explicit PlaceLock(const RestorePlace& place)
        : m_path(place.path + QStringLiteral("/locks"))
        , m_directory(opened(m_path))
    {}

    Outcome take() const
    {
        constexpr std::chrono::seconds enough{30};
        constexpr unsigned long pause = 20;
        const QDeadlineTimer end(enough);
        if (!m_directory.isOpen())
            return failure(Step::failed());
        while (isTaken(m_directory.get(), LOCK_EX)) {
            if (end.hasExpired())
                return failure(Step::failed());
            QThread::msleep(pause);
        }
        return {};
    }

private:
    static int opened(const QString& path)
    {
        return makeDirectory(path) ? openDirectory(path) : -1;
    }

    Failure failure(const Step& step) const
    {
        return {Text::tr("Невозможно занять каталог %1: %2").arg(m_path, step.reason())};
    }

    QString m_path;
    Descriptor m_directory;
};

// Its job holds it, or whoever puts it back.
bool isAtWork(const QString& path)
{
    const Descriptor directory(openDirectory(path));
    return directory.isOpen() && isTaken(directory.get(), LOCK_EX);
}

bool haveSameContent(const QString& left, const QString& right)
{
    QFile one(left);
    QFile other(right);
    return one.open(QIODevice::ReadOnly) && other.open(QIODevice::ReadOnly) &&
           one.readAll() == other.readAll() && one.error() == QFileDevice::NoError &&
           other.error() == QFileDevice::NoError;
}

} // namespace

QStringList RestorePointRecord::paths() const
{
    return sortedByCodePoint(kept + created);
}

class RestorePoint::Private final
{
public:
    Private(const RestorePlace& where, const QString& by, const QStringList& series,
            const QStringList& source)
        : place(where)
    {
        record.by = by;
        record.series = sortedByCodePoint(series);
        record.source = sortedByCodePoint(source);
    }
    ~Private() { closeAll(); }
    Q_DISABLE_COPY_MOVE(Private)

    Outcome keep(const QStringList& paths);
    Outcome finish();
    Outcome takeBack();
    void remove();

    RestorePlace place;
    RestorePointRecord record;

private:
    bool isMade() const { return !record.id.isNull(); }
    QString directory() const { return restore::directoryOf(place, record.id); }
    QString copyOf(const QString& relative) const { return directory() + u'/' + relative; }

    Outcome make(const QString& firstPath);
    Outcome makePoint();
    Outcome keepOne(const QString& path, const QString& relative, QByteArray& journal);
    std::optional<ContentSum> copy(const QString& path, const QString& relative);
    void closeAll();
    QStringList forgetUntouched();
    bool isUntouched(const TouchedFiles::File& file) const;
    bool isAway(const TouchedFiles::File& file) const;
    Outcome putBackAll() const;
    Outcome writeComplete();
    Failure notKept(const QString& path, const QString& reason);

    TouchedFiles m_touched;
    QSet<QString> m_directories; ///< of these files, as far as they were there
    QString m_lastDirectory;     ///< that was made in the point
    std::optional<Failure> m_failure;
    int m_journal = -1;
    int m_lock = -1; ///< the open directory
};

Failure RestorePoint::Private::notKept(const QString& path, const QString& reason)
{
    m_failure = Failure{Text::tr("Файл %1 не тронут: его прежнее состояние не удалось сохранить в "
                                 "%2: %3")
                            .arg(path, isMade() ? directory() : place.path, reason)};
    return *m_failure;
}

Outcome RestorePoint::Private::keep(const QStringList& paths)
{
    if (m_failure)
        return *m_failure;
    QByteArray journal;
    QString first;
    for (const QString& path : paths) {
        const QString relative = path.section(u'/', -4);
        if (m_touched.contains(relative))
            continue;
        if (first.isNull())
            first = path;
        if (Outcome kept = keepOne(path, relative, journal); !kept)
            return kept;
    }
    const Step written = writeAll(m_journal, journal);
    return written.isDone() ? Outcome() : notKept(first, written.reason());
}

Outcome RestorePoint::Private::keepOne(const QString& path, const QString& relative,
                                       QByteArray& journal)
{
    const auto [kind, state] = lookAt(path);
    if (kind == PathKind::Other)
        return {};
    if (kind == PathKind::Unknown)
        return notKept(path, Step::failed().reason());
    if (!restore::isStorePath(relative))
        return notKept(path, Text::tr("это не файл дня"));
    if (!isMade()) {
        if (Outcome made = make(path); !made)
            return made;
    }
    std::optional<TouchedFiles::Kept> kept;
    if (state) {
        const std::optional<ContentSum> sum = copy(path, relative);
        if (!sum)
            return *m_failure;
        kept = {*state, *sum};
    }
    journal += restore::journalLine(kept ? 'K' : 'C', relative);
    m_touched.insert(path, relative, kept);
    const QString directory = QFileInfo(path).path();
    if (!m_directories.contains(directory) && QFileInfo(directory).isDir())
        m_directories.insert(directory);
    return {};
}

// No value where it fails, which is then the point's failure.
std::optional<ContentSum> RestorePoint::Private::copy(const QString& path, const QString& relative)
{
    const auto refuse = [this, &path](const QString& reason) {
        static_cast<void>(notKept(path, reason));
        return std::nullopt;
    };
    const QString to = copyOf(relative);
    if (const QString directory = QFileInfo(to).path(); directory != m_lastDirectory) {
        if (!makeDirectory(directory))
            return refuse(Text::tr("невозможно создать каталог %1").arg(directory));
        m_lastDirectory = directory;
    }
    const Descriptor from(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!from.isOpen())
        return refuse(Step::failed().reason());
    const std::optional<ContentSum> sum = restore::keepCopy(from.get(), to);
    return sum ? sum : refuse(Step::failed().reason());
}

Outcome RestorePoint::Private::make(const QString& firstPath)
{
    PlaceLock lock(place);
    if (const Outcome taken = lock.take(); !taken)
        return notKept(firstPath, taken.message());
    const Result<QStringList> ids = restore::idsIn(place);
    if (!ids)
        return notKept(firstPath, ids.message());
    record.when = QDateTime::currentDateTimeUtc();
    QDateTime moment = record.when;
    // The last command's point is the newest, also of a clock that was ahead and has been set
    // right.
    if (const auto newest = restore::takeIdApart(ids->value(0)))
        moment = std::max(moment, newest->first);
    qint64 number = 0;
    const QString second = restore::idOf(moment, 0).chopped(1);
    for (const QString& id : *ids) {
        if (id.startsWith(second))
            number = std::max(number, restore::takeIdApart(id)->second);
    }
    record.id = restore::idOf(moment, number + 1);
    const Outcome made = makePoint();
    if (made)
        return {};
    closeAll();
    record.id = QString();
    return notKept(firstPath, made.message());
}

// Under another name, until all is in it that makes it a point.
Outcome RestorePoint::Private::makePoint()
{
    const QString path = temporaryPathIn(place.path);
    const QByteArray name = QFile::encodeName(path);
    if (::mkdir(name.constData(), 0777) != 0)
        return Failure{Step::failed().reason()};
    m_lock = openDirectory(path);
    Step step = m_lock >= 0 && !isTaken(m_lock, LOCK_EX) ? Step::done() : Step::failed();
    Outcome written;
    if (step.isDone())
        written = restore::writeRecord(path, record, m_touched);
    if (step.isDone() && written) {
        m_journal = ::open((name + "/journal").constData(),
                           O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
        step = m_journal >= 0 ? Step::done() : Step::failed();
    }
    if (step.isDone() && written)
        step = stepOf(::rename(name.constData(), QFile::encodeName(directory()).constData()));
    if (step.isDone() && written)
        return {};
    QDir(path).removeRecursively();
    return written ? Outcome(Failure{step.reason()}) : written;
}

void RestorePoint::Private::closeAll()
{
    for (int* const descriptor : {&m_journal, &m_lock}) {
        if (*descriptor >= 0)
            ::close(std::exchange(*descriptor, -1));
    }
}

// Its time may be that of a change of this very moment: the content decides.
bool RestorePoint::Private::isUntouched(const TouchedFiles::File& file) const
{
    const auto [kind, left] = lookAt(file.path);
    if (!file.kept)
        return (kind == PathKind::Missing && !isAway(file)) || kind == PathKind::Other;
    return left && left->isUnchanged(file.kept->state) &&
           haveSameContent(file.path, copyOf(file.relative));
}

// Where the disk has gone, or the directory bears another name: what became of the file is not
// seen.
bool RestorePoint::Private::isAway(const TouchedFiles::File& file) const
{
    const QString directory = QFileInfo(file.path).path();
    return m_directories.contains(directory) && !QFileInfo(directory).isDir();
}

QStringList RestorePoint::Private::forgetUntouched()
{
    QStringList copies;
    m_touched.removeIf([this, &copies](const TouchedFiles::File& file) {
        if (!isUntouched(file))
            return false;
        if (file.kept)
            copies.append(file.relative);
        return true;
    });
    return copies;
}

Outcome RestorePoint::Private::finish()
{
    if (!isMade())
        return {};
    const QStringList untouched = forgetUntouched();
    if (m_touched.isEmpty()) {
        remove();
        return {};
    }
    if (Outcome written = writeComplete(); !written)
        return written;
    for (const QString& relative : untouched) {
        QFile::remove(copyOf(relative));
        QDir(directory()).rmpath(relative.section(u'/', 0, -2));
    }
    closeAll();
    return {};
}

Outcome RestorePoint::Private::writeComplete()
{
    record.isComplete = true;
    Step step = restore::writeSums(place, record.id, m_touched);
    Outcome written;
    if (step.isDone())
        written = restore::writeRecord(directory(), record, m_touched);
    if (step.isDone() && written)
        step = stepOf(::unlink((QFile::encodeName(directory()) + "/journal").constData()));
    closeAll();
    if (step.isDone() && written)
        return {};
    return Failure{Text::tr("Точка возврата %1 не дописана: %2; вернуть её можно")
                       .arg(directory(), written ? step.reason() : written.message())};
}

Outcome RestorePoint::Private::takeBack()
{
    if (!isMade())
        return {};
    const Outcome back = putBackAll();
    if (!back) {
        static_cast<void>(finish());
        return Failure{
            Text::tr("%1. Точка возврата %2 остаётся: когда причины не будет, вернуть всё "
                     "можно по ней")
                .arg(back.message(), record.id)};
    }
    remove();
    return {};
}

// What was made goes first: on a full disk that makes room.
Outcome RestorePoint::Private::putBackAll() const
{
    Outcome back;
    m_touched.forEach([this, &back](const TouchedFiles::File& file) {
        if (back && isAway(file))
            back = restore::notPutBack(file.path, qt_error_string(ENOENT));
    });
    m_touched.forEach([this, &back](const TouchedFiles::File& file) {
        if (back && !file.kept && !isUntouched(file))
            back = restore::removeCreated(file.path);
    });
    m_touched.forEach([this, &back](const TouchedFiles::File& file) {
        if (back && file.kept && !isUntouched(file))
            back = restore::putLastCopyBack(copyOf(file.relative), file.path);
    });
    return back;
}

void RestorePoint::Private::remove()
{
    if (!isMade())
        return;
    static_cast<void>(restore::removePoint(place, record.id));
    closeAll();
    record.id = QString();
}

RestorePoint::RestorePoint(const RestorePlace& place, const QString& by, const QStringList& series,
                           const QStringList& source)
    : m_d(std::make_unique<Private>(place, by, series, source))
{}

RestorePoint::~RestorePoint() = default;

Outcome RestorePoint::keep(const QStringList& paths)
{
    return m_d->keep(paths);
}

Outcome RestorePoint::finish()
{
    return m_d->finish();
}

Outcome RestorePoint::takeBack()
{
    return m_d->takeBack();
}

void RestorePoint::remove()
{
    m_d->remove();
}

QString RestorePoint::id() const
{
    return m_d->record.id;
}

// Whoever puts it back shares the lock, and so do those that ask this way.
bool isJobRunning(const RestorePlace& place, const QString& id)
{
    const Descriptor directory(openDirectory(restore::directoryOf(place, id)));
    return directory.isOpen() && isTaken(directory.get(), LOCK_SH);
}

Outcome pruneRestorePoints(const RestorePlace& place, const RestoreLimits& limits)
{
    if (!QFileInfo(place.path).isDir())
        return {};
    PlaceLock lock(place);
    if (Outcome taken = lock.take(); !taken)
        return taken;
    removeLeftovers(place.path);
    const Result<QStringList> ids = restore::idsIn(place);
    if (!ids)
        return ids.failure();
    qint64 bytes = 0;
    for (qsizetype i = 0; i < ids->size(); ++i) {
        const QString& id = ids->at(i);
        bytes += restore::bytesOf(place, id);
        const bool isBeyond = i >= limits.keep || bytes > limits.bytes;
        if (i == 0 || !isBeyond || isAtWork(restore::directoryOf(place, id)))
            continue;
        if (Outcome removed = restore::removePoint(place, id); !removed)
            return removed;
    }
    return {};
}

} // namespace vexdesk
