// SPDX-License-Identifier: MIT
#include "exportbar.h"

#include "exportdetails.h"
#include "support/bars.h"
#include "support/lineformats.h"
#include "support/localzone.h"
#include "support/strictlog.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtCore/QScopeGuard>
#include <QtCore/QTextStream>
#include <QtTest/QTest>

#include <limits>

using testsupport::lineFormats;

namespace {

const QDate day(2024, 1, 15);

constexpr int timeframes[] = {1, 60, 300, 600, 1800, 3600, 86400};

ExportDetails detailsOf(int timeframe, const char* lineFormat = lineFormats[0])
{
    ExportDetails details;
    details.securityName = QStringLiteral("ALFA");
    details.timeframe = timeframe;
    details.separator = QStringLiteral(";");
    details.dateFormat = QStringLiteral("yyyyMMdd");
    details.timeFormat = QStringLiteral("hhmmss");
    details.lineFormat = QString::fromLatin1(lineFormat);
    return details;
}

BarDescription bar(const QTime& time, int price, qint64 volume = 1)
{
    return testsupport::sampleBar(day, time, price, volume);
}

BarDescription barOf(const QDate& date, const QTime& time, int price = 100)
{
    return testsupport::sampleBar(date, time, price);
}

QString stamp(const BarDescription& bar)
{
    return bar.date.toString(QStringLiteral("yyyy-MM-dd ")) +
           bar.time.toString(QStringLiteral("hh:mm:ss.zzz"));
}

// What is written for bars in turn, and what is open in the end.
struct Exported
{
    QString text;
    BarDescription open;
};

Exported exported(const QList<BarDescription>& sources, const ExportDetails& details)
{
    Exported result;
    QTextStream out(&result.text);
    for (const BarDescription& source : sources)
        exportBar(source, result.open, details, out);
    return result;
}

// The lines of all bars, the last one included.
QString linesOf(const QList<BarDescription>& sources, const ExportDetails& details)
{
    Exported result = exported(sources, details);
    QTextStream out(&result.text);
    if (result.open.valid)
        writeBar(result.open, out, details);
    return result.text;
}

QString lineOf(const BarDescription& bar, const ExportDetails& details)
{
    QString text;
    QTextStream out(&text);
    writeBar(bar, out, details);
    return text;
}

QString headerOf(const ExportDetails& details)
{
    QString text;
    QTextStream out(&text);
    writeHeader(out, details);
    return text;
}

} // namespace

class TestExportBar final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void detailsBeginEmpty();

    void foldsFiveMinutes();
    void stampsWithTheEndOfTheInterval_data();
    void stampsWithTheEndOfTheInterval();
    void aBarAtTheEndBelongsToTheInterval_data();
    void aBarAtTheEndBelongsToTheInterval();
    void aDailyBarIsStampedWithTheNextDay();
    void midnightIsADailyBarOfItsOwn();
    void theLastDayOfAMonthEndsInTheNext();
    void anIntervalThatDoesNotDivideTheDayStaysInIt();
    void aTimeThatIsNoneIsMidnight();
    void anEarlierBarGoesIntoTheOpenOne();
    void twoBarsMayHaveOneStamp();
    void comparesMomentsInLocalTime_data();
    void comparesMomentsInLocalTime();

    void aFirstBarIsCopied();
    void aFirstBarIsValidWhateverTheSourceIs();
    void whatIsOpenIsWrittenBeforeTheNextBegins();
    void whatIsNotValidIsNotWritten();
    void foldingKeepsOpenAndStamp();
    void anEqualHighReplacesAndAnEqualLowDoesNot();
    void pricesCompareByTheirSize();
    void valuesAddAtTheLargerScale();
    void aValueThatIsTooLongLosesDigits();
    void aSumThatDoesNotFitThrows();
    void volumesAddWithoutOverflow();
    void theOpenInterestIsTheLast();

    void columnsHaveAFixedOrder();
    void theLineEndsBehindTheLastName();
    void aNameThatIsUnknownWritesNothing_data();
    void aNameThatIsUnknownWritesNothing();
    void aRepeatedNameIsWrittenOnce_data();
    void aRepeatedNameIsWrittenOnce();
    void oneNameIsALine_data();
    void oneNameIsALine();
    void datesAndTimesHaveTheirFormats_data();
    void datesAndTimesHaveTheirFormats();
    void whatIsNoDateIsEmpty();
    void numbersAreWrittenInNoLocale();
    void decimalsKeepTheirDigits();
    void aSeparatorMayBeAnyText();

    void theHeaderFollowsTheLineFormat_data();
    void theHeaderFollowsTheLineFormat();
};

