// SPDX-License-Identifier: MIT
#include "minutebuilder.h"

#include "support/bars.h"
#include "support/strictlog.h"

#include <QtCore/QTextStream>
#include <QtTest/QTest>

using tadata::MinuteBuilder;

class TestMinuteBuilder final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void foldsSecondsUpToTheWholeMinute();
    void aWholeMinuteOpensTheMinuteAfterIt();
    void keepsOpenDateAndStampWhileFolding();
    void foldsHighLowCloseVolumeValueAndOpenInterest();
    void takesHighAndLowFromAnySecond();
    void takesTheFirstOfEqualHighsAndTheLastOfEqualLows();
    void takesAnEarlierSecondIntoTheOpenMinute();
    void writesEachSecondOfTheLastMinuteOfTheDay();
    void skipsMinutesWithoutBars();
    void addsValuesAtTheLargerScale();
    void sumsVolumesWithoutOverflow();
    void takesTheOpenMinuteOnce();
};

namespace {

BarDescription second(QTime time, int price, qint64 volume = 1)
{
    return testsupport::sampleBar(QDate(2024, 1, 15), time, price, volume);
}

QString lineOf(const BarDescription& bar)
{
    QString text;
    QTextStream stream(&text);
    stream << bar;
    return text.chopped(1);
}

} // namespace

void TestMinuteBuilder::foldsSecondsUpToTheWholeMinute()
{
    MinuteBuilder builder;
    for (int s = 1; s <= 60; ++s)
        QVERIFY(!builder.add(second(QTime(10, 0).addSecs(s), 100 + s)));
    const auto minute = builder.add(second(QTime(10, 1, 1), 500));
    QVERIFY(minute);
    QCOMPARE(minute->time, QTime(10, 1));
    QCOMPARE(minute->open.toString(), QStringLiteral("101"));
    QCOMPARE(minute->close.toString(), QStringLiteral("161"));
    QCOMPARE(minute->volume, 60);
    const auto next = builder.take();
    QVERIFY(next);
    QCOMPARE(next->time, QTime(10, 2));
}

void TestMinuteBuilder::aWholeMinuteOpensTheMinuteAfterIt()
{
    MinuteBuilder builder;
    QVERIFY(!builder.add(second(QTime(10, 0), 100)));
    QVERIFY(!builder.add(second(QTime(10, 0, 30), 110)));
    QVERIFY(!builder.add(second(QTime(10, 1), 120)));
    const auto minute = builder.take();
    QVERIFY(minute);
    QCOMPARE(minute->time, QTime(10, 1));
    QCOMPARE(minute->volume, 3);
}

void TestMinuteBuilder::keepsOpenDateAndStampWhileFolding()
{
    MinuteBuilder builder;
    builder.add(second(QTime(10, 0, 1), 100));
    BarDescription otherDay = second(QTime(10, 0, 2), 200);
    otherDay.date = QDate(2024, 1, 16);
    QVERIFY(!builder.add(otherDay));
    const auto minute = builder.take();
    QCOMPARE(minute->open.toString(), QStringLiteral("100"));
    QCOMPARE(minute->date, QDate(2024, 1, 15));
    QCOMPARE(minute->time, QTime(10, 1));
}

void TestMinuteBuilder::foldsHighLowCloseVolumeValueAndOpenInterest()
{
    MinuteBuilder builder;
    builder.add(second(QTime(10, 0, 1), 100, 10));
    builder.add(second(QTime(10, 0, 2), 120, 20));
    builder.add(second(QTime(10, 0, 3), 90, 30));
    QCOMPARE(lineOf(*builder.take()), QStringLiteral("100100;100;125;85;91;60;3100;90"));
}

