// SPDX-License-Identifier: MIT
// Text files of every notation that can be imported, and the day files that come of them.

#include "commandtest.h"

#include "support/filetree.h"

#include <QtCore/QFileInfo>
#include <QtCore/QStringConverter>
#include <QtTest/QTest>

using namespace testsupport;

namespace {

constexpr char allColumns[] = "date=0,time=1,open=2,high=3,low=4,close=5";

// Three bars of two days. Every test of a notation gives these in its own.
constexpr char twoDays[] = "20240115,100000,1.5,1.7,1.4,1.6\n"
                           "20240115,100100,1.6,1.8,1.5,1.7\n"
                           "20240116,093000,1.7,1.9,1.6,1.8\n";

Tree twoDaysStored()
{
    return {{QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss"),
             "100000;1.50;1.70;1.40;1.60;0;0.00;0\n"
             "100100;1.60;1.80;1.50;1.70;0;0.00;0\n"},
            {QStringLiteral("NORD/MAIN/ALFA/20240116_60.iss"),
             "093000;1.70;1.90;1.60;1.80;0;0.00;0\n"}};
}

QByteArray replaced(QByteArray text, const char* before, const QByteArray& after)
{
    return text.replace(before, after);
}

QByteArray encoded(const QByteArray& utf8, QStringConverter::Encoding encoding)
{
    QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
    return encoder(QString::fromUtf8(utf8));
}

} // namespace

class TadataImportTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void minuteBarsGoToTheFileOfTheirDay();
    void firstLineIsAHeaderUnlessToldOtherwise();
    void secondBarsAlsoGiveMinutesInAFileWithoutExtension();
    void aSecondOnAWholeMinuteOpensTheNextMinute();
    void secondsBeforeMidnightEachCloseAMinute();
    void unsortedSecondsGoIntoTheOpenMinute();
    void optionalColumnsAreStored();
    void optionalColumnsMayBeNegativeAndLarge();
    void columnsMayComeInAnyOrderAmongOthers();

    void separators_data();
    void separators();
    void dateFormats_data();
    void dateFormats();
    void timeFormats_data();
    void timeFormats();
    void decimalsScaleEveryPrice_data();
    void decimalsScaleEveryPrice();
    void decimalsComeFromTheReferenceFile();
    void decimalsOnTheCommandLineWin();
    void textLayouts_data();
    void textLayouts();

    void seriesNamesAreDirectoryNames_data();
    void seriesNamesAreDirectoryNames();

    void importingTwiceIsImportingOnce();
    void aDayIsReplacedNotMerged();
    void aDayThatComesAgainKeepsItsLastRun();
    void otherFilesOfTheSeriesStay();
    void linesKeepTheirOrder();
    void storeMayBeRelativeAndMissing();
};

void TadataImportTest::minuteBarsGoToTheFileOfTheirDay()
{
    QCOMPARE(import(twoDays), succeeded());
    QCOMPARE(stored(), twoDaysStored());
}

void TadataImportTest::firstLineIsAHeaderUnlessToldOtherwise()
{
    QCOMPARE(import(QByteArray("<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>\n") + twoDays,
                    words("header")),
             succeeded());
    QCOMPARE(stored(), twoDaysStored());

    // What the first line holds does not matter.
    QCOMPARE(import(twoDays, words("header --series NORD/MAIN/BARK")), succeeded());
    QCOMPARE(readFile(path("store/NORD/MAIN/BARK/20240115_60.iss")),
             QByteArray("100100;1.60;1.80;1.50;1.70;0;0.00;0\n"));
}

