// SPDX-License-Identifier: MIT
#include "bardescription.h"
#include "importdetails.h"
#include "lineparser.h"
#include "series.h"

#include "support/strictlog.h"

#include <QtTest/QTest>

using testsupport::detailsOfSeries;
using testsupport::with;

class TestLineParser final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void readsALine();
    void settingsBeginEmpty();
    void rescalesPricesToTheSecurity_data();
    void rescalesPricesToTheSecurity();
    void saysWhichNumbersWereRounded_data();
    void saysWhichNumbersWereRounded();
    void refusesALine_data();
    void refusesALine();
    void namesTheFirstFaultOnly_data();
    void namesTheFirstFaultOnly();
    void ignoresFurtherColumns();
    void needsOnlyTheHighestMappedColumn();
    void readsDatesByTheirFormat_data();
    void readsDatesByTheirFormat();
    void readsTimesByTheirFormat_data();
    void readsTimesByTheirFormat();
    void readsVolume_data();
    void readsVolume();
    void readsOpenInterest_data();
    void readsOpenInterest();
    void rescalesTheValueToThePriceScale();
    void leavesOutWhatHasNoColumn();
    void readsColumnsInAnyOrder();
    void readsAmountsFromTheFirstColumn();
    void readsTheFirstFieldForAMissingRole();
    void splitsAtASeparatorOfSeveralCharacters();
    void splitsIntoCharactersWithoutASeparator();
    void needsNoMoreThanTheFirstColumn();
    void needsTheColumnsOfUnknownRoles();
    void splitsWithRegardToCase();
    void keepsQuotesAndBlanksAsText();
    void looksTheDecimalsUpForEveryLine();
    void usesZeroDecimalsForAnUnknownSecurity();
    void keepsFieldsThatWereReadBeforeTheFault();
    void keepsPlaceholdersInsideAText();
    void leavesNothingOfALineThatWasReadBefore();
};

void TestLineParser::readsALine()
{
    BarDescription bar;
    QVERIFY(bar.init(QStringLiteral("20240115;100000;1.5;1.7;1.4;1.6"), detailsOfSeries(2)));
    QVERIFY(bar.valid);
    QVERIFY(bar.error.isEmpty());
    QCOMPARE(bar.date, QDate(2024, 1, 15));
    QCOMPARE(bar.time, QTime(10, 0));
    QCOMPARE(bar.open.toString(), QStringLiteral("1.50"));
    QCOMPARE(bar.high.toString(), QStringLiteral("1.70"));
    QCOMPARE(bar.low.toString(), QStringLiteral("1.40"));
    QCOMPARE(bar.close.toString(), QStringLiteral("1.60"));
}

void TestLineParser::settingsBeginEmpty()
{
    const ImportDetails details;
    QCOMPARE(details.stockId, 0);
    QCOMPARE(details.boardId, 0);
    QCOMPARE(details.securityId, 0);
    QCOMPARE(details.timeframe, 0);
    QVERIFY(details.stockCode.isEmpty() && details.boardCode.isEmpty() &&
            details.securityName.isEmpty() && details.separator.isEmpty() &&
            details.dateFormat.isEmpty() && details.timeFormat.isEmpty() &&
            details.dateFormatTitle.isEmpty() && details.timeFormatTitle.isEmpty());
    QVERIFY(!details.firstLineIsHeader);
    QVERIFY(details.columns.isEmpty());
}

void TestLineParser::rescalesPricesToTheSecurity_data()
{
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("price");
    QTest::addColumn<QString>("stored");
    QTest::newRow("more digits") << 2 << QStringLiteral("1.5") << QStringLiteral("1.50");
    QTest::newRow("fewer digits, half away from zero")
        << 2 << QStringLiteral("1.005") << QStringLiteral("1.01");
    QTest::newRow("below zero") << 2 << QStringLiteral("-1.005") << QStringLiteral("-1.01");
    QTest::newRow("none") << 0 << QStringLiteral("2.5") << QStringLiteral("3");
    QTest::newRow("five") << 5 << QStringLiteral("+1.3871") << QStringLiteral("1.38710");
}

