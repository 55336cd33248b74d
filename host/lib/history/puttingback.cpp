// SPDX-License-Identifier: MIT
// Looking at restore points and putting one of them back.
#include <vexdesk/history/restorepoint.h>

#include "restorefiles.h"

#include <vexdesk/history/filestate.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

namespace vexdesk {

using restore::Text;

namespace {

const QString undo = QStringLiteral("undo");

// An undo counts as long as it was not itself put back.
QSet<QString> withoutEffect(const QList<RestorePointRecord>& newestFirst)
{
    QSet<QString> putBack;
    QSet<QString> aside;
    for (const RestorePointRecord& point : newestFirst) {
        if (putBack.contains(point.id))
            aside.insert(point.id);
        if (point.by != undo || !point.isComplete || putBack.contains(point.id))
            continue;
        aside.insert(point.id);
        for (const QString& id : point.source)
            putBack.insert(id);
    }
    return aside;
}

bool hasHash(const QString& path, const QString& sha256)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) &&
           QString::fromLatin1(hash.result().toHex()) == sha256.toLower();
}

bool isAsLeft(const QString& path, const std::optional<LeftFile>& left)
{
    const std::optional<FileState> now = fileState(path);
    if (!now || !left)
        return now.has_value() == left.has_value();
    return now->size == left->size && (now->modified == left->modified ||
                                       (!left->sha256.isNull() && hasHash(path, left->sha256)));
}

QString pathOf(const RestorePlace& place, const QString& relative)
{
    return place.root + u'/' + relative;
}

Failure unreadable(const QString& directory, const Step& step)
{
    return {Text::tr("Точка возврата %1 не читается: %2").arg(directory, step.reason())};
}

// One that cannot be read may hold anything.
Result<QStringList> pathsOfNewer(const RestorePlace& place, const RestorePointRecord& point)
{
    const Result<QStringList> ids = restore::idsIn(place);
    if (!ids)
        return ids;
    QList<RestorePointRecord> newer;
    for (const QString& id : *ids) {
        if (id == point.id)
            break;
        const Result<RestorePointRecord> record = restore::readRecord(place, id);
        if (!record)
            return record.failure();
        newer.append(*record);
    }
    const QSet<QString> aside = withoutEffect(newer);
    QStringList paths;
    for (const RestorePointRecord& one : newer) {
        if (!aside.contains(one.id))
            paths += one.paths();
    }
    return paths;
}

} // namespace

Result<RestorePoints> restorePoints(const RestorePlace& place)
{
    const Result<QStringList> ids = restore::idsIn(place);
    if (!ids)
        return ids.failure();
    RestorePoints found;
    found.newest = ids->value(0);
    for (const QString& id : *ids) {
        if (const Result<RestorePointRecord> point = restore::readRecord(place, id))
            found.points.append(*point);
        else
            found.problems.append(point.message());
    }
    return found;
}

Result<RestorePointRecord> restorePoint(const RestorePlace& place, const QString& id)
{
    const auto none = [&] {
        return Failure{Text::tr("Точки возврата %1 в каталоге %2 нет").arg(id, place.path)};
    };
    if (!restore::takeIdApart(id))
        return none();
    const QString path = restore::directoryOf(place, id);
    struct stat status = {};
    const Step looked = stepOf(::lstat(QFile::encodeName(path).constData(), &status));
    if (!looked.isDone() && !isMissing(path))
        return unreadable(path, looked);
    if (!looked.isDone() || !S_ISDIR(status.st_mode))
        return none();
    return restore::readRecord(place, id);
}