void TadataImportTest::secondBarsAlsoGiveMinutesInAFileWithoutExtension()
{
    QCOMPARE(import("20240115,100001,1.50,1.52,1.49,1.51,10,15.00,100\n"
                    "20240115,100030,1.51,1.60,1.50,1.55,20,31.00,101\n"
                    "20240115,100100,1.55,1.56,1.40,1.45,30,43.50,102\n"
                    "20240115,100101,1.45,1.46,1.44,1.46,1,1.46,103\n"
                    "20240116,093001,2.00,2.00,2.00,2.00,2,4.00,104\n"
                    "20240116,093105,2.10,2.10,2.10,2.10,3,6.30,105\n",
                    words("--timeframe 1 --columns "
                          "date=0,time=1,open=2,high=3,low=4,close=5,volume=6,value=7,oi=8")),
             succeeded());
    // The minutes that are open when the day or the input ends: the former is stored, the latter
    // not.
    const Tree expected{
        {QStringLiteral("NORD/MAIN/ALFA/20240115_1.iss"),
         "100001;1.50;1.52;1.49;1.51;10;15.00;100\n"
         "100030;1.51;1.60;1.50;1.55;20;31.00;101\n"
         "100100;1.55;1.56;1.40;1.45;30;43.50;102\n"
         "100101;1.45;1.46;1.44;1.46;1;1.46;103\n"},
        {QStringLiteral("NORD/MAIN/ALFA/20240115_60"), "100100;1.50;1.60;1.40;1.45;60;89.50;102\n"
                                                       "100200;1.45;1.46;1.44;1.46;1;1.46;103\n"},
        {QStringLiteral("NORD/MAIN/ALFA/20240116_1.iss"),
         "093001;2.00;2.00;2.00;2.00;2;4.00;104\n"
         "093105;2.10;2.10;2.10;2.10;3;6.30;105\n"},
        {QStringLiteral("NORD/MAIN/ALFA/20240116_60"), "093100;2.00;2.00;2.00;2.00;2;4.00;104\n"}};
    QCOMPARE(stored(), expected);
}

void TadataImportTest::aSecondOnAWholeMinuteOpensTheNextMinute()
{
    QCOMPARE(import("20240115,100000,1,1,1,1\n"
                    "20240115,100100,2,2,2,2\n"
                    "20240115,100101,3,3,3,3\n",
                    words("--timeframe 1 --decimals 0")),
             succeeded());
    QCOMPARE(readFile(path("store/NORD/MAIN/ALFA/20240115_60")),
             QByteArray("100100;1;2;1;2;0;0;0\n"));
}

void TadataImportTest::secondsBeforeMidnightEachCloseAMinute()
{
    QCOMPARE(import("20240115,235930,1,1,1,1\n"
                    "20240115,235931,2,2,2,2\n"
                    "20240115,235959,3,3,3,3\n",
                    words("--timeframe 1 --decimals 0")),
             succeeded());
    QCOMPARE(readFile(path("store/NORD/MAIN/ALFA/20240115_60")),
             QByteArray("000000;1;1;1;1;0;0;0\n"
                        "000000;2;2;2;2;0;0;0\n"));
}

void TadataImportTest::unsortedSecondsGoIntoTheOpenMinute()
{
    QCOMPARE(import("20240115,100001,5,5,5,5\n"
                    "20240115,095901,1,9,1,2\n"
                    "20240115,100101,7,7,7,7\n",
                    words("--timeframe 1 --decimals 0")),
             succeeded());
    QCOMPARE(readFile(path("store/NORD/MAIN/ALFA/20240115_60")),
             QByteArray("100100;5;9;1;2;0;0;0\n"));
}

void TadataImportTest::optionalColumnsAreStored()
{
    constexpr char line[] = "20240115,100000,1.5,1.7,1.4,1.6,120,180.125,45\n";
    const auto record = [&](const char* more) {
        const QString columns = QLatin1String(allColumns) + QLatin1String(more);
        const Outcome outcome = import(line, words("--columns") << columns);
        return outcome == succeeded() ? readFile(path("store/NORD/MAIN/ALFA/20240115_60.iss"))
                                      : outcome.err;
    };
    QCOMPARE(record(""), QByteArray("100000;1.50;1.70;1.40;1.60;0;0.00;0\n"));
    QCOMPARE(record(",volume=6"), QByteArray("100000;1.50;1.70;1.40;1.60;120;0.00;0\n"));
    // Money has as many decimals as the prices; half a unit is rounded away from zero.
    QCOMPARE(record(",value=7"), QByteArray("100000;1.50;1.70;1.40;1.60;0;180.13;0\n"));
    QCOMPARE(record(",oi=8"), QByteArray("100000;1.50;1.70;1.40;1.60;0;0.00;45\n"));
    QCOMPARE(record(",volume=6,value=7,oi=8"),
             QByteArray("100000;1.50;1.70;1.40;1.60;120;180.13;45\n"));
}