void TestLineParser::rescalesPricesToTheSecurity()
{
    QFETCH(const int, decimals);
    QFETCH(const QString, price);
    BarDescription bar;
    QVERIFY(bar.init(QStringLiteral("20240115;100000;%1;%1;%1;%1").arg(price),
                     detailsOfSeries(decimals)));
    for (const decimal& number : {bar.open, bar.high, bar.low, bar.close})
        QTEST(number.toString(), "stored");
}

void TestLineParser::saysWhichNumbersWereRounded_data()
{
    QTest::addColumn<QString>("numbers");
    QTest::addColumn<bool>("isRounded");
    QTest::newRow("as many digits") << QStringLiteral("1.55;1.55;1.55;1.55;1.55") << false;
    QTest::newRow("fewer") << QStringLiteral("1;1.5;1;1;1") << false;
    QTest::newRow("zeros") << QStringLiteral("1.550;1.5000;1.00000;0.000;1.500") << false;
    QTest::newRow("open") << QStringLiteral("1.555;1;1;1;1") << true;
    QTest::newRow("high") << QStringLiteral("1;1.5550;1;1;1") << true;
    QTest::newRow("low") << QStringLiteral("1;1;-0.001;1;1") << true;
    QTest::newRow("close") << QStringLiteral("1;1;1;1.0050;1") << true;
    QTest::newRow("money") << QStringLiteral("1;1;1;1;7.001") << true;
}

void TestLineParser::saysWhichNumbersWereRounded()
{
    QFETCH(const QString, numbers);
    BarDescription bar;
    QVERIFY(bar.init(QStringLiteral("20240115;100000;") + numbers,
                     with(detailsOfSeries(2), ColumnRole::Value, 6)));
    QTEST(bar.isRounded, "isRounded");
}

void TestLineParser::refusesALine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const char* line, const char* error) {
        QTest::newRow(name) << QString::fromUtf8(line) << QString::fromUtf8(error);
    };
    row("too few columns", "20240115;100000;1.5;1.7;1.4", "Недостаточное количество столбцов");
    row("empty line", "", "Недостаточное количество столбцов");
    row("blanks", "   ", "Недостаточное количество столбцов");
    row("other separator", "20240115,100000,1.5,1.7,1.4,1.6", "Недостаточное количество столбцов");
    row("date", "15.01.2024;100000;1.5;1.7;1.4;1.6",
        "Дата '15.01.2024' не соответствует заявленному формату 'ггггммдд'");
    row("date that does not exist", "20240230;100000;1.5;1.7;1.4;1.6",
        "Дата '20240230' не соответствует заявленному формату 'ггггммдд'");
    row("date with blanks", " 20240115;100000;1.5;1.7;1.4;1.6",
        "Дата ' 20240115' не соответствует заявленному формату 'ггггммдд'");
    row("time", "20240115;10:00:00;1.5;1.7;1.4;1.6",
        "Время '10:00:00' не соответствует заявленному формату 'ччммсс'");
    row("time without a leading zero", "20240115;93000;1.5;1.7;1.4;1.6",
        "Время '93000' не соответствует заявленному формату 'ччммсс'");
    row("hour 24", "20240115;240000;1.5;1.7;1.4;1.6",
        "Время '240000' не соответствует заявленному формату 'ччммсс'");
    row("open", "20240115;100000;x;1.7;1.4;1.6", "Некорректное число 'x'");
    row("empty open", "20240115;100000;;1.7;1.4;1.6", "Некорректное число ''");
    row("high", "20240115;100000;1.5;1,7;1.4;1.6", "Некорректное число '1,7'");
    row("low", "20240115;100000;1.5;1.7; 1.4;1.6", "Некорректное число ' 1.4'");
    row("close", "20240115;100000;1.5;1.7;1.4;1e3", "Некорректное число '1e3'");
    row("quoted price", "20240115;100000;\"1.5\";1.7;1.4;1.6", "Некорректное число '\"1.5\"'");
    row("price that does not fit", "20240115;100000;1.5;99999999999999999;1.4;1.6",
        "Некорректное число '99999999999999999'");
    row("price that cannot be rescaled", "20240115;100000;9999999999999999;1.7;1.4;1.6",
        "Некорректное число '9999999999999999'");
}

