// SPDX-License-Identifier: MIT
#include "importcheck.h"

#include "filereview.h"
#include "importfailures.h"
#include "mergepreview.h"
#include "rejects.h"
#include "replacepreview.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QFileInfo>
#include <QtCore/QHash>

#include <algorithm>
#include <memory>
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

// What is found of one series of the file. The import comes to it once it has begun.
class SeriesCheck final
{
public:
    SeriesCheck(const ImportDetails& details, const ImportWays& ways, qint64 maxProblems)
        : m_review(details, ways.mode, maxProblems)
        , m_isAtOnce(ways.mode != ImportMode::Replace)
    {}
    Q_DISABLE_COPY_MOVE(SeriesCheck)

    bool hasBegun() const { return m_hasBegun; }
    void begin(std::unique_ptr<DaysPreview> preview)
    {
        m_hasBegun = true;
        m_preview = std::move(preview);
    }
    void refuse(const QString& why)
    {
        m_hasBegun = true;
        m_check.stop = ImportStop{.message = why};
    }

    // Of the bars that were taken; null for none.
    const ImportStop* stop() const
    {
        return m_preview && m_preview->stop() ? &*m_preview->stop() : nullptr;
    }
    const std::optional<ImportStop>& finalStop() const { return m_check.stop; }

    void takeBad(const FileLine& line) { m_review.takeBad(line); }

    // Whether the bar began a run of its day.
    Result<bool> takeBar(const FileLine& line)
    {
        const DayInFile& day = m_review.takeBar(line);
        const bool beginsRun = m_review.hasBegunRun();
        if (!m_preview)
            return beginsRun;
        const Outcome taken = m_preview->take(line, day, beginsRun);
        return taken ? Result<bool>(beginsRun) : taken.failure();
    }

    // Lines that follow are no part of the import, but still of the file.
    Outcome end()
    {
        const std::unique_ptr<DaysPreview> preview = std::exchange(m_preview, nullptr);
        if (!preview)
            return Outcome();
        Result<std::vector<CheckedDay>> days = preview->finish();
        if (!days)
            return days.failure();
        m_check.days = *std::move(days);
        m_check.stop = preview->stop();
        return Outcome();
    }

    Outcome endAt(const ImportStop& stop)
    {
        if (m_preview) {
            m_preview->stopAt(stop.line.value_or(0), stop.message);
            return end();
        }
        // What had ended with the last of its bars: the import of the whole file does not.
        if (!m_check.stop)
            m_check.stop = stop;
        if (m_isAtOnce)
            m_check.days.clear();
        return Outcome();
    }

    ImportCheck finished(qint64 lines)
    {
        m_review.finish(&m_check);
        m_check.lines = lines;
        m_check.wouldImport = !m_check.stop;
        return std::move(m_check);
    }

private:
    FileReview m_review;
    /// While the import is in the series. Its buffers go with it: a file may have many series.
    std::unique_ptr<DaysPreview> m_preview;
    bool m_isAtOnce; ///< days are written when all is known to be right, or none is
    bool m_hasBegun = false;
    ImportCheck m_check;
};

// One check, from the first line to the last.
class CheckRun final
{
public:
    CheckRun(FileBars& bars, const ImportDetails& details, const ImportWays& ways,
             const CheckedSeries& series, qint64 maxProblems, const ProgressSink& progress,
             const std::atomic<bool>* stop)
        : m_bars(bars)
        , m_details(details)
        , m_ways(ways)
        , m_series(series)
        , m_maxProblems(maxProblems)
        , m_progress(progress)
        , m_stop(stop)
        , m_hasTickers(details.columns.contains(static_cast<qint32>(ColumnRole::Ticker)))
    {}

