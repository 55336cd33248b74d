// SPDX-License-Identifier: MIT
// What is guessed of a file: separator, header, columns by name and by content, forms of dates,
// timeframe.

#include "formatguess.h"

#include "columnroles.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <vexdesk/decimal.h>

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <limits>

using namespace tadata;
using testsupport::writeFile;

class TestFormatGuess final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void guesses_data();
    void guesses();
    void takesOnlyWhatIsGiven_data();
    void takesOnlyWhatIsGiven();
    void knowsALineOfBarsByOneField_data();
    void knowsALineOfBarsByOneField();
    void toleratesOneDamagedLineOfTwenty();
    void countsTheFirstLineToo();
    void looksForStepsPastADamagedLine();
    void looksForDistancesPastADamagedLine();
    void aDayMayBeWrittenInTwoWays();
    void takesTheDayOfAnyOfTheForms();
    void looksForStepsWithinAHalf();
    void looksForDistancesWithinAHalf();
    void looksForOpensWithinAHalf();
    void addsUpDistancesExactly();
    void passesOverLinesTooLongForBars();
    void isEnoughWithoutVolume();
    void saysWhichNamedColumnsItLeavesOut();
    void tellsWhyAFileIsNotRead();
};

namespace {

// "; no-header yyyyMMdd hh:mm 60 date=0,... decimals=2", with what is ambiguous and missing.
QString shown(const FormatGuess& guess)
{
    QStringList columns;
    for (auto column = guess.columns.begin(); column != guess.columns.end(); ++column)
        columns.append(
            QStringLiteral("%1=%2").arg(roleWord(ColumnRole(column.key()))).arg(*column));
    QStringList parts{guess.separator.value_or(QStringLiteral("none")),
                      guess.hasHeader ? QStringLiteral("header") : QStringLiteral("no-header"),
                      guess.dateFormat.value_or(QStringLiteral("?")),
                      guess.timeFormat.value_or(QStringLiteral("?")),
                      QString::number(guess.timeframe),
                      columns.join(u',')};
    parts.append(guess.decimals ? QString::number(*guess.decimals) : QStringLiteral("-"));
    if (!guess.ambiguous.isEmpty())
        parts.append(QStringLiteral("ambiguous: ") + guess.ambiguous.join(u' '));
    if (!guess.missing.isEmpty())
        parts.append(QStringLiteral("missing: ") + guess.missing.join(u' '));
    return parts.join(u' ');
}

FormatGuess guessOf(const QByteArray& content, const GuessHints& hints = {})
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("file.csv"));
    writeFile(path, content);
    const vexdesk::Result<FormatGuess> guess = guessFormat(path, hints);
    return guess ? *guess : FormatGuess();
}

// Lines with another separator, "," in the text.
QByteArray with(char separator, QByteArray lines)
{
    return lines.replace(',', separator);
}

void row(const char* name, const QByteArray& content, const char* expected)
{
    QTest::newRow(name) << content << QString::fromUtf8(expected);
}

constexpr char plain[] = "20240115,100000,1.5,1.7,1.4,1.60,5\n20240115,100100,1.6,1.7,1.4,1.5,0\n";
constexpr char bare[] = "1.5,1.7,1.4,1.6\n";
constexpr char allFound[] = "date=0,time=1,open=2,high=3,low=4,close=5";

QByteArray dated(const QByteArrayList& dates)
{
    QByteArray lines;
    for (const QByteArray& date : dates)
        lines += date + ",10:00," + bare;
    return lines;
}

QByteArray timed(const QByteArrayList& stamps)
{
    QByteArray lines;
    for (const QByteArray& stamp : stamps)
        lines += stamp + ',' + bare;
    return lines;
}

QByteArray named(const QByteArray& names, const QByteArray& fields)
{
    return names + '\n' + fields + '\n';
}

