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

QString intervalTimesText(const Candle& candle, Timeframe timeframe)
{
    if (timeframe == Timeframe::Day)
        return dateText(wallTime(candle.day));
    // Weeks and months are told without times, by their last day.
    const bool isDays = timeframe > Timeframe::Day;
    const int seconds = secondsOf(timeframe);
    const QString begin = isDays ? dateText(candle.begin) : dateTimeText(candle.begin, seconds);
    QString end = isDays ? dateText(candle.end - 1) : dateTimeText(candle.end, seconds);
    if (!isDays && wallDate(candle.begin) == wallDate(candle.end))
        end = end.section(u' ', 1);
    return QStringLiteral("%1 – %2").arg(begin, end);
}

} // namespace

QString candleTimeText(const Candle& candle, const CandleKind& kind)
{
    return kind.isPlain() && candle.count == 1 && isBelowDay(kind.shown)
               ? dateTimeText(candle.bar.time, kind.stored)
               : intervalTimesText(candle, kind.shown);
}

QString readoutText(const Candle& candle, const CandleKind& kind, int decimals)
{
    const Bar& bar = candle.bar;
    QString time = candleTimeText(candle, kind);
    if (!kind.isPlain() || candle.count > 1)
        time = Text::tr("%1 (%2)").arg(time, timeframeText(kind.shown));
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
