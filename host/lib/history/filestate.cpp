// SPDX-License-Identifier: MIT
#include <vexdesk/history/filestate.h>

#include "systemfile.h"

#include <QtCore/QFile>

#include <sys/stat.h>

#include <cerrno>

namespace vexdesk {

namespace {

std::optional<FileState> stateOf(const struct stat& status)
{
    if (!S_ISREG(status.st_mode))
        return std::nullopt;
    constexpr qint64 nanosecondsOfSecond = 1'000'000'000;
    FileState state;
    state.device = status.st_dev;
    state.inode = status.st_ino;
    state.size = status.st_size;
    state.modified = status.st_mtim.tv_sec * nanosecondsOfSecond + status.st_mtim.tv_nsec;
    state.links = status.st_nlink;
    return state;
}

} // namespace

std::optional<FileState> fileState(const QString& path)
{
    return lookAt(path).state;
}

PathLook lookAt(const QString& path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) == 0) {
        const std::optional<FileState> state = stateOf(status);
        return {state ? PathKind::File : PathKind::Other, state};
    }
    const bool isMissing = errno == ENOENT || errno == ENOTDIR || errno == ELOOP;
    return {isMissing ? PathKind::Missing : PathKind::Unknown};
}

bool isMissing(const QString& path)
{
    return kindOf(path) == PathKind::Missing;
}

std::optional<FileState> fileState(const QFileDevice& file)
{
    return fileState(file.handle());
}

std::optional<FileState> fileState(int descriptor)
{
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 ? stateOf(status) : std::nullopt;
}

} // namespace vexdesk
