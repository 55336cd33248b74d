// SPDX-License-Identifier: MIT
// Frames of the terminal's chart over ten million bars: layout and painting into a picture while it
// is scrolled, dragged and zoomed at several timeframes, from a second on, with nights and without.
// All bars are in memory: what reading takes is measured elsewhere.
//
//   bench_chartframes [DAYS] [BARS_PER_DAY] [FRAMES] [TIMEFRAME] [WIDTH] [HEIGHT]
//
// QT_QPA_PLATFORM=offscreen does without a display, QT_SCALE_FACTOR=2 has twice as many pixels in
// each direction.

#include "desk/chart/chartview.h"
#include "desk/chart/movingaverage.h"
#include "desk/chart/volumebyprice.h"
#include "desk/chart/wallclock.h"

#include <QtCore/QElapsedTimer>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>

namespace {

using namespace vexdesk;

const QDate firstDay(1984, 1, 2);
const QTime opening(9, 30);

std::shared_ptr<const BarSeries> makeSeries(int days, int barsPerDay, int timeframe)
{
    quint32 state = 1;
    const auto random = [&state](int count) {
        state = state * 1664525U + 1013904223U;
        return static_cast<int>((state >> 8) % static_cast<quint32>(count));
    };
    constexpr int startPrice = 12000;
    int price = startPrice;
    QDate day = firstDay;
    std::vector<SeriesDay> all;
    for (int d = 0; d < days; ++d, day = day.addDays(day.dayOfWeek() == Qt::Friday ? 3 : 1)) {
        std::vector<Bar> bars(static_cast<size_t>(barsPerDay));
        qint64 time = wallTime(day, opening);
        for (Bar& bar : bars) {
            const int close = std::max(100, price + random(21) - 10);
            bar.time = time += timeframe;
            bar.open = price / 100.0;
            bar.high = (std::max(price, close) + random(5)) / 100.0;
            bar.low = (std::min(price, close) - random(5)) / 100.0;
            bar.close = close / 100.0;
            bar.volume = 1 + random(500);
            price = close;
        }
        const auto dayBars = std::make_shared<const DayBars>(bars, 2);
        all.push_back({day, qint64(barsPerDay) * 48,
                       std::make_shared<const DaySummary>(summaryOf(*dayBars)), dayBars});
    }
    return std::make_shared<const BarSeries>(timeframe, std::move(all));
}

// What it takes from a change of the view to its picture.
void measure(ChartView& view, const char* what, int frames, const std::function<void(int)>& step)
{
    // As the screen's: opaque, so that nothing below the chart is painted first.
    QImage image(view.size() * view.devicePixelRatioF(), QImage::Format_RGB32);
    image.setDevicePixelRatio(view.devicePixelRatioF());
    std::vector<double> times;
    std::vector<double> elapsed;
    size_t most = 0;
    for (int i = 0; i < frames; ++i) {
        QElapsedTimer timer;
        timer.start();
        const std::clock_t begin = std::clock();
        step(i);
        view.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        times.push_back(1e3 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
        elapsed.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
        most = std::max(most, view.chart().candles.size());
    }
    const auto share = [](std::vector<double>& all, size_t percent) {
        std::sort(all.begin(), all.end());
        return all[(all.size() - 1) * percent / 100];
    };
    std::printf("%-32s at most %3zu candles, CPU ms: median %5.2f, 95 %% %5.2f, most %5.2f; "
                "elapsed 95 %% %5.2f\n",
                what, most, share(times, 50), share(times, 95), share(times, 100),
                share(elapsed, 95));
}

// Scrolls by a part of a view, back and forth over all of the series, and jumps over it.
void measureTimeframe(ChartView& view, Timeframe timeframe, int frames)
{
    view.setTimeframe(timeframe);
    const QByteArray name =
        QByteArray::number(secondsOf(timeframe)) + (view.areNightsShown() ? " s, nights" : " s");
    const SlotRange reach = view.reach();
    for (const double slotCount : {80.0, 260.0}) {
        const double length = std::min(slotCount, reach.length());
        view.setRange({reach.end - length, reach.end});
        measure(view, (name + ", scrolled").constData(), frames,
                [&view](int) { view.scroll(-0.07); });
        measure(view, (name + ", anywhere").constData(), frames, [&](int i) {
            const double begin = reach.begin + (reach.length() - length) * i / frames;
            view.setRange({begin, begin + length});
        });
    }
}

// As many bars as there are otherwise, of fewer and longer days.
void measureSeconds(const QSize& size, int days, int barsPerDay, int frames)
{
    constexpr int longer = 30;
    const auto series = makeSeries(std::max(1, days / longer), barsPerDay * longer, 1);
    ChartView view;
    view.resize(size);
    view.show();
    view.showSeries(series);
    for (const bool areNightsShown : {false, true}) {
        view.setNightsShown(areNightsShown);
        measureTimeframe(view, Timeframe::Second, frames);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int days = arguments.value(1, QStringLiteral("10000")).toInt();
    const int barsPerDay = arguments.value(2, QStringLiteral("1000")).toInt();
    const int frames = std::max(1, arguments.value(3, QStringLiteral("400")).toInt());
    const int timeframe = arguments.value(4, QStringLiteral("30")).toInt();
    const QSize size(arguments.value(5, QStringLiteral("1200")).toInt(),
                     arguments.value(6, QStringLiteral("600")).toInt());

    measureSeconds(size, days, barsPerDay, frames);
    const auto series = makeSeries(days, barsPerDay, timeframe);
    std::printf("%d days of %d bars\n", days, barsPerDay);
    ChartView view;
    view.resize(size);
    view.show();
    view.showSeries(series);
    for (const Timeframe shown : allTimeframes) {
        if (view.setTimeframe(shown); view.shownTimeframe() == shown)
            measureTimeframe(view, shown, frames);
    }
    view.setNightsShown(true);
    for (const Timeframe shown : {Timeframe::Minute, Timeframe::Hour, Timeframe::Day})
        measureTimeframe(view, shown, frames);
    view.setNightsShown(false);
    view.setTimeframe(Timeframe::Minute);
    view.goToLast();
    const auto zoom = [&view](int i) { view.zoom(i % 80 < 40 ? 1.25 : 0.8); };
    measure(view, "zoomed out and in", frames, zoom);
    view.setStudies({std::make_shared<MovingAverage>(20), std::make_shared<VolumeByPrice>(40)});
    measure(view, "zoomed out and in, with studies", frames, zoom);
    for (const Timeframe shown : {Timeframe::Minute, Timeframe::Day, Timeframe::Month}) {
        view.setTimeframe(shown);
        measure(view, "taking over what was read", frames, [&](int) { view.updateSeries(series); });
    }
    return EXIT_SUCCESS;
}