Result<QStringList> whatForbidsPuttingBack(const RestorePlace& place,
                                           const RestorePointRecord& point)
{
    const Result<QStringList> newer = pathsOfNewer(place, point);
    if (!newer)
        return newer;
    const QSet<QString> ofNewer(newer->begin(), newer->end());
    QStringList paths;
    for (const QString& relative : point.paths()) {
        const auto left = point.left.constFind(relative);
        const auto asLeft = left == point.left.cend() ? std::nullopt : std::optional(*left);
        const QString path = pathOf(place, relative);
        if (ofNewer.contains(relative) || (point.isComplete && !isAsLeft(path, asLeft)))
            paths.append(path);
    }
    return paths;
}

class PuttingBack::Private final
{
public:
    Private(const RestorePlace& where, const RestorePointRecord& which)
        : place(where)
        , point(which)
        , directory(::open(QFile::encodeName(restore::directoryOf(where, which.id)).constData(),
                           O_RDONLY | O_DIRECTORY | O_CLOEXEC))
        , opened(directory.isOpen() ? Step::done() : Step::failed())
    {}

    QString copyOf(const QString& relative) const
    {
        return restore::directoryOf(place, point.id) + u'/' + relative;
    }

    Outcome check(const QString& relative, const std::optional<restore::Sums>& sums) const
    {
        const QString copy = copyOf(relative);
        const Descriptor file(::open(QFile::encodeName(copy).constData(),
                                     O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
        if (!file.isOpen())
            return notRead(copy, Step::failed());
        struct stat status = {};
        const Step looked = stepOf(::fstat(file.get(), &status));
        const bool isFile = looked.isDone() && S_ISREG(status.st_mode);
        const std::optional<ContentSum> now = isFile ? copyContent(file.get(), -1) : std::nullopt;
        if (!looked.isDone() || (isFile && !now))
            return notRead(copy, looked.isDone() ? Step::failed() : looked);
        const bool isRight =
            now && (!sums || (sums->contains(relative) && sums->value(relative) == *now));
        return isRight
                   ? Outcome()
                   : Failure{
                         Text::tr("Сохранённый файл %1 уже не тот, что был сохранён").arg(copy)};
    }

    static Failure notRead(const QString& copy, const Step& step)
    {
        return {Text::tr("Сохранённый файл %1 не читается: %2").arg(copy, step.reason())};
    }

    RestorePlace place;
    RestorePointRecord point;
    Descriptor directory;
    Step opened; ///< what came of opening it
};

PuttingBack::PuttingBack(const RestorePlace& place, const RestorePointRecord& point)
    : m_d(std::make_unique<Private>(place, point))
{}

PuttingBack::~PuttingBack() = default;

Outcome PuttingBack::begin()
{
    if (!m_d->directory.isOpen())
        return unreadable(restore::directoryOf(m_d->place, m_d->point.id), m_d->opened);
    if (::flock(m_d->directory.get(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return Failure{Text::tr("Точка возврата %1 занята: её задание ещё идёт или её удаляют")
                           .arg(restore::directoryOf(m_d->place, m_d->point.id))};
    const auto sums = m_d->point.isComplete ? restore::readSums(m_d->place, m_d->point.id)
                                            : Result<std::optional<restore::Sums>>(std::nullopt);
    if (!sums)
        return sums.failure();
    for (const QString& relative : m_d->point.kept) {
        if (Outcome checked = m_d->check(relative, *sums); !checked)
            return checked;
    }
    return {};
}

Outcome PuttingBack::run(FileKeeper* keeper)
{
    QStringList paths;
    for (const QString& relative : m_d->point.paths())
        paths.append(pathOf(m_d->place, relative));
    if (keeper) {
        if (Outcome kept = keeper->keep(paths); !kept)
            return kept;
    }
    for (const QString& relative : m_d->point.kept) {
        const QString path = pathOf(m_d->place, relative);
        if (Outcome back = restore::putCopyBack(m_d->copyOf(relative), path); !back)
            return back;
    }
    for (const QString& relative : m_d->point.created) {
        if (Outcome removed = restore::removeCreated(pathOf(m_d->place, relative)); !removed)
            return removed;
    }
    return {};
}

} // namespace vexdesk