void TestLineParser::refusesALine()
{
    QFETCH(const QString, line);
    BarDescription bar;
    QVERIFY(!bar.init(line, detailsOfSeries(2)));
    QVERIFY(!bar.valid);
    QTEST(bar.error, "error");
}

void TestLineParser::namesTheFirstFaultOnly_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("beginning");
    const auto row = [](const char* name, const char* line, const char* beginning) {
        QTest::newRow(name) << QString::fromUtf8(line) << QString::fromUtf8(beginning);
    };
    row("columns before date", "x;y;a;b;c;d;e;f", "Недостаточное");
    row("date before time", "x;y;a;b;c;d;e;f;g", "Дата 'x'");
    row("time before open", "20240115;y;a;b;c;d;e;f;g", "Время 'y'");
    row("open before high", "20240115;100000;a;b;c;d;e;f;g", "Некорректное число 'a'");
    row("high before low", "20240115;100000;1;b;c;d;e;f;g", "Некорректное число 'b'");
    row("low before close", "20240115;100000;1;2;c;d;e;f;g", "Некорректное число 'c'");
    row("close before rescaling open", "20240115;100000;9999999999999999;2;3;d;e;f;g",
        "Некорректное число 'd'");
    row("rescaling before volume", "20240115;100000;9999999999999999;2;3;4;e;f;g",
        "Некорректное число '9999999999999999'");
    row("volume before value", "20240115;100000;1;2;3;4;e;f;g",
        "Некорректное значение поля 'Объём в шт.' (e)");
    row("value before open interest", "20240115;100000;1;2;3;4;5;f;g", "Некорректное число 'f'");
    row("open interest", "20240115;100000;1;2;3;4;5;6;g",
        "Некорректное значение поля 'Открытый интерес' (g)");
}

void TestLineParser::namesTheFirstFaultOnly()
{
    QFETCH(const QString, line);
    QFETCH(const QString, beginning);
    const ImportDetails details =
        with(with(with(detailsOfSeries(2), ColumnRole::Volume, 6), ColumnRole::Value, 7),
             ColumnRole::OpenInterest, 8);
    BarDescription bar;
    QVERIFY(!bar.init(line, details));
    QVERIFY2(bar.error.startsWith(beginning), qPrintable(bar.error));
}

void TestLineParser::ignoresFurtherColumns()
{
    BarDescription bar;
    QVERIFY(bar.init(QStringLiteral("20240115;100000;1.5;1.7;1.4;1.6;;x;y"), detailsOfSeries(2)));
    QCOMPARE(bar.volume, 0);
}

void TestLineParser::needsOnlyTheHighestMappedColumn()
{
    const ImportDetails details = with(detailsOfSeries(2), ColumnRole::Volume, 7);
    BarDescription bar;
    QVERIFY(!bar.init(QStringLiteral("20240115;100000;1.5;1.7;1.4;1.6;x"), details));
    QCOMPARE(bar.error, QStringLiteral("Недостаточное количество столбцов"));
    QVERIFY(BarDescription().init(QStringLiteral("20240115;100000;1.5;1.7;1.4;1.6;x;5"), details));
}