void TestExportBar::detailsBeginEmpty()
{
    const ExportDetails details;
    QCOMPARE(details.stockId, 0);
    QCOMPARE(details.boardId, 0);
    QCOMPARE(details.securityId, 0);
    QCOMPARE(details.timeframe, 0);
    for (const QString& text :
         {details.stockCode, details.boardCode, details.securityName, details.separator,
          details.dateFormat, details.timeFormat, details.dateFormatTitle, details.timeFormatTitle,
          details.lineFormat, details.outputPath})
        QCOMPARE(text, QString());
    QVERIFY(!details.addHeader);
    QVERIFY(details.dateFrom.isNull());
    QVERIFY(details.dateTo.isNull());
}

void TestExportBar::foldsFiveMinutes()
{
    const Exported result = exported({bar(QTime(10, 1), 101, 1), bar(QTime(10, 2), 102, 2),
                                      bar(QTime(10, 5), 105, 4), bar(QTime(10, 6), 106, 8)},
                                     detailsOf(300));
    QCOMPARE(result.text, QStringLiteral("ALFA;300;20240115;100500;101;110;96;106;7;3080;105\n"));
    QCOMPARE(stamp(result.open), QStringLiteral("2024-01-15 10:10:00.000"));
    QCOMPARE(result.open.open.toString(), QStringLiteral("106"));
    QCOMPARE(result.open.volume, 8);
}

void TestExportBar::stampsWithTheEndOfTheInterval_data()
{
    QTest::addColumn<int>("timeframe");
    QTest::addColumn<QTime>("time");
    QTest::addColumn<QString>("expected");

    struct Case
    {
        int timeframe;
        const char* time;
        const char* expected;
    };
    const Case cases[] = {
        {1, "00:00:00.000", "15 00:00:00"},     {1, "00:00:00.001", "15 00:00:01"},
        {1, "10:00:00.000", "15 10:00:00"},     {1, "10:00:00.500", "15 10:00:01"},
        {1, "23:59:59.000", "15 23:59:59"},     {1, "23:59:59.001", "16 00:00:00"},
        {60, "00:00:00.000", "15 00:00:00"},    {60, "10:00:00.000", "15 10:00:00"},
        {60, "10:00:00.001", "15 10:01:00"},    {60, "10:00:59.999", "15 10:01:00"},
        {60, "10:01:00.000", "15 10:01:00"},    {60, "23:59:00.000", "15 23:59:00"},
        {60, "23:59:01.000", "16 00:00:00"},    {300, "10:00:00.000", "15 10:00:00"},
        {300, "10:00:01.000", "15 10:05:00"},   {300, "23:55:00.000", "15 23:55:00"},
        {300, "23:59:59.999", "16 00:00:00"},   {600, "10:00:00.001", "15 10:10:00"},
        {600, "10:10:00.000", "15 10:10:00"},   {600, "23:50:00.001", "16 00:00:00"},
        {1800, "09:59:59.000", "15 10:00:00"},  {1800, "10:00:00.000", "15 10:00:00"},
        {1800, "10:00:01.000", "15 10:30:00"},  {1800, "23:30:00.001", "16 00:00:00"},
        {3600, "00:00:00.001", "15 01:00:00"},  {3600, "09:00:00.000", "15 09:00:00"},
        {3600, "22:59:59.999", "15 23:00:00"},  {3600, "23:00:00.001", "16 00:00:00"},
        {86400, "00:00:00.000", "15 00:00:00"}, {86400, "00:00:00.001", "16 00:00:00"},
        {86400, "12:00:00.000", "16 00:00:00"}, {86400, "23:59:59.999", "16 00:00:00"}};
    for (const Case& each : cases) {
        QTest::addRow("%d %s", each.timeframe, each.time)
            << each.timeframe
            << QTime::fromString(QLatin1String(each.time), QStringLiteral("hh:mm:ss.zzz"))
            << QStringLiteral("2024-01-%1.000").arg(QLatin1String(each.expected));
    }
}

