// SPDX-License-Identifier: MIT
// The candles of a series are the bars that an export of it writes: beside the folding by days
// stands the rule itself, which takes one bar after the other.

#include "desk/chart/candles.h"
#include "desk/chart/wallclock.h"
#include "seriesdays.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

#include <optional>

using testsupport::randomBar;
using vexdesk::Bar;
using vexdesk::BarSeries;
using vexdesk::Candle;
using vexdesk::foldDay;
using vexdesk::SeriesDay;
using vexdesk::Timeframe;
using vexdesk::wallTime;

namespace {

const QDate monday(2024, 1, 15);

struct FileOfDay
{
    QDate day;
    std::vector<Bar> bars;
};
using Files = std::vector<FileOfDay>;

void extend(Candle& open, const Bar& bar)
{
    open.bar.time = bar.time;
    open.bar.high = std::max(open.bar.high, bar.high);
    open.bar.low = std::min(open.bar.low, bar.low);
    open.bar.close = bar.close;
    open.bar.volume += bar.volume;
    open.bar.value += bar.value;
    open.bar.openInterest = bar.openInterest;
    ++open.count;
}

// A bar that lies after the end of the open one begins a new one, which ends with the interval that
// the bar is in: a part of its day counted from midnight, which holds its end. Midnight ends the
// interval before the day's first.
std::vector<Candle> exported(const Files& files, int seconds)
{
    std::vector<Candle> candles;
    for (const FileOfDay& file : files) {
        for (const Bar& bar : file.bars) {
            if (!candles.empty() && bar.time <= candles.back().end) {
                extend(candles.back(), bar);
                continue;
            }
            const qint64 time = bar.time - wallTime(file.day);
            const qint64 whole = time / seconds + (time % seconds == 0 ? 0 : 1);
            const qint64 end = wallTime(file.day) + whole * seconds;
            candles.push_back({end - seconds, end, bar, 1, file.day});
        }
    }
    return candles;
}

// As they are shown: bars at midnight that end no stored day stand at the day that they end.
std::vector<Candle> atTheirDays(std::vector<Candle> days)
{
    for (Candle& day : days) {
        if (day.end == wallTime(day.day))
            day.day = day.day.addDays(-1);
    }
    return days;
}

// Julian days begin with a Monday.
QDate mondayOf(const QDate& day)
{
    return QDate::fromJulianDay(day.toJulianDay() - day.toJulianDay() % 7);
}

// Of candles of days, each at its day.
std::vector<Candle> gathered(const std::vector<Candle>& days, Timeframe timeframe)
{
    std::vector<Candle> periods;
    for (const Candle& day : days) {
        const bool isMonth = timeframe == Timeframe::Month;
        const QDate first = isMonth ? QDate(day.day.year(), day.day.month(), 1) : mondayOf(day.day);
        if (!periods.empty() && periods.back().begin == wallTime(first)) {
            const qsizetype count = periods.back().count + day.count;
            extend(periods.back(), day.bar);
            periods.back().count = count;
            continue;
        }
        periods.push_back(day);
        periods.back().begin = wallTime(first);
        periods.back().end = wallTime(isMonth ? first.addMonths(1) : first.addDays(7));
    }
    return periods;
}

std::vector<Candle> plainCandles(const Files& files, Timeframe timeframe)
{
    if (isBelowDay(timeframe))
        return exported(files, secondsOf(timeframe));
    const std::vector<Candle> days = atTheirDays(exported(files, secondsOf(Timeframe::Day)));
    return timeframe == Timeframe::Day ? days : gathered(days, timeframe);
}

BarSeries seriesOf(const Files& files, int timeframe = 60)
{
    std::vector<SeriesDay> days;
    for (const FileOfDay& file : files)
        days.push_back(testsupport::readDay(file.day, file.bars));
    return {timeframe, std::move(days)};
}

std::vector<Candle> folded(const BarSeries& series, Timeframe timeframe)
{
    std::vector<Candle> all;
    for (qsizetype i = 0; i < qsizetype(series.days().size()); ++i) {
        const std::vector<Candle> candles = foldDay(series, i, timeframe);
        all.insert(all.end(), candles.begin(), candles.end());
    }
    return all;
}

// Times of a day, often those at which intervals begin and end.
int randomSecond(QRandomGenerator& random, int timeframe)
{
    constexpr std::array lengths{1, 60, 300, 600, 1800, 3600, 86400};
    const int length = lengths[static_cast<size_t>(random.bounded(int(lengths.size())))];
    const int second = random.bounded(86400 / length) * length + random.bounded(-1, 2) * timeframe;
    return std::clamp(second / timeframe * timeframe, 0, 86400 - timeframe);
}

Files randomFiles(QRandomGenerator& random, int timeframe)
{
    Files files;
    QDate day = monday.addDays(random.bounded(-20000, 20000)); // 1970 is no boundary
    const int count = 1 + random.bounded(40);
    for (int d = 0; d < count;
         ++d, day = day.addDays(random.bounded(4) == 0 ? 1 + random.bounded(9) : 1)) {
        const int bars = random.bounded(5) == 0 ? 0 : random.bounded(60);
        std::vector<int> seconds(static_cast<std::size_t>(bars));
        for (int& second : seconds)
            second = randomSecond(random, timeframe);
        for (int i = random.bounded(4); i > 2; --i)
            seconds.insert(seconds.end(), {0, 86400 - timeframe});
        if (random.bounded(3) == 0)
            seconds.push_back(0);
        std::sort(seconds.begin(), seconds.end());
        FileOfDay file{day, {}};
        for (const int second : seconds)
            file.bars.push_back(randomBar(random, wallTime(day) + second));
        files.push_back(file);
    }
    return files;
}

Bar barAt(const QDate& day, const QTime& time, double price)
{
    Bar bar;
    bar.time = wallTime(day, time);
    bar.open = bar.high = bar.low = bar.close = price;
    bar.volume = 1;
    return bar;
}

QString told(const std::vector<Candle>& candles)
{
    QStringList texts;
    for (const Candle& candle : candles)
        texts.append(QStringLiteral("%1 %2 %3")
                         .arg(vexdesk::wallDate(candle.end).toString(Qt::ISODate),
                              vexdesk::wallClock(candle.end).toString(Qt::ISODate))
                         .arg(candle.count));
    return texts.join(u'\n');
}

} // namespace