void TestLineParser::readsDatesByTheirFormat_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("date"); // null: refused
    const auto row = [](const char* name, const char* format, const char* text, QDate date) {
        QTest::newRow(name) << QString::fromLatin1(format) << QString::fromUtf8(text) << date;
    };
    row("four-digit year", "yyyyMMdd", "20240115", {2024, 1, 15});
    row("four-digit year is never moved", "yyyyMMdd", "19991231", {1999, 12, 31});
    row("long ago", "yyyyMMdd", "18990101", {1899, 1, 1});
    row("year first", "yyMMdd", "240115", {2024, 1, 15});
    row("day first", "ddMMyy", "150124", {2024, 1, 15});
    row("two-digit 99", "ddMMyy", "311299", {2099, 12, 31});
    row("two-digit 00", "ddMMyy", "010100", {2000, 1, 1});
    row("leap day of 2024", "ddMMyy", "290224", {2024, 2, 29});
    row("leap day of 2000 in two digits", "ddMMyy", "290200", {});
    row("leap day of 2000 in four digits", "yyyyMMdd", "20000229", {2000, 2, 29});
    row("dots", "dd.MM.yy", "15.01.24", {2024, 1, 15});
    row("slashes", "dd/MM/yy", "15/01/24", {2024, 1, 15});
    row("slashes for dots", "dd.MM.yy", "15/01/24", {});
    row("one-digit day", "dd.MM.yy", "5.01.24", {});
    row("rest behind the date", "dd.MM.yy", "15.01.2024", {});
    row("Arabic digits", "yyyyMMdd", "٢٠٢٤٠١١٥", {});
    row("month 13", "yyMMdd", "241301", {});
    row("nothing", "yyyyMMdd", "", {});
}

void TestLineParser::readsDatesByTheirFormat()
{
    QFETCH(const QString, format);
    QFETCH(const QString, text);
    QFETCH(const QDate, date);
    ImportDetails details = detailsOfSeries(2);
    details.dateFormat = format;
    details.dateFormatTitle = QStringLiteral("вид даты");
    BarDescription bar;
    QCOMPARE(bar.init(text + QStringLiteral(";100000;1.5;1.7;1.4;1.6"), details), date.isValid());
    if (date.isValid())
        QCOMPARE(bar.date, date);
    else
        QCOMPARE(
            bar.error,
            QStringLiteral("Дата '%1' не соответствует заявленному формату 'вид даты'").arg(text));
}

void TestLineParser::readsTimesByTheirFormat_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QTime>("time"); // null: refused
    const auto row = [](const char* name, const char* format, const char* text, QTime time) {
        QTest::newRow(name) << QString::fromLatin1(format) << QString::fromUtf8(text) << time;
    };
    row("digits", "hhmmss", "235959", {23, 59, 59});
    row("midnight", "hhmmss", "000000", {0, 0});
    row("without seconds", "hhmm", "0930", {9, 30});
    row("colons", "hh:mm:ss", "09:30:01", {9, 30, 1});
    row("colons without seconds", "hh:mm", "09:30", {9, 30});
    row("seconds where none are said", "hh:mm", "09:30:00", {});
    row("second 60", "hhmmss", "095960", {});
    row("one-digit hour", "hh:mm", "9:30", {});
    row("nothing", "hhmm", "", {});
}

void TestLineParser::readsTimesByTheirFormat()
{
    QFETCH(const QString, format);
    QFETCH(const QString, text);
    QFETCH(const QTime, time);
    ImportDetails details = detailsOfSeries(2);
    details.timeFormat = format;
    details.timeFormatTitle = QStringLiteral("вид времени");
    BarDescription bar;
    QCOMPARE(bar.init(QStringLiteral("20240115;%1;1.5;1.7;1.4;1.6").arg(text), details),
             time.isValid());
    if (time.isValid())
        QCOMPARE(bar.time, time);
    else
        QCOMPARE(bar.error,
                 QStringLiteral("Время '%1' не соответствует заявленному формату 'вид времени'")
                     .arg(text));
}