void TadataImportTest::optionalColumnsMayBeNegativeAndLarge()
{
    QCOMPARE(
        import("20240115,100000,-1.5,+1.7,-0.004,1.6,9223372036854775807,-180.125,-2147483648\n"
               "20240115,100100,1,1,1,1,-9223372036854775808,360287970189639.67,+2147483647\n",
               words("--columns date=0,time=1,open=2,high=3,low=4,close=5,volume=6,value=7,oi=8")),
        succeeded());
    QCOMPARE(
        readFile(path("store/NORD/MAIN/ALFA/20240115_60.iss")),
        QByteArray(
            "100000;-1.50;1.70;0.00;1.60;9223372036854775807;-180.13;-2147483648\n"
            "100100;1.00;1.00;1.00;1.00;-9223372036854775808;360287970189639.67;2147483647\n"));
}

void TadataImportTest::columnsMayComeInAnyOrderAmongOthers()
{
    QCOMPARE(import("ALFA,1.6,60,1.4,20240115,x,1.7,,100000,1.5,\"quoted, with a comma\",\n",
                    words("--columns close=1,low=3,date=4,high=6,time=8,open=9")),
             succeeded());
    QCOMPARE(readFile(path("store/NORD/MAIN/ALFA/20240115_60.iss")),
             QByteArray("100000;1.50;1.70;1.40;1.60;0;0.00;0\n"));
}

void TadataImportTest::separators_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char* name, const char* option, const char* text) {
        QTest::newRow(name) << QString::fromUtf8(option) << QByteArray(text);
    };
    row("word comma", "comma", ",");
    row("word semicolon", "semicolon", ";");
    row("word space", "space", " ");
    row("word tab", "tab", "\t");
    row("comma", ",", ",");
    row("semicolon", ";", ";");
    row("space", " ", " ");
    row("tab", "\t", "\t");
    row("bar", "|", "|");
    row("several characters", "::", "::");
    row("Cyrillic", "ж", "ж");
    row("outside the basic plane", "📈", "📈");
    row("characters that patterns give a meaning", ".*", ".*");
    row("backslash", "\\", "\\");
    row("percent", "%1", "%1");
    row("word in capitals is text", "COMMA", "COMMA");
}

void TadataImportTest::separators()
{
    QFETCH(QString, option);
    QFETCH(QByteArray, text);
    QCOMPARE(import(replaced(twoDays, ",", text), {QStringLiteral("--separator"), option}),
             succeeded());
    QCOMPARE(stored(), twoDaysStored());
}

void TadataImportTest::dateFormats_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("date");
    QTest::addColumn<QString>("day");
    const auto row = [](const char* format, const char* date, const char* day) {
        QTest::addRow("%s as %s", date, format)
            << QString::fromLatin1(format) << QByteArray(date) << QString::fromLatin1(day);
    };
    row("yyyyMMdd", "20240115", "20240115");
    row("yyyyMMdd", "19991231", "19991231");
    row("yyyyMMdd", "20000229", "20000229");
    row("yyyyMMdd", "00010101", "00010101");
    row("yyMMdd", "240115", "20240115");
    row("yyMMdd", "991231", "20991231");
    row("yyMMdd", "000101", "20000101");
    row("ddMMyy", "150124", "20240115");
    row("ddMMyy", "311299", "20991231");
    row("ddMMyy", "290224", "20240229");
    row("dd.MM.yy", "15.01.24", "20240115");
    row("dd/MM/yy", "15/01/24", "20240115");
}

void TadataImportTest::dateFormats()
{
    QFETCH(QString, format);
    QFETCH(QByteArray, date);
    QFETCH(QString, day);
    QCOMPARE(import(date + ",100000,1.5,1.7,1.4,1.6\n", {QStringLiteral("--date-format"), format}),
             succeeded());
    const Tree expected{{QStringLiteral("NORD/MAIN/ALFA/%1_60.iss").arg(day),
                         "100000;1.50;1.70;1.40;1.60;0;0.00;0\n"}};
    QCOMPARE(stored(), expected);
}

void TadataImportTest::timeFormats_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("time");
    QTest::addColumn<QByteArray>("record");
    const auto row = [](const char* format, const char* time, const char* record) {
        QTest::addRow("%s as %s", time, format)
            << QString::fromLatin1(format) << QByteArray(time) << QByteArray(record);
    };
    row("hhmmss", "093005", "093005");
    row("hhmmss", "000000", "000000");
    row("hhmmss", "235959", "235959");
    row("hhmm", "0930", "093000");
    row("hh:mm:ss", "09:30:05", "093005");
    row("hh:mm", "23:59", "235900");
}