class TestCandles final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void foldsAsTheExport();
    void midnightEndsTheDayBefore();
    void midnightWithoutADayBeforeIsItsOwn();
    void midnightIsShownAtADayThatWasNotRead();
    void aDayIsShownAtItsDay();
    void aStoredDayAtMidnightIsShownAtItsDay();
    void weeksAndMonthsAreMadeOfDays();
    void midnightIsOfTheWeekAndMonthOfItsDay();
    void weeksGoOnOverTheYearsEnd();
    void monthsAreThoseOfTheCalendar();
    void summariesAreEnoughForDays();
    void whatWasNotReadHasNoCandles();
};

void TestCandles::foldsAsTheExport()
{
    QRandomGenerator random(3);
    qsizetype compared = 0;
    qsizetype acrossMidnight = 0;
    for (int round = 0; round < 300; ++round) {
        const int timeframe = round % 2 == 0 ? 1 : 60;
        const Files files = randomFiles(random, timeframe);
        const BarSeries series = seriesOf(files, timeframe);
        for (const Timeframe one : vexdesk::allTimeframes) {
            if (one == Timeframe::Second && timeframe != 1)
                continue;
            const std::vector<Candle> candles = folded(series, one);
            const std::vector<Candle> wanted = plainCandles(files, one);
            if (candles != wanted) {
                QFAIL(qPrintable(QStringLiteral("round %1, timeframe %2:\n%3\nwanted:\n%4")
                                     .arg(round)
                                     .arg(static_cast<int>(one))
                                     .arg(told(candles), told(wanted))));
            }
            for (qsizetype i = 0; i < qsizetype(series.days().size()); ++i) {
                QCOMPARE(series.candlesOf(i, one), int(foldDay(series, i, one).size()));
                acrossMidnight += series.endsDayBefore(i, one) ? 1 : 0;
            }
            QCOMPARE(series.candlesBefore(one).back(), qint64(candles.size()));
            compared += qsizetype(candles.size());
        }
    }
    QVERIFY2(compared > 100000, qPrintable(QString::number(compared)));
    QVERIFY2(acrossMidnight > 2000, qPrintable(QString::number(acrossMidnight)));
}

