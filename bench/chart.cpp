// SPDX-License-Identifier: MIT
// The terminal's chart over a year of minute bars: reading the series, looking for what has
// changed, and frames of the chart while it is scrolled at several zooms. The store is made below
// the system's temporary directory and removed again.
//
//   bench_chart [DAYS] [BARS_PER_DAY] [FRAMES]
//
// QT_QPA_PLATFORM=offscreen does without a display.

#include "desk/chart/chartview.h"
#include "desk/chart/dayreader.h"
#include "desk/chart/wallclock.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace vexdesk;

constexpr int minute = 60;
constexpr QSize viewSize(1200, 600);
const QDate firstDay(2024, 1, 15);
const QTime opening(10, 0);

double milliseconds(const QElapsedTimer& timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

bool makeStore(const QString& directory, int days, int barsPerDay)
{
    quint32 state = 1;
    const auto random = [&state](int count) {
        state = state * 1664525U + 1013904223U;
        return static_cast<int>((state >> 8) % static_cast<quint32>(count));
    };
    constexpr int startPrice = 12000;
    int price = startPrice;
    QDate day = firstDay;
    for (int d = 0; d < days; ++d, day = day.addDays(day.dayOfWeek() == Qt::Friday ? 3 : 1)) {
        QFile file(directory + u'/' + dayFileName(day, minute));
        if (!file.open(QIODevice::WriteOnly))
            return false;
        for (int bar = 1; bar <= barsPerDay; ++bar) {
            const int close = std::max(100, price + random(21) - 10);
            const int high = std::max(price, close) + random(5);
            const int low = std::min(price, close) - random(5);
            const QTime time = opening.addSecs(bar * minute);
            QByteArray line = time.toString(QStringLiteral("hhmmss")).toLatin1();
            for (const int value : {price, high, low, close})
                line += ';' + QByteArray::number(value / 100.0, 'f', 2);
            line += ';' + QByteArray::number(1 + random(500)) + ";0.00;0\n";
            if (file.write(line) != line.size())
                return false;
            price = close;
        }
    }
    return true;
}

// Scrolls through everything and draws each view.
void measureFrames(ChartView& view, const char* what, double length, int frames)
{
    const TimeRange all = view.limits().all();
    QImage image(viewSize, QImage::Format_ARGB32_Premultiplied);
    std::vector<double> times;
    size_t most = 0;
    for (int i = 0; i < frames; ++i) {
        const double begin = all.begin + (all.length() - length) * i / frames;
        QElapsedTimer timer;
        timer.start();
        view.setRange({begin, begin + length});
        QPainter painter(&image);
        view.render(&painter);
        painter.end();
        times.push_back(milliseconds(timer));
        most = std::max(most, view.chart().candles.size());
    }
    std::sort(times.begin(), times.end());
    std::printf(
        "%-12s candle of %7lld s, at most %4zu of them: median %6.2f ms, slowest %6.2f ms\n", what,
        static_cast<long long>(view.chart().interval), most, times[times.size() / 2], times.back());
}

// Null where not every bar is read.
std::shared_ptr<const BarSeries> measureReading(const QString& directory, int days, int barsPerDay)
{
    const auto goOn = [](int, int) { return true; };
    QElapsedTimer timer;
    timer.start();
    ReadDays read = readDays(directory, minute, {}, goOn);
    std::printf("read %d days: %.1f ms\n", days, milliseconds(timer));
    timer.restart();
    auto series = std::make_shared<const BarSeries>(seriesOf(read));
    std::printf("put together: %.2f ms\n", milliseconds(timer));
    // Files that were just written are not trusted to stay as they are.
    for (auto& [day, one] : read)
        one.stamp.isSettled = true;
    timer.restart();
    read = readDays(directory, minute, read, goOn);
    std::printf("look for changes: %.1f ms\n", milliseconds(timer));
    std::printf("%lld bars, %.1f MB\n", static_cast<long long>(series->size()),
                double(series->size()) * double(sizeof(Bar)) * 16 / 15 / 1e6);
    return series->size() == qsizetype(days) * barsPerDay ? series : nullptr;
}

void measureSums(const BarSeries& series)
{
    constexpr int rounds = 1000;
    size_t candles = 0;
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < rounds; ++i) {
        candles += candlesOf(series, secondsPerDay, static_cast<double>(series.firstTime()),
                             static_cast<double>(series.lastTime()))
                       .size();
    }
    std::printf("sum up everything to %zu candles: %.3f ms\n", candles / rounds,
                milliseconds(timer) / rounds);
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int days = arguments.value(1, QStringLiteral("250")).toInt();
    const int barsPerDay = arguments.value(2, QStringLiteral("520")).toInt();
    const int frames = std::max(1, arguments.value(3, QStringLiteral("300")).toInt());
    const QTemporaryDir directory;
    if (!directory.isValid() || !makeStore(directory.path(), days, barsPerDay)) {
        std::fprintf(stderr, "The store cannot be made\n");
        return EXIT_FAILURE;
    }

    const auto series = measureReading(directory.path(), days, barsPerDay);
    if (!series)
        return EXIT_FAILURE;
    measureSums(*series);

    ChartView view;
    view.resize(viewSize);
    view.show();
    view.showSeries(series, minute);
    measureFrames(view, "an hour", 60 * minute, frames);
    measureFrames(view, "three hours", 180 * minute, frames);
    measureFrames(view, "a day", double(secondsPerDay), frames);
    measureFrames(view, "a month", 30 * double(secondsPerDay), frames);
    measureFrames(view, "a quarter", 91 * double(secondsPerDay), frames);
    const double length = static_cast<double>(series->lastTime() - series->firstTime());
    measureFrames(view, "almost all", length * 0.99, frames);
    return EXIT_SUCCESS;
}