void TestLineParser::readsVolume_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<qint64>("volume");
    QTest::newRow("zero") << QStringLiteral("0") << true << qint64(0);
    QTest::newRow("beyond 32 bits") << QStringLiteral("3000000000") << true << qint64(3000000000);
    QTest::newRow("largest") << QStringLiteral("9223372036854775807") << true
                             << std::numeric_limits<qint64>::max();
    QTest::newRow("too large") << QStringLiteral("9223372036854775808") << false << qint64(0);
    QTest::newRow("negative") << QStringLiteral("-5") << true << qint64(-5);
    QTest::newRow("plus") << QStringLiteral("+5") << true << qint64(5);
    QTest::newRow("blanks around") << QStringLiteral(" 5 ") << true << qint64(5);
    QTest::newRow("12.0") << QStringLiteral("12.0") << false << qint64(0);
    QTest::newRow("grouped") << QStringLiteral("1,000") << false << qint64(0);
    QTest::newRow("hexadecimal") << QStringLiteral("0x10") << false << qint64(0);
    QTest::newRow("empty") << QString() << false << qint64(0);
}

void TestLineParser::readsVolume()
{
    QFETCH(const QString, text);
    QFETCH(const bool, accepted);
    BarDescription bar;
    QCOMPARE(bar.init(QStringLiteral("20240115;100000;1.5;1.7;1.4;1.6;") + text,
                      with(detailsOfSeries(2), ColumnRole::Volume, 6)),
             accepted);
    if (accepted)
        QTEST(bar.volume, "volume");
    else
        QCOMPARE(bar.error,
                 QStringLiteral("Некорректное значение поля 'Объём в шт.' (%1)").arg(text));
}

void TestLineParser::readsOpenInterest_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<int>("openInterest");
    QTest::newRow("largest") << QStringLiteral("2147483647") << true << 2147483647;
    QTest::newRow("smallest") << QStringLiteral("-2147483648") << true << int(-2147483648LL);
    QTest::newRow("beyond 32 bits") << QStringLiteral("3000000000") << false << 0;
    QTest::newRow("fraction") << QStringLiteral("1.5") << false << 0;
    QTest::newRow("empty") << QString() << false << 0;
}

void TestLineParser::readsOpenInterest()
{
    QFETCH(const QString, text);
    QFETCH(const bool, accepted);
    BarDescription bar;
    QCOMPARE(bar.init(QStringLiteral("20240115;100000;1.5;1.7;1.4;1.6;") + text,
                      with(detailsOfSeries(2), ColumnRole::OpenInterest, 6)),
             accepted);
    QTEST(int(bar.openInterest), "openInterest");
    if (!accepted)
        QCOMPARE(bar.error,
                 QStringLiteral("Некорректное значение поля 'Открытый интерес' (%1)").arg(text));
}

void TestLineParser::rescalesTheValueToThePriceScale()
{
    BarDescription bar;
    QVERIFY(bar.init(QStringLiteral("20240115;100000;1.5;1.7;1.4;1.6;12345.678"),
                     with(detailsOfSeries(1), ColumnRole::Value, 6)));
    QCOMPARE(bar.value.toString(), QStringLiteral("12345.7"));
}

void TestLineParser::leavesOutWhatHasNoColumn()
{
    BarDescription bar;
    QVERIFY(bar.init(QStringLiteral("20240115;100000;1.5;1.7;1.4;1.6"), detailsOfSeries(4)));
    QCOMPARE(bar.volume, 0);
    QCOMPARE(bar.value.toString(), QStringLiteral("0.0000"));
    QCOMPARE(bar.openInterest, 0);
}

void TestLineParser::readsColumnsInAnyOrder()
{
    ImportDetails details = detailsOfSeries(0);
    details.columns = {{6, 0}, {5, 1}, {4, 2}, {3, 3}, {2, 5}, {1, 6}, {7, 4}};
    BarDescription bar;
    QVERIFY(bar.init(QStringLiteral("1;2;3;4;5;100000;20240115"), details));
    QCOMPARE(bar.close.toString(), QStringLiteral("1"));
    QCOMPARE(bar.low.toString(), QStringLiteral("2"));
    QCOMPARE(bar.high.toString(), QStringLiteral("3"));
    QCOMPARE(bar.open.toString(), QStringLiteral("4"));
    QCOMPARE(bar.volume, 5);
}