    Result<std::vector<TickerCheck>> run()
    {
        if (Outcome begun = m_hasTickers ? Outcome() : goTo(partOf(QString())); !begun)
            return begun.failure();
        FileLine line;
        while (m_bars.next(&line)) {
            if (m_stop && m_stop->load(std::memory_order_relaxed))
                return interrupted();
            if (Outcome taken = take(line); !taken)
                return taken.failure();
        }
        if (Outcome read = m_bars.outcome(); !read)
            return read.failure();
        return finish();
    }

private:
    struct Part
    {
        QString ticker;
        std::unique_ptr<SeriesCheck> check;
    };

    Outcome take(const FileLine& line)
    {
        if (line.isBad() && m_ways.passesOverBad())
            return line.isBlank ? Outcome() : passOver(line);
        if (m_hasTickers && (!m_part || m_ticker != line.ticker)) {
            if (Outcome gone = changeTicker(line); !gone)
                return gone;
        }
        return line.isBad() ? takeBad(line) : takeBar(line);
    }

    // An import does not look at the ticker of such a line: it changes to none and begins none.
    Outcome passOver(const FileLine& line)
    {
        SeriesCheck& part = *m_parts[partOf(line.ticker)].check;
        part.takeBad(line);
        return m_end ? part.endAt(*m_end) : Outcome();
    }

    Outcome takeBad(const FileLine& line)
    {
        m_part->takeBad(line);
        if (m_end)
            return Outcome();
        return endAll({line.number, wrongLine(line.number, line.error()).message});
    }

    Outcome takeBar(const FileLine& line)
    {
        const Result<bool> beginsRun = m_part->takeBar(line);
        if (!beginsRun)
            return beginsRun.failure();
        if (*beginsRun)
            m_progress(m_bars.percentDone());
        const ImportStop* const stop = m_part->stop();
        return stop && !m_end ? endAll(*stop) : Outcome();
    }

    // In replace the bars of a ticker stand together.
    Outcome changeTicker(const FileLine& line)
    {
        const bool isReplace = m_ways.mode == ImportMode::Replace;
        if (Outcome ended = m_part && isReplace ? m_part->end() : Outcome(); !ended)
            return ended;
        const size_t place = partOf(line.ticker);
        const bool comesAgain = m_parts[place].check->hasBegun();
        if (Outcome gone = goTo(place); !gone)
            return gone;
        if (comesAgain && isReplace && !line.isBad() && !m_end)
            return endAll({line.number, tickerComesAgain(line.number, line.ticker).message});
        return Outcome();
    }

    // Its place in the parts; a new one where the ticker has none.
    size_t partOf(const QString& ticker)
    {
        const auto found = m_places.constFind(ticker);
        if (found != m_places.constEnd())
            return *found;
        const size_t place = m_parts.size();
        m_places.insert(ticker, place);
        m_parts.push_back(
            {ticker, std::make_unique<SeriesCheck>(m_details, m_ways, m_maxProblems)});
        return place;
    }

    Outcome goTo(size_t place)
    {
        Part& part = m_parts[place];
        if (Outcome begun = part.check->hasBegun() ? Outcome() : begin(part); !begun)
            return begun;
        m_ticker = part.ticker;
        m_part = part.check.get();
        return m_end ? m_part->endAt(*m_end) : Outcome();
    }

    Outcome begin(Part& part)
    {
        const QDir dir = m_series.directory(part.ticker);
        if (Outcome readable = isReadable(dir.path()); !readable)
            return readable;
        const Result<QString> refusal = refusalOf(m_bars.path(), m_ways, dir);
        if (!refusal)
            return refusal.failure();
        if (refusal->isNull())
            part.check->begin(previewOf(part.ticker, dir));
        else
            part.check->refuse(*refusal);
        m_begun.push_back(part.check.get());
        return Outcome();
    }

    std::unique_ptr<DaysPreview> previewOf(const QString& ticker, const QDir& dir)
    {
        if (m_ways.mode == ImportMode::Replace)
            return std::make_unique<ReplacePreview>(dir, m_details.timeframe, m_series.countsBars);
        ImportDetails details = m_details;
        if (m_hasTickers && m_series.describe)
            m_series.describe(ticker, &details);
        return std::make_unique<MergePreview>(m_bars.path(), details, m_ways, dir, ticker,
                                              m_series.countsBars, &m_stored, m_stop);
    }

