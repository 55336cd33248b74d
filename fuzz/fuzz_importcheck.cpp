// SPDX-License-Identifier: MIT
// The check of an import: whatever the file and the stored day hold, and however it is imported, it
// says what the import then does.
//
// The first five bytes of an input are choices, the rest is the file up to a zero byte and then the
// stored day file of 2024-01-15.

#include "target.h"

#include "dayvalues.h"
#include "importcheck.h"
#include "importjob.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <algorithm>

namespace {

using fuzz::require;
using tadata::CheckedDay;
using tadata::ImportCheck;

ImportDetails detailsOf(const std::uint8_t* header)
{
    ImportDetails details;
    details.timeframe = header[0] % 2 == 0 ? 60 : 1;
    details.separator = QStringLiteral(",");
    details.dateFormat = header[1] % 2 == 0 ? QStringLiteral("yyyyMMdd") : QStringLiteral("ddMMyy");
    details.timeFormat = QStringLiteral("hhmmss");
    details.firstLineIsHeader = header[1] % 3 == 0;
    details.columns = {{1, 0}, {2, 1}, {3, 2}, {4, 3}, {5, 4}, {6, 5}};
    if (header[2] % 2 == 0)
        details.columns.insert(8, 6);
    return details;
}

ImportWays waysOf(const std::uint8_t* header)
{
    static constexpr ImportMode modes[] = {ImportMode::Replace, ImportMode::Merge,
                                           ImportMode::Fill};
    ImportWays ways;
    ways.mode = modes[header[3] % 3];
    ways.skipsBad = header[4] % 2 == 0;
    ways.clock.stampsBegin = header[4] % 3 == 0;
    return ways;
}

void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
            "a file can be written");
}

void checkNumbers(const ImportCheck& check, qint64 maxProblems)
{
    qint64 all = 0;
    for (const qint64 count : check.counts)
        all += count;
    require(static_cast<qint64>(check.problems.size()) == std::min(all, maxProblems),
            "as many problems are listed as there are and may be");
    require(check.bars + check.badLines <= check.lines, "no line counts twice");
    require(check.count(tadata::ProblemKind::BadLine) == check.badLines,
            "each bad line is a problem");
    require(!check.stop || !check.wouldImport, "an import that ends early is none");
    for (const CheckedDay& day : check.days) {
        require(day.bars > 0 && day.result <= day.stored + day.bars, "bars come from somewhere");
        require(day.lost <= day.stored + day.bars, "what is lost was there");
    }
}

void checkDays(const ImportCheck& check, const QDir& dir, int timeframe)
{
    for (const CheckedDay& day : check.days) {
        const QString path = dir.filePath(vexdesk::dayFileName(day.day, timeframe));
        const auto times = tadata::storedTimes(path, day.day);
        require(times && times->count() == day.result, "the day has the times that were said");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool installed =
        (vexdesk::ReferenceData::install(vexdesk::ReferenceData::demonstration()), true);
    Q_UNUSED(installed)
    constexpr std::size_t headerSize = 5;
    if (size < headerSize)
        return 0;
    const QByteArray text(reinterpret_cast<const char*>(data + headerSize),
                          static_cast<qsizetype>(size - headerSize));
    const qsizetype end = text.indexOf('\0');
    const ImportDetails details = detailsOf(data);
    const ImportWays ways = waysOf(data);
    const QTemporaryDir place;
    const QDir dir(place.filePath(QStringLiteral("series")));
    const QString file = place.filePath(QStringLiteral("file"));
    require(QDir().mkpath(dir.path()), "a directory can be made");
    writeFile(file, text.left(end));
    if (end >= 0)
        writeFile(dir.filePath(vexdesk::dayFileName(QDate(2024, 1, 15), details.timeframe)),
                  text.mid(end + 1));

    constexpr qint64 maxProblems = 3;
    const auto none = [](int) {};
    const auto check = tadata::checkImport(file, details, ways, dir, maxProblems, none);
    require(check || !check.message().isEmpty(), "a failure says why");
    if (!check)
        return 0;
    checkNumbers(*check, maxProblems);
    const auto directory = [&dir](const QStringList&) {
        return vexdesk::Result<QList<QDir>>(QList<QDir>{dir});
    };
    const auto result = tadata::importByWays(file, details, ways, {directory}, none);
    require(result.outcome.message() == (check->stop ? check->stop->message : QString()),
            "the import ends as was said");
    checkDays(*check, dir, details.timeframe);
    return 0;
}
