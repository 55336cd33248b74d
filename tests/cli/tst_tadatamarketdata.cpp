// SPDX-License-Identifier: MIT
// Whole files of real quotes, from the folder that the environment variable TADATA_MARKET_DATA
// names. What is stored is compared with a plain computation on the text that shares nothing with
// the import: no date, no time and no decimal number, only digits and their places.

#include "commandtest.h"

#include "support/filetree.h"

#include <QtCore/QFileInfo>
#include <QtTest/QTest>

using namespace testsupport;

namespace {

constexpr int decimals = 5;
constexpr char seriesPath[] = "ORIENT/FX/EURUSD";

struct Quote
{
    QByteArray day;  // 20140505
    QByteArray time; // 000100
    // In the last decimal of the price.
    qint64 open = 0;
    qint64 high = 0;
    qint64 low = 0;
    qint64 close = 0;
    qint64 volume = 0;
};

// "1.3871" gives 138710.
qint64 priceOf(const QByteArray& text)
{
    const qsizetype point = text.indexOf('.');
    if (point < 1 || text.startsWith('-'))
        return -1;
    const QByteArray fraction = text.mid(point + 1).leftJustified(decimals, '0');
    return fraction.size() == decimals ? (text.left(point) + fraction).toLongLong() : -1;
}

QByteArray priceText(qint64 price)
{
    const QByteArray digits = QByteArray::number(price).rightJustified(decimals + 1, '0');
    return digits.chopped(decimals) + '.' + digits.right(decimals);
}

QByteArray record(const Quote& quote)
{
    return quote.time + ';' + priceText(quote.open) + ';' + priceText(quote.high) + ';' +
           priceText(quote.low) + ';' + priceText(quote.close) + ';' +
           QByteArray::number(quote.volume) + ";0.00000;0\n";
}

// "05.05.14" gives 20140505; a date without points stays.
QByteArray dayOf(const QByteArray& date)
{
    const QList<QByteArray> parts = date.split('.');
    return parts.size() == 3 ? "20" + parts[2] + parts[1] + parts[0] : date;
}

QList<Quote> readQuotes(const QByteArray& file)
{
    QList<Quote> quotes;
    const QList<QByteArray> lines = file.chopped(1).split('\n');
    for (const QByteArray& line : lines) {
        const QList<QByteArray> fields = line.split(';');
        if (fields.size() < 7)
            return {};
        QByteArray time = fields[1];
        if (time.contains(':'))
            time = time.left(2) + time.mid(3, 2) + "00";
        quotes.append({dayOf(fields[0]), time, priceOf(fields[2]), priceOf(fields[3]),
                       priceOf(fields[4]), priceOf(fields[5]), fields[6].toLongLong()});
    }
    return quotes;
}

int secondOfDay(const QByteArray& time)
{
    return time.left(2).toInt() * 3600 + time.mid(2, 2).toInt() * 60 + time.right(2).toInt();
}

QByteArray timeOfSecond(int second)
{
    const auto two = [](int number) { return QByteArray::number(number).rightJustified(2, '0'); };
    return two(second / 3600) + two(second / 60 % 60) + two(second % 60);
}

// Every day's bars one below the other.
void addDayFiles(Tree& tree, const QList<Quote>& quotes, const char* ending)
{
    for (const Quote& quote : quotes)
        tree[QLatin1String(quote.day) + QLatin1String(ending)] += record(quote);
}

// The minutes of second bars: a minute is opened by its first second and stamped with the whole
// minute that follows it; a second up to that stamp belongs to it. The file's last one is missing.
QList<Quote> minutesOf(const QList<Quote>& seconds)
{
    QList<Quote> minutes;
    int end = -1;
    for (const Quote& second : seconds) {
        const int now = secondOfDay(second.time);
        const bool belongs = !minutes.isEmpty() && minutes.last().day == second.day && now <= end;
        if (belongs) {
            Quote& minute = minutes.last();
            minute.high = qMax(minute.high, second.high);
            minute.low = qMin(minute.low, second.low);
            minute.close = second.close;
            minute.volume += second.volume;
        } else {
            end = (now / 60 + 1) * 60 % 86400;
            minutes.append(second);
            minutes.last().time = timeOfSecond(end);
        }
    }
    if (!minutes.isEmpty())
        minutes.removeLast();
    return minutes;
}

// A bar of a longer timeframe, and the line that an export writes for it.
struct LongBar
{
    QByteArray day; // of the end
    int end = 0;    // second of the source's day
    Quote sums;

