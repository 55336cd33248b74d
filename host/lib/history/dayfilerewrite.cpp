// SPDX-License-Identifier: MIT
#include <vexdesk/history/dayfilerewrite.h>

#include "systemfile.h"

#include <vexdesk/history/filestate.h>
#include <vexdesk/history/links.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::DayFileRewrite)
};

Failure notRewritten(const QString& path, const QString& reason, const QString& advice)
{
    return {Text::tr("Файл %1 не переписан: %2; %3.").arg(path, reason, advice)};
}

QString showAgain()
{
    return Text::tr("покажите интервал ещё раз и повторите удаление");
}

// What the user is told who deletes in the editor, and who imports.
enum class Work { Deletion, Import };

Failure changed(const QString& path, Work work)
{
    if (work == Work::Import)
        return notRewritten(path, Text::tr("он изменился, пока его читали"),
                            Text::tr("повторите импорт"));
    return notRewritten(path, Text::tr("он изменился после того, как был показан"), showAgain());
}

Failure failed(const QString& path, const QString& reason, Work work)
{
    return notRewritten(path, reason,
                        work == Work::Import
                            ? Text::tr("проверьте диск и права на файл и повторите импорт")
                            : Text::tr("проверьте диск и права на файл и повторите удаление"));
}

Failure failed(const QString& path, const Step& step, Work work)
{
    return failed(path, step.reason(), work);
}

Failure isNoFile(const QString& path)
{
    return notRewritten(path, Text::tr("это не обычный файл"),
                        Text::tr("уберите его из хранилища"));
}

// Each call of the system is given whole lines: who reads the file meanwhile meets no cut one.
Step writeLines(int descriptor, QByteArrayView content)
{
    constexpr qsizetype pieceSize = qsizetype(1024) * 1024;
    while (!content.isEmpty()) {
        qsizetype size = content.size();
        if (size > pieceSize) {
            qsizetype end = content.first(pieceSize).lastIndexOf('\n');
            if (end < 0)
                end = content.indexOf('\n', pieceSize);
            size = end < 0 ? size : end + 1;
        }
        const Step written = writeAll(descriptor, content.first(size));
        if (!written.isDone())
            return written;
        content = content.sliced(size);
    }
    return Step::done();
}

// Puts a content into an open file. Some file systems say only at closing what they could not keep,
// and any descriptor's closing makes them say it.
Step fill(int descriptor, QByteArrayView content)
{
    if (::ftruncate(descriptor, 0) != 0 || ::lseek(descriptor, 0, SEEK_SET) != 0)
        return Step::failed();
    const Step written = writeLines(descriptor, content);
    if (!written.isDone())
        return written;
    Descriptor duplicate(::fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
    return duplicate.isOpen() ? duplicate.close() : Step::failed();
}

std::optional<QByteArray> contentOf(int descriptor, qint64 size)
{
    QByteArray content(size, Qt::Uninitialized);
    qint64 position = 0;
    errno = EIO; // of a file that is shorter than it was
    while (position < size) {
        const ssize_t count = ::pread(descriptor, content.data() + position,
                                      static_cast<size_t>(size - position), position);
        if (count == 0 || (count < 0 && errno != EINTR))
            return std::nullopt;
        position += std::max<ssize_t>(count, 0);
    }
    return content;
}

bool isUnchanged(const std::optional<FileState>& state, const FileState& asRead)
{
    return state && state->isUnchanged(asRead);
}

// One rewriting of one file.
class Rewrite final
{
public:
    Rewrite(const QString& path, const FileState& asRead, int descriptor, Work work)
        : m_path(path)
        , m_asRead(asRead)
        , m_descriptor(descriptor)
        , m_work(work)
    {}

    Outcome write(const QByteArray& content) const;
    Outcome remove() const;

private:
    // No value: the directory does not allow it.
    std::optional<Outcome> replaceWhole(const QByteArray& content) const;
    Outcome writeInPlace(QByteArrayView content) const;

    const QString& m_path;
    const FileState& m_asRead;
    int m_descriptor; ///< of the file, for reading and writing
    Work m_work;
};

Outcome Rewrite::write(const QByteArray& content) const
{
    const std::optional<Outcome> replaced = replaceWhole(content);
    return replaced ? *replaced : writeInPlace(content);
}

std::optional<Outcome> Rewrite::replaceWhole(const QByteArray& content) const
{
    const std::optional<QString> target = behindLinks(m_path);
    if (!target)
        return failed(m_path, Step::failed(), m_work);
    const QByteArray path = QFile::encodeName(temporaryPathIn(QFileInfo(*target).path()));
    constexpr mode_t nobodyElse = 0600;
    Descriptor file(::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, nobodyElse));
    if (!file.isOpen()) {
        const Step made = Step::failed();
        return made.isRefused() ? std::nullopt
                                : std::optional<Outcome>(failed(m_path, made, m_work));
    }
    TemporaryName name(path);
    if (!takeAccess(file.get(), m_descriptor))
        return std::nullopt;
    Step step = writeLines(file.get(), content);
    if (step.isDone())
        step = file.close();
    if (!step.isDone())
        return failed(m_path, step, m_work);
    if (!isUnchanged(fileState(m_path), m_asRead))
        return changed(m_path, m_work);
    step = name.renameTo(QFile::encodeName(*target));
    if (step.isDone())
        return Outcome();
    return step.isRefused() ? std::nullopt : std::optional<Outcome>(failed(m_path, step, m_work));
}

