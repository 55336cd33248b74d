// SPDX-License-Identifier: MIT
#include <vexdesk/history/links.h>

#include <vexdesk/history/filestate.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::Links)
};

// As many as the system follows.
constexpr int longestChain = 40;

bool isNoLink(int error)
{
    return error == EINVAL || error == ENOENT || error == ENOTDIR;
}

QString joined(const QString& link, const QString& target)
{
    // Nothing is cleaned: ".." after a link is another directory than it looks.
    return target.startsWith(u'/') ? target : QFileInfo(link).path() + u'/' + target;
}

} // namespace

std::optional<QString> behindLinks(const QString& path)
{
    QString target = path;
    QByteArray content(PATH_MAX, Qt::Uninitialized);
    for (int followed = 0; followed <= longestChain; ++followed) {
        const ssize_t size = ::readlink(QFile::encodeName(target).constData(), content.data(),
                                        static_cast<size_t>(content.size()));
        if (size < 0)
            return isNoLink(errno) ? std::optional(target) : std::nullopt;
        target = joined(target, QFile::decodeName(content.first(size)));
    }
    errno = ELOOP;
    return std::nullopt;
}

std::optional<QString> withoutLinks(const QString& path)
{
    struct Freeing
    {
        void operator()(char* text) const { std::free(text); }
    };
    const std::unique_ptr<char, Freeing> found(
        ::realpath(QFile::encodeName(path).constData(), nullptr));
    return found ? std::optional(QFile::decodeName(found.get())) : std::nullopt;
}

bool isLostLink(const QString& path)
{
    struct stat status = {};
    return isMissing(path) && ::lstat(QFile::encodeName(path).constData(), &status) == 0 &&
           S_ISLNK(status.st_mode);
}

Failure lostLink(const QString& path)
{
    return {Text::tr("Ссылка %1 никуда не ведёт: подключите диск, на который она указывает, или "
                     "удалите её")
                .arg(path)};
}

Outcome mayBeMade(const QString& path)
{
    const std::optional<QString> target = behindLinks(path);
    if (!target && errno == ELOOP)
        return lostLink(path);
    if (!target)
        return Failure{Text::tr("Ссылка %1 не читается: %2").arg(path, qt_error_string(errno))};
    const bool isLink = *target != path;
    return isLink && isMissing(QFileInfo(*target).path()) ? lostLink(path) : Outcome();
}

} // namespace vexdesk
