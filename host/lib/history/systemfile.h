// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/filestate.h>
#include <vexdesk/outcome.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <cerrno>
#include <functional>
#include <optional>

class QFileDevice;

/// Calls of the system on files of the store, for those parts of the library that replace them.
/// Any thread.
namespace vexdesk {

// What came of a call of the system.
class [[nodiscard]] Step final
{
public:
    static Step done() { return Step(0); }
    /// By the error of the call that failed last.
    static Step failed();

    bool isDone() const { return m_error == 0; }
    /// Whether nothing is wrong with the disk, but the directory allows no such step: by its
    /// permissions, or because the file is a mount of its own.
    bool isRefused() const;
    /// Whether there is no room left.
    bool isFull() const { return m_error == ENOSPC || m_error == EDQUOT; }
    QString reason() const { return qt_error_string(m_error); }

private:
    explicit Step(int error)
        : m_error(error)
    {}
    int m_error;
};

inline Step stepOf(int result)
{
    return result == 0 ? Step::done() : Step::failed();
}

// An open file, which is closed when it goes.
class Descriptor final
{
public:
    explicit Descriptor(int descriptor)
        : m_descriptor(descriptor)
    {}
    ~Descriptor();
    Q_DISABLE_COPY_MOVE(Descriptor)

    bool isOpen() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }
    /// Some file systems say only now what they could not keep.
    Step close();

private:
    int m_descriptor;
};

// A file's name, which is removed when it goes unless it was kept.
class TemporaryName final
{
public:
    explicit TemporaryName(const QByteArray& path)
        : m_path(path)
    {}
    ~TemporaryName();
    Q_DISABLE_COPY_MOVE(TemporaryName)

    Step renameTo(const QByteArray& path);

private:
    QByteArray m_path;
    bool m_isKept = false;
};

/// ".tadata-<pid>-<random>.tmp" in a directory: the name of a file that becomes another one. Nobody
/// takes it for a day file.
QString temporaryPathIn(const QString& directory);

/// Removes from a directory what processes that run no more have left under such names.
void removeLeftovers(const QString& directory);

/// What a path leads to, through links. Unknown where the system cannot look; errno then says why.
enum class PathKind { Missing, File, Other, Unknown };
struct PathLook
{
    PathKind kind = PathKind::Unknown;
    std::optional<FileState> state = {}; ///< of a file
};
PathLook lookAt(const QString& path);
inline PathKind kindOf(const QString& path)
{
    return lookAt(path).kind;
}

/// What of a directory is listed: links count as what they lead to, but for OwnDirectories, and one
/// that leads nowhere as a file: who opens it says so. What cannot be looked at is listed.
enum class EntryKind { Anything, Files, Directories, OwnDirectories };

/// Gives each name in a directory to the visitor, hidden ones too, in no order, until he returns
/// false. A directory that is not there has none; of one that cannot be read to its end the
/// failure says so, with its path.
Outcome visitNamesIn(const QString& directory, EntryKind kind,
                     const std::function<bool(const QString& name)>& visit);

/// All of them at once.
Result<QStringList> namesIn(const QString& directory, EntryKind kind = EntryKind::Anything);

/// Whether the directory is there, made with those above it when it is missing.
bool makeDirectory(const QString& path);

/// Gives a file all these bytes, at the place where it is.
Step writeAll(int descriptor, QByteArrayView bytes);

/// A file's content as a number, to see whether it is still what it was; not against malice.
struct ContentSum
{
    qint64 size = 0;
    quint64 sum = 0;

    bool operator==(const ContentSum& other) const = default;
};

/// Copies what an open file holds from its beginning into another one, from where that stands. No
/// value where it fails, errno then says why. With -1 as `to` it is only read.
std::optional<ContentSum> copyContent(int from, int to);

/// Gives a file the permissions and times of another.
Step takeModeAndTimes(int descriptor, int from);

/// Gives a new file the permissions, owner and group of another; false where it cannot have them.
bool takeAccess(int descriptor, int from);

/// A file of the library's own that is written piece by piece, and is there whole or not at all.
class WholeFile final
{
public:
    explicit WholeFile(const QString& path);

    /// What fails shows at the end.
    void write(QByteArrayView piece);
    /// Once; without it nothing is left.
    Step finish();

private:
    void passOn(QByteArrayView bytes);

    QByteArray m_path;
    QByteArray m_beside;
    Descriptor m_file;
    std::optional<TemporaryName> m_name; ///< none where it could not be made
    Step m_step;
    QByteArray m_pieces; ///< that the file has not got yet
};

/// The same of a content that is at hand.
Step writeWhole(const QString& path, QByteArrayView content);

/// Gives a file what an open one holds, with the permissions and times of that, whole or not at
/// all: by a file beside it, which takes its place and, where one is given, the permissions, owner
/// and group of the old file. Refused where the directory does not allow that.
Step replaceWhole(int from, const QString& target, int old = -1);

/// Gives a file's content to another name, which takes the place of the file there: it needs no
/// room on the disk. Both must belong to the same owner; where they are links or lie on two file
/// systems it fails.
Step putInPlace(const QString& path, const QString& target);

/// The state of an open file, see fileState(QString).
std::optional<FileState> fileState(const QFileDevice& file);
std::optional<FileState> fileState(int descriptor);

} // namespace vexdesk