void TestMinuteBuilder::takesHighAndLowFromAnySecond()
{
    for (const QList<int>& prices : {QList<int>{100, 120, 90, 110}, QList<int>{100, 90, 120, 110},
                                     QList<int>{90, 100, 120}, QList<int>{120, 100, 90}}) {
        MinuteBuilder builder;
        for (int i = 0; i < prices.size(); ++i)
            QVERIFY(!builder.add(second(QTime(10, 0, 1 + i), prices[i])));
        const auto minute = builder.take();
        QCOMPARE(minute->high.toString(), QStringLiteral("125"));
        QCOMPARE(minute->low.toString(), QStringLiteral("85"));
        QCOMPARE(minute->openInterest, prices.last());
    }
}

// Which differ in their zeros alone.
void TestMinuteBuilder::takesTheFirstOfEqualHighsAndTheLastOfEqualLows()
{
    MinuteBuilder builder;
    BarDescription bar = second(QTime(10, 0, 1), 100);
    builder.add(bar);
    bar.high = decimal(1050, 1);
    bar.low = decimal(950, 1);
    builder.add(bar);
    const auto minute = builder.take();
    QCOMPARE(minute->high.toString(), QStringLiteral("105"));
    QCOMPARE(minute->low.toString(), QStringLiteral("95.0"));
}

void TestMinuteBuilder::takesAnEarlierSecondIntoTheOpenMinute()
{
    MinuteBuilder builder;
    builder.add(second(QTime(10, 5, 1), 100));
    QVERIFY(!builder.add(second(QTime(9, 0), 50)));
    const auto minute = builder.take();
    QCOMPARE(minute->time, QTime(10, 6));
    QCOMPARE(minute->low.toString(), QStringLiteral("45"));
    QCOMPARE(minute->close.toString(), QStringLiteral("51"));
}

void TestMinuteBuilder::writesEachSecondOfTheLastMinuteOfTheDay()
{
    MinuteBuilder builder;
    QVERIFY(!builder.add(second(QTime(23, 59, 30), 100)));
    const auto first = builder.add(second(QTime(23, 59, 31), 200));
    QVERIFY(first);
    QCOMPARE(first->time, QTime(0, 0));
    QCOMPARE(first->open.toString(), QStringLiteral("100"));
    const auto last = builder.add(second(QTime(23, 59, 32), 300));
    QVERIFY(last);
    QCOMPARE(last->time, QTime(0, 0));
    QCOMPARE(last->volume, 1);
}

void TestMinuteBuilder::skipsMinutesWithoutBars()
{
    MinuteBuilder builder;
    builder.add(second(QTime(10, 0, 1), 100));
    const auto minute = builder.add(second(QTime(12, 0, 1), 100));
    QCOMPARE(minute->time, QTime(10, 1));
    QCOMPARE(builder.take()->time, QTime(12, 1));
}

void TestMinuteBuilder::addsValuesAtTheLargerScale()
{
    MinuteBuilder builder;
    BarDescription bar = second(QTime(10, 0, 1), 100);
    bar.value = decimal(QStringLiteral("1.5"));
    builder.add(bar);
    bar.value = decimal(QStringLiteral("0.25"));
    builder.add(bar);
    QCOMPARE(builder.take()->value.toString(), QStringLiteral("1.75"));
}

void TestMinuteBuilder::sumsVolumesWithoutOverflow()
{
    MinuteBuilder builder;
    builder.add(second(QTime(10, 0, 1), 100, std::numeric_limits<qint64>::max()));
    builder.add(second(QTime(10, 0, 2), 100, 1));
    QCOMPARE(builder.take()->volume, std::numeric_limits<qint64>::min());
}

void TestMinuteBuilder::takesTheOpenMinuteOnce()
{
    MinuteBuilder builder;
    QVERIFY(!builder.take());
    builder.add(second(QTime(10, 0, 1), 100));
    QVERIFY(builder.take());
    QVERIFY(!builder.take());
}

QTEST_GUILESS_MAIN(TestMinuteBuilder)
#include "tst_minutebuilder.moc"
