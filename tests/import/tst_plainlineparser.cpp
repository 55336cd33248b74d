// SPDX-License-Identifier: MIT
// The parser of plain lines beside BarDescription::init: what it accepts is the same bar, and of
// ordinary files it accepts every line.

#include "plainlineparser.h"

#include "fieldpattern.h"
#include "importdetails.h"
#include "series.h"
#include "support/instrumented.h"
#include "support/strictlog.h"
#include "textformats.h"

#include <vexdesk/history/utf8.h>

#include <QtCore/QLocale>
#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

#include <algorithm>
#include <array>
#include <numeric>

using testsupport::detailsOfSeries;
using testsupport::with;

class TestPlainLineParser final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void acceptsOrdinaryLines();
    void leavesFarColumnsToTheOther();
    void leavesUnknownRolesToTheOther();
    void leavesOtherSeparatorsToTheOther();
    void readsAmountsFromTheFirstColumn();
    void leavesLongPartsOfAPatternToQt();
    void leavesQuotesToQt();
    void readsOtherFormsOfDatesAndTimes_data();
    void readsOtherFormsOfDatesAndTimes();
    void readsEveryDayOfTwoCenturies_data();
    void readsEveryDayOfTwoCenturies();
    void readsEveryTimeOfADay_data();
    void readsEveryTimeOfADay();
    void findsSeparatorsAtEveryPlace();
    void leavesPlainNumbersForLater();
    void checksNumbersOfEveryForm_data();
    void checksNumbersOfEveryForm();
    void agreesWithThePlainWay_data();
    void agreesWithThePlainWay();
};

namespace {

QString shown(const BarDescription& bar)
{
    QStringList fields{bar.valid ? QStringLiteral("valid") : QStringLiteral("invalid"), bar.error,
                       bar.date.toString(Qt::ISODate), bar.time.toString(Qt::ISODateWithMs)};
    for (const decimal& number : {bar.open, bar.high, bar.low, bar.close, bar.value})
        fields.append(number.toString());
    fields << QString::number(bar.volume) << QString::number(bar.openInterest)
           << (bar.isRounded ? QStringLiteral("rounded") : QStringLiteral("exact"));
    return fields.join(u'|');
}

// Whether the time does not matter: it is a look at a new parser.
bool isThorough()
{
    return qEnvironmentVariableIsSet("TADATA_RANDOM_LINES");
}

// Under a sanitizer every day takes minutes; what is read is the same there. With this step each
// date of a year is met in several years.
int daysToTheNext()
{
    constexpr int few = 11;
    return testsupport::isInstrumented && !isThorough() ? few : 1;
}

ImportDetails allColumns(int decimals)
{
    return with(with(with(detailsOfSeries(decimals), ColumnRole::Volume, 6), ColumnRole::Value, 7),
                ColumnRole::OpenInterest, 8);
}

QByteArray digits(QRandomGenerator& random, int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += static_cast<char>('0' + random.bounded(10));
    return text;
}

// A date or a time of the pattern's form, mostly one that exists.
QByteArray dated(QRandomGenerator& random, const QString& pattern)
{
    if (random.bounded(8) == 0) {
        QByteArray text = pattern.toLatin1();
        for (char& character : text) {
            if (QChar::fromLatin1(character).isLetter())
                character = digits(random, 1).front();
        }
        return text;
    }
    const QDate date = QDate(1999, 12, 1).addDays(random.bounded(40000));
    const QTime time = QTime(0, 0).addSecs(random.bounded(86400));
    return (pattern.contains(u'y') ? date.toString(pattern) : time.toString(pattern)).toLatin1();
}

QByteArray number(QRandomGenerator& random)
{
    static const QByteArrayList strange{"",
                                        "-",
                                        "+1",
                                        "1.",
                                        ".5",
                                        "1e3",
                                        " 1",
                                        "1 ",
                                        "0x1",
                                        "-0",
                                        "-1.05",
                                        "1,5",
                                        "1.005",
                                        "0001",
                                        "36028797018963967",
                                        "99999999999999999999",
                                        "2147483648",
                                        "9223372036854775807",
                                        "1.23456789012345"};
    switch (random.bounded(6)) {
    case 0:
        return strange.at(random.bounded(static_cast<int>(strange.size())));
    case 1:
        return digits(random, 1 + random.bounded(4));
    default:
        return digits(random, 1 + random.bounded(4)) + '.' + digits(random, 1 + random.bounded(3));
    }
}

} // namespace