void rowsOfSeparators()
{
    row("comma", plain,
        ", no-header yyyyMMdd hhmmss 60 date=0,time=1,open=2,high=3,low=4,close=5,"
        "volume=6 2");
    row("tab", with('\t', plain),
        "\t no-header yyyyMMdd hhmmss 60 date=0,time=1,open=2,high=3,"
        "low=4,close=5,volume=6 2");
    row("bar", with('|', plain),
        "| no-header yyyyMMdd hhmmss 60 date=0,time=1,open=2,high=3,"
        "low=4,close=5,volume=6 2");
    row("the one of more fields", "a b c d e f;20240115;1000;1;2;1;2\n",
        "; no-header yyyyMMdd hhmm 60 date=1,time=2,open=3,high=4,low=5,close=6 0");
    row("the one of one field more", QByteArray("20240115;1000;1;2;1;2;,,,,,\n").repeated(2),
        "; no-header yyyyMMdd hhmm 60 date=0,time=1,open=2,high=3,low=4,close=5 0");
    row("the first of as many", "a;a;a;a;a;20240115,1000,1,2,1,2\n",
        ", no-header ? hhmm 60 time=1,open=2,high=3,low=4,close=5 0 missing: date");
    row("five fields", "20240115,1,2,1,2\n20240116,1,2,1,2\n",
        "none no-header ? ? 60  - missing: date prices separator time");
    row("nothing", "", "none no-header ? ? 60  - missing: date prices separator time");
    row("only a header", "date,time,open,high,low,close\n",
        "none no-header ? ? 60  - missing: date prices separator time");
    row("carriage returns", QByteArray(plain).replace("\n", "\r\n"),
        ", no-header yyyyMMdd hhmmss 60 date=0,time=1,open=2,high=3,low=4,close=5,volume=6 2");
    row("lines of blanks", QByteArray(" \t\r\n\n") + plain + "\v\f\r",
        ", no-header yyyyMMdd hhmmss 60 date=0,time=1,open=2,high=3,low=4,close=5,volume=6 2");
    row("a mark", QByteArray("\xef\xbb\xbf") + plain,
        ", no-header yyyyMMdd hhmmss 60 date=0,time=1,open=2,high=3,low=4,close=5,volume=6 2");
}

void rowsOfNames()
{
    const QByteArray bar = "20240115,100000,1,2,1,2,5";
    const QByteArray all = QByteArray(allFound) + ",volume=6 0";
    const auto found = [&](const char* name, const QByteArray& header) {
        row(name, named(header, bar), (", header yyyyMMdd hhmmss 60 " + all).constData());
    };
    found("names", "date,time,open,high,low,close,volume");
    found("wrapped", "<DATE>, 'Time',\"<'OPEN'>\",>high<,\tlow\v,\"close,vol\r");
    found("russian", "Дата,ВРЕМЯ,Откр,МАКС,минимум,закрытие,Объём");
    found("other russian", "дата,время,открытие,максимум,мин,закр,объем");
    found("short", "day,time,open,max,min,last,qty");
    found("windows-1251", "\xc4\xe0\xf2\xe0,\xc2\xd0\xc5\xcc\xdf,\xee\xf2\xea\xf0,\xec\xe0\xea\xf1,"
                          "\xcc\xe8\xed,\xe7\xe0\xea\xf0,\xce\xe1\xfa\xb8\xec");
    row("other orders", named("close,low,high,open,time,date", "1,1,2,2,100000,20240115"),
        ", header yyyyMMdd hhmmss 60 date=5,time=4,open=3,high=2,low=1,close=0 0");
    row("the leftmost counts",
        named("last,close,open,high,low,date,day,time", "1,2,1,2,1,20240115,20240115,1000"),
        ", header yyyyMMdd hhmm 60 date=5,time=7,open=2,high=3,low=4,close=0 0");
    row("everything",
        named("symbol,oi,value,date,time,open,high,low,close,vol",
              "A,-5,x,20240115,1000,1,2,1,2, 7 "),
        ", header yyyyMMdd hhmm 60 "
        "date=3,time=4,open=5,high=6,low=7,close=8,volume=9,value=2,oi=1,ticker=0 0");
    row("three prices", named("date,time,open,high,low,vol", "20240115,1000,1,2,1,5"),
        ", header yyyyMMdd hhmm 60 date=0,time=1,volume=5 - missing: prices");
    row("one price, no date", named("a,b,open,c,d,e", "20240115,1000,1,2,1,2"),
        ", header ? ? 60  - missing: date prices time");
    row("no name for the first", named(",date,time,open,high,low,close", "7,20240115,1000,1,2,1,2"),
        ", header yyyyMMdd hhmm 60 date=1,time=2,open=3,high=4,low=5,close=6 0");
    row("wrong date and time", named("time,date,open,high,low,close", "20240115,1000,1,2,1,2"),
        ", header ? ? 60 open=2,high=3,low=4,close=5 0 missing: date time");
    for (const char* prices : {"1.25,2,1,2", "1,2.25,1,2", "1,2,0.25,2", "1,2,1,1.25"}) {
        row(prices, named("date,time,open,high,low,close", QByteArray("20240115,1000,") + prices),
            ", header yyyyMMdd hhmm 60 date=0,time=1,open=2,high=3,low=4,close=5 2");
    }
    row("numbers that are none",
        named("date,time,open,high,low,close,vol,oi", "20240115,1000,x,2,1,2,5.0,2147483648"),
        ", header yyyyMMdd hhmm 60 date=0,time=1,open=2,high=3,low=4,close=5 0 missing: oi volume");
    row("names without prices", named("time,date,a,b,c,d,vol", "20240115,1000,1,2,1,2,x"),
        ", header yyyyMMdd hhmm 60 date=0,time=1,open=2,high=3,low=4,close=5 0");
}

