// SPDX-License-Identifier: MIT
#include "importcheck.h"

#include "filereview.h"
#include "importfailures.h"
#include "mergepreview.h"
#include "rejects.h"
#include "replacepreview.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QFileInfo>

#include <utility>

namespace tadata {

using vexdesk::Outcome;
using vexdesk::Result;

namespace {

// What is not there is empty; what is there and cannot be looked into must not pass for that.
Outcome isReadable(const QString& directory)
{
    QFileInfo place(directory);
    while (!place.exists() && !place.isSymLink() && !place.isRoot())
        place.setFile(place.absolutePath());
    return place.isDir() && place.isExecutable() ? Outcome() : cannotReadDir(place.filePath());
}

// Why an import does not even begin; null where it does.
Result<QString> refusalOf(const QString& input, const ImportWays& ways, const QDir& dir)
{
    const Result<QString> own = vexdesk::barFileThatIs(input, dir);
    if (!own)
        return own;
    if (!own->isEmpty())
        return wouldWipe(input).message;
    return checkRejectsPlace(ways.rejects, {dir}).message();
}

// One check, from the first line to the last.
class CheckRun final
{
public:
    CheckRun(FileBars& bars, const ImportDetails& details, const ImportWays& ways, const QDir& dir,
             const QString& refusal, qint64 maxProblems, const ProgressSink& progress)
        : m_bars(bars)
        , m_progress(progress)
        , m_passesOverBad(ways.passesOverBad())
        , m_review(details, ways.mode, maxProblems)
        , m_refusal(refusal)
    {
        if (ways.mode == ImportMode::Replace)
            m_preview = std::make_unique<ReplacePreview>(dir, details.timeframe);
        else
            m_preview = std::make_unique<MergePreview>(bars.path(), details, ways, dir);
    }

    Result<ImportCheck> run()
    {
        if (isRefused())
            m_check.stop = ImportStop{.message = m_refusal};
        FileLine line;
        while (m_bars.next(&line)) {
            if (Outcome taken = take(line); !taken)
                return taken.failure();
        }
        if (Outcome read = m_bars.outcome(); !read)
            return read.failure();
        if (Outcome ended = endImport(); !ended)
            return ended.failure();
        finish();
        return std::move(m_check);
    }

private:
    bool isRefused() const { return !m_refusal.isNull(); }

    Outcome take(const FileLine& line)
    {
        if (!line.isBad())
            return takeBar(line);
        if (m_passesOverBad && line.isBlank)
            return Outcome();
        m_review.takeBad(line);
        if (m_passesOverBad || m_hasEnded)
            return Outcome();
        m_preview->stopAt(line.number, wrongLine(line.number, line.error()).message);
        return endImport();
    }

    Outcome takeBar(const FileLine& line)
    {
        const DayInFile& day = m_review.takeBar(line);
        if (m_review.hasBegunRun())
            m_progress(m_bars.percentDone());
        if (m_hasEnded || isRefused())
            return Outcome();
        if (Outcome taken = m_preview->take(line, day, m_review.hasBegunRun()); !taken)
            return taken;
        return m_preview->stop() ? endImport() : Outcome();
    }

    // Lines that follow are no part of the import, but still of the file.
    Outcome endImport()
    {
        if (std::exchange(m_hasEnded, true) || isRefused())
            return Outcome();
        Result<std::vector<CheckedDay>> days = m_preview->finish();
        if (!days)
            return days.failure();
        m_check.days = *std::move(days);
        m_check.stop = m_preview->stop();
        return Outcome();
    }

    void finish()
    {
        m_review.finish(&m_check);
        m_check.lines = m_bars.lineCount();
        const bool areAllBad = m_passesOverBad && m_check.bars == 0 && m_check.badLines > 0;
        m_check.wouldImport = !m_check.stop && !areAllBad;
        m_progress(100);
    }

    FileBars& m_bars;
    const ProgressSink& m_progress;
    bool m_passesOverBad;
    FileReview m_review;
    QString m_refusal;
    std::unique_ptr<DaysPreview> m_preview;
    bool m_hasEnded = false;
    ImportCheck m_check;
};

} // namespace

Result<ImportCheck> checkImport(const QString& fileName, const ImportDetails& details,
                                const ImportWays& ways, const QDir& seriesDir, qint64 maxProblems,
                                const ProgressSink& progress)
{
    FileBars bars(fileName, details, ways.clock);
    if (!bars.open())
        return cannotOpen(fileName);
    if (const Outcome readable = isReadable(seriesDir.path()); !readable)
        return readable.failure();
    const Result<QString> refusal = refusalOf(fileName, ways, seriesDir);
    if (!refusal)
        return refusal.failure();
    return CheckRun(bars, details, ways, seriesDir, *refusal, maxProblems, progress).run();
}

} // namespace tadata