void TestPlainLineParser::acceptsOrdinaryLines()
{
    const ImportDetails details = allColumns(2);
    tadata::PlainLineParser parser(details);
    for (const char* line : {"20240115;100000;1.5;1.7;1.4;1.6;12;345.60;7",
                             "20240115;100100;1;2;0;1;0;0;0;and;more;columns",
                             "20240229;235959;1.50;1.70;1.40;1.60;123456789012;345.6;2"}) {
        BarDescription bar;
        QVERIFY2(parser.parse(line, &bar), line);
    }
    // Whatever is not so is left to the other one.
    for (const char* line : {"", ";;;;;;;;", "20240230;100000;1;1;1;1;1;1;1",
                             "20240115;240000;1;1;1;1;1;1;1", "20240115;100000;1;1;1;1;1;1",
                             "20240115;100000;1;1;1;1;-1;1;1", "20240115;100000;1;1;1;1;1;1;x"}) {
        BarDescription bar;
        QVERIFY2(!parser.parse(line, &bar), line);
    }
}

// As many fields as it has room for.
void TestPlainLineParser::leavesFarColumnsToTheOther()
{
    const QByteArray line = "20240115;100000;1;1;1;1" + QByteArray(";7").repeated(60);
    for (const int column : {31, 32, 40}) {
        const ImportDetails details = with(detailsOfSeries(0), ColumnRole::Volume, column);
        BarDescription bar;
        QCOMPARE(tadata::PlainLineParser(details).parse(line, &bar), column < 32);
        bar = BarDescription();
        QVERIFY(bar.init(QString::fromLatin1(line), details));
        QCOMPARE(bar.volume, 7);
    }
}

// Every column of the settings must be there, whatever is to be made of it.
void TestPlainLineParser::leavesUnknownRolesToTheOther()
{
    for (const int role : {-1, 11, 42, 1'000'000}) {
        ImportDetails details = detailsOfSeries(0);
        details.columns.insert(role, 8);
        const QByteArray line = "20240115;100000;1;1;1;1";
        BarDescription bar;
        QVERIFY(!tadata::PlainLineParser(details).parse(line, &bar));
        QVERIFY(!tadata::PlainLineParser(details).parse(line + ";2;2;2", &bar));
        bar = BarDescription();
        QVERIFY(!bar.init(QString::fromLatin1(line), details));
        QCOMPARE(bar.error, QStringLiteral("Недостаточное количество столбцов"));
        QVERIFY(bar.init(QString::fromLatin1(line + ";2;2;2"), details));
    }
}

// Of several characters no one is enough, also where every other column is read.
void TestPlainLineParser::leavesOtherSeparatorsToTheOther()
{
    ImportDetails details = detailsOfSeries(0);
    details.columns = {{1, 0}, {2, 2}, {3, 4}, {4, 6}, {5, 8}, {6, 10}};
    const QByteArray line = "20240115::100000::1::1::1::1";
    for (const char* separator : {"::", ":,", "", "ж"}) {
        details.separator = QString::fromUtf8(separator);
        BarDescription bar;
        QVERIFY2(!tadata::PlainLineParser(details).parse(line, &bar), separator);
    }
    details.separator = QStringLiteral(":");
    BarDescription bar;
    QVERIFY(tadata::PlainLineParser(details).parse(line, &bar));
}

// The first one as well as any other.
void TestPlainLineParser::readsAmountsFromTheFirstColumn()
{
    for (const ColumnRole role :
         {ColumnRole::Volume, ColumnRole::Value, ColumnRole::OpenInterest}) {
        ImportDetails details = detailsOfSeries(2);
        details.columns = {{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}};
        details.columns.insert(static_cast<qint32>(role), 0);
        BarDescription plain;
        QVERIFY(plain.init(QStringLiteral("7;20240115;100000;1;1;1;1"), details));
        tadata::PlainLineParser parser(details);
        BarDescription bar;
        QVERIFY(parser.parse("7;20240115;100000;1;1;1;1", &bar));
        QCOMPARE(shown(bar), shown(plain));
        QVERIFY(!parser.parse("x;20240115;100000;1;1;1;1", &bar));
        QVERIFY(!parser.check("x;20240115;100000;1;1;1;1", &bar));
    }
}

void TestPlainLineParser::leavesLongPartsOfAPatternToQt()
{
    ImportDetails details = detailsOfSeries(0);
    details.dateFormat = QStringLiteral("yyyyMMdddddddddddddd");
    const QByteArray line = "20240199999999999999;100000;1;1;1;1";
    BarDescription bar;
    QVERIFY(!tadata::PlainLineParser(details).parse(line, &bar));
}