void TadataImportTest::timeFormats()
{
    QFETCH(QString, format);
    QFETCH(QByteArray, time);
    QFETCH(QByteArray, record);
    QCOMPARE(import("20240115," + time + ",1.5,1.7,1.4,1.6\n",
                    {QStringLiteral("--time-format"), format}),
             succeeded());
    const Tree expected{{QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss"),
                         record + ";1.50;1.70;1.40;1.60;0;0.00;0\n"}};
    QCOMPARE(stored(), expected);
}

void TadataImportTest::decimalsScaleEveryPrice_data()
{
    QTest::addColumn<QString>("decimals");
    QTest::addColumn<QByteArray>("record");
    QTest::newRow("0") << QStringLiteral("0") << QByteArray("100000;2;2;1;-2;0;0;0\n");
    QTest::newRow("1") << QStringLiteral("1") << QByteArray("100000;1.5;1.7;1.4;-1.7;0;0.0;0\n");
    QTest::newRow("2") << QStringLiteral("2")
                       << QByteArray("100000;1.50;1.70;1.40;-1.65;0;0.00;0\n");
    QTest::newRow("5") << QStringLiteral("5")
                       << QByteArray("100000;1.50000;1.70000;1.40000;-1.65000;0;0.00000;0\n");
    QTest::newRow("15") << QStringLiteral("15")
                        << QByteArray("100000;1.500000000000000;1.700000000000000;"
                                      "1.400000000000000;-1.650000000000000;0;"
                                      "0.000000000000000;0\n");
}

void TadataImportTest::decimalsScaleEveryPrice()
{
    QFETCH(QString, decimals);
    QFETCH(QByteArray, record);
    QCOMPARE(import("20240115,100000,1.5,1.7,1.4,-1.65\n",
                    {QStringLiteral("--decimals"), decimals, QStringLiteral("--series"),
                     QStringLiteral("NOWHERE/MAIN/NOBODY")}),
             succeeded());
    QCOMPARE(readFile(path("store/NOWHERE/MAIN/NOBODY/20240115_60.iss")), record);
}

void TadataImportTest::decimalsComeFromTheReferenceFile()
{
    // The same ids on another board and another code on the same board must not be taken for it.
    writeFile(path("reference.json"), R"({
        "stocks":     [ { "id": 1, "code": "NORD", "name": "Первая" },
                        { "id": 2, "code": "ПЛОЩАДКА", "name": "Вторая" } ],
        "boards":     [ { "stock": "NORD", "id": 1, "code": "MAIN", "name": "", "flags": 0 },
                        { "stock": "ПЛОЩАДКА", "id": 1, "code": "MAIN", "name": "", "flags": 4 },
                        { "stock": "ПЛОЩАДКА", "id": 2, "code": "ODD", "name": "", "flags": 4 } ],
        "securities": [ { "stock": "NORD", "board": "MAIN", "id": 1, "code": "ALFA",
                          "title": "", "decimals": 1 },
                        { "stock": "ПЛОЩАДКА", "board": "MAIN", "id": 1, "code": "ALFA",
                          "title": "", "decimals": 3 },
                        { "stock": "ПЛОЩАДКА", "board": "ODD", "id": 1, "code": "ALFA",
                          "title": "", "decimals": 4 },
                        { "stock": "ПЛОЩАДКА", "board": "ODD", "id": 2, "code": "Альфа 2",
                          "title": "", "decimals": 0 } ] })");
    for (const char* series :
         {"NORD/MAIN/ALFA", "ПЛОЩАДКА/MAIN/ALFA", "ПЛОЩАДКА/ODD/ALFA", "ПЛОЩАДКА/ODD/Альфа 2"}) {
        QCOMPARE(import("20240115,100000,1.5,1.7,1.4,1.6\n",
                        {QStringLiteral("--reference"), path("reference.json"),
                         QStringLiteral("--series"), QString::fromUtf8(series)}),
                 succeeded());
    }
    const Tree expected{
        {QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss"), "100000;1.5;1.7;1.4;1.6;0;0.0;0\n"},
        {QStringLiteral("ПЛОЩАДКА/MAIN/ALFA/20240115_60.iss"),
         "100000;1.500;1.700;1.400;1.600;0;0.000;0\n"},
        {QStringLiteral("ПЛОЩАДКА/ODD/ALFA/20240115_60.iss"),
         "100000;1.5000;1.7000;1.4000;1.6000;0;0.0000;0\n"},
        {QStringLiteral("ПЛОЩАДКА/ODD/Альфа 2/20240115_60.iss"), "100000;2;2;1;2;0;0;0\n"}};
    QCOMPARE(stored(), expected);
}

