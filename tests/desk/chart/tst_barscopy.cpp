// SPDX-License-Identifier: MIT
// The bars of a stretch as text: all of them, whether the chart has them in memory or not.

#include "chartseries.h"
#include "desk/chart/barscopy.h"
#include "desk/chart/chartfiles.h"
#include "desk/chart/dayreader.h"
#include "desk/chart/wallclock.h"
#include "support/dayfiles.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <memory>

using testsupport::barLine;
using testsupport::barLines;
using testsupport::dayFile;
using testsupport::firstDay;
using testsupport::SeriesPointer;
using testsupport::writeFile;
using vexdesk::BarsCopy;
using vexdesk::BarSeries;
using vexdesk::BarsStretch;
using vexdesk::Candle;
using vexdesk::CopiedBars;
using vexdesk::SeriesDay;
using vexdesk::Timeframe;
using vexdesk::wallTime;

namespace {

constexpr int dayCount = 40;

CopiedBars copied(BarsCopy copy)
{
    while (copy.takeDay())
        continue;
    return copy.finish();
}

} // namespace

class TestBarsCopy final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_directory.reset(); }

    void daysThatWereNotReadAreCopiedToo_data();
    void daysThatWereNotReadAreCopiedToo();
    void onlyCandlesOfTheStretchAreCopied();
    void whatIsInMemoryIsNotRead();
    void daysWithoutBarsAreTold();
    void aDayOfTooManyBarsIsTold();
    void aDayThatCouldNotBeReadIsReadAgain();
    void tooManyAreTold();
    void anEmptyStretchHasNothing();

private:
    // All days as the files have them, and as they are before one was read.
    SeriesPointer readSeries() const;
    SeriesPointer unreadSeries() const;
    BarsStretch stretch(const SeriesPointer& series, Timeframe timeframe) const;

    std::unique_ptr<QTemporaryDir> m_directory;
    QList<QDate> m_days;
};

// Every second week goes on through the nights, with bars at midnight; a day is missing here and
// there, and the Sunday before such a week.
void TestBarsCopy::init()
{
    testsupport::failOnStrayWarnings();
    m_directory = std::make_unique<QTemporaryDir>();
    m_days.clear();
    for (int i = 0; i < dayCount; ++i) {
        const QDate day = firstDay.addDays(i);
        if (i % 9 == 5 || i == 20)
            continue;
        const bool isLong = i / 7 % 2 == 1;
        const QTime begin = isLong ? QTime(0, 0) : QTime(10, 0);
        writeFile(m_directory->filePath(dayFile(day)), barLines(begin, isLong ? 1440 : 50, i));
        m_days.append(day);
    }
}

SeriesPointer TestBarsCopy::readSeries() const
{
    std::vector<SeriesDay> days = unreadSeries()->days();
    for (SeriesDay& day : days) {
        const auto read = vexdesk::readDay(m_directory->filePath(dayFile(day.day)), day.day);
        day.summary = read.summary;
        day.bars = read.bars;
    }
    return std::make_shared<const BarSeries>(60, std::move(days));
}

SeriesPointer TestBarsCopy::unreadSeries() const
{
    std::vector<SeriesDay> days;
    for (const QDate& day : m_days)
        days.push_back(
            testsupport::unreadDay(day, QFileInfo(m_directory->filePath(dayFile(day))).size()));
    return std::make_shared<const BarSeries>(60, std::move(days));
}

BarsStretch TestBarsCopy::stretch(const SeriesPointer& series, Timeframe timeframe) const
{
    return {series, m_directory->path(), timeframe,
            static_cast<double>(wallTime(firstDay.addDays(-1))),
            static_cast<double>(wallTime(firstDay.addDays(dayCount + 31)))};
}

void TestBarsCopy::daysThatWereNotReadAreCopiedToo_data()
{
    QTest::addColumn<Timeframe>("timeframe");
    for (const Timeframe timeframe : vexdesk::allTimeframes) {
        if (timeframe != Timeframe::Second)
            QTest::addRow("%d", static_cast<int>(timeframe)) << timeframe;
    }
}