void TestExportBar::stampsWithTheEndOfTheInterval()
{
    QFETCH(const int, timeframe);
    QFETCH(const QTime, time);
    QFETCH(const QString, expected);
    QVERIFY(time.isValid());
    QCOMPARE(stamp(exported({bar(time, 100)}, detailsOf(timeframe)).open), expected);
}

void TestExportBar::aBarAtTheEndBelongsToTheInterval_data()
{
    QTest::addColumn<int>("timeframe");
    for (const int timeframe : timeframes)
        QTest::addRow("%d", timeframe) << timeframe;
}

void TestExportBar::aBarAtTheEndBelongsToTheInterval()
{
    QFETCH(const int, timeframe);
    const ExportDetails details = detailsOf(timeframe, "VOL");
    const QDateTime end = QDateTime(day, QTime(0, 0), Qt::UTC).addSecs(timeframe);
    const BarDescription first = bar(QTime(0, 0, 0, 1), 100);
    const BarDescription last = barOf(end.date(), end.time());
    const BarDescription after = barOf(end.date(), end.time().addMSecs(1));
    QCOMPARE(exported({first, last}, details).text, QString());
    QCOMPARE(exported({first, last, after}, details).text, QStringLiteral("2\n"));
}

void TestExportBar::aDailyBarIsStampedWithTheNextDay()
{
    QCOMPARE(linesOf({bar(QTime(10, 0), 100, 1), bar(QTime(18, 45), 200, 2),
                      barOf(day.addDays(1), QTime(10, 0), 300)},
                     detailsOf(86400, "DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL")),
             QStringLiteral("20240116;000000;100;205;95;201;3\n"
                            "20240117;000000;300;305;295;301;1\n"));
}

void TestExportBar::midnightIsADailyBarOfItsOwn()
{
    QCOMPARE(linesOf({bar(QTime(0, 0), 100), bar(QTime(0, 0, 0, 1), 200), bar(QTime(10, 0), 300)},
                     detailsOf(86400, "DATE,TIME,OPEN,VOL")),
             QStringLiteral("20240115;000000;100;1\n"
                            "20240116;000000;200;2\n"));
}

void TestExportBar::theLastDayOfAMonthEndsInTheNext()
{
    const QDate last(2024, 2, 29);
    QCOMPARE(stamp(exported({barOf(last, QTime(23, 59, 30))}, detailsOf(60)).open),
             QStringLiteral("2024-03-01 00:00:00.000"));
    const QDate sylvester(2023, 12, 31);
    QCOMPARE(stamp(exported({barOf(sylvester, QTime(12, 0))}, detailsOf(86400)).open),
             QStringLiteral("2024-01-01 00:00:00.000"));
}

void TestExportBar::anIntervalThatDoesNotDivideTheDayStaysInIt()
{
    // Seven seconds: the last interval ends in the first second of the next day.
    QCOMPARE(stamp(exported({bar(QTime(23, 59, 59), 100)}, detailsOf(7)).open),
             QStringLiteral("2024-01-15 00:00:01.000"));
}

void TestExportBar::aTimeThatIsNoneIsMidnight()
{
    for (const int timeframe : timeframes) {
        QCOMPARE(stamp(exported({bar(QTime(), 100)}, detailsOf(timeframe)).open),
                 QStringLiteral("2024-01-15 00:00:00.000"));
    }
    // Earlier than what is open, and so in it.
    const Exported result = exported({bar(QTime(10, 0), 100), bar(QTime(), 200)}, detailsOf(60));
    QCOMPARE(result.text, QString());
    QCOMPARE(stamp(result.open), QStringLiteral("2024-01-15 10:00:00.000"));
    QCOMPARE(result.open.volume, 2);
    QCOMPARE(result.open.high.toString(), QStringLiteral("205"));
}

