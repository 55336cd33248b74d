// SPDX-License-Identifier: MIT
#include <vexdesk/history/seriesfiles.h>

#include "systemfile.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/filekeeper.h>
#include <vexdesk/history/links.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::SeriesFiles)
};

std::optional<DayFileKey> keyOf(const QString& name)
{
    if (const auto key = parseDayFileName(name))
        return key;
    if (!isBarFileName(name))
        return std::nullopt;
    return DayFileKey{dayInName(name), secondTimeframe};
}

bool isIn(const DayFileKey& key, const BarFileRange& range)
{
    return (!range.from.isValid() || range.from <= key.day) &&
           (!range.to.isValid() || key.day <= range.to) &&
           (!range.timeframe || *range.timeframe == key.timeframe);
}

QStringList pathsIn(const QDir& dir, const QStringList& names)
{
    QStringList paths;
    for (const QString& name : names)
        paths.append(dir.filePath(name));
    return paths;
}

// What a link that leads nowhere stands for could neither be kept nor copied.
Outcome areThere(const QStringList& paths)
{
    const auto lost = std::find_if(paths.begin(), paths.end(), isLostLink);
    return lost == paths.end() ? Outcome() : lostLink(*lost);
}

Outcome tell(FileKeeper* keeper, const QStringList& paths)
{
    return keeper ? keeper->keep(paths) : Outcome();
}

Outcome make(const QDir& dir)
{
    return makeDirectory(dir.path())
               ? Outcome()
               : Failure{Text::tr("Невозможно создать каталог %1").arg(dir.path())};
}

Outcome removeFile(const QString& path)
{
    const Step removed = stepOf(::unlink(QFile::encodeName(path).constData()));
    return removed.isDone()
               ? Outcome()
               : Failure{Text::tr("Файл %1 не удалён: %2").arg(path, removed.reason())};
}

Outcome copyFile(const QString& from, const QString& to)
{
    const Descriptor file(
        ::open(QFile::encodeName(from).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    const Step copied = file.isOpen() ? replaceWhole(file.get(), to) : Step::failed();
    return copied.isDone()
               ? Outcome()
               : Failure{Text::tr("Файл %1 не скопирован в %2: %3").arg(from, to, copied.reason())};
}

// A link would lead elsewhere from another directory, and another disk takes no name over: then the
// content moves.
Outcome moveFile(const QString& from, const QString& to)
{
    if (!QFileInfo(from).isSymLink() &&
        std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0)
        return {};
    const Outcome copied = copyFile(from, to);
    return copied ? removeFile(from) : copied;
}

Outcome bringFiles(const QDir& from, const QDir& to, const QStringList& names,
                   Outcome (*bring)(const QString&, const QString&))
{
    if (Outcome made = make(to); !made)
        return made;
    for (const QString& name : names) {
        if (Outcome brought = bring(from.filePath(name), to.filePath(name)); !brought)
            return brought;
    }
    return {};
}

} // namespace

Result<QStringList> barFiles(const QDir& seriesDir, const BarFileRange& range)
{
    Result<QStringList> names = namesIn(seriesDir.path(), EntryKind::Files);
    if (!names)
        return names;
    names->removeIf([&range](const QString& name) {
        const auto key = keyOf(name);
        return !key || !isIn(*key, range);
    });
    names->sort();
    return names;
}

Result<bool> hasBarFiles(const QDir& seriesDir)
{
    const Result<QStringList> names = namesIn(seriesDir.path());
    if (!names)
        return names.failure();
    return std::any_of(names->begin(), names->end(), isBarFileName);
}

Outcome removeBarFiles(const QDir& seriesDir, const QStringList& names, FileKeeper* keeper)
{
    const QStringList paths = pathsIn(seriesDir, names);
    if (Outcome there = areThere(paths); !there)
        return there;
    if (Outcome kept = tell(keeper, paths); !kept)
        return kept;
    for (const QString& path : paths) {
        if (Outcome removed = removeFile(path); !removed)
            return removed;
    }
    return {};
}

Outcome copyBarFiles(const QDir& from, const QDir& to, const QStringList& names, FileKeeper* keeper)
{
    if (Outcome there = areThere(pathsIn(from, names)); !there)
        return there;
    const Outcome kept = tell(keeper, pathsIn(to, names));
    return kept ? bringFiles(from, to, names, copyFile) : kept;
}

Outcome moveBarFiles(const QDir& from, const QDir& to, const QStringList& names, FileKeeper* keeper)
{
    if (Outcome there = areThere(pathsIn(from, names)); !there)
        return there;
    const Outcome kept = tell(keeper, pathsIn(from, names) + pathsIn(to, names));
    return kept ? bringFiles(from, to, names, moveFile) : kept;
}

} // namespace vexdesk