// As the axis of a chart has them that has read everything.
void TestBarsCopy::daysThatWereNotReadAreCopiedToo()
{
    QFETCH(const Timeframe, timeframe);
    const auto axis = testsupport::axisOf(readSeries(), timeframe);
    std::vector<Candle> candles;
    for (const auto& placed : axis.candles({-1, static_cast<double>(axis.size()) + 1}))
        candles.push_back(placed.candle);
    QVERIFY(candles.size() > 1);
    const QString expected =
        vexdesk::candlesAsText(candles, {timeframe, 60}, readSeries()->decimals());

    const auto whole = [&](const SeriesPointer& series) { return stretch(series, timeframe); };
    const BarsCopy unread(whole(unreadSeries()));
    QVERIFY(unread.needsFiles());
    const CopiedBars all = copied(unread);
    QCOMPARE(all.text, expected);
    QCOMPARE(all.count, qsizetype(candles.size()));
    QVERIFY(all.missing.isEmpty() && !all.isTooMuch);
    QCOMPARE(copied(BarsCopy(whole(readSeries()))).text, expected);
    // With some of them read, as a chart has it after a while.
    std::vector<SeriesDay> days = unreadSeries()->days();
    const SeriesPointer read = readSeries();
    for (size_t i = 0; i < days.size(); i += 3)
        days[i] = read->days()[i];
    const auto some = std::make_shared<const BarSeries>(60, std::move(days));
    QCOMPARE(copied(BarsCopy(whole(some))).text, expected);
}

void TestBarsCopy::onlyCandlesOfTheStretchAreCopied()
{
    BarsStretch part = stretch(unreadSeries(), Timeframe::Minutes10);
    part.from = static_cast<double>(wallTime(firstDay, QTime(10, 20)));
    part.to = static_cast<double>(wallTime(firstDay.addDays(1), QTime(10, 15)));
    const QStringList lines = copied(BarsCopy(part)).text.split(u'\n', Qt::SkipEmptyParts);
    QVERIFY2(lines.value(1).startsWith(QStringLiteral("15.01.2024\t10:30:00\t")),
             qPrintable(lines.value(1)));
    QVERIFY2(lines.last().startsWith(QStringLiteral("16.01.2024\t10:20:00\t")),
             qPrintable(lines.last()));
    // 10:30 to 10:50 of the first day, 10:00 to 10:20 of the second one.
    QCOMPARE(lines.size(), 1 + 3 + 3);
}

void TestBarsCopy::whatIsInMemoryIsNotRead()
{
    const SeriesPointer read = readSeries();
    const QString expected = copied(BarsCopy(stretch(read, Timeframe::Minutes5))).text;
    m_directory.reset();
    m_directory = std::make_unique<QTemporaryDir>(); // the files are gone
    const BarsCopy copy(stretch(read, Timeframe::Minutes5));
    QVERIFY(!copy.needsFiles());
    QCOMPARE(copied(copy).text, expected);
    // Of days the summaries are enough.
    std::vector<SeriesDay> days = read->days();
    for (SeriesDay& day : days)
        day.bars.reset();
    const auto summed = std::make_shared<const BarSeries>(60, std::move(days));
    QVERIFY(!BarsCopy(stretch(summed, Timeframe::Week)).needsFiles());
    QVERIFY(BarsCopy(stretch(summed, Timeframe::Hour)).needsFiles());
}

