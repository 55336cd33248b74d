// SPDX-License-Identifier: MIT
// What the terminal's chart waits for and what it keeps: from the choice of a series to the bars of
// its first picture, and the memory while all of a long series is looked through. The files come
// from the system's cache. The stores are made below the system's temporary directory and removed
// again.
//
//   bench_chart [ROUNDS] [DAYS_OF_SECONDS]
//
// The memory is that of DAYS_OF_SECONDS files of 30,000 bars with money and open interest.

#include "chartstore.h"

#include "desk/chart/candles.h"
#include "desk/chart/seriesfeed.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>

namespace {

using namespace vexdesk;

constexpr int secondsPerFile = 30000;
constexpr double megabyte = 1024.0 * 1024.0;

double cpuMilliseconds()
{
    return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// Of the whole process, in bytes.
double residentMemory()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    constexpr double page = 4096;
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toDouble() * page
                                          : 0;
}

/// A chart without a picture: it wants some of the last days, and waits until it has them.
class Reader final
{
public:
    Reader(const QString& root, int timeframe)
        : m_feed(root)
        , m_key{QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("VEGA"), timeframe}
    {
        QObject::connect(&m_feed, &SeriesFeed::loaded, &m_loop,
                         [this](const std::shared_ptr<const BarSeries>& series) {
                             m_series = series;
                             if (m_isReady())
                                 m_loop.quit();
                         });
    }

    /// The days are listed then, and no more.
    void choose()
    {
        m_isReady = [] { return true; };
        m_feed.choose(m_key);
        m_loop.exec();
    }
    void want(qsizetype first, qsizetype last, bool needsBars)
    {
        const auto dayAt = [this](qsizetype index) -> const SeriesDay& {
            return m_series->days()[static_cast<size_t>(index)];
        };
        m_isReady = [dayAt, first, last, needsBars] {
            for (qsizetype i = first; i <= last; ++i) {
                if (!dayAt(i).summary || (needsBars && !dayAt(i).bars))
                    return false;
            }
            return true;
        };
        m_feed.want({dayAt(first).day, dayAt(last).day, needsBars});
        if (!m_isReady())
            m_loop.exec();
    }

    const BarSeries& series() const { return *m_series; }
    qsizetype size() const { return static_cast<qsizetype>(m_series->days().size()); }
    const SeriesFeed& feed() const { return m_feed; }

private:
    SeriesFeed m_feed;
    SeriesKey m_key;
    QEventLoop m_loop;
    std::shared_ptr<const BarSeries> m_series;
    std::function<bool()> m_isReady;
};

// From the choice to the candles of the last days, of all where none are given.
void measureOpening(const char* what, const QString& root, int stored, Timeframe timeframe,
                    qsizetype lastDays, int rounds)
{
    std::vector<double> times;
    std::vector<double> listings;
    const double before = cpuMilliseconds();
    size_t candles = 0;
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        Reader reader(root, stored);
        reader.choose();
        listings.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
        const qsizetype days = lastDays > 0 ? lastDays : reader.size();
        reader.want(reader.size() - days, reader.size() - 1, isBelowDay(timeframe));
        candles = 0;
        for (qsizetype i = reader.size() - days; i < reader.size(); ++i)
            candles += foldDay(reader.series(), i, timeframe).size();
        times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    const double cpu = (cpuMilliseconds() - before) / rounds;
    std::sort(times.begin(), times.end());
    std::sort(listings.begin(), listings.end());
    std::printf("%-44s %6zu candles: median %6.1f ms, slowest %6.1f ms (listed after %5.1f ms), "
                "processor %6.1f ms\n",
                what, candles, times[times.size() / 2], times.back(), listings[listings.size() / 2],
                cpu);
    std::fflush(stdout);
}

// Looks through all bars, a few days at a time.
bool measureMemory(const QString& root)
{
    constexpr qsizetype view = 3; // days
    const double before = residentMemory();
    Reader reader(root, 1);
    reader.choose();
    double most = 0;
    qint64 mostBars = 0;
    qsizetype bars = 0;
    for (qsizetype i = 0; i + view <= reader.size(); i += view) {
        reader.want(i, i + view - 1, true);
        most = std::max(most, residentMemory() - before);
        mostBars = std::max(mostBars, reader.feed().memory());
    }
    qint64 bytes = 0;
    qsizetype inMemory = 0;
    for (const SeriesDay& day : reader.series().days()) {
        bars += day.summary ? day.summary->count : 0;
        bytes += day.bars ? day.bars->bytes() : 0;
        inMemory += day.bars ? day.bars->size() : 0;
    }
    std::printf("looked through %.1f million bars: %.1f bytes a bar, at most %.0f MB of bars, the "
                "process grew by at most %.0f MB\n",
                static_cast<double>(bars) / 1e6,
                static_cast<double>(bytes) / static_cast<double>(std::max<qsizetype>(1, inMemory)),
                static_cast<double>(mostBars) / megabyte, most / megabyte);
    return bars > 0;
}

bool makeSeries(const QTemporaryDir& root, const ChartStore& store)
{
    const QString directory = root.filePath(QStringLiteral("NORD/MAIN/VEGA"));
    return root.isValid() && QDir().mkpath(directory) && makeChartStore(directory, store);
}

int fail()
{
    std::fprintf(stderr, "The store cannot be made or read\n");
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int rounds = std::max(1, arguments.value(1, QStringLiteral("15")).toInt());
    const int days = arguments.value(2, QStringLiteral("340")).toInt();
    {
        const QTemporaryDir minutes;
        if (!makeSeries(minutes, {2600, 520, 60, false}))
            return fail();
        measureOpening("ten years of minutes, the last two days", minutes.path(), 60,
                       Timeframe::Minute, 2, rounds);
        measureOpening("ten years of minutes, days of a year", minutes.path(), 60, Timeframe::Day,
                       250, rounds);
        measureOpening("ten years of minutes, all months", minutes.path(), 60, Timeframe::Month, 0,
                       rounds);
    }
    {
        const QTemporaryDir month;
        if (!makeSeries(month, {22, secondsPerFile, 1, false}))
            return fail();
        measureOpening("a month of seconds, the last day", month.path(), 1, Timeframe::Second, 1,
                       rounds);
        measureOpening("a month of seconds, all as half hours", month.path(), 1,
                       Timeframe::Minutes30, 0, rounds);
    }
    const QTemporaryDir seconds;
    if (!makeSeries(seconds, {days, secondsPerFile, 1, true}) || !measureMemory(seconds.path()))
        return fail();
    return EXIT_SUCCESS;
}