// Where the text has a quote too, the letters between are no number of a date.
void TestPlainLineParser::leavesQuotesToQt()
{
    ImportDetails details = detailsOfSeries(0);
    BarDescription bar;
    details.dateFormat = QStringLiteral("yyyy'MM'dd");
    QVERIFY(!tadata::PlainLineParser(details).parse("2024'01'15;100000;1;1;1;1", &bar));
    details = detailsOfSeries(0);
    details.timeFormat = QStringLiteral("hh'mm'ss");
    QVERIFY(!tadata::PlainLineParser(details).parse("20240115;10'15'30;1;1;1;1", &bar));
}

void TestPlainLineParser::readsOtherFormsOfDatesAndTimes_data()
{
    QTest::addColumn<QString>("datePattern");
    QTest::addColumn<QString>("timePattern");
    const auto row = [](const char* date, const char* time) {
        QTest::addRow("%s %s", date, time) << QString::fromUtf8(date) << QString::fromUtf8(time);
    };
    row("d.M.yyyy", "hhmmss");
    row("M/d/yyyy", "h:mm");
    row("yyyyMMdd", "HH:mm:ss");
    row("yyyyMMdd", "h:mm AP");
    row("yyyy год MM dd", "hh ч mm");
}

// No other field of the line becomes slow by them.
void TestPlainLineParser::readsOtherFormsOfDatesAndTimes()
{
    QFETCH(const QString, datePattern);
    QFETCH(const QString, timePattern);
    ImportDetails details = allColumns(2);
    details.dateFormat = datePattern;
    details.timeFormat = timePattern;
    tadata::PlainLineParser parser(details);
    const QLocale plainNames = QLocale::c();
    for (int minute = 0; minute < 3000; minute += 7) {
        const QDate date = QDate(2024, 1, 5).addDays(minute / 100);
        const QTime time = QTime(0, 0).addSecs(minute % 1440 * 60);
        const QString line = plainNames.toString(date, datePattern) + u';' +
                             plainNames.toString(time, timePattern) +
                             QStringLiteral(";1.5;1.7;1.4;1.6;12;345.60;7");
        BarDescription bar;
        QVERIFY2(parser.parse(line.toUtf8(), &bar), qPrintable(line));
        BarDescription plain;
        QVERIFY(plain.init(line, details));
        QCOMPARE(shown(bar), shown(plain));
    }
}

void TestPlainLineParser::readsEveryDayOfTwoCenturies_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("isPlain");
    for (const tadata::TextFormat& format : tadata::dateFormats())
        QTest::addRow("%s", qPrintable(format.pattern)) << format.pattern << true;
    for (const char* pattern : {"yyyy-MM-dd", "dd/MM/yyyy", "MMddyy"})
        QTest::addRow("%s", pattern) << QString::fromLatin1(pattern) << true;
    for (const char* pattern : {"d.M.yyyy", "yyyyMMddMM", "yyMMddyy", "MMdd"})
        QTest::addRow("%s", pattern) << QString::fromLatin1(pattern) << false;
}

// Of a day that not every century has, and a pattern that names none, Qt decides.
void TestPlainLineParser::readsEveryDayOfTwoCenturies()
{
    QFETCH(const QString, pattern);
    QFETCH(const bool, isPlain);
    ImportDetails details = detailsOfSeries(0);
    details.dateFormat = pattern;
    tadata::PlainLineParser parser(details);
    const tadata::FieldPattern fields(pattern);
    for (QDate day(1899, 12, 25); day.year() < 2101; day = day.addDays(daysToTheNext())) {
        const QString text = day.toString(pattern);
        const bool isLeapDay = day.month() == 2 && day.day() == 29 && !pattern.contains("yyyy");
        const auto digits = fields.date(text.toLatin1());
        if ((digits && !digits->isForQt) != (isPlain && !isLeapDay))
            QFAIL(qPrintable(text));
        const QString line = text + QStringLiteral(";100000;1;1;1;1");
        BarDescription plain;
        BarDescription fast;
        if (parser.parse(line.toLatin1(), &fast) != plain.init(line, details))
            QFAIL(qPrintable(line));
        if (plain.valid && shown(fast) != shown(plain))
            QCOMPARE(shown(fast), shown(plain));
    }
}

void TestPlainLineParser::readsEveryTimeOfADay_data()
{
    QTest::addColumn<QString>("pattern");
    for (const tadata::TextFormat& format : tadata::timeFormats())
        QTest::addRow("%s", qPrintable(format.pattern)) << format.pattern;
}