void rowsOfContent()
{
    row("a number before", "20240115,1000,7,1.5,1.7,1.4,1.6\n20240115,1001,7,1.5,1.7,1.4,1.6\n",
        ", no-header yyyyMMdd hhmm 60 date=0,time=1,open=3,high=4,low=5,close=6 1");
    row("a column between", "1.5,1.7,20240115,1.4,1.6,1000,1.5,1.7,1.4,1.6\n",
        ", no-header yyyyMMdd hhmm 60 date=2,time=5,open=6,high=7,low=8,close=9 1");
    row("time before date", "1000,20240115,1,2,1,2\n",
        ", no-header yyyyMMdd hhmm 60 date=1,time=0,open=2,high=3,low=4,close=5 0");
    row("either a date or a time", "101112,101112,1,2,1,2\n",
        ", no-header ? hhmmss 60 date=0,time=1,open=2,high=3,low=4,close=5 0 "
        "ambiguous: yyMMdd ddMMyy");
    row("prices that do not move", "20240115,1000,2,2,2,2\n20240115,1001,3,3,3,3\n",
        ", no-header yyyyMMdd hhmm 60 date=0,time=1 - missing: prices");
    row("closes first", "20240115,1000,2,3,1,1\n20240115,1001,3,4,2,2\n20240115,1002,4,5,3,3\n",
        ", no-header yyyyMMdd hhmm 60 date=0,time=1 - missing: prices");
    row("no integer beside", "20240115,1000,1,2,1,2,5.5\n",
        ", no-header yyyyMMdd hhmm 60 date=0,time=1,open=2,high=3,low=4,close=5 0");
    row("a time beside", "20240115,1,2,1,2,1000\n",
        ", no-header yyyyMMdd hhmm 60 date=0,time=5,open=1,high=2,low=3,close=4 0");
    row("many digits", "20240115,1000,1.0000000000000000,2,1,2\n",
        ", no-header yyyyMMdd hhmm 60 date=0,time=1,open=2,high=3,low=4,close=5 15");
}

void rowsOfOrders()
{
    row("nothing in the first column", ",20240115,1000,1,2,1,2\n",
        ", no-header yyyyMMdd hhmm 60 date=1,time=2,open=3,high=4,low=5,close=6 0");
    row("from the high to the low", "20240115,1000,2,2,1,1\n",
        ", no-header yyyyMMdd hhmm 60 date=0,time=1,open=2,high=3,low=4,close=5 0");
    row("prices before all", "1,2,1,2,20240115,1000\n",
        ", no-header yyyyMMdd hhmm 60 date=4,time=5,open=0,high=1,low=2,close=3 0");
    row("a date that could be a price", "5,20240115,30000000,1,6,10:00\n",
        ", no-header yyyyMMdd hh:mm 60 date=1,time=5 - missing: prices");
    row("a time that could be a price", "20240115,5,1000,3000,1,1006\n",
        ", no-header yyyyMMdd hhmm 60 date=0,time=2 - missing: prices");
    row("numbers before, between and behind",
        "9,8,1000,7,20240115,9,8,7,1.5,1.7,1.4,1.6,3\n9,8,1001,7,20240115,9,8,7,1.5,1.7,1.4,1.6,"
        "3\n",
        ", no-header yyyyMMdd hhmm 60 date=4,time=2,open=8,high=9,low=10,close=11,volume=12 1");
    row("two times before the date", "1000,1100,20240115,1,2,1,2\n",
        ", no-header yyyyMMdd hhmm 60 date=2,time=0,open=3,high=4,low=5,close=6 0");
    row("two dates before the time", "20240115,20240116,1000,1,2,1,2\n",
        ", no-header yyyyMMdd hhmm 60 date=0,time=2,open=3,high=4,low=5,close=6 0");
    row("numbers that do not move before", "20240115,1000,2,2,2,2,3,1,2.5\n",
        ", no-header yyyyMMdd hhmm 60 date=0,time=1,open=5,high=6,low=7,close=8 1");
}