void TestExportBar::anEarlierBarGoesIntoTheOpenOne()
{
    const Exported result = exported(
        {bar(QTime(10, 0), 100), bar(QTime(9, 0), 50), barOf(day.addDays(-3), QTime(23, 0))},
        detailsOf(300));
    QCOMPARE(result.text, QString());
    QCOMPARE(stamp(result.open), QStringLiteral("2024-01-15 10:00:00.000"));
    QCOMPARE(result.open.volume, 3);
    QCOMPARE(result.open.low.toString(), QStringLiteral("45"));
    QCOMPARE(result.open.open.toString(), QStringLiteral("100"));
}

void TestExportBar::twoBarsMayHaveOneStamp()
{
    // The stamp of the last interval of seven seconds lies before it.
    QCOMPARE(linesOf({bar(QTime(23, 59, 58), 100), bar(QTime(23, 59, 59), 200)},
                     detailsOf(7, "DATE,TIME,OPEN")),
             QStringLiteral("20240115;000001;100\n"
                            "20240115;000001;200\n"));
}

void TestExportBar::comparesMomentsInLocalTime_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QDate>("date");
    // Days on which the clock jumps, at two in the morning, at midnight and by half an hour.
    QTest::newRow("forward") << QByteArray("America/New_York") << QDate(2024, 3, 10);
    QTest::newRow("back") << QByteArray("America/New_York") << QDate(2024, 11, 3);
    QTest::newRow("midnight") << QByteArray("America/Sao_Paulo") << QDate(2018, 11, 4);
    QTest::newRow("half an hour") << QByteArray("Australia/Lord_Howe") << QDate(2024, 10, 6);
    QTest::newRow("no jump") << QByteArray("UTC") << QDate(2024, 3, 10);
}

void TestExportBar::comparesMomentsInLocalTime()
{
    QFETCH(const QByteArray, zone);
    QFETCH(const QDate, date);
    const testsupport::LocalZone local(zone);
    const ExportDetails details = detailsOf(60, "VOL");
    for (int first = 0; first < 240; first += 10) {
        for (int second = 0; second < 240; second += 10) {
            const QTime open = QTime(0, 0).addSecs(first * 60);
            const QTime next = QTime(0, 0).addSecs(second * 60);
            const bool isLater = QDateTime(date, open) < QDateTime(date, next);
            QCOMPARE(exported({barOf(date, open), barOf(date, next)}, details).text,
                     isLater ? QStringLiteral("1\n") : QString());
        }
    }
}

void TestExportBar::aFirstBarIsCopied()
{
    BarDescription source = bar(QTime(10, 0, 30), 100, 12);
    source.open = decimal(QStringLiteral("100.50"));
    source.value = decimal(QStringLiteral("1234.5"));
    source.error = QStringLiteral("left over");
    const BarDescription open = exported({source}, detailsOf(60)).open;
    QVERIFY(open.valid);
    QCOMPARE(open.error, QString());
    QCOMPARE(stamp(open), QStringLiteral("2024-01-15 10:01:00.000"));
    QCOMPARE(open.open.toString(), QStringLiteral("100.50"));
    QCOMPARE(open.high.toString(), QStringLiteral("105"));
    QCOMPARE(open.low.toString(), QStringLiteral("95"));
    QCOMPARE(open.close.toString(), QStringLiteral("101"));
    QCOMPARE(open.volume, 12);
    QCOMPARE(open.value.toString(), QStringLiteral("1234.5"));
    QCOMPARE(open.openInterest, 100);
}

void TestExportBar::aFirstBarIsValidWhateverTheSourceIs()
{
    BarDescription source = bar(QTime(10, 0), 100);
    source.valid = false;
    source.error = QStringLiteral("Некорректное число");
    const BarDescription open = exported({source}, detailsOf(60)).open;
    QVERIFY(open.valid);
    QCOMPARE(open.error, QString());
    QCOMPARE(exported({source, bar(QTime(11, 0), 200)}, detailsOf(60, "OPEN")).text,
             QStringLiteral("100\n"));
}

