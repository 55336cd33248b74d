// SPDX-License-Identifier: MIT
#include "chartsupport.h"

#include "desk/chart/wallclock.h"

#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

using vexdesk::Bar;
using vexdesk::BarSeries;

namespace testsupport {

Bar makeBar(const QDate& day, const QTime& time, int number)
{
    Bar bar;
    bar.time = vexdesk::wallTime(day, time);
    bar.open = 100 + number % 17 / 4.0;
    bar.close = 100 + number % 13 / 4.0;
    bar.high = std::max(bar.open, bar.close) + 0.25;
    bar.low = std::min(bar.open, bar.close) - 0.5;
    bar.volume = 100 + number;
    return bar;
}

std::shared_ptr<const BarSeries> seriesOf(const std::vector<std::vector<Bar>>& days, int decimals)
{
    std::vector<BarSeries::Day> parts;
    for (const std::vector<Bar>& bars : days)
        parts.push_back(std::make_shared<const vexdesk::DayBars>(bars, decimals));
    return std::make_shared<const BarSeries>(std::move(parts));
}

std::shared_ptr<const BarSeries> makeSeries(int days, int barsPerDay)
{
    std::vector<std::vector<Bar>> parts(static_cast<size_t>(days));
    for (int d = 0; d < days; ++d) {
        for (int i = 1; i <= barsPerDay; ++i)
            parts[static_cast<size_t>(d)].push_back(
                makeBar(firstDay.addDays(d), QTime(10, 0).addSecs(i * minute), i));
    }
    return seriesOf(parts);
}

QPoint placeOf(const vexdesk::ChartLayout& chart, const vexdesk::Candle& candle)
{
    return QPointF(chart.xOf(candle.middle()), chart.prices.yOf(candle.bar.close)).toPoint();
}

void moveMouse(QWidget* widget, const QPoint& place, Qt::MouseButtons buttons)
{
    QMouseEvent event(QEvent::MouseMove, place, widget->mapToGlobal(QPointF(place)), Qt::NoButton,
                      buttons, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

void leaveWidget(QWidget* widget)
{
    QEvent event(QEvent::Leave);
    QApplication::sendEvent(widget, &event);
}

} // namespace testsupport