Outcome Rewrite::writeInPlace(QByteArrayView content) const
{
    const std::optional<QByteArray> old = contentOf(m_descriptor, m_asRead.size);
    const Step read = Step::failed();
    if (!isUnchanged(fileState(m_path), m_asRead))
        return changed(m_path, m_work);
    if (!old)
        return failed(m_path, read, m_work);
    const Step written = fill(m_descriptor, content);
    if (written.isDone())
        return Outcome();
    // What could not even be emptied is as it was.
    if (isUnchanged(fileState(m_path), m_asRead) || fill(m_descriptor, *old).isDone())
        return failed(m_path, written, m_work);
    return Failure{Text::tr("Файл %1 испорчен: он был переписан не до конца, и вернуть прежнее "
                            "содержимое не удалось (%2); импортируйте этот день заново.")
                       .arg(m_path, written.reason())};
}

Outcome Rewrite::remove() const
{
    const bool isLink = QFileInfo(m_path).isSymLink();
    if (isLink) {
        if (const Outcome emptied = writeInPlace({}); !emptied)
            return emptied;
    }
    const Step removed = stepOf(::unlink(QFile::encodeName(m_path).constData()));
    if (removed.isDone())
        return Outcome();
    if (!isLink)
        return removed.isRefused() ? writeInPlace({}) : failed(m_path, removed, m_work);
    // Whoever made the link there, where we may not remove it, has an empty file.
    if (removed.isRefused())
        return Outcome();
    return Failure{
        Text::tr("Файл %1 пуст, но не удалён: %2; удалите его.").arg(m_path, removed.reason())};
}

} // namespace

Outcome rewriteDayFile(const QDir& dir, const QString& name, const QByteArray& content,
                       const FileState& asRead)
{
    const QString path = dir.filePath(name);
    switch (kindOf(path)) {
    case PathKind::File:
        break;
    case PathKind::Other:
        return isNoFile(path);
    case PathKind::Unknown:
        return failed(path, Step::failed(), Work::Deletion);
    case PathKind::Missing:
        return notRewritten(path, Text::tr("его больше нет"), showAgain());
    }
    // Both ways: what was there may have to be put back.
    Descriptor file(::open(QFile::encodeName(path).constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    if (!file.isOpen())
        return failed(path, Step::failed(), Work::Deletion);
    if (!isUnchanged(fileState(file.get()), asRead))
        return changed(path, Work::Deletion);
    const Rewrite rewrite(path, asRead, file.get(), Work::Deletion);
    return content.isEmpty() ? rewrite.remove() : rewrite.write(content);
}

Outcome writeDayFile(const QString& path, const QByteArray& content,
                     const std::optional<FileState>& asRead)
{
    constexpr Work work = Work::Import;
    const auto [kind, state] = lookAt(path);
    if (kind == PathKind::Other)
        return isNoFile(path);
    if (kind == PathKind::Unknown)
        return failed(path, Step::failed(), work);
    if (state.has_value() != asRead.has_value() || (state && !state->isUnchanged(*asRead)))
        return changed(path, work);
    if (!state) {
        const std::optional<QString> target = behindLinks(path);
        if (!target)
            return failed(path, Step::failed(), work);
        const Step written = writeWhole(*target, content);
        return written.isDone() ? Outcome() : failed(path, written, work);
    }
    Descriptor file(::open(QFile::encodeName(path).constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    if (!file.isOpen())
        return failed(path, Step::failed(), work);
    if (!isUnchanged(fileState(file.get()), *asRead))
        return changed(path, work);
    return Rewrite(path, *asRead, file.get(), work).write(content);
}

} // namespace vexdesk