void TadataImportTest::decimalsOnTheCommandLineWin()
{
    QCOMPARE(import("20240115,100000,1.5,1.7,1.4,1.6\n", words("--decimals 3")), succeeded());
    QCOMPARE(readFile(path("store/NORD/MAIN/ALFA/20240115_60.iss")),
             QByteArray("100000;1.500;1.700;1.400;1.600;0;0.000;0\n"));
}

void TadataImportTest::textLayouts_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("options");
    const auto row = [](const char* name, const QByteArray& content,
                        const QStringList& options = {}) {
        QTest::newRow(name) << content << options;
    };
    const QByteArray plain(twoDays);
    const QByteArray header("дата,время,откр,макс,мин,закр\n");
    row("LF", plain);
    row("CRLF", replaced(plain, "\n", "\r\n"));
    row("CRLF and LF mixed", replaced(plain, "1.7\n", "1.7\r\n"));
    row("no last line end", plain.chopped(1));
    row("CRLF without the last line feed", replaced(plain, "\n", "\r\n").chopped(1));
    row("CRLF without the last line end", replaced(plain, "\n", "\r\n").chopped(2));
    row("UTF-8 byte order mark", "\xEF\xBB\xBF" + plain);
    row("UTF-8 byte order mark before a header", "\xEF\xBB\xBF" + header + plain, words("header"));
    row("UTF-16 little endian", encoded(plain, QStringConverter::Utf16LE));
    row("UTF-16 big endian", encoded(plain, QStringConverter::Utf16BE));
    row("UTF-16 with a header and CRLF",
        encoded(replaced(header + plain, "\n", "\r\n"), QStringConverter::Utf16LE),
        words("header"));
    row("UTF-32 little endian", encoded(plain, QStringConverter::Utf32LE));
    row("header", header + plain, words("header"));
    row("empty header", "\n" + plain, words("header"));
    row("header of CRLF", "\r\n" + replaced(plain, "\n", "\r\n"), words("header"));
    row("binary header", QByteArray("\x00\xFF\xFE\x80\n", 5) + plain, words("header"));
    row("extra columns", replaced(plain, "\n", ",a,b,,\n"));
    row("separator at the line's end", replaced(plain, "\n", ",\n"));
    row("invalid UTF-8 in an extra column", replaced(plain, "\n", ",\xC3\x28\xFF\n"));
    row("NUL in an extra column", replaced(plain, "\n", QByteArray(",a\0b\n", 5)));
    row("lone CR in an extra column", replaced(plain, "\n", ",a\rb\n"));
    row("quotes in an extra column", replaced(plain, "\n", ",\"a,b\"\n"));
    row("other line ends of Unicode in an extra column",
        replaced(plain, "\n", ",\u2028\u0085\v\f\n"));
}

void TadataImportTest::textLayouts()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, options);
    QCOMPARE(import(content, options), succeeded());
    QCOMPARE(stored(), twoDaysStored());
}

void TadataImportTest::seriesNamesAreDirectoryNames_data()
{
    QTest::addColumn<QString>("series");
    const auto row = [](const char* name, const char* series) {
        QTest::newRow(name) << QString::fromUtf8(series);
    };
    row("spaces", "My Venue/Main board/A L F A");
    row("blanks around", " NORD / MAIN / ALFA ");
    row("Cyrillic", "Биржа/Режим/Сбербанк ао");
    row("dots", "N.O.R.D/..MAIN/ALFA-12.26.");
    row("three dots", ".../.../...");
    row("hidden", ".NORD/.MAIN/.ALFA");
    row("placeholders", "%1/%2/%3");
    row("colon inside", "N:ORD/MA:IN/AL:FA");
    row("colon first", ":NORD/:MAIN/:ALFA");
    row("nothing but colons", ":/:/:");
    row("backslashes", "NO\\RD/MA\\IN/\\");
    row("tilde", "~/~root/~ALFA");
    row("drive letter", "C:/D:/E:");
    row("quotes and shell signs", "'NORD'/\"MAIN\"/$ALFA*?");
    row("option look-alike", "-NORD/--MAIN/-ALFA");
    row("outside the basic plane", "📈/📈📈/📈📈📈");
    row("combining characters stay as they are", "e\u0301/\u00e9/e\u0301\u0301");
    row("case", "nord/Main/aLFA");
}

