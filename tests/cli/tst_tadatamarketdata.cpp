// Whole files of real quotes, from the folder that the environment variable TADATA_MARKET_DATA
// names. What is stored is compared with a plain computation on the text that shares nothing with
// the import: no date, no time and no decimal number, only digits and their places.

#include "tadatarunner.h"

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

using namespace testsupport;

namespace {

using Tree = QMap<QString, QByteArray>;

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

} // namespace

class TadataMarketDataTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void minuteBars();
    void secondBars();

private:
    Outcome import(const char* name, const QStringList& more) const;
    Tree stored() const { return readTree(QDir(m_store.filePath(QLatin1String(seriesPath)))); }

    QString m_folder = qEnvironmentVariable("TADATA_MARKET_DATA");
    QTemporaryDir m_store;
};

void TadataMarketDataTest::init()
{
    failOnStrayWarnings();
    if (m_folder.isEmpty())
        QSKIP("TADATA_MARKET_DATA names no folder with market data");
    QVERIFY(m_store.isValid());
    QVERIFY(QDir(m_store.path()).removeRecursively());
    QVERIFY(QDir().mkpath(m_store.path()));
}

Outcome TadataMarketDataTest::import(const char* name, const QStringList& more) const
{
    return runTadata(QStringList{QStringLiteral("import"), m_folder + u'/' + QLatin1String(name),
                                 QStringLiteral("--store"), m_store.path(),
                                 QStringLiteral("--series"), QLatin1String(seriesPath)} +
                     words("--no-header --separator semicolon --columns "
                           "date=0,time=1,open=2,high=3,low=4,close=5,volume=6") +
                     more);
}

void TadataMarketDataTest::minuteBars()
{
    const QList<Quote> quotes = readQuotes(readFile(m_folder + QStringLiteral("/eurusd_1min.txt")));
    QCOMPARE(quotes.size(), 6810);
    QCOMPARE(record(quotes.first()),
             QByteArray("000100;1.38710;1.38711;1.38709;1.38711;0;0.00000;0\n"));

    QCOMPARE(
        import("eurusd_1min.txt", words("--decimals 5 --date-format dd.MM.yy --time-format hh:mm")),
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

    QCOMPARE(import("nzdusd_1sec.txt", words("--decimals 5 --timeframe 1")), succeeded());
    Tree expected;
    addDayFiles(expected, quotes, "_1.iss");
    addDayFiles(expected, minutesOf(quotes), "_60");
    QCOMPARE(expected.keys(),
             QStringList({QStringLiteral("20140504_1.iss"), QStringLiteral("20140504_60"),
                          QStringLiteral("20140505_1.iss"), QStringLiteral("20140505_60")}));
    QCOMPARE(stored(), expected);
}

QTEST_GUILESS_MAIN(TadataMarketDataTest)
#include "tst_tadatamarketdata.moc"