    QByteArray line() const
    {
        return day + ',' + timeOfSecond(end % 86400) + ',' + priceText(sums.open) + ',' +
               priceText(sums.high) + ',' + priceText(sums.low) + ',' + priceText(sums.close) +
               ',' + QByteArray::number(sums.volume) + '\n';
    }
};

// The days of the files are few enough to count on the fingers.
QByteArray dayAfter(const QByteArray& day)
{
    return day.left(6) + QByteArray::number(day.right(2).toInt() + 1).rightJustified(2, '0');
}

// Of each bar its lines as it grew, the last of which is the finished one, day file by day file.
QList<QByteArrayList> longBars(const QList<Quote>& quotes, int timeframe)
{
    QList<QByteArrayList> lines;
    LongBar bar;
    QByteArray day;
    for (const Quote& quote : quotes) {
        const int end = (secondOfDay(quote.time) + timeframe - 1) / timeframe * timeframe;
        if (quote.day == day && end <= bar.end) {
            bar.sums.high = qMax(bar.sums.high, quote.high);
            bar.sums.low = qMin(bar.sums.low, quote.low);
            bar.sums.close = quote.close;
            bar.sums.volume += quote.volume;
            lines.last().append(bar.line());
            continue;
        }
        bar = {end == 86400 ? dayAfter(quote.day) : quote.day, end, quote};
        day = quote.day;
        lines.append(QByteArrayList{bar.line()});
    }
    return lines;
}

// The whole file: within a day each bar comes once more when the next one begins.
QByteArray exportOf(const QList<Quote>& quotes, int timeframe)
{
    QByteArray text = "\xef\xbb\xbf<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>,<VOL>\n";
    for (qsizetype i = 0, next = 0; i < quotes.size(); i = next) {
        while (next < quotes.size() && quotes[next].day == quotes[i].day)
            ++next;
        const QList<QByteArrayList> bars = longBars(quotes.mid(i, next - i), timeframe);
        for (qsizetype bar = 0; bar < bars.size(); ++bar) {
            if (bar > 0)
                text += bars[bar - 1].last();
            text += bars[bar].join();
        }
    }
    return text;
}

// Two groups may end at one midnight: the last one of a day, and the first one of the next.
QByteArrayList finishedBars(const QList<Quote>& quotes, int timeframe)
{
    QByteArrayList finished;
    const QList<QByteArrayList> bars = longBars(quotes, timeframe);
    for (const QByteArrayList& bar : bars)
        finished.append(bar.last());
    return finished;
}

// The last line of each run of lines with one stamp and one opening price.
QByteArrayList lastLines(const QByteArray& text)
{
    QByteArrayList last;
    QByteArray stamp;
    const QByteArrayList lines = text.chopped(1).split('\n').mid(1);
    for (const QByteArray& line : lines) {
        const QByteArray begin = line.split(',').mid(0, 3).join(',');
        if (begin != stamp)
            last.append(QByteArray());
        stamp = begin;
        last.last() = line + '\n';
    }
    return last;
}

} // namespace

class TadataMarketDataTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void minuteBars();
    void secondBars();
    void exportsLongerBars_data();
    void exportsLongerBars();

