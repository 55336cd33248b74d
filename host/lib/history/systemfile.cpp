// SPDX-License-Identifier: MIT
#include "systemfile.h"

#include <vexdesk/history/links.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRandomGenerator>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <memory>
#include <utility>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::Directories)
};

constexpr mode_t permissions = 07777;

const QString temporaryBegin = QStringLiteral(".tadata-");
const QString temporaryEnd = QStringLiteral(".tmp");

// Of a file that is read in blocks of one size, each filled as far as the file goes. Several sums
// side by side keep the processor busy.
class Summing final
{
public:
    void add(QByteArrayView block)
    {
        constexpr qsizetype step = 64;
        qsizetype at = 0;
        for (; at + step <= block.size(); at += step) {
            for (size_t lane = 0; lane < m_lanes.size(); ++lane)
                mix(m_lanes[lane], block.data() + at + 8 * lane, 8);
        }
        for (; at < block.size(); ++at)
            mix(m_lanes[0], block.data() + at, 1);
        m_size += block.size();
    }

    ContentSum result() const
    {
        quint64 sum = 0;
        for (const quint64 lane : m_lanes)
            sum = std::rotl(sum, 21) ^ lane;
        return {m_size, sum};
    }

private:
    static void mix(quint64& lane, const char* from, size_t size)
    {
        constexpr quint64 odd = 0x9e3779b97f4a7c15;
        quint64 word = 0;
        std::memcpy(&word, from, size);
        lane = std::rotl((lane ^ word) * odd, 29);
    }

    std::array<quint64, 8> m_lanes{1, 2, 3, 4, 5, 6, 7, 8};
    qint64 m_size = 0;
};

// As many bytes as there are, up to the size; negative where it fails.
qsizetype readBlock(int from, char* to, qsizetype size)
{
    qsizetype filled = 0;
    while (filled < size) {
        const ssize_t count = ::read(from, to + filled, static_cast<size_t>(size - filled));
        if (count == 0)
            break;
        if (count < 0 && errno != EINTR)
            return -1;
        filled += std::max<ssize_t>(count, 0);
    }
    return filled;
}

bool hasAccessList(int descriptor)
{
    return ::fgetxattr(descriptor, "system.posix_acl_access", nullptr, 0) > 0;
}

bool isRunning(pid_t process)
{
    return ::kill(process, 0) == 0 || errno != ESRCH;
}

bool isAbsence(int error)
{
    return error == ENOENT || error == ENOTDIR;
}

Failure cannotList(const QString& directory)
{
    return {
        Text::tr("Невозможно прочитать каталог %1: %2").arg(directory, Step::failed().reason())};
}

// Most file systems say with the name what it is.
bool isOfKind(const QString& directory, const dirent& entry, EntryKind kind)
{
    if (kind == EntryKind::Anything)
        return true;
    const bool ownOnly = kind == EntryKind::OwnDirectories;
    const unsigned char wanted = kind == EntryKind::Files ? DT_REG : DT_DIR;
    const bool mayBeIt = entry.d_type == DT_UNKNOWN || (entry.d_type == DT_LNK && !ownOnly);
    if (!mayBeIt)
        return entry.d_type == wanted;
    struct stat status = {};
    const QByteArray path = QFile::encodeName(directory) + '/' + entry.d_name;
    if ((ownOnly ? ::lstat(path.constData(), &status) : ::stat(path.constData(), &status)) != 0)
        return (!isAbsence(errno) && errno != ELOOP) ||
               (wanted == DT_REG && isLostLink(QFile::decodeName(path)));
    return wanted == DT_REG ? S_ISREG(status.st_mode) : S_ISDIR(status.st_mode);
}

// The process that has such a file; no value for other names.
std::optional<pid_t> makerOf(const QString& name)
{
    if (!name.startsWith(temporaryBegin) || !name.endsWith(temporaryEnd))
        return std::nullopt;
    const int process = name.section(u'-', 1, 1).toInt();
    return process > 0 ? std::optional<pid_t>(process) : std::nullopt;
}

} // namespace

