// SPDX-License-Identifier: MIT
#include "desk/chart/readout.h"

#include "desk/chart/axisticks.h"
#include "desk/chart/wallclock.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

namespace vexdesk {

namespace {

constexpr int moneyDecimals = 2;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::Readout)
};

QString intervalTimesText(const Candle& candle, qint64 interval)
{
    // Days are told without times, the last one among them.
    const bool isDays = interval % secondsPerDay == 0;
    const QString begin = isDays ? dateText(candle.begin) : dateTimeText(candle.begin, interval);
    if (interval == secondsPerDay)
        return begin;
    QString end = isDays ? dateText(candle.end - 1) : dateTimeText(candle.end, interval);
    if (!isDays && wallDate(candle.begin) == wallDate(candle.end))
        end = end.section(u' ', 1);
    return QStringLiteral("%1 – %2").arg(begin, end);
}

} // namespace

QString candleTimeText(const Candle& candle, qint64 interval, int timeframe)
{
    return interval == timeframe && candle.count == 1 ? dateTimeText(candle.bar.time, timeframe)
                                                      : intervalTimesText(candle, interval);
}

QString readoutText(const Candle& candle, qint64 interval, int timeframe, int decimals)
{
    const Bar& bar = candle.bar;
    QString time = candleTimeText(candle, interval, timeframe);
    if (interval != timeframe || candle.count > 1)
        time = Text::tr("%1 (%2)").arg(time, intervalText(interval));
    const auto price = [decimals](double number) { return numberText(number, decimals); };
    QStringList parts{time,
                      Text::tr("Откр. %1").arg(price(bar.open)),
                      Text::tr("Макс. %1").arg(price(bar.high)),
                      Text::tr("Мин. %1").arg(price(bar.low)),
                      Text::tr("Закр. %1").arg(price(bar.close)),
                      Text::tr("Объём %1").arg(groupedText(QString::number(bar.volume)))};
    if (bar.value != 0)
        parts.append(
            Text::tr("Объём в деньгах %1").arg(groupedText(numberText(bar.value, moneyDecimals))));
    if (bar.openInterest != 0)
        parts.append(
            Text::tr("Откр. интерес %1").arg(groupedText(QString::number(bar.openInterest))));
    return parts.join(QStringLiteral("   "));
}

} // namespace vexdesk
