// SPDX-License-Identifier: MIT
#include "mergejob.h"

#include "daywriter.h"
#include "filedays.h"
#include "importfailures.h"
#include "rejects.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QHash>

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

namespace tadata {

using vexdesk::Outcome;

namespace {

// Shows how far two readings of a file are.
class Progress final
{
public:
    explicit Progress(const ProgressSink& sink)
        : m_sink(sink)
    {}

    void show(int reading, int percent)
    {
        const int all = (reading * 100 + percent) / 2;
        if (all > m_shown)
            m_sink(m_shown = all);
    }

private:
    const ProgressSink& m_sink;
    int m_shown = -1;
};

// One merging, from the first line to the last day.
class MergeRun final
{
public:
    MergeRun(FileBars& file, const MergeOrder& order, const ProgressSink& progress,
             const Surroundings& surroundings)
        : m_file(file)
        , m_order(order)
        , m_progress(progress)
        , m_surroundings(surroundings)
        , m_bad(file.path(), order.ways, order.details.firstLineIsHeader)
        , m_days(order.series.tickers)
    {}

    ImportResult run()
    {
        Outcome outcome = readFile();
        if (Outcome finished = m_bad.finish(); outcome && !finished)
            outcome = std::move(finished);
        if (outcome)
            outcome = checkStoredDays();
        if (outcome && mayOverflow())
            outcome = eachDay([this](const MergedDay& day) { return checkSums(day); });
        if (outcome)
            outcome = writeDays();
        if (outcome)
            m_progress.show(1, 100);
        return {outcome, m_bars, m_written, m_bad.count(), m_unchanged};
    }

private:
    using Visit = std::function<Outcome(const MergedDay& day)>;

    bool isStopped() const
    {
        return m_surroundings.stop && m_surroundings.stop->load(std::memory_order_relaxed);
    }

    bool derivesMinutes() const { return m_order.details.timeframe == vexdesk::secondTimeframe; }

    Outcome readFile()
    {
        // What is written is read once more; the sums of minutes need the money of all lines now.
        if (!derivesMinutes())
            m_file.leaveNumbers();
        FileLine line;
        while (m_file.next(&line)) {
            if (isStopped())
                return interrupted();
            Outcome taken = line.isBad() ? m_bad.take(line) : takeBar(&line);
            if (!taken)
                return taken;
        }
        if (Outcome read = m_file.outcome(); !read)
            return read;
        return m_file.isChanged() ? hasChanged(m_file.path()) : Outcome();
    }

    Outcome takeBar(FileLine* line)
    {
        constexpr int linesOfAStep = 4096;
        if (++m_bars % linesOfAStep == 0)
            m_progress.show(0, m_file.percentDone());
        if (derivesMinutes())
            m_largestValue = std::max(m_largestValue, sizeOfValue(line->bar.value));
        return m_days.add(m_file, line);
    }

    QString pathOf(FileDays::Key key) const
    {
        const QDir& dir = m_order.series.directories.at(FileDays::seriesOf(key));
        return dir.filePath(vexdesk::dayFileName(FileDays::dayOf(key), m_order.details.timeframe));
    }

    Outcome readStored(FileDays::Key key)
    {
        const auto checked = m_checked.constFind(key);
        const auto state = checked == m_checked.constEnd()
                               ? std::nullopt
                               : std::optional<vexdesk::FileState>(*checked);
        if (Outcome read = m_stored.read(pathOf(key), FileDays::dayOf(key), state); !read)
            return read;
        if (m_stored.state() && m_stored.state()->isSameFile(m_file.state()))
            return wouldWipe(m_stored.path());
        return m_stored.firstBadLine() == 0
                   ? Outcome()
                   : wrongStoredLine(m_stored.path(), m_stored.firstBadLine());
    }

    Outcome checkStoredDays()
    {
        for (const FileDays::Key key : m_days.keys()) {
            if (isStopped())
                return interrupted();
            if (Outcome read = readStored(key); !read)
                return read;
            if (m_stored.state())
                m_checked.insert(key, *m_stored.state());
            if (!derivesMinutes())
                continue;
            m_largestValue = std::max(m_largestValue, m_stored.largestValue());
            m_mostStored = std::max(m_mostStored, m_stored.lines().size());
        }
        return {};
    }

    // Whether a sum of any bars of a day might be more than half of what a decimal holds.
    bool mayOverflow() const
    {
        constexpr double half = static_cast<double>(decimal::maxMantissa) / 2;
        return m_largestValue * (static_cast<double>(m_bars) + double(m_mostStored)) > half;
    }

    // Reads the file once more and gives the days as they become.
    Outcome eachDay(const Visit& visit)
    {
        FileBars file(m_file.path(), m_order.details, m_order.ways.clock, m_order.describe);
        if (!file.open())
            return cannotOpen(m_file.path());
        if (!file.state().isUnchanged(m_file.state()))
            return hasChanged(m_file.path());
        if (Outcome begun = m_days.begin(&file, m_surroundings.stop); !begun)
            return begun;
        m_unchanged.clear();
        while (m_days.next()) {
            m_progress.show(1, std::min(99, file.percentDone()));
            if (Outcome read = readStored(m_days.key()); !read)
                return read;
            const MergedDay day = mergedDay(m_stored, m_days.day(), m_order.ways.mode);
            if (day.isSame) {
                m_unchanged.append(m_stored.path());
                continue;
            }
            if (Outcome visited = visit(day); !visited)
                return visited;
        }
        if (!m_days.outcome())
            return m_days.outcome();
        return file.isChanged() ? hasChanged(m_file.path()) : Outcome();
    }

    Outcome checkSums(const MergedDay& day)
    {
        try {
            derivedMinutes(day.content);
        } catch (const QString& message) {
            return wrongLine(m_days.firstLine(m_days.key()), message);
        }
        return {};
    }

    Outcome writeDays()
    {
        Outcome outcome = eachDay([this](const MergedDay& day) { return write(day); });
        // Also after an error: the days that were written are to have their minutes.
        if (Outcome finished = finishSeries(); outcome && !finished)
            outcome = std::move(finished);
        return outcome;
    }

    Outcome write(const MergedDay& day)
    {
        const int series = FileDays::seriesOf(m_days.key());
        if (!m_writer || m_series != series) {
            if (Outcome finished = finishSeries(); !finished)
                return finished;
            m_series = series;
            m_writer.emplace(m_order.series.directories.at(series), m_order.details.timeframe,
                             m_surroundings.keeper);
        }
        Outcome written =
            m_writer->write(FileDays::dayOf(m_days.key()), day.content, m_stored.state());
        m_written += written ? 1 : 0;
        return written;
    }

    Outcome finishSeries() { return m_writer ? m_writer->finish() : Outcome(); }

    FileBars& m_file;
    const MergeOrder& m_order;
    Progress m_progress;
    const Surroundings& m_surroundings;
    BadLines m_bad;
    FileDays m_days;
    StoredDay m_stored;
    QHash<FileDays::Key, vexdesk::FileState> m_checked; ///< day files without bad lines
    qint64 m_bars = 0;
    double m_largestValue = 0;
    size_t m_mostStored = 0; ///< lines of a day
    std::optional<DayWriter> m_writer;
    int m_series = -1; ///< the writer's
    qint64 m_written = 0;
    QStringList m_unchanged;
};

} // namespace

ImportResult mergeBars(FileBars& file, const MergeOrder& order, const ProgressSink& progress,
                       const Surroundings& surroundings)
{
    return MergeRun(file, order, progress, surroundings).run();
}

} // namespace tadata