Step Step::failed()
{
    return Step(errno);
}

bool Step::isRefused() const
{
    constexpr std::array refusals{EACCES, EPERM, EROFS, EBUSY, EXDEV};
    return std::find(refusals.begin(), refusals.end(), m_error) != refusals.end();
}

Descriptor::~Descriptor()
{
    if (isOpen())
        ::close(m_descriptor);
}

Step Descriptor::close()
{
    return stepOf(::close(std::exchange(m_descriptor, -1)));
}

TemporaryName::~TemporaryName()
{
    if (!m_isKept)
        ::unlink(m_path.constData());
}

Step TemporaryName::renameTo(const QByteArray& path)
{
    const Step renamed = stepOf(::rename(m_path.constData(), path.constData()));
    m_isKept = renamed.isDone();
    return renamed;
}

QString temporaryPathIn(const QString& directory)
{
    return QStringLiteral("%1/%2%3-%4%5")
        .arg(directory, temporaryBegin, QString::number(::getpid()),
             QString::number(QRandomGenerator::global()->generate()), temporaryEnd);
}

void removeLeftovers(const QString& directory)
{
    const Result<QStringList> names = namesIn(directory);
    if (!names)
        return;
    for (const QString& name : *names) {
        const std::optional<pid_t> maker = makerOf(name);
        if (!maker || isRunning(*maker))
            continue;
        const QString path = directory + u'/' + name;
        const QFileInfo left(path);
        if (left.isDir() && !left.isSymLink())
            QDir(path).removeRecursively();
        else
            ::unlink(QFile::encodeName(path).constData());
    }
}

Outcome visitNamesIn(const QString& directory, EntryKind kind,
                     const std::function<bool(const QString& name)>& visit)
{
    struct Closing
    {
        void operator()(DIR* open) const { ::closedir(open); }
    };
    const std::unique_ptr<DIR, Closing> open(::opendir(QFile::encodeName(directory).constData()));
    if (!open)
        return isAbsence(errno) ? Outcome() : cannotList(directory);
    for (;;) {
        errno = 0; // which alone tells an error from the end
        const dirent* const entry = ::readdir(open.get());
        if (!entry)
            return errno == 0 ? Outcome() : cannotList(directory);
        const QByteArrayView name(entry->d_name);
        if (name != "." && name != ".." && isOfKind(directory, *entry, kind) &&
            !visit(QFile::decodeName(entry->d_name)))
            return {};
    }
}

Result<QStringList> namesIn(const QString& directory, EntryKind kind)
{
    QStringList names;
    const Outcome listed = visitNamesIn(directory, kind, [&names](const QString& name) {
        names.append(name);
        return true;
    });
    return listed ? Result<QStringList>(names) : listed.failure();
}

bool makeDirectory(const QString& path)
{
    return QFileInfo(path).isDir() || QDir().mkpath(path);
}

Step writeAll(int descriptor, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), static_cast<size_t>(bytes.size()));
        if (count < 0 && errno != EINTR)
            return Step::failed();
        bytes = bytes.sliced(std::max<ssize_t>(count, 0));
    }
    return Step::done();
}

std::optional<ContentSum> copyContent(int from, int to)
{
    constexpr qsizetype blockSize = qsizetype(64) * 1024;
    QByteArray buffer(blockSize, Qt::Uninitialized);
    Summing sum;
    for (;;) {
        const qsizetype size = readBlock(from, buffer.data(), blockSize);
        if (size < 0)
            return std::nullopt;
        const QByteArrayView block(buffer.constData(), size);
        if (to >= 0 && !writeAll(to, block).isDone())
            return std::nullopt;
        sum.add(block);
        if (size < blockSize)
            return sum.result();
    }
}