void TestExportBar::whatIsOpenIsWrittenBeforeTheNextBegins()
{
    QCOMPARE(exported({bar(QTime(10, 0), 1), bar(QTime(10, 1), 2), bar(QTime(10, 2), 3)},
                      detailsOf(60, "TIME,OPEN"))
                 .text,
             QStringLiteral("100000;1\n100100;2\n"));
}

void TestExportBar::whatIsNotValidIsNotWritten()
{
    BarDescription target = bar(QTime(9, 0), 7);
    target.valid = false;
    QString text;
    QTextStream out(&text);
    exportBar(bar(QTime(8, 0), 9), target, detailsOf(60), out);
    QCOMPARE(text, QString());
    QVERIFY(target.valid);
    QCOMPARE(stamp(target), QStringLiteral("2024-01-15 08:00:00.000"));
    QCOMPARE(target.open.toString(), QStringLiteral("9"));
    QCOMPARE(target.volume, 1);
}

void TestExportBar::foldingKeepsOpenAndStamp()
{
    const BarDescription open =
        exported({bar(QTime(10, 0, 1), 100), bar(QTime(10, 0, 2), 200), bar(QTime(10, 0, 3), 50)},
                 detailsOf(60))
            .open;
    QCOMPARE(stamp(open), QStringLiteral("2024-01-15 10:01:00.000"));
    QCOMPARE(open.open.toString(), QStringLiteral("100"));
    QCOMPARE(open.high.toString(), QStringLiteral("205"));
    QCOMPARE(open.low.toString(), QStringLiteral("45"));
    QCOMPARE(open.close.toString(), QStringLiteral("51"));
}

void TestExportBar::anEqualHighReplacesAndAnEqualLowDoesNot()
{
    BarDescription first = bar(QTime(10, 0, 1), 100);
    first.high = decimal(QStringLiteral("105.0"));
    first.low = decimal(QStringLiteral("95.0"));
    BarDescription second = first;
    second.high = decimal(QStringLiteral("105.00"));
    second.low = decimal(QStringLiteral("95.00"));
    const BarDescription open = exported({first, second}, detailsOf(60)).open;
    QCOMPARE(open.high.toString(), QStringLiteral("105.00"));
    QCOMPARE(open.low.toString(), QStringLiteral("95.0"));
}

void TestExportBar::pricesCompareByTheirSize()
{
    BarDescription first = bar(QTime(10, 0, 1), 100);
    first.high = decimal(QStringLiteral("-2"));
    first.low = decimal(QStringLiteral("9.5"));
    BarDescription second = first;
    second.high = decimal(QStringLiteral("-10"));
    second.low = decimal(QStringLiteral("10"));
    BarDescription open = exported({first, second}, detailsOf(60)).open;
    QCOMPARE(open.high.toString(), QStringLiteral("-2"));
    QCOMPARE(open.low.toString(), QStringLiteral("9.5"));
    open = exported({second, first}, detailsOf(60)).open;
    QCOMPARE(open.high.toString(), QStringLiteral("-2"));
    QCOMPARE(open.low.toString(), QStringLiteral("9.5"));
}

void TestExportBar::valuesAddAtTheLargerScale()
{
    BarDescription first = bar(QTime(10, 0, 1), 100);
    first.value = decimal(QStringLiteral("1.5"));
    BarDescription second = first;
    second.value = decimal(QStringLiteral("2.250"));
    QCOMPARE(exported({first, second}, detailsOf(60)).open.value.toString(),
             QStringLiteral("3.750"));
    QCOMPARE(exported({second, first}, detailsOf(60)).open.value.toString(),
             QStringLiteral("3.750"));
}

void TestExportBar::aValueThatIsTooLongLosesDigits()
{
    BarDescription first = bar(QTime(10, 0, 1), 100);
    first.value = decimal(decimal::maxMantissa, 2);
    BarDescription second = first;
    second.value = decimal(3, 2);
    const decimal sum = exported({first, second}, detailsOf(60)).open.value;
    QCOMPARE(sum.scale(), 1);
    QCOMPARE(sum.mantissa(), (decimal::maxMantissa + 3) / 10);
}