void rowsOfDates()
{
    const auto dates = [](const char* name, const QByteArrayList& texts, const QByteArray& form) {
        row(name, dated(texts), (", no-header " + form + " hh:mm 60 " + allFound + " 1").data());
    };
    const auto unknown = [](const char* name, const QByteArrayList& texts,
                            const QByteArray& forms) {
        row(name, dated(texts),
            (", no-header ? hh:mm 60 " + QByteArray(allFound) + " 1 ambiguous: " + forms).data());
    };
    dates("yyyyMMdd", {"20240131"}, "yyyyMMdd");
    dates("yyMMdd", {"991231"}, "yyMMdd");
    dates("ddMMyy", {"310199"}, "ddMMyy");
    dates("dd.MM.yy", {"31.01.24"}, "dd.MM.yy");
    dates("dd/MM/yy", {"31/01/24"}, "dd/MM/yy");
    dates("MM/dd/yy", {"01/31/24"}, "MM/dd/yy");
    dates("yyyy-MM-dd", {"2024-01-31"}, "yyyy-MM-dd");
    dates("yyyy.MM.dd", {"2024.01.31"}, "yyyy.MM.dd");
    dates("yyyy/MM/dd", {"2024/01/31"}, "yyyy/MM/dd");
    dates("dd.MM.yyyy", {"31.01.2024"}, "dd.MM.yyyy");
    dates("dd/MM/yyyy", {"31/01/2024"}, "dd/MM/yyyy");
    dates("MM/dd/yyyy", {"01/31/2024"}, "MM/dd/yyyy");
    dates("the smaller step", {"01/02/2024", "02/02/2024"}, "dd/MM/yyyy");
    dates("steps of two weeks", {"01/02/2024", "01/12/2024"}, "MM/dd/yyyy");
    dates("steps backwards", {"01/12/2024", "01/02/2024"}, "MM/dd/yyyy");
    dates("a step of 14 days", {"100110", "240110"}, "ddMMyy");
    unknown("a step of 15 days", {"100110", "250110"}, "yyMMdd ddMMyy");
    unknown("no step", {"01/02/2024", "01/02/2024"}, "dd/MM/yyyy MM/dd/yyyy");
    unknown("two large steps", {"01/02/2024", "03/05/2024"}, "dd/MM/yyyy MM/dd/yyyy");
}

void rowsOfTimes()
{
    row("hhmmss", timed({"20240115,100000"}),
        (", no-header yyyyMMdd hhmmss 60 " + QByteArray(allFound) + " 1").data());
    row("hh:mm:ss", timed({"20240115,10:00:00"}),
        (", no-header yyyyMMdd hh:mm:ss 60 " + QByteArray(allFound) + " 1").data());
    row("no time of a day", timed({"20240115,24:00"}),
        ", no-header yyyyMMdd ? 60 date=0,open=2,high=3,low=4,close=5 1 missing: time");
    const auto frames = [](const char* name, const QByteArrayList& stamps, const char* frame) {
        row(name, timed(stamps),
            (", no-header yyyyMMdd hhmmss " + QByteArray(frame) + ' ' + allFound + " 1").data());
    };
    frames("seconds", {"20240115,100000", "20240115,100001"}, "1");
    frames("minutes that are not whole", {"20240115,100030", "20240115,100230"}, "60");
    frames("equal times", {"20240115,100030", "20240115,100030"}, "60");
    frames("backwards", {"20240115,100030", "20240115,100000"}, "1");
    frames("another day", {"20240115,100030", "20240116,100000"}, "60");
    row("seconds of an unknown day", timed({"01/02/2024,100000", "01/02/2024,100001"}),
        (", no-header ? hhmmss 1 " + QByteArray(allFound) + " 1 ambiguous: dd/MM/yyyy MM/dd/yyyy")
            .data());
}

} // namespace