void TestBarsCopy::daysWithoutBarsAreTold()
{
    const SeriesPointer unread = unreadSeries();
    QVERIFY(QFile::remove(m_directory->filePath(dayFile(firstDay.addDays(2)))));
    writeFile(m_directory->filePath(dayFile(firstDay.addDays(4))), "no bar\n");
    const CopiedBars all = copied(BarsCopy(stretch(unread, Timeframe::Minute)));
    QCOMPARE(all.missing, QList<QDate>({firstDay.addDays(2), firstDay.addDays(4)}));
    QVERIFY2(all.firstMissing.contains(dayFile(firstDay.addDays(2))), qPrintable(all.firstMissing));
    QVERIFY(all.count > 0);
    // Not of what was not asked for.
    BarsStretch part = stretch(unread, Timeframe::Minute);
    part.to = static_cast<double>(wallTime(firstDay.addDays(2)));
    QVERIFY(copied(BarsCopy(part)).missing.isEmpty());
}

void TestBarsCopy::aDayOfTooManyBarsIsTold()
{
    const QDate large = firstDay.addDays(2);
    const auto most = static_cast<int>(vexdesk::mostBarsOfDay);
    QByteArray lines;
    for (int i = 0; i <= most; ++i)
        lines += barLine(QTime(10, 0), 100);
    writeFile(m_directory->filePath(dayFile(large)), lines);
    for (const SeriesPointer& series : {unreadSeries(), readSeries()}) {
        const CopiedBars minutes = copied(BarsCopy(stretch(series, Timeframe::Minute)));
        QCOMPARE(minutes.missing, QList<QDate>{large});
        QVERIFY2(minutes.firstMissing.endsWith(QStringLiteral("в файле баров больше 172800")),
                 qPrintable(minutes.firstMissing));
        // A day is summed up whole.
        QVERIFY(copied(BarsCopy(stretch(series, Timeframe::Day))).missing.isEmpty());
    }
}

// Whatever was known of it before.
void TestBarsCopy::aDayThatCouldNotBeReadIsReadAgain()
{
    const SeriesPointer read = readSeries();
    std::vector<SeriesDay> days = read->days();
    days[1].bars.reset();
    days[1].summary = std::make_shared<const vexdesk::DaySummary>();
    days[1].reading = vexdesk::Failure{QStringLiteral("not now")};
    const auto series = std::make_shared<const BarSeries>(60, days);
    const BarsCopy copy(stretch(series, Timeframe::Minutes5));
    QVERIFY(copy.needsFiles());
    const CopiedBars all = copied(copy);
    QVERIFY(all.missing.isEmpty());
    QCOMPARE(all.text, copied(BarsCopy(stretch(read, Timeframe::Minutes5))).text);
    // A directory has no size and is a day that is missing nevertheless.
    const QString file = m_directory->filePath(dayFile(days[1].day));
    QVERIFY(QFile::remove(file) && QDir().mkdir(file));
    days[1].bytes = 0;
    const CopiedBars others =
        copied(BarsCopy(stretch(std::make_shared<const BarSeries>(60, days), Timeframe::Minutes5)));
    QCOMPARE(others.missing, QList<QDate>({days[1].day}));
    QCOMPARE(others.firstMissing, file + QStringLiteral(": это каталог, а не файл"));
}

void TestBarsCopy::tooManyAreTold()
{
    const BarsStretch all = stretch(unreadSeries(), Timeframe::Hour);
    const qsizetype count = copied(BarsCopy(all)).count;
    QVERIFY(!copied(BarsCopy(all, count)).isTooMuch);
    const CopiedBars less = copied(BarsCopy(all, count - 1));
    QVERIFY(less.isTooMuch);
    QCOMPARE(less.text, QString());
}

void TestBarsCopy::anEmptyStretchHasNothing()
{
    for (const int days : {-400, 400}) {
        BarsStretch away = stretch(unreadSeries(), Timeframe::Minute);
        away.from = static_cast<double>(wallTime(firstDay.addDays(days)));
        away.to = away.from + 3600;
        const BarsCopy copy(away);
        QVERIFY(!copy.needsFiles());
        QCOMPARE(copied(copy).count, 0);
    }
}

QTEST_GUILESS_MAIN(TestBarsCopy)
#include "tst_barscopy.moc"