void TadataImportTest::seriesNamesAreDirectoryNames()
{
    QFETCH(QString, series);
    QCOMPARE(import("20240115,100000,1.5,1.7,1.4,1.6\n",
                    {QStringLiteral("--series"), series, QStringLiteral("--decimals"),
                     QStringLiteral("2")}),
             succeeded());
    const Tree expected{
        {series + QStringLiteral("/20240115_60.iss"), "100000;1.50;1.70;1.40;1.60;0;0.00;0\n"}};
    QCOMPARE(stored(), expected);
    QCOMPARE(runTadata({QStringLiteral("list"), QStringLiteral("--store"), path("store")}),
             succeeded(series.toUtf8() + "\t60\t1\t2024-01-15\t2024-01-15\t36\n"));
}

void TadataImportTest::importingTwiceIsImportingOnce()
{
    QCOMPARE(import(twoDays), succeeded());
    QCOMPARE(import(twoDays), succeeded());
    QCOMPARE(stored(), twoDaysStored());
}

void TadataImportTest::aDayIsReplacedNotMerged()
{
    QCOMPARE(import(twoDays), succeeded());
    QCOMPARE(import("20240115,120000,2,2,2,2\n"), succeeded());
    Tree expected = twoDaysStored();
    expected[QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss")] =
        "120000;2.00;2.00;2.00;2.00;0;0.00;0\n";
    QCOMPARE(stored(), expected);
}

void TadataImportTest::aDayThatComesAgainKeepsItsLastRun()
{
    QCOMPARE(import("20240115,100000,1,1,1,1\n"
                    "20240116,100000,2,2,2,2\n"
                    "20240115,100100,3,3,3,3\n"),
             succeeded());
    const Tree expected{
        {QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss"), "100100;3.00;3.00;3.00;3.00;0;0.00;0\n"},
        {QStringLiteral("NORD/MAIN/ALFA/20240116_60.iss"),
         "100000;2.00;2.00;2.00;2.00;0;0.00;0\n"}};
    QCOMPARE(stored(), expected);
}

void TadataImportTest::otherFilesOfTheSeriesStay()
{
    const Tree others{{QStringLiteral("NORD/MAIN/ALFA/20240115_1.iss"), "seconds"},
                      {QStringLiteral("NORD/MAIN/ALFA/20240115_60"), "derived minutes"},
                      {QStringLiteral("NORD/MAIN/ALFA/20240114_60.iss"), "another day"},
                      {QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss~"), "a copy"},
                      {QStringLiteral("NORD/MAIN/BARK/20240115_60.iss"), "another series"}};
    for (auto other = others.begin(); other != others.end(); ++other)
        writeFile(path("store/") + other.key(), other.value());
    QCOMPARE(import(twoDays), succeeded());
    Tree expected = twoDaysStored();
    expected.insert(others);
    QCOMPARE(stored(), expected);
}

void TadataImportTest::linesKeepTheirOrder()
{
    QCOMPARE(import("20240115,100100,2,2,2,2\n"
                    "20240115,100000,1,1,1,1\n"
                    "20240115,100100,3,3,3,3\n",
                    words("--decimals 0")),
             succeeded());
    QCOMPARE(readFile(path("store/NORD/MAIN/ALFA/20240115_60.iss")),
             QByteArray("100100;2;2;2;2;0;0;0\n"
                        "100000;1;1;1;1;0;0;0\n"
                        "100100;3;3;3;3;0;0;0\n"));
}

void TadataImportTest::storeMayBeRelativeAndMissing()
{
    writeFile(path("bars.csv"), twoDays);
    const QString here = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_dir->path()));
    const Outcome outcome =
        runTadata(importLine(QStringLiteral("bars.csv"), words("--store deep/er/store/")));
    QVERIFY(QDir::setCurrent(here));
    QCOMPARE(outcome, succeeded());
    QCOMPARE(readTree(QDir(path("deep/er/store"))), twoDaysStored());
}

QTEST_GUILESS_MAIN(TadataImportTest)
#include "tst_tadataimport.moc"