    // One line ends the import of all tickers.
    Outcome endAll(const ImportStop& stop)
    {
        m_end = stop;
        for (const Part& part : m_parts) {
            if (Outcome ended = part.check->endAt(*m_end); !ended)
                return ended;
        }
        return Outcome();
    }

    // What is found at the end in the days of one ticker, in the order in which they are read.
    Outcome endWhereOneEnds()
    {
        const auto ends =
            std::find_if(m_begun.begin(), m_begun.end(),
                         [](const SeriesCheck* check) { return check->finalStop().has_value(); });
        if (ends == m_begun.end())
            return Outcome();
        const ImportStop stop = *(*ends)->finalStop();
        return endAll(stop);
    }

    // The place of the rejects is looked at also where the import comes to no series.
    void refuseAllWithoutBars()
    {
        const Outcome checked = checkRejectsPlace(m_ways.rejects, {});
        if (checked || !m_begun.empty())
            return;
        for (const Part& part : m_parts)
            part.check->refuse(checked.message());
    }

    Result<std::vector<TickerCheck>> finish()
    {
        if (m_parts.empty())
            partOf(QString());
        refuseAllWithoutBars();
        for (const Part& part : m_parts) {
            if (Outcome ended = part.check->end(); !ended)
                return ended.failure();
        }
        if (Outcome ended = endWhereOneEnds(); !ended)
            return ended.failure();
        m_progress(100);
        return checks();
    }

    std::vector<TickerCheck> checks()
    {
        std::vector<TickerCheck> checks;
        for (const Part& part : m_parts)
            checks.push_back({part.ticker, part.check->finished(m_bars.lineCount())});
        const bool hasBars = std::any_of(checks.begin(), checks.end(),
                                         [](const TickerCheck& one) { return one.check.bars > 0; });
        // A file of bad lines alone is none, though nothing ends its import.
        for (TickerCheck& one : checks) {
            if (!hasBars && m_ways.passesOverBad() && one.check.badLines > 0)
                one.check.wouldImport = false;
        }
        return checks;
    }

    FileBars& m_bars;
    const ImportDetails& m_details;
    const ImportWays& m_ways;
    const CheckedSeries& m_series;
    qint64 m_maxProblems;
    const ProgressSink& m_progress;
    const std::atomic<bool>* m_stop;
    bool m_hasTickers;
    StoredDay m_stored; ///< where all parts that need one read theirs
    std::vector<Part> m_parts;
    std::vector<const SeriesCheck*> m_begun; ///< in the order in which the import comes to them
    QHash<QString, size_t> m_places;         ///< in the parts, by ticker
    QString m_ticker;                        ///< of the line that was taken last, and its part
    SeriesCheck* m_part = nullptr;
    std::optional<ImportStop> m_end; ///< the import; not the file
};

} // namespace

Result<ImportCheck> checkImport(const QString& fileName, const ImportDetails& details,
                                const ImportWays& ways, const QDir& seriesDir, qint64 maxProblems,
                                const ProgressSink& progress)
{
    const CheckedSeries series{[&seriesDir](const QString&) { return seriesDir; }};
    Result<std::vector<TickerCheck>> checks =
        checkTickers(fileName, details, ways, series, maxProblems, progress, nullptr);
    if (!checks)
        return checks.failure();
    return std::move(checks->front().check);
}

Result<std::vector<TickerCheck>> checkTickers(const QString& fileName, const ImportDetails& details,
                                              const ImportWays& ways, const CheckedSeries& series,
                                              qint64 maxProblems, const ProgressSink& progress,
                                              const std::atomic<bool>* stop)
{
    FileBars bars(fileName, details, ways.clock, series.describe);
    if (!bars.open())
        return cannotOpen(fileName);
    return CheckRun(bars, details, ways, series, maxProblems, progress, stop).run();
}

} // namespace tadata