Step takeModeAndTimes(int descriptor, int from)
{
    struct stat wanted = {};
    if (::fstat(from, &wanted) != 0 || ::fchmod(descriptor, wanted.st_mode & permissions) != 0)
        return Step::failed();
    const std::array times{wanted.st_atim, wanted.st_mtim};
    return stepOf(::futimens(descriptor, times.data()));
}

bool takeAccess(int descriptor, int from)
{
    struct stat wanted = {};
    struct stat own = {};
    if (::fstat(from, &wanted) != 0 || ::fstat(descriptor, &own) != 0)
        return false;
    const bool isOwn = own.st_uid == wanted.st_uid && own.st_gid == wanted.st_gid;
    if (!isOwn && ::fchown(descriptor, wanted.st_uid, wanted.st_gid) != 0)
        return false;
    // A mode may be set in part.
    return ::fchmod(descriptor, wanted.st_mode & permissions) == 0 &&
           ::fstat(descriptor, &own) == 0 && own.st_mode == wanted.st_mode &&
           !hasAccessList(from) && !hasAccessList(descriptor);
}

WholeFile::WholeFile(const QString& path)
    : m_path(QFile::encodeName(path))
    , m_beside(QFile::encodeName(temporaryPathIn(QFileInfo(path).path())))
    , m_file(::open(m_beside.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666))
    , m_step(m_file.isOpen() ? Step::done() : Step::failed())
{
    if (m_file.isOpen())
        m_name.emplace(m_beside);
}

void WholeFile::write(QByteArrayView piece)
{
    constexpr qsizetype enough = 16384;
    if (m_pieces.isEmpty() && piece.size() >= enough)
        return passOn(piece);
    m_pieces += piece;
    if (m_pieces.size() < enough)
        return;
    passOn(m_pieces);
    m_pieces.clear();
}

void WholeFile::passOn(QByteArrayView bytes)
{
    if (m_step.isDone())
        m_step = writeAll(m_file.get(), bytes);
}

Step WholeFile::finish()
{
    passOn(m_pieces);
    if (m_step.isDone())
        m_step = m_file.close();
    return m_step.isDone() ? m_name->renameTo(m_path) : m_step;
}

Step writeWhole(const QString& path, QByteArrayView content)
{
    WholeFile file(path);
    file.write(content);
    return file.finish();
}

Step putInPlace(const QString& path, const QString& target)
{
    const QByteArray from = QFile::encodeName(path);
    const QByteArray to = QFile::encodeName(target);
    struct stat one = {};
    struct stat other = {};
    if (::lstat(from.constData(), &one) != 0 || ::lstat(to.constData(), &other) != 0)
        return Step::failed();
    const bool haveSameOwner = one.st_uid == other.st_uid && one.st_gid == other.st_gid;
    if (!haveSameOwner || !S_ISREG(one.st_mode) || !S_ISREG(other.st_mode)) {
        errno = EPERM;
        return Step::failed();
    }
    const QByteArray beside = QFile::encodeName(temporaryPathIn(QFileInfo(target).path()));
    if (::link(from.constData(), beside.constData()) != 0)
        return Step::failed();
    return TemporaryName(beside).renameTo(to);
}

Step replaceWhole(int from, const QString& target, int old)
{
    const QByteArray beside = QFile::encodeName(temporaryPathIn(QFileInfo(target).path()));
    constexpr mode_t nobodyElse = 0600;
    Descriptor file(
        ::open(beside.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, nobodyElse));
    if (!file.isOpen())
        return Step::failed();
    TemporaryName name(beside);
    if (old >= 0 && !takeAccess(file.get(), old)) {
        errno = EPERM;
        return Step::failed();
    }
    if (!copyContent(from, file.get()))
        return Step::failed();
    if (const Step taken = takeModeAndTimes(file.get(), from); !taken.isDone())
        return taken;
    if (const Step closed = file.close(); !closed.isDone())
        return closed;
    return name.renameTo(QFile::encodeName(target));
}

} // namespace vexdesk