// The first one as well as any other.
void TestLineParser::readsAmountsFromTheFirstColumn()
{
    for (const ColumnRole role :
         {ColumnRole::Volume, ColumnRole::Value, ColumnRole::OpenInterest}) {
        ImportDetails details = detailsOfSeries(0);
        details.columns = {{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}};
        details.columns.insert(static_cast<qint32>(role), 0);
        BarDescription bar;
        QVERIFY(bar.init(QStringLiteral("7;20240115;100000;1;1;1;1"), details));
        QCOMPARE(bar.volume, role == ColumnRole::Volume ? 7 : 0);
        QCOMPARE(bar.value, decimal(role == ColumnRole::Value ? 7 : 0, 0));
        QCOMPARE(bar.openInterest, role == ColumnRole::OpenInterest ? 7 : 0);
        QVERIFY(!bar.init(QStringLiteral("x;20240115;100000;1;1;1;1"), details));
    }
}

void TestLineParser::readsTheFirstFieldForAMissingRole()
{
    ImportDetails details = detailsOfSeries(0);
    details.columns = {{2, 1}};
    details.dateFormat = QStringLiteral("yyyyMMdd");
    BarDescription bar;
    QVERIFY(bar.init(QStringLiteral("20240115;100000"), details));
    QCOMPARE(bar.date, QDate(2024, 1, 15));
    QCOMPARE(bar.open.toString(), QStringLiteral("20240115"));
}

void TestLineParser::splitsAtASeparatorOfSeveralCharacters()
{
    ImportDetails details = detailsOfSeries(0);
    details.separator = QStringLiteral("||");
    QVERIFY(BarDescription().init(QStringLiteral("20240115||100000||1||2||3||4"), details));
    BarDescription bar;
    QVERIFY(!bar.init(QStringLiteral("2024|0115||100000||1||2||3||4"), details));
    QVERIFY2(bar.error.startsWith(QStringLiteral("Дата '2024|0115' ")), qPrintable(bar.error));
}

// Before the first of them and behind the last there is an empty field, too.
void TestLineParser::splitsIntoCharactersWithoutASeparator()
{
    ImportDetails details;
    details.columns = {{1, 1}, {2, 3}, {3, 0}, {4, 4}};
    const auto field = [&details](const char* line, ColumnRole role) {
        return tadata::fieldOfLine(QString::fromLatin1(line), details, role);
    };
    QCOMPARE(field("abc", ColumnRole::Date), QStringLiteral("a"));
    QCOMPARE(field("abc", ColumnRole::Time), QStringLiteral("c"));
    QCOMPARE(field("abc", ColumnRole::Open), QString());
    QCOMPARE(field("abc", ColumnRole::High), QString());
    QCOMPARE(field("abcd", ColumnRole::High), QStringLiteral("d"));
    QVERIFY(!field("ab", ColumnRole::Date));
}

void TestLineParser::needsNoMoreThanTheFirstColumn()
{
    ImportDetails details;
    details.separator = QStringLiteral(";");
    details.columns = {{1, 0}};
    for (const char* line : {"a", "a;", "a;b"}) {
        QCOMPARE(tadata::fieldOfLine(QString::fromLatin1(line), details, ColumnRole::Date),
                 QStringLiteral("a"));
    }
}

// What they are for is not known; their columns must be there.
void TestLineParser::needsTheColumnsOfUnknownRoles()
{
    for (const int role : {-1, 11, 12, 42}) {
        ImportDetails details = detailsOfSeries(0);
        details.columns.insert(role, 0);
        BarDescription bar;
        QVERIFY(!bar.init(QStringLiteral("20240115;100000;1;1;1"), details));
        QCOMPARE(bar.error, QStringLiteral("Недостаточное количество столбцов"));
        QVERIFY(bar.init(QStringLiteral("20240115;100000;1;1;1;1"), details));
        details.columns.insert(role, 7);
        QVERIFY(!bar.init(QStringLiteral("20240115;100000;1;1;1;1;1"), details));
        QVERIFY(bar.init(QStringLiteral("20240115;100000;1;1;1;1;1;1"), details));
    }
}