void TestFormatGuess::guesses_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected");
    rowsOfSeparators();
    rowsOfNames();
    rowsOfContent();
    rowsOfOrders();
    rowsOfDates();
    rowsOfTimes();
}

void TestFormatGuess::guesses()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QString, expected);
    QCOMPARE(shown(guessOf(content)), expected);
}

void TestFormatGuess::takesOnlyWhatIsGiven_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<GuessHints>("hints");
    QTest::addColumn<QString>("expected");
    const auto hinted = [](const char* name, const QByteArray& content, const GuessHints& hints,
                           const QByteArray& expected) {
        QTest::newRow(name) << content << hints << QString::fromUtf8(expected);
    };
    const QByteArray found = allFound;
    hinted("separator", QByteArray("a b c d e f;20240115;1000;1;2;1;2\n").repeated(2),
           {.separator = QStringLiteral(" ")}, "  header ? ? 60  - missing: date prices time");
    hinted("long separator", QByteArray(plain).replace(",", "::"),
           {.separator = QStringLiteral("::")},
           ":: no-header yyyyMMdd hhmmss 60 " + found + ",volume=6 2");
    hinted("long separator of a sign that stands alone, too",
           "20240115::10:00:00::1::2::1::2::a:b:c\n20240115::10:01:00::1::2::1::2::d\n",
           {.separator = QStringLiteral("::")},
           ":: no-header yyyyMMdd hh:mm:ss 60 " + found + " 0");
    hinted("no separator", plain, {.separator = QString()},
           "none no-header ? ? 60  - missing: date prices separator time");
    hinted("date form", dated({"01/02/2024"}), {.dateFormat = QStringLiteral("MM/dd/yyyy")},
           ", no-header MM/dd/yyyy hh:mm 60 " + found + " 1");
    hinted("date form of any length", dated({"1 Feb 2024", "12 Feb 2024"}),
           {.dateFormat = QStringLiteral("d MMM yyyy")},
           ", no-header d MMM yyyy hh:mm 60 " + found + " 1");
    hinted("date form that does not fit", dated({"01/02/2024"}),
           {.dateFormat = QStringLiteral("yyyyMMdd")},
           ", no-header ? hh:mm 60 time=1,open=2,high=3,low=4,close=5 1 missing: date");
    hinted("time form", timed({"20240115,10-00"}), {.timeFormat = QStringLiteral("hh-mm")},
           ", no-header yyyyMMdd hh-mm 60 " + found + " 1");
    hinted("no header", named("date,time,open,high,low,close,vol", plain), {.hasHeader = false},
           ", no-header ? ? 60  - missing: date prices time");
    hinted("header", plain, {.hasHeader = true},
           ", header yyyyMMdd hhmmss 60 " + found + ",volume=6 1");
    hinted("timeframe", plain, {.timeframe = 1},
           ", no-header yyyyMMdd hhmmss 1 " + found + ",volume=6 2");
}

void TestFormatGuess::takesOnlyWhatIsGiven()
{
    QFETCH(const QByteArray, content);
    QFETCH(const GuessHints, hints);
    QFETCH(const QString, expected);
    QCOMPARE(shown(guessOf(content, hints)), expected);
}

void TestFormatGuess::knowsALineOfBarsByOneField_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<bool>("isOfBars");
    QTest::newRow("a known date") << QByteArray("20240115") << true;
    QTest::newRow("a known time") << QByteArray("10:00") << true;
    QTest::newRow("a date in the form that is given") << QByteArray("15_01_2024") << true;
    QTest::newRow("a time in the form that is given") << QByteArray("10-00") << true;
    QTest::newRow("neither") << QByteArray("15-01-2024") << false;
}

// The first line is no header where one of its fields is a date or a time.
void TestFormatGuess::knowsALineOfBarsByOneField()
{
    QFETCH(const QByteArray, field);
    QFETCH(const bool, isOfBars);
    const GuessHints hints{.dateFormat = QStringLiteral("dd_MM_yyyy"),
                           .timeFormat = QStringLiteral("hh-mm")};
    QCOMPARE(guessOf("a,b,c,d,e," + field + "\n1,2,3,4,5,6\n", hints).hasHeader, !isOfBars);
}

