// SPDX-License-Identifier: MIT
// What a user waits for who opens a chart: a whole page of the terminal, shown with a series of
// which nothing is in memory, to its first picture with candles and to the one in which nothing is
// missing any more; and what it does when a day comes to very many of which all is known. A pause
// is the longest time on the processor that one event took from the window meanwhile, but for
// painting. The files come from the system's cache.
//
//   bench_chartpage [ROUNDS] [DAYS]
//
// DAYS of a hundred bars are what a day comes to. QT_QPA_PLATFORM=offscreen does without a display.

#include "chartstore.h"

#include "desk/chart/chartpage.h"
#include "desk/chart/chartview.h"
#include "desk/chart/marksources.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtGui/QImage>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <utility>

namespace {

using namespace vexdesk;

constexpr QSize pageSize(1200, 700);
constexpr qint64 longest = 60'000; // ms

const SeriesName series{QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("VEGA")};

/// Times what the events of the user-interface thread take.
class Application final : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        if (QThread::currentThread() != thread())
            return QApplication::notify(receiver, event);
        const bool isPainting = event->type() == QEvent::UpdateRequest;
        if (m_depth++ == 0)
            m_begin = threadMilliseconds();
        const bool isTaken = QApplication::notify(receiver, event);
        if (--m_depth == 0 && !isPainting)
            m_pause = std::max(m_pause, threadMilliseconds() - m_begin);
        return isTaken;
    }
    /// The longest since the last time, in milliseconds.
    double takePause() { return std::exchange(m_pause, 0); }

private:
    static double threadMilliseconds()
    {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return 1e3 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e6;
    }

    int m_depth = 0;
    double m_begin = 0;
    double m_pause = 0;
};

Application& application()
{
    return *static_cast<Application*>(QCoreApplication::instance());
}

struct Times
{
    std::vector<double> first;
    std::vector<double> whole;
    double pause = 0;
    size_t candles = 0;
};

bool hasCandles(ChartPage& page)
{
    return !page.view().chart().candles.empty();
}

bool isWhole(ChartPage& page)
{
    return hasCandles(page) && page.view().chart().unread.empty();
}

// With the picture; -1 where it does not come.
double timeTo(ChartPage& page, const QElapsedTimer& timer, bool (*isReady)(ChartPage&))
{
    while (!isReady(page)) {
        if (timer.hasExpired(longest))
            return -1;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QImage picture(page.size(), QImage::Format_ARGB32_Premultiplied);
    page.render(&picture);
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double medianOf(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void measureOpening(const char* what, const QString& root, const ChartState& state, int rounds)
{
    Times times;
    for (int round = 0; round < rounds; ++round) {
        MarkSources marks;
        QElapsedTimer timer;
        timer.start();
        ChartPage page(root, state, marks);
        page.resize(pageSize);
        page.show();
        application().takePause();
        times.first.push_back(timeTo(page, timer, hasCandles));
        times.whole.push_back(timeTo(page, timer, isWhole));
        times.pause = std::max(times.pause, application().takePause());
        times.candles = page.view().chart().candles.size();
    }
    std::printf("%-44s first picture: median %6.1f ms, slowest %6.1f ms; all %4zu candles: median "
                "%6.1f ms; longest pause %5.1f ms\n",
                what, medianOf(times.first),
                *std::max_element(times.first.begin(), times.first.end()), times.candles,
                medianOf(times.whole), times.pause);
    std::fflush(stdout);
}

ChartState stateOf(Timeframe timeframe, double slotCount = 0, bool areNightsShown = false)
{
    ChartState state;
    state.series = series;
    state.timeframe = timeframe;
    state.areNightsShown = areNightsShown;
    state.slotsInView = slotCount;
    return state;
}

// A day file more comes to a series that is shown, again and again.
bool measureTakingOver(const QString& root, const QString& directory, double slotCount, int rounds)
{
    MarkSources marks;
    ChartPage page(root, stateOf(Timeframe::Minute, slotCount), marks);
    page.resize(pageSize);
    page.show();
    QElapsedTimer timer;
    timer.start();
    if (timeTo(page, timer, isWhole) < 0)
        return false;
    const QDate last = page.storedDays().constLast();
    std::vector<double> pauses;
    for (int round = 1; round <= rounds; ++round) {
        application().takePause();
        const QDate day = last.addDays(round);
        if (!QFile::copy(directory + u'/' + dayFileName(last, 60),
                         directory + u'/' + dayFileName(day, 60)))
            return false;
        timer.start();
        while (page.storedDays().constLast() != day && !timer.hasExpired(longest))
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (timeTo(page, timer, isWhole) < 0)
            return false;
        pauses.push_back(application().takePause());
    }
    std::printf("a day comes, %zu candles in view: longest pause median %5.1f ms, most "
                "%5.1f ms\n",
                page.view().chart().candles.size(), medianOf(pauses),
                *std::max_element(pauses.begin(), pauses.end()));
    return true;
}

/// A store of one series.
class Store final
{
public:
    explicit Store(const ChartStore& store)
    {
        m_isMade =
            m_root.isValid() && QDir().mkpath(directory()) && makeChartStore(directory(), store);
    }

    bool isMade() const { return m_isMade; }
    QString root() const { return m_root.path(); }
    QString directory() const { return m_root.filePath(QStringLiteral("NORD/MAIN/VEGA")); }

private:
    QTemporaryDir m_root;
    bool m_isMade = false;
};

int fail()
{
    std::fprintf(stderr, "The store cannot be made or read\n");
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    const Application app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int rounds = std::max(1, arguments.value(1, QStringLiteral("15")).toInt());
    const int days = arguments.value(2, QStringLiteral("10000")).toInt();
    constexpr double everything = 1e7; // slots
    {
        const Store minutes({2600, 520, 60, false});
        if (!minutes.isMade())
            return fail();
        measureOpening("ten years of minutes, their end", minutes.root(),
                       stateOf(Timeframe::Minute), rounds);
        measureOpening("the same with nights", minutes.root(), stateOf(Timeframe::Minute, 0, true),
                       rounds);
        measureOpening("ten years of minutes, all", minutes.root(),
                       stateOf(Timeframe::Minute, everything), rounds);
    }
    {
        const Store month({22, 30000, 1, false});
        if (!month.isMade())
            return fail();
        measureOpening("a month of seconds, its end", month.root(), stateOf(Timeframe::Second),
                       rounds);
        measureOpening("the same with nights", month.root(), stateOf(Timeframe::Second, 0, true),
                       rounds);
        measureOpening("a month of seconds, all", month.root(),
                       stateOf(Timeframe::Second, everything), rounds);
    }
    const Store many({days, 100, 60, false});
    constexpr double years = 500 * 100; // bars
    for (const double slotCount : {0.0, years, everything}) {
        if (!many.isMade() || !measureTakingOver(many.root(), many.directory(), slotCount, rounds))
            return fail();
    }
    return EXIT_SUCCESS;
}