void TestPlainLineParser::readsEveryTimeOfADay()
{
    QFETCH(const QString, pattern);
    ImportDetails details = detailsOfSeries(0);
    details.timeFormat = pattern;
    tadata::PlainLineParser parser(details);
    const tadata::FieldPattern fields(pattern);
    for (int second = 0; second < 86400; second += 7) {
        const QTime time = QTime(0, 0).addSecs(second);
        BarDescription bar;
        const QString line = QStringLiteral("20240115;%1;1;1;1;1").arg(time.toString(pattern));
        QVERIFY2(parser.parse(line.toLatin1(), &bar), qPrintable(line));
        if (bar.time != QTime::fromString(time.toString(pattern), pattern) ||
            bar.time != fields.time(time.toString(pattern).toLatin1()))
            QCOMPARE(bar.time, time);
    }
}

// Eight characters are looked at in one: each may stand at each place and beside any other.
void TestPlainLineParser::findsSeparatorsAtEveryPlace()
{
    const ImportDetails details = with(detailsOfSeries(0), ColumnRole::Volume, 8);
    for (const char separator : {';', ',', ' ', '\t', '\x01', '\x7f', ':'}) {
        ImportDetails other = details;
        other.separator = QLatin1Char(separator);
        tadata::PlainLineParser parser(other);
        const QByteArray between(1, separator);
        for (int first = 1; first < 128; ++first) {
            for (int padding = 0; padding < 9; ++padding) {
                // Two columns that nobody reads, before the volume.
                QByteArrayList fields{"20240115", "100000", "1", "1", "1", "1"};
                fields << QByteArray(padding, 'x')
                       << QByteArray(1, static_cast<char>(first)) + static_cast<char>(separator ^ 1)
                       << "7";
                const QByteArray line = fields.join(between);
                BarDescription plain;
                plain.init(QString::fromLatin1(line), other);
                BarDescription fast;
                if (parser.parse(line, &fast) != plain.valid ||
                    (plain.valid && shown(fast) != shown(plain)))
                    QFAIL(line.toHex(' ').constData());
            }
        }
    }
}

// All that the first reading of a merge saves.
void TestPlainLineParser::leavesPlainNumbersForLater()
{
    const ImportDetails details = allColumns(2);
    tadata::PlainLineParser parser(details);
    const QByteArray line = "20240115;100000;120.07;1;12345.67;12345678;12;345.6;7";
    // Until the decimals are known, whether they have room for all digits is not.
    BarDescription first;
    QVERIFY(parser.check(line, &first));
    QCOMPARE(first.open.toString(), QStringLiteral("120.07"));
    BarDescription bar;
    QVERIFY(parser.check(line, &bar));
    QVERIFY(bar.valid);
    QCOMPARE(bar.high, decimal::zero);
    QVERIFY(parser.readNumbers(&bar));
    QCOMPARE(bar.open.toString(), QStringLiteral("120.07"));
    QCOMPARE(bar.close.toString(), QStringLiteral("12345678.00"));
}

void TestPlainLineParser::checksNumbersOfEveryForm_data()
{
    QTest::addColumn<int>("decimals");
    for (const int decimals : {0, 2, 8, 9, 10, 15})
        QTest::addRow("%d decimals", decimals) << decimals;
}

// A few characters in all orders, in a field of each length, beside the full reading.
void TestPlainLineParser::checksNumbersOfEveryForm()
{
    QFETCH(const int, decimals);
    const ImportDetails details = allColumns(decimals);
    tadata::PlainLineParser parser(details);
    BarDescription known; // from here on the decimals are known
    QVERIFY(parser.parse("20240115;100000;0;0;0;0;0;0;0", &known));
    QRandomGenerator random(20240115);
    const QByteArray characters = "0199..+-/:;e \xc4";
    for (int i = 0; i < 3000; ++i) {
        QByteArray text = digits(random, random.bounded(11));
        for (int changes = random.bounded(3); changes > 0 && !text.isEmpty(); --changes)
            text[random.bounded(int(text.size()))] =
                characters[random.bounded(int(characters.size()))];
        QByteArrayList fields{"20240115", "100000", "1", "1", "1", "1", "1", "1", "1"};
        fields[2 + random.bounded(7)] = text;
        const QByteArray line = fields.join(';');
        BarDescription full;
        BarDescription checked;
        const bool isBar = parser.parse(line, &full);
        QVERIFY2(parser.check(line, &checked) == isBar, line.constData());
        if (isBar && parser.readNumbers(&checked))
            QCOMPARE(shown(checked), shown(full));
    }
}

