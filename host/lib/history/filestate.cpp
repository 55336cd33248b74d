// SPDX-License-Identifier: MIT
#include <vexdesk/history/filestate.h>

#include "systemfile.h"

#include <QtCore/QFile>

#include <sys/stat.h>

namespace vexdesk {

namespace {

std::optional<FileState> stateOf(const struct stat& status)
{
    if (!S_ISREG(status.st_mode))
        return std::nullopt;
    constexpr qint64 nanosecondsOfSecond = 1000 * 1000 * 1000;
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
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? stateOf(status)
                                                                     : std::nullopt;
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