void TestCandles::midnightEndsTheDayBefore()
{
    const QDate tuesday = monday.addDays(1);
    const Files files{{monday, {barAt(monday, QTime(23, 56), 1), barAt(monday, QTime(23, 59), 2)}},
                      {tuesday, {barAt(tuesday, QTime(0, 0), 9), barAt(tuesday, QTime(0, 1), 4)}}};
    const BarSeries series = seriesOf(files);
    const std::vector<Candle> last = foldDay(series, 0, Timeframe::Minutes5);
    QCOMPARE(last.size(), 1U);
    QCOMPARE(last[0].end, wallTime(tuesday));
    QCOMPARE(last[0].begin, wallTime(monday, QTime(23, 55)));
    QCOMPARE(last[0].count, qsizetype(3));
    QCOMPARE(last[0].bar.high, 9.0);
    QCOMPARE(last[0].bar.close, 9.0);
    QCOMPARE(last[0].bar.time, wallTime(tuesday));
    QCOMPARE(foldDay(series, 1, Timeframe::Minutes5).size(), 1U);
    // The minute before midnight has no bar yet: the one at midnight is its first.
    QCOMPARE(foldDay(series, 0, Timeframe::Minute).size(), 2U);
    const std::vector<Candle> minutes = foldDay(series, 1, Timeframe::Minute);
    QCOMPARE(minutes.size(), 2U);
    QCOMPARE(minutes[0].begin, wallTime(monday, QTime(23, 59)));
    QCOMPARE(minutes[0].day, tuesday);
}

void TestCandles::midnightWithoutADayBeforeIsItsOwn()
{
    const QDate wednesday = monday.addDays(2);
    const Files files{
        {monday, {barAt(monday, QTime(23, 59), 1)}},
        {wednesday, {barAt(wednesday, QTime(0, 0), 2), barAt(wednesday, QTime(10, 0), 3)}}};
    const BarSeries series = seriesOf(files);
    QCOMPARE(series.candlesOf(1, Timeframe::Day), 2);
    const std::vector<Candle> days = foldDay(series, 1, Timeframe::Day);
    QCOMPARE(days.size(), 2U);
    QCOMPARE(days[0].bar.close, 2.0);
    QCOMPARE(days[1].bar.close, 3.0);
    // Each at its day: midnight ends the one before.
    const QDate tuesday = wednesday.addDays(-1);
    QCOMPARE(days[0].day, tuesday);
    QCOMPARE(days[0].begin, wallTime(tuesday));
    QCOMPARE(days[0].end, wallTime(wednesday));
    QCOMPARE(days[1].day, wednesday);
    QCOMPARE(days[1].begin, wallTime(wednesday));
    QCOMPARE(days[1].end, wallTime(wednesday.addDays(1)));
    QCOMPARE(foldDay(series, 0, Timeframe::Day)[0].bar.close, 1.0);
}

void TestCandles::midnightIsShownAtADayThatWasNotRead()
{
    const QDate tuesday = monday.addDays(1);
    const BarSeries read =
        seriesOf({{monday, {barAt(monday, QTime(23, 59), 1)}},
                  {tuesday, {barAt(tuesday, QTime(0, 0), 2), barAt(tuesday, QTime(10, 0), 3)}}});
    std::vector<SeriesDay> days = read.days();
    days[0] = testsupport::unreadDay(monday, 48);
    const BarSeries series(60, days);
    QCOMPARE(series.candlesOf(0, Timeframe::Day), 1);
    QCOMPARE(series.candlesOf(1, Timeframe::Day), 1);
    const std::vector<Candle> before = foldDay(series, 0, Timeframe::Day);
    QCOMPARE(before.size(), 1U);
    QCOMPARE(before[0].day, monday);
    QCOMPARE(before[0].bar.close, 2.0);
    QCOMPARE(foldDay(series, 1, Timeframe::Day)[0].day, tuesday);
    QCOMPARE(foldDay(series, 1, Timeframe::Day)[0].bar.close, 3.0);
    // Below the day it stays the bar of its file.
    QVERIFY(foldDay(series, 0, Timeframe::Hour).empty());
    QCOMPARE(foldDay(series, 1, Timeframe::Hour).size(), 2U);
}

void TestCandles::aDayIsShownAtItsDay()
{
    const BarSeries series = seriesOf({{monday, {barAt(monday, QTime(10, 0), 1)}}});
    const std::vector<Candle> days = foldDay(series, 0, Timeframe::Day);
    QCOMPARE(days.size(), 1U);
    QCOMPARE(days[0].day, monday);
    QCOMPARE(days[0].begin, wallTime(monday));
    QCOMPARE(days[0].end, wallTime(monday.addDays(1)));
}