void TestExportBar::aSumThatDoesNotFitThrows()
{
    BarDescription first = bar(QTime(10, 0, 1), 100);
    first.value = decimal(decimal::maxMantissa, 0);
    QString text;
    QTextStream out(&text);
    BarDescription target;
    exportBar(first, target, detailsOf(60), out);
    QVERIFY_EXCEPTION_THROWN(exportBar(first, target, detailsOf(60), out), QString);
    QCOMPARE(text, QString());
}

void TestExportBar::volumesAddWithoutOverflow()
{
    using Limits = std::numeric_limits<qint64>;
    const auto sum = [](qint64 left, qint64 right) {
        return exported({bar(QTime(10, 0, 1), 1, left), bar(QTime(10, 0, 2), 1, right)},
                        detailsOf(60))
            .open.volume;
    };
    QCOMPARE(sum(3'000'000'000, 4'000'000'000), 7'000'000'000);
    QCOMPARE(sum(5, -7), -2);
    QCOMPARE(sum(Limits::max(), 1), Limits::min());
    QCOMPARE(sum(Limits::min(), -1), Limits::max());
}

void TestExportBar::theOpenInterestIsTheLast()
{
    BarDescription last = bar(QTime(10, 0, 2), 1);
    last.openInterest = 0;
    QCOMPARE(exported({bar(QTime(10, 0, 1), 500), last}, detailsOf(60)).open.openInterest, 0);
}

void TestExportBar::columnsHaveAFixedOrder()
{
    const BarDescription bar = ::bar(QTime(10, 1), 100, 7);
    const QString line = QStringLiteral("ALFA;60;20240115;100100;100;105;95;101;7;1000;100\n");
    QCOMPARE(lineOf(bar, detailsOf(60)), line);
    QCOMPARE(
        lineOf(bar, detailsOf(60, "VAL,VOL,CLOSE,LOW,HIGH,OPEN,TIME,DATE,PER,TICKER,OPEN_INT")),
        line);
    QCOMPARE(lineOf(bar, detailsOf(60, "CLOSE,TICKER,VOL")), QStringLiteral("ALFA;101;7\n"));
}

void TestExportBar::theLineEndsBehindTheLastName()
{
    const ExportDetails details = detailsOf(60, "DATE,TICKER");
    QCOMPARE(lineOf(bar(QTime(10, 1), 100), details), QStringLiteral("ALFA\n20240115;"));
    QCOMPARE(linesOf({bar(QTime(10, 1), 100), bar(QTime(10, 2), 100)}, details),
             QStringLiteral("ALFA\n20240115;ALFA\n20240115;"));
    QCOMPARE(lineOf(bar(QTime(10, 1), 100), detailsOf(60, "TICKER,VOL,CLOSE,PER")),
             QStringLiteral("ALFA;60\n101;1;"));
}

void TestExportBar::aNameThatIsUnknownWritesNothing_data()
{
    QTest::addColumn<QString>("lineFormat");
    QTest::addColumn<QString>("expected");
    QTest::newRow("at the end") << "TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,Q_TY"
                                << "ALFA;60;20240115;100100;1;6;-4;2;"
                                   "ALFA;60;20240115;100200;2;7;-3;3;";
    QTest::newRow("within") << "TICKER,Q_TY,CLOSE"
                            << "ALFA;2\nALFA;3\n";
    QTest::newRow("alone") << "Q_TY"
                           << "";
    QTest::newRow("small letters") << "ticker,close,CLOSE"
                                   << "2\n3\n";
    QTest::newRow("blanks") << "TICKER, CLOSE,CLOSE "
                            << "ALFA;ALFA;";
    QTest::newRow("part of a name") << "OPEN_INT,OPEN"
                                    << "1\n1;2\n2;";
    QTest::newRow("nothing behind the comma") << "TICKER,CLOSE,"
                                              << "ALFA;2;ALFA;3;";
    QTest::newRow("nothing before the comma") << ",CLOSE"
                                              << "2\n3\n";
    QTest::newRow("nothing") << ""
                             << "";
    QTest::newRow("another sign") << "TICKER;CLOSE"
                                  << "";
}

void TestExportBar::aNameThatIsUnknownWritesNothing()
{
    QFETCH(const QString, lineFormat);
    QFETCH(const QString, expected);
    QCOMPARE(linesOf({bar(QTime(10, 1), 1), bar(QTime(10, 2), 2)},
                     detailsOf(60, lineFormat.toLatin1().constData())),
             expected);
}

void TestExportBar::aRepeatedNameIsWrittenOnce_data()
{
    QTest::addColumn<QString>("lineFormat");
    QTest::addColumn<QString>("expected");
    QTest::newRow("within") << "TICKER,TICKER,CLOSE"
                            << "ALFA;2\n";
    QTest::newRow("last") << "TICKER,CLOSE,CLOSE"
                          << "ALFA;2\n";
    QTest::newRow("first and last") << "CLOSE,TICKER,VOL,CLOSE"
                                    << "ALFA;2\n1;";
    QTest::newRow("alone") << "CLOSE,CLOSE"
                           << "2\n";
}

void TestExportBar::aRepeatedNameIsWrittenOnce()
{
    QFETCH(const QString, lineFormat);
    QFETCH(const QString, expected);
    QCOMPARE(lineOf(bar(QTime(10, 1), 1), detailsOf(60, lineFormat.toLatin1().constData())),
             expected);
}

void TestExportBar::oneNameIsALine_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::newRow("TICKER") << "TICKER"
                            << "ALFA";
    QTest::newRow("PER") << "PER"
                         << "3600";
    QTest::newRow("DATE") << "DATE"
                          << "20240115";
    QTest::newRow("TIME") << "TIME"
                          << "100100";
    QTest::newRow("OPEN") << "OPEN"
                          << "1";
    QTest::newRow("HIGH") << "HIGH"
                          << "6";
    QTest::newRow("LOW") << "LOW"
                         << "-4";
    QTest::newRow("CLOSE") << "CLOSE"
                           << "2";
    QTest::newRow("VOL") << "VOL"
                         << "7";
    QTest::newRow("VAL") << "VAL"
                         << "10";
    QTest::newRow("OPEN_INT") << "OPEN_INT"
                              << "8";
}