void TestFormatGuess::toleratesOneDamagedLineOfTwenty()
{
    const QByteArray good = timed({"20240115,1000"});
    const QString found =
        QStringLiteral(", no-header yyyyMMdd hhmm 60 %1 1").arg(QLatin1String(allFound));
    for (const QByteArray& bad :
         {QByteArray("damaged\n"), timed({"20241315,1000"}), timed({"20240115,2500"}),
          timed({"20240115,1000"}).replace('7', 'x'),
          timed({"20240115,1000"}).replace("1.7", "1.3")}) {
        QCOMPARE(shown(guessOf(good.repeated(19) + bad)), found);
        QCOMPARE(shown(guessOf(good.repeated(10) + bad + good.repeated(9))), found);
        QVERIFY(shown(guessOf(good.repeated(18) + bad)) != found);
        QVERIFY(shown(guessOf(good + bad + good.repeated(17) + bad)) != found);
        QVERIFY(shown(guessOf(good.repeated(37) + bad + bad + good)) == found);
        QVERIFY(shown(guessOf(good.repeated(36) + bad + bad + good)) != found);
    }
}

void TestFormatGuess::countsTheFirstLineToo()
{
    const QByteArray good = timed({"20240115,1000"});
    const QByteArray bad = QByteArray(good).replace("1.7", "1.3");
    QCOMPARE(guessOf(bad + good.repeated(19)).missing, QStringList());
    QCOMPARE(guessOf(bad + good.repeated(18) + bad).missing, QStringList{QStringLiteral("prices")});
}

void TestFormatGuess::looksForStepsPastADamagedLine()
{
    const QByteArray content =
        dated({"01/02/2024"}) + "damaged\n" + dated({"02/02/2024"}).repeated(18);
    QCOMPARE(guessOf(content).dateFormat, QStringLiteral("dd/MM/yyyy"));
}

void TestFormatGuess::looksForDistancesPastADamagedLine()
{
    for (const QByteArray& bad : {QByteArray("20241315,100000"), QByteArray("20240115,250000")}) {
        const QByteArray begin = timed({"20240115,100000"});
        const QByteArray end = timed({"20240115,100100"}).repeated(18);
        QCOMPARE(guessOf(begin + timed({bad}) + end).timeframe, 60);
        const QByteArray later = timed({"20240115,100001"}).repeated(18);
        QCOMPARE(guessOf(begin + timed({bad}) + later).timeframe, 1);
    }
}

void TestFormatGuess::aDayMayBeWrittenInTwoWays()
{
    const QByteArray content = timed({"1 2 2024,100000", "01 02 2024,100001"});
    QCOMPARE(guessOf(content, {.dateFormat = QStringLiteral("d M yyyy")}).timeframe, 1);
}

// A line in twenty has a month of one of the forms alone.
void TestFormatGuess::takesTheDayOfAnyOfTheForms()
{
    const QByteArray content = timed({"01/02/2024,100000"}).repeated(38) +
                               timed({"01/13/2024,100000", "01/13/2024,100001"});
    const FormatGuess guess = guessOf(content);
    QCOMPARE(guess.ambiguous.size(), 2);
    QCOMPARE(guess.timeframe, 1);
}

void TestFormatGuess::looksForStepsWithinAHalf()
{
    // Two days beside each other where the dates stand, and months between both halves.
    const auto half = [](const char* day) { return dated({day}).repeated(1000); };
    const QByteArray content = half("01/02/2024") + half("02/02/2024");
    const QStringList both{QStringLiteral("dd/MM/yyyy"), QStringLiteral("MM/dd/yyyy")};
    QCOMPARE(guessOf(content).ambiguous, both);
    // With one line less there is one half.
    const FormatGuess whole = guessOf(content.first(content.lastIndexOf('\n', -2) + 1));
    QCOMPARE(whole.lines, 1999);
    QCOMPARE(whole.dateFormat, both.first());
}

void TestFormatGuess::looksForDistancesWithinAHalf()
{
    const QByteArray content =
        timed({"20240115,100000"}).repeated(1000) + timed({"20240115,100001"}).repeated(1000);
    QCOMPARE(guessOf(content).timeframe, 60);
    QCOMPARE(guessOf(content.first(content.lastIndexOf('\n', -2) + 1)).timeframe, 1);
}

