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

// What is found of one series of the file.
class SeriesCheck final
{
public:
    SeriesCheck(const QString& input, ImportDetails details, const ImportWays& ways,
                const QDir& dir, const QString& refusal, const QString& ticker, qint64 maxProblems,
                const std::atomic<bool>* stop)
        : m_details(std::move(details))
        , m_review(m_details, ways.mode, maxProblems)
        , m_refusal(refusal)
        , m_isAtOnce(ways.mode != ImportMode::Replace)
    {
        if (ways.mode == ImportMode::Replace)
            m_preview = std::make_unique<ReplacePreview>(dir, m_details.timeframe);
        else
            m_preview = std::make_unique<MergePreview>(input, m_details, ways, dir, ticker, stop);
        if (isRefused())
            m_check.stop = ImportStop{.message = m_refusal};
    }
    Q_DISABLE_COPY_MOVE(SeriesCheck)

    bool isRefused() const { return !m_refusal.isNull(); }
    // Of the bars that were taken.
    const std::optional<ImportStop>& stop() const { return m_preview->stop(); }
    const std::optional<ImportStop>& finalStop() const { return m_check.stop; }

    void takeBad(const FileLine& line) { m_review.takeBad(line); }

    // Whether the bar began a run of its day.
    Result<bool> takeBar(const FileLine& line)
    {
        const DayInFile& day = m_review.takeBar(line);
        const bool beginsRun = m_review.hasBegunRun();
        if (m_hasEnded || isRefused())
            return beginsRun;
        const Outcome taken = m_preview->take(line, day, beginsRun);
        return taken ? Result<bool>(beginsRun) : taken.failure();
    }

    // Lines that follow are no part of the import, but still of the file.
    Outcome end()
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

    Outcome endAt(const ImportStop& stop)
    {
        if (!m_hasEnded && !isRefused()) {
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

    ImportCheck finished(qint64 lines, bool passesOverBad)
    {
        m_review.finish(&m_check);
        m_check.lines = lines;
        const bool areAllBad = passesOverBad && m_check.bars == 0 && m_check.badLines > 0;
        m_check.wouldImport = !m_check.stop && !areAllBad;
        return std::move(m_check);
    }

private:
    ImportDetails m_details;
    FileReview m_review;
    QString m_refusal;
    std::unique_ptr<DaysPreview> m_preview;
    bool m_isAtOnce; ///< days are written when all is known to be right, or none is
    bool m_hasEnded = false;
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
        if (Outcome begun = m_hasTickers ? Outcome() : goTo(QString()); !begun)
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
        if (line.isBad() && m_ways.passesOverBad() && line.isBlank)
            return Outcome();
        if (m_hasTickers && (!m_part || m_ticker != line.ticker)) {
            if (Outcome gone = changeTicker(line); !gone)
                return gone;
        }
        return line.isBad() ? takeBad(line) : takeBar(line);
    }

    Outcome takeBad(const FileLine& line)
    {
        m_part->takeBad(line);
        if (m_ways.passesOverBad() || m_end)
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
        return m_part->stop() && !m_end ? endAll(*m_part->stop()) : Outcome();
    }

    // In replace the bars of a ticker stand together.
    Outcome changeTicker(const FileLine& line)
    {
        const bool comesAgain = placeOf(line.ticker) < m_parts.size();
        const bool isReplace = m_ways.mode == ImportMode::Replace;
        if (Outcome ended = m_part && isReplace ? m_part->end() : Outcome(); !ended)
            return ended;
        if (Outcome gone = goTo(line.ticker); !gone)
            return gone;
        if (comesAgain && isReplace && !line.isBad() && !m_end)
            return endAll({line.number, tickerComesAgain(line.number, line.ticker).message});
        return Outcome();
    }

    size_t placeOf(const QString& ticker) const
    {
        const auto found = m_places.constFind(ticker);
        return found == m_places.constEnd() ? m_parts.size() : *found;
    }

    Outcome goTo(const QString& ticker)
    {
        const size_t place = placeOf(ticker);
        const bool isNew = place == m_parts.size();
        if (Outcome begun = isNew ? beginPart(ticker) : Outcome(); !begun)
            return begun;
        m_ticker = ticker;
        m_part = m_parts[place].check.get();
        return m_end ? m_part->endAt(*m_end) : Outcome();
    }

    Outcome beginPart(const QString& ticker)
    {
        const QDir dir = m_series.directory(ticker);
        if (Outcome readable = isReadable(dir.path()); !readable)
            return readable;
        const Result<QString> refusal = refusalOf(m_bars.path(), m_ways, dir);
        if (!refusal)
            return refusal.failure();
        ImportDetails details = m_details;
        if (m_hasTickers && m_series.describe)
            m_series.describe(ticker, &details);
        m_places.insert(ticker, m_parts.size());
        m_parts.push_back(
            {ticker, std::make_unique<SeriesCheck>(m_bars.path(), details, m_ways, dir, *refusal,
                                                   ticker, m_maxProblems, m_stop)});
        return Outcome();
    }

    // One line ends the import of all tickers.
    Outcome endAll(const ImportStop& stop)
    {
        m_end = stop;
        for (const Part& part : m_parts) {
            if (Outcome ended = part.check->endAt(stop); !ended)
                return ended;
        }
        return Outcome();
    }

    // What is found at the end in the days of one ticker.
    Outcome endWhereOneEnds()
    {
        const auto ends = std::find_if(m_parts.begin(), m_parts.end(), [](const Part& part) {
            return part.check->finalStop().has_value();
        });
        if (ends == m_parts.end())
            return Outcome();
        const ImportStop stop = *ends->check->finalStop();
        return endAll(stop);
    }

    Result<std::vector<TickerCheck>> finish()
    {
        if (Outcome begun = m_parts.empty() ? goTo(QString()) : Outcome(); !begun)
            return begun.failure();
        for (const Part& part : m_parts) {
            if (Outcome ended = part.check->end(); !ended)
                return ended.failure();
        }
        if (Outcome ended = endWhereOneEnds(); !ended)
            return ended.failure();
        std::vector<TickerCheck> checks;
        for (const Part& part : m_parts)
            checks.push_back(
                {part.ticker, part.check->finished(m_bars.lineCount(), m_ways.passesOverBad())});
        m_progress(100);
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
    std::vector<Part> m_parts;
    QHash<QString, size_t> m_places; ///< in the parts, by ticker
    QString m_ticker;                ///< of the line that was taken last, and its part
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