void TestExportBar::oneNameIsALine()
{
    QFETCH(const QString, name);
    QFETCH(const QString, value);
    BarDescription bar = ::bar(QTime(10, 1), 1, 7);
    bar.openInterest = 8;
    const ExportDetails details = detailsOf(3600, name.toLatin1().constData());
    QCOMPARE(lineOf(bar, details), value + u'\n');
    QCOMPARE(headerOf(details), u'<' + name + QStringLiteral(">\n"));
}

void TestExportBar::datesAndTimesHaveTheirFormats_data()
{
    QTest::addColumn<QString>("dateFormat");
    QTest::addColumn<QString>("timeFormat");
    QTest::addColumn<QString>("expected");
    QTest::newRow("yyyyMMdd hhmmss") << "yyyyMMdd"
                                     << "hhmmss"
                                     << "20240305;090503\n";
    QTest::newRow("yyMMdd hhmm") << "yyMMdd"
                                 << "hhmm"
                                 << "240305;0905\n";
    QTest::newRow("ddMMyy hh:mm:ss") << "ddMMyy"
                                     << "hh:mm:ss"
                                     << "050324;09:05:03\n";
    QTest::newRow("dd.MM.yy hh:mm") << "dd.MM.yy"
                                    << "hh:mm"
                                    << "05.03.24;09:05\n";
    QTest::newRow("dd/MM/yy hh:mm") << "dd/MM/yy"
                                    << "hh:mm"
                                    << "05/03/24;09:05\n";
    QTest::newRow("none") << ""
                          << ""
                          << ";\n";
}

void TestExportBar::datesAndTimesHaveTheirFormats()
{
    QFETCH(const QString, dateFormat);
    QFETCH(const QString, timeFormat);
    QFETCH(const QString, expected);
    ExportDetails details = detailsOf(1, "DATE,TIME");
    details.dateFormat = dateFormat;
    details.timeFormat = timeFormat;
    QCOMPARE(lineOf(barOf(QDate(2024, 3, 5), QTime(9, 5, 3)), details), expected);
}