void TestCandles::aStoredDayAtMidnightIsShownAtItsDay()
{
    Files files;
    for (const int offset : {0, 1, 2})
        files.push_back(
            {monday.addDays(offset), {barAt(monday.addDays(offset), QTime(0, 0), 1 + offset)}});
    const BarSeries series = seriesOf(files, int(vexdesk::secondsPerDay));
    for (const int offset : {0, 1, 2}) {
        const std::vector<Candle> days = foldDay(series, offset, Timeframe::Day);
        QCOMPARE(days.size(), 1U);
        QCOMPARE(days[0].bar.close, 1.0 + offset);
        QCOMPARE(days[0].day, monday.addDays(offset));
        QCOMPARE(days[0].begin, wallTime(monday.addDays(offset)));
        QCOMPARE(days[0].end, wallTime(monday.addDays(offset + 1)));
    }
}

void TestCandles::weeksAndMonthsAreMadeOfDays()
{
    Files files;
    for (const int offset : {0, 4, 7, 20}) // the last one in February
        files.push_back(
            {monday.addDays(offset), {barAt(monday.addDays(offset), QTime(10, 0), 1 + offset)}});
    const BarSeries series = seriesOf(files);
    const std::vector<Candle> weeks = folded(series, Timeframe::Week);
    QCOMPARE(weeks.size(), 3U);
    QCOMPARE(weeks[0].bar.open, 1.0);
    QCOMPARE(weeks[0].bar.close, 5.0);
    QCOMPARE(weeks[0].count, qsizetype(2));
    QCOMPARE(weeks[0].begin, wallTime(monday));
    QCOMPARE(weeks[0].end, wallTime(monday.addDays(7)));
    QCOMPARE(series.candlesOf(0, Timeframe::Week), 1);
    QCOMPARE(series.candlesOf(1, Timeframe::Week), 0);
    const std::vector<Candle> months = folded(series, Timeframe::Month);
    QCOMPARE(months.size(), 2U);
    QCOMPARE(months[0].count, qsizetype(3));
    QCOMPARE(months[1].begin, wallTime(QDate(2024, 2, 1)));
    QCOMPARE(months[1].day, monday.addDays(20));
}

// Of those of the day that it ends, as among candles of days, whether that day has a file or not.
void TestCandles::midnightIsOfTheWeekAndMonthOfItsDay()
{
    const QDate first(2024, 4, 1); // a Monday
    const auto files = [first](const QList<int>& before) {
        Files all;
        for (const int days : before)
            all.push_back({first.addDays(-days), {barAt(first.addDays(-days), QTime(10, 0), 1)}});
        all.push_back({first, {barAt(first, QTime(0, 0), 5), barAt(first, QTime(10, 0), 7)}});
        return all;
    };
    for (const Timeframe timeframe : {Timeframe::Week, Timeframe::Month}) {
        for (const QList<int>& before : {QList<int>{1}, {2}, {3, 2}}) {
            const std::vector<Candle> candles = folded(seriesOf(files(before)), timeframe);
            QCOMPARE(candles.size(), 2U);
            QCOMPARE(candles[0].bar.close, 5.0);
            QCOMPARE(candles[0].count, before.size() + 1);
            QCOMPARE(candles[0].end, wallTime(first));
            QCOMPARE(candles[0].day, first.addDays(-before.first()));
            QCOMPARE(candles[1].bar.open, 7.0);
            QCOMPARE(candles[1].begin, wallTime(first));
        }
        // Alone it is all that its week or month has.
        const BarSeries alone = seriesOf(files({}));
        QCOMPARE(alone.candlesOf(0, timeframe), 2);
        const std::vector<Candle> candles = folded(alone, timeframe);
        QCOMPARE(candles.size(), 2U);
        QCOMPARE(candles[0].day, first.addDays(-1));
        QCOMPARE(candles[0].end, candles[1].begin);
        QCOMPARE(candles[1].day, first);
    }
}