private:
    Outcome import(const char* name, const QStringList& more) const;
    Tree stored() const { return readTree(QDir(path("store/") + QLatin1String(seriesPath))); }

    QString m_folder = qEnvironmentVariable("TADATA_MARKET_DATA");
};

void TadataMarketDataTest::init()
{
    CommandTest::init();
    if (m_folder.isEmpty())
        QSKIP("TADATA_MARKET_DATA names no folder with market data");
}

Outcome TadataMarketDataTest::import(const char* name, const QStringList& more) const
{
    return runTadata(
        importLine(m_folder + u'/' + QLatin1String(name),
                   words("--separator semicolon --decimals 5 --columns "
                         "date=0,time=1,open=2,high=3,low=4,close=5,volume=6 --series") +
                       words(seriesPath) + more));
}

void TadataMarketDataTest::minuteBars()
{
    const QList<Quote> quotes = readQuotes(readFile(m_folder + QStringLiteral("/eurusd_1min.txt")));
    QCOMPARE(quotes.size(), 6810);
    QCOMPARE(record(quotes.first()),
             QByteArray("000100;1.38710;1.38711;1.38709;1.38711;0;0.00000;0\n"));

    QCOMPARE(import("eurusd_1min.txt", words("--date-format dd.MM.yy --time-format hh:mm")),
             succeeded());
    Tree expected;
    addDayFiles(expected, quotes, "_60.iss");
    QCOMPARE(expected.keys(),
             QStringList({QStringLiteral("20140505_60.iss"), QStringLiteral("20140506_60.iss"),
                          QStringLiteral("20140507_60.iss"), QStringLiteral("20140508_60.iss"),
                          QStringLiteral("20140509_60.iss")}));
    QCOMPARE(stored(), expected);
}

void TadataMarketDataTest::secondBars()
{
    const QList<Quote> quotes = readQuotes(readFile(m_folder + QStringLiteral("/nzdusd_1sec.txt")));
    QCOMPARE(quotes.size(), 14985);
    QCOMPARE(record(quotes.last()),
             QByteArray("235959;0.86833;0.86833;0.86833;0.86833;0;0.00000;0\n"));

    QCOMPARE(import("nzdusd_1sec.txt", words("--timeframe 1")), succeeded());
    Tree expected;
    addDayFiles(expected, quotes, "_1.iss");
    addDayFiles(expected, minutesOf(quotes), "_60");
    QCOMPARE(expected.keys(),
             QStringList({QStringLiteral("20140504_1.iss"), QStringLiteral("20140504_60"),
                          QStringLiteral("20140505_1.iss"), QStringLiteral("20140505_60")}));
    QCOMPARE(stored(), expected);
}

void TadataMarketDataTest::exportsLongerBars_data()
{
    QTest::addColumn<int>("timeframe");
    for (const int timeframe : {60, 300, 600, 1800, 3600, 86400})
        QTest::addRow("%d seconds", timeframe) << timeframe;
}

void TadataMarketDataTest::exportsLongerBars()
{
    QFETCH(const int, timeframe);
    const QList<Quote> quotes = readQuotes(readFile(m_folder + QStringLiteral("/eurusd_1min.txt")));
    QCOMPARE(import("eurusd_1min.txt", words("--date-format dd.MM.yy --time-format hh:mm")),
             succeeded());
    const QString output = path("out.csv");
    const QStringList options = words("--from 2014-05-01 --to 2014-05-31 --line-format "
                                      "DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL --timeframe")
                                << QString::number(timeframe) << QStringLiteral("--series")
                                << QLatin1String(seriesPath);
    QCOMPARE(runTadata(exportLine(output, options)), succeeded());
    const QByteArray text = readFile(output);
    QCOMPARE(lastLines(text), finishedBars(quotes, timeframe));
    QCOMPARE(text, exportOf(quotes, timeframe));
}

QTEST_GUILESS_MAIN(TadataMarketDataTest)
#include "tst_tadatamarketdata.moc"