namespace {

// So many lines for each way to write them.
int randomLines()
{
    constexpr int usual = testsupport::isInstrumented ? 100 : 300;
    return isThorough() ? qEnvironmentVariableIntValue("TADATA_RANDOM_LINES") : usual;
}

// The roles in columns of any order, some of them with others between.
void shuffleColumns(QRandomGenerator& random, ImportDetails* details)
{
    constexpr int columns = 12;
    std::array<qint32, columns> places{};
    std::iota(places.begin(), places.end(), 0);
    std::shuffle(places.begin(), places.end(), random);
    auto place = places.begin();
    for (qint32& column : details->columns)
        column = *place++;
}

QByteArray randomField(QRandomGenerator& random, const ImportDetails& details, int column)
{
    const auto role = static_cast<ColumnRole>(details.columns.key(column));
    QByteArray text = role == ColumnRole::Date   ? dated(random, details.dateFormat)
                      : role == ColumnRole::Time ? dated(random, details.timeFormat)
                                                 : number(random);
    if (random.bounded(50) == 0)
        text.insert(random.bounded(static_cast<int>(text.size()) + 1),
                    static_cast<char>(random.bounded(256)));
    return text;
}

QByteArray randomLine(QRandomGenerator& random, const ImportDetails& details)
{
    const qint32 last = *std::max_element(details.columns.begin(), details.columns.end());
    QByteArrayList fields;
    for (qint32 column = 0; column <= last; ++column)
        fields.append(randomField(random, details, column));
    if (random.bounded(10) == 0)
        fields.removeLast();
    return fields.join(details.separator.toUtf8());
}

void compareWithThePlainWay(const QByteArray& line, const ImportDetails& details,
                            tadata::PlainLineParser* parser)
{
    BarDescription plain;
    plain.init(vexdesk::textFromUtf8(line), details);
    BarDescription fast;
    if (parser->parse(line, &fast))
        QCOMPARE(shown(fast), shown(plain));
    // A line whose numbers come later is one whose numbers can be read.
    BarDescription checked;
    QCOMPARE(parser->check(line, &checked), fast.valid);
    if (!fast.valid)
        return;
    QVERIFY(checked.valid);
    QCOMPARE(checked.date, fast.date);
    QCOMPARE(checked.time, fast.time);
    QVERIFY(parser->readNumbers(&checked));
    QCOMPARE(shown(checked), shown(plain));
}

} // namespace

void TestPlainLineParser::agreesWithThePlainWay_data()
{
    QTest::addColumn<QString>("datePattern");
    QTest::addColumn<QString>("timePattern");
    QTest::addColumn<QString>("separator");
    for (const tadata::TextFormat& date : tadata::dateFormats()) {
        for (const tadata::TextFormat& time : tadata::timeFormats()) {
            for (const char* separator : {";", ",", " ", "\t", "::", "."}) {
                QTest::addRow("%s %s %s", qPrintable(date.pattern), qPrintable(time.pattern),
                              separator)
                    << date.pattern << time.pattern << QString::fromLatin1(separator);
            }
        }
    }
    QTest::newRow("other patterns")
        << QStringLiteral("yyyy-MM-dd") << QStringLiteral("HH:mm:ss") << QStringLiteral(";");
    QTest::newRow("single letters")
        << QStringLiteral("d.M.yyyy") << QStringLiteral("h:m") << QStringLiteral(";");
    QTest::newRow("quotes") << QStringLiteral("yyyy'MM'dd") << QStringLiteral("hh'mm'")
                            << QStringLiteral(";");
    QTest::newRow("no patterns") << QString() << QString() << QStringLiteral(";");
    QTest::newRow("no separator") << QStringLiteral("yyyyMMdd") << QStringLiteral("hhmmss")
                                  << QString();
}

void TestPlainLineParser::agreesWithThePlainWay()
{
    QFETCH(const QString, datePattern);
    QFETCH(const QString, timePattern);
    QFETCH(const QString, separator);
    QRandomGenerator random(20240115);
    for (const int decimals : {0, 2, 5}) {
        ImportDetails details = allColumns(decimals);
        if (decimals == 5)
            details.columns.remove(static_cast<qint32>(ColumnRole::Value));
        if (decimals == 0)
            details.columns.remove(static_cast<qint32>(ColumnRole::Open));
        details.dateFormat = datePattern;
        details.timeFormat = timePattern;
        details.separator = separator;
        for (int shuffles = 0; shuffles < 3; ++shuffles) {
            tadata::PlainLineParser parser(details);
            for (int i = 0; i < randomLines() / 3; ++i)
                compareWithThePlainWay(randomLine(random, details), details, &parser);
            shuffleColumns(random, &details);
        }
    }
}

QTEST_GUILESS_MAIN(TestPlainLineParser)
#include "tst_plainlineparser.moc"