void TestLineParser::splitsWithRegardToCase()
{
    ImportDetails details = detailsOfSeries(0);
    details.separator = QStringLiteral("x");
    QVERIFY(BarDescription().init(QStringLiteral("20240115x100000x1x2x3x4"), details));
    QVERIFY(!BarDescription().init(QStringLiteral("20240115X100000X1X2X3X4"), details));
}

void TestLineParser::keepsQuotesAndBlanksAsText()
{
    BarDescription bar;
    QVERIFY(!bar.init(QStringLiteral("20240115;100000;1.5;1.7;1.4;1.6 "), detailsOfSeries(2)));
    QCOMPARE(bar.error, QStringLiteral("Некорректное число '1.6 '"));
}

void TestLineParser::looksTheDecimalsUpForEveryLine()
{
    const QString line = QStringLiteral("20240115;100000;1;1;1;1");
    const ImportDetails details = detailsOfSeries(2);
    BarDescription before;
    QVERIFY(before.init(line, details));
    detailsOfSeries(4);
    BarDescription after;
    QVERIFY(after.init(line, details));
    QCOMPARE(before.open.toString(), QStringLiteral("1.00"));
    QCOMPARE(after.open.toString(), QStringLiteral("1.0000"));
}

void TestLineParser::usesZeroDecimalsForAnUnknownSecurity()
{
    ImportDetails details = detailsOfSeries(2);
    details.securityId = 999999;
    BarDescription bar;
    QVERIFY(bar.init(QStringLiteral("20240115;100000;1.5;1.7;1.4;1.6"), details));
    QCOMPARE(bar.open.toString(), QStringLiteral("2"));
}

void TestLineParser::keepsFieldsThatWereReadBeforeTheFault()
{
    BarDescription bar;
    bar.valid = true;
    QVERIFY(!bar.init(QStringLiteral("20240115;100000;1.5;x;1.4;1.6"), detailsOfSeries(2)));
    QVERIFY(!bar.valid);
    QCOMPARE(bar.date, QDate(2024, 1, 15));
    QCOMPARE(bar.time, QTime(10, 0));
    QCOMPARE(bar.open.toString(), QStringLiteral("1.5"));
}

void TestLineParser::keepsPlaceholdersInsideAText()
{
    ImportDetails details = detailsOfSeries(2);
    details.dateFormatTitle = QStringLiteral("вид");
    BarDescription bar;
    QVERIFY(!bar.init(QStringLiteral("%2;100000;1.5;1.7;1.4;1.6"), details));
    QCOMPARE(bar.error, QStringLiteral("Дата '%2' не соответствует заявленному формату 'вид'"));
}

void TestLineParser::leavesNothingOfALineThatWasReadBefore()
{
    const ImportDetails six = detailsOfSeries(2);
    const ImportDetails nine = with(with(with(six, ColumnRole::Volume, 6), ColumnRole::Value, 7),
                                    ColumnRole::OpenInterest, 8);
    BarDescription bar;
    QVERIFY(bar.init(QStringLiteral("20240115;100000;1;1;1;1.005;12;345.6;7"), nine));
    QVERIFY(bar.init(QStringLiteral("20240115;100100;2;2;2;2"), six));
    QCOMPARE(bar.volume, 0);
    QCOMPARE(bar.value.toString(), QStringLiteral("0.00"));
    QCOMPARE(bar.openInterest, 0);
    QVERIFY(!bar.isRounded);
}

QTEST_GUILESS_MAIN(TestLineParser)
#include "tst_lineparser.moc"