void TestCandles::weeksGoOnOverTheYearsEnd()
{
    // 28 December 2026 is a Monday, and so is 4 January 2027.
    Files files;
    const auto add = [&files](const QDate& day, double open, double close) {
        files.push_back({day, {barAt(day, QTime(10, 0), open), barAt(day, QTime(18, 0), close)}});
    };
    add(QDate(2026, 12, 25), 90, 91);   // a Friday
    add(QDate(2026, 12, 28), 100, 104); // Monday
    add(QDate(2026, 12, 31), 108, 97);
    add(QDate(2027, 1, 1), 96, 95);
    add(QDate(2027, 1, 3), 99, 101); // Sunday
    add(QDate(2027, 1, 4), 110, 111);
    const std::vector<Candle> weeks = folded(seriesOf(files), Timeframe::Week);
    QCOMPARE(weeks.size(), 3U);
    QCOMPARE(weeks[0].begin, wallTime(QDate(2026, 12, 21)));
    QCOMPARE(weeks[0].bar.close, 91.0);
    QCOMPARE(weeks[1].begin, wallTime(QDate(2026, 12, 28)));
    QCOMPARE(weeks[1].end, wallTime(QDate(2027, 1, 4)));
    QCOMPARE(weeks[1].day, QDate(2026, 12, 28));
    const Bar week{wallTime(QDate(2027, 1, 3), QTime(18, 0)), 100, 108, 95, 101, 8, 0, 0};
    QVERIFY(weeks[1].bar == week);
    QCOMPARE(weeks[1].count, qsizetype(8));
    QCOMPARE(weeks[2].begin, wallTime(QDate(2027, 1, 4)));
    QCOMPARE(weeks[2].bar.open, 110.0);
}

void TestCandles::monthsAreThoseOfTheCalendar()
{
    Files files;
    const auto add = [&files](const QDate& day, double price) {
        files.push_back({day, {barAt(day, QTime(10, 0), price)}});
    };
    add(QDate(2023, 12, 31), 5);
    add(QDate(2024, 1, 1), 7);
    add(QDate(2024, 1, 31), 3);
    add(QDate(2024, 2, 1), 20);
    add(QDate(2024, 2, 29), 22); // of a leap year
    add(QDate(2024, 3, 1), 30);
    const std::vector<Candle> months = folded(seriesOf(files), Timeframe::Month);
    QCOMPARE(months.size(), 4U);
    QCOMPARE(months[0].begin, wallTime(QDate(2023, 12, 1)));
    QCOMPARE(months[0].end, wallTime(QDate(2024, 1, 1)));
    QCOMPARE(months[0].count, qsizetype(1));
    const Bar january{wallTime(QDate(2024, 1, 31), QTime(10, 0)), 7, 7, 3, 3, 2, 0, 0};
    QVERIFY(months[1].bar == january);
    QCOMPARE(months[1].end, wallTime(QDate(2024, 2, 1)));
    QCOMPARE(months[2].begin, wallTime(QDate(2024, 2, 1)));
    QCOMPARE(months[2].end, wallTime(QDate(2024, 3, 1)));
    QCOMPARE(months[2].bar.close, 22.0);
    QCOMPARE(months[3].day, QDate(2024, 3, 1));
}

void TestCandles::summariesAreEnoughForDays()
{
    QRandomGenerator random(4);
    for (int round = 0; round < 200; ++round) {
        const Files files = randomFiles(random, 60);
        std::vector<SeriesDay> days;
        for (const FileOfDay& file : files)
            days.push_back(testsupport::summedDay(file.day, file.bars));
        const BarSeries summed(60, days);
        const BarSeries read = seriesOf(files);
        for (const Timeframe one : {Timeframe::Day, Timeframe::Week, Timeframe::Month})
            QVERIFY(folded(summed, one) == folded(read, one));
        QVERIFY(folded(summed, Timeframe::Hour).empty());
        for (qsizetype i = 0; i < qsizetype(days.size()); ++i)
            QCOMPARE(summed.candlesOf(i, Timeframe::Hour), read.candlesOf(i, Timeframe::Hour));
    }
}

void TestCandles::whatWasNotReadHasNoCandles()
{
    const QDate tuesday = monday.addDays(1);
    const BarSeries series(60, {testsupport::unreadDay(monday, 5000),
                                testsupport::readDay(tuesday, {barAt(tuesday, QTime(0, 0), 7)})});
    QVERIFY(foldDay(series, 0, Timeframe::Minute).empty());
    const BarSeries alone(60, {testsupport::unreadDay(monday, 5000)});
    for (const Timeframe one : {Timeframe::Minute, Timeframe::Day, Timeframe::Week})
        QVERIFY(foldDay(alone, 0, one).empty());
    // A week that is known in part is shown in part.
    const std::vector<Candle> weeks = foldDay(series, 0, Timeframe::Week);
    QCOMPARE(weeks.size(), 1U);
    QCOMPARE(weeks[0].bar.open, 7.0);
    QCOMPARE(weeks[0].day, monday);
    QVERIFY(foldDay(series, 1, Timeframe::Week).empty());
}

QTEST_GUILESS_MAIN(TestCandles)
#include "tst_candles.moc"