void TestExportBar::whatIsNoDateIsEmpty()
{
    QCOMPARE(lineOf(barOf(QDate(), QTime()), detailsOf(60, "TICKER,DATE,TIME,OPEN")),
             QStringLiteral("ALFA;;;100\n"));
}

void TestExportBar::numbersAreWrittenInNoLocale()
{
    const QLocale before;
    const auto restore = qScopeGuard([before] { QLocale::setDefault(before); });
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    BarDescription bar = ::bar(QTime(10, 1), 1, -1'234'567'890'123);
    bar.open = decimal(QStringLiteral("1234567.50"));
    bar.openInterest = 1'234'567;
    QCOMPARE(lineOf(bar, detailsOf(86400, "PER,OPEN,VOL,OPEN_INT")),
             QStringLiteral("86400;1234567.50;-1234567890123;1234567\n"));
    bar.volume = 0;
    bar.openInterest = std::numeric_limits<qint32>::min();
    QCOMPARE(lineOf(bar, detailsOf(1, "VOL,OPEN_INT")), QStringLiteral("0;-2147483648\n"));
}

void TestExportBar::decimalsKeepTheirDigits()
{
    BarDescription bar = ::bar(QTime(10, 1), 1);
    bar.open = decimal(QStringLiteral("1.50"));
    bar.high = decimal(QStringLiteral("2"));
    bar.low = decimal(QStringLiteral("-0.05"));
    bar.close = decimal(QStringLiteral("0.00"));
    bar.value = decimal(QStringLiteral("0.000000001"));
    QCOMPARE(lineOf(bar, detailsOf(60, "OPEN,HIGH,LOW,CLOSE,VAL")),
             QStringLiteral("1.50;2;-0.05;0.00;0.000000001\n"));
}

void TestExportBar::aSeparatorMayBeAnyText()
{
    ExportDetails details = detailsOf(60, "TICKER,CLOSE,VOL");
    details.separator = QStringLiteral(" | ");
    QCOMPARE(lineOf(bar(QTime(10, 1), 1), details), QStringLiteral("ALFA | 2 | 1\n"));
    QCOMPARE(headerOf(details), QStringLiteral("<TICKER> | <CLOSE> | <VOL>\n"));
    details.separator.clear();
    QCOMPARE(lineOf(bar(QTime(10, 1), 1), details), QStringLiteral("ALFA21\n"));
    QCOMPARE(headerOf(details), QStringLiteral("<TICKER><CLOSE><VOL>\n"));
}

void TestExportBar::theHeaderFollowsTheLineFormat_data()
{
    QTest::addColumn<QString>("lineFormat");
    QTest::addColumn<QString>("expected");
    QTest::newRow("all") << lineFormats[0]
                         << "<TICKER>;<PER>;<DATE>;<TIME>;<OPEN>;<HIGH>;<LOW>;<CLOSE>;<VOL>;<VAL>;"
                            "<OPEN_INT>\n";
    QTest::newRow("unknown") << "TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,Q_TY"
                             << "<TICKER>;<PER>;<DATE>;<TIME>;<OPEN>;<HIGH>;<LOW>;<CLOSE>;<Q_TY>\n";
    QTest::newRow("its own order") << "DATE,TICKER"
                                   << "<DATE>;<TICKER>\n";
    QTest::newRow("repeated") << "CLOSE,VOL,CLOSE"
                              << "<CLOSE>;<VOL>;<CLOSE>\n";
    QTest::newRow("its own spelling") << " Close,vol"
                                      << "< Close>;<vol>\n";
    QTest::newRow("empty names") << ",CLOSE,"
                                 << "<>;<CLOSE>;<>\n";
    QTest::newRow("nothing") << ""
                             << "<>\n";
}

void TestExportBar::theHeaderFollowsTheLineFormat()
{
    QFETCH(const QString, lineFormat);
    QFETCH(const QString, expected);
    QCOMPARE(headerOf(detailsOf(60, lineFormat.toLatin1().constData())), expected);
}

QTEST_GUILESS_MAIN(TestExportBar)
#include "tst_exportbar.moc"
