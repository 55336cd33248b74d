// SPDX-License-Identifier: MIT
#include "importjob.h"

#include "filebars.h"
#include "importfailures.h"
#include "mergejob.h"
#include "minutebuilder.h"
#include "rejects.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/dayfilewriter.h>
#include <vexdesk/history/filekeeper.h>
#include <vexdesk/history/filestate.h>

#include <QtCore/QFile>
#include <QtCore/QSet>
#include <QtCore/QTextStream>

#include <optional>
#include <utility>

bool changeOutput(QFile& file, QTextStream& stream, QString fileName)
{
    stream.flush();
    file.close();
    file.setFileName(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    stream.setDevice(&file);
    return true;
}

namespace tadata {

using vexdesk::DayFileWriter;
using vexdesk::Outcome;
using vexdesk::Result;

namespace {

// The outputs of one import: day files, and minute files beside them for second bars.
class StoreWriter final
{
public:
    StoreWriter(const QDir& dir, int timeframe, const vexdesk::FileState& input,
                vexdesk::FileKeeper* keeper)
        : m_dir(dir)
        , m_timeframe(timeframe)
        , m_input(input)
        , m_keeper(keeper)
    {}

    bool needsSwitch(const QDate& day) const { return m_day != day; }

    Outcome switchTo(const QDate& day)
    {
        m_day = day;
        if (Outcome kept = keep(day); !kept)
            return kept;
        const Outcome switched = switchTo(m_bars, vexdesk::dayFileName(day, m_timeframe));
        if (switched)
            m_days.insert(day);
        if (!switched || !derivesMinutes())
            return switched;
        if (const auto minute = m_minuteBuilder.take())
            m_minutes.write(*minute);
        return switchTo(m_minutes, vexdesk::minuteFileName(day));
    }

    // Throws the host's message when a sum does not fit.
    void write(const BarDescription& bar)
    {
        m_bars.write(bar);
        if (!derivesMinutes())
            return;
        if (const auto minute = m_minuteBuilder.add(bar))
            m_minutes.write(*minute);
    }

    // How many days were written, however often.
    qint64 dayCount() const { return m_days.size(); }

    // Ends both files, also where one of them has failed.
    Outcome finish()
    {
        const Outcome bars = close(m_bars);
        const Outcome minutes = close(m_minutes);
        return bars ? minutes : bars;
    }

private:
    bool derivesMinutes() const { return m_timeframe == vexdesk::secondTimeframe; }

    Outcome keep(const QDate& day) const
    {
        if (!m_keeper)
            return Outcome();
        QStringList paths{m_dir.filePath(vexdesk::dayFileName(day, m_timeframe))};
        if (derivesMinutes())
            paths.append(m_dir.filePath(vexdesk::minuteFileName(day)));
        return m_keeper->keep(paths);
    }

    Outcome switchTo(DayFileWriter& output, const QString& name) const
    {
        if (const Outcome closed = close(output); !closed)
            return closed;
        const QString path = m_dir.filePath(name);
        if (const auto file = vexdesk::fileState(path); file && file->isSameFile(m_input))
            return wouldWipe(path);
        const Outcome opened = output.open(path);
        return opened ? Outcome() : cannotOpen(path, opened.message());
    }

    static Outcome close(DayFileWriter& output)
    {
        const Outcome closed = output.close();
        return closed ? Outcome() : cannotWrite(output.path(), closed.message());
    }

    QDir m_dir;
    int m_timeframe;
    vexdesk::FileState m_input;
    vexdesk::FileKeeper* m_keeper; ///< or null
    QDate m_day;                   // of the open files
    QSet<QDate> m_days;
    DayFileWriter m_bars;
    DayFileWriter m_minutes;
    // The minute that is still open at the end of the input is dropped: more of its seconds may
    // come with the next file, and half a minute must not pass for a whole one.
    MinuteBuilder m_minuteBuilder;
};

// One import that replaces days, from its first line to its last.
class ImportRun final
{
public:
    ImportRun(FileBars& file, const ImportDetails& details, const ImportWays& ways,
              const SeriesDirectories& series, const ProgressSink& progress,
              const Surroundings& surroundings)
        : m_file(file)
        , m_timeframe(details.timeframe)
        , m_series(series)
        , m_progress(progress)
        , m_surroundings(surroundings)
        , m_bad(file.path(), ways, details.firstLineIsHeader)
        , m_hasTickers(details.columns.contains(static_cast<qint32>(ColumnRole::Ticker)))
    {
        if (!m_hasTickers)
            beginSeries(series.directories.first());
    }

    ImportResult run()
    {
        Outcome outcome = readLines();
        // Bars that came before an error stay stored: that they are not is the worse of two errors.
        if (Outcome finished = finishSeries(); !finished)
            outcome = std::move(finished);
        if (Outcome finished = m_bad.finish(); outcome && !finished)
            outcome = std::move(finished);
        if (outcome)
            m_progress(100);
        return {outcome, m_bars, m_days, m_bad.count()};
    }

private:
    Outcome readLines()
    {
        FileLine line;
        while (m_file.next(&line)) {
            if (m_surroundings.stop && m_surroundings.stop->load(std::memory_order_relaxed))
                return interrupted();
            if (line.isBad()) {
                if (Outcome passed = m_bad.take(line); !passed)
                    return passed;
                continue;
            }
            if (Outcome stored = store(line); !stored)
                return stored;
            ++m_bars;
        }
        return m_file.outcome();
    }

    Outcome store(const FileLine& line)
    {
        if (m_hasTickers && (!m_store || line.ticker != m_ticker)) {
            if (Outcome changed = changeSeries(line); !changed)
                return changed;
        }
        if (m_store->needsSwitch(line.bar.date)) {
            m_progress(m_file.percentDone());
            if (Outcome switched = m_store->switchTo(line.bar.date); !switched)
                return switched;
        }
        try {
            m_store->write(line.bar);
        } catch (const QString& message) {
            return wrongLine(line.number, message);
        }
        return Outcome();
    }

    // To open a day again would wipe what the ticker's earlier lines have put there.
    Outcome changeSeries(const FileLine& line)
    {
        if (Outcome finished = finishSeries(); !finished)
            return finished;
        if (m_known.contains(line.ticker))
            return tickerComesAgain(line.number, line.ticker);
        m_ticker = line.ticker;
        m_known.insert(m_ticker);
        beginSeries(m_series.directories.at(m_series.tickers.indexOf(m_ticker)));
        return Outcome();
    }

    void beginSeries(const QDir& directory)
    {
        m_store.emplace(directory, m_timeframe, m_file.state(), m_surroundings.keeper);
    }

    Outcome finishSeries()
    {
        if (!m_store)
            return Outcome();
        m_days += m_store->dayCount();
        Outcome finished = m_store->finish();
        m_store.reset();
        return finished;
    }

    FileBars& m_file;
    int m_timeframe;
    const SeriesDirectories& m_series;
    const ProgressSink& m_progress;
    const Surroundings& m_surroundings;
    BadLines m_bad;
    bool m_hasTickers;
    QString m_ticker;      ///< of the lines that are coming
    QSet<QString> m_known; ///< that have come
    std::optional<StoreWriter> m_store;
    qint64 m_bars = 0;
    qint64 m_days = 0;
};

// An import, and whether it has read the beginning of one content and the end of another.
struct ReadImport
{
    ImportResult result;
    bool isMixed = false;
};

ReadImport runImport(const QString& fileName, const ImportDetails& details, const ImportWays& ways,
                     const ImportSeries& series, const ProgressSink& progress,
                     const Surroundings& surroundings)
{
    FileBars file(fileName, details, ways.clock, series.describe);
    if (!file.open())
        return {{cannotOpen(fileName)}};
    const Result<SeriesDirectories> found =
        findSeries(fileName, details, ways, series, surroundings.stop);
    if (!found)
        return {{found.failure()}};
    if (ways.mode != ImportMode::Replace)
        return {mergeBars(file, {details, ways, *found, series.describe}, progress, surroundings)};
    const ImportResult result =
        ImportRun(file, details, ways, *found, progress, surroundings).run();
    return {result, file.isMixed()};
}

} // namespace

ImportResult importBars(const QString& fileName, const ImportDetails& details,
                        const WritableSeriesDir& seriesDir, const ProgressSink& progress,
                        const Surroundings& surroundings)
{
    const auto directories = [&seriesDir](const QStringList&) -> Result<QList<QDir>> {
        const Result<QDir> dir = seriesDir();
        return dir ? Result<QList<QDir>>(QList<QDir>{*dir}) : dir.failure();
    };
    return runImport(fileName, details, {}, {directories}, progress, surroundings).result;
}

ImportResult importByWays(const QString& fileName, const ImportDetails& details,
                          const ImportWays& ways, const ImportSeries& series,
                          const ProgressSink& progress, const Surroundings& surroundings)
{
    ReadImport import = runImport(fileName, details, ways, series, progress, surroundings);
    if (import.result.outcome && import.isMixed)
        import.result.outcome = hasChanged(fileName);
    return import.result;
}

} // namespace tadata