// Between both halves lies what opens and closes do not tell of each other.
void TestFormatGuess::looksForOpensWithinAHalf()
{
    const QByteArray content = QByteArray("20240115,1000,2,20,1,8\n").repeated(1000) +
                               QByteArray("20240115,1000,20,20,1,2\n").repeated(1000);
    QCOMPARE(guessOf(content).missing, QStringList());
    const QByteArray whole = content.first(content.lastIndexOf('\n', -2) + 1);
    QCOMPARE(guessOf(whole).missing, QStringList{QStringLiteral("prices")});
}

void TestFormatGuess::addsUpDistancesExactly()
{
    const auto misses = [](const QByteArrayList& opensAndCloses) {
        QByteArray content;
        for (const QByteArray& openAndClose : opensAndCloses) {
            const QByteArrayList both = openAndClose.split(' ');
            content += "20240115,1000," + both[0] + ",36028797018963967,-36028797018963968," +
                       both[1] + '\n';
        }
        return guessOf(content).missing.contains(QStringLiteral("prices"));
    };
    QVERIFY(misses({"0 0", "1 0"}));
    QVERIFY(!misses({"0 0", "1 1"}));
    QVERIFY(!misses({"0 0", "0 1"}));
    // The sums of distances differ far behind the point, and have 17 digits before it.
    const QByteArray much = "36028797018963967";
    for (const int digits : {200, int(decimal::maxScale)}) {
        const QByteArray one = "0." + QByteArray(digits - 1, '0') + '1';
        QVERIFY(misses({"0 0", much + ' ' + much, "0 " + one}));
        QVERIFY(!misses({"0 0", much + ' ' + much, one + " 0"}));
        QVERIFY(!misses({"0 0", much + ' ' + much, one + ' ' + one}));
    }
}

void TestFormatGuess::passesOverLinesTooLongForBars()
{
    const QByteArray good = timed({"20240115,1000"});
    const QByteArray tooLong = good.chopped(1) + QByteArray(100'000, '6') + '\n';
    QCOMPARE(guessOf(good.repeated(19) + tooLong).dateFormat, QStringLiteral("yyyyMMdd"));
    QCOMPARE(guessOf(good.repeated(18) + tooLong).separator, std::nullopt);
    // None of its fields counts.
    const QByteArray other = timed({"20241315,1000"});
    QCOMPARE(guessOf(good.repeated(19) + other).dateFormat, QStringLiteral("yyyyMMdd"));
    QCOMPARE(guessOf(tooLong + good.repeated(18) + other).dateFormat, std::nullopt);
    QCOMPARE(guessOf(good.repeated(18) + tooLong + other).dateFormat, std::nullopt);
}

void TestFormatGuess::saysWhichNamedColumnsItLeavesOut()
{
    const QByteArray line = "20240115;1000;1;2;1;2;10;5;7;8\n";
    QCOMPARE(
        guessOf("date;time;open;high;low;close; Объём в шт.;;vol;<PER>\n" + line + line).unused,
        (QStringList{QStringLiteral("Объём в шт."), QStringLiteral("<PER>")}));
    QCOMPARE(guessOf(line + line).unused, QStringList());
    QCOMPARE(guessOf("no;date;time;open;high;low;close\n5;20240115;1000;1;2;1;2\n").unused,
             QStringList{QStringLiteral("no")});
}

void TestFormatGuess::isEnoughWithoutVolume()
{
    FormatGuess guess;
    QVERIFY(guess.isEnough());
    guess.missing = QStringList{QStringLiteral("oi"), QStringLiteral("volume")};
    QVERIFY(guess.isEnough());
    guess.ambiguous = QStringList{QStringLiteral("yyMMdd"), QStringLiteral("ddMMyy")};
    QVERIFY(!guess.isEnough());
    for (const char* what : {"date", "time", "prices", "separator"})
        QVERIFY(!(FormatGuess{.missing = {QString::fromUtf8(what)}}).isEnough());
}

void TestFormatGuess::tellsWhyAFileIsNotRead()
{
    const vexdesk::Result<FormatGuess> guess = guessFormat(QStringLiteral("no/such/file"));
    QVERIFY(!guess);
    QCOMPARE(guess.message(), QStringLiteral("Невозможно открыть файл no/such/file"));
}

QTEST_GUILESS_MAIN(TestFormatGuess)
#include "tst_formatguess.moc"
