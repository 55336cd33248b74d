// SPDX-License-Identifier: MIT
#include "dealsexport.h"

#include "exportjob.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <vexdesk/database/exception.h>
#include <vexdesk/securitydirectory.h>
#include <vexdesk/terminal/core.h>
#include <vexdesk/terminal/deals.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QTemporaryDir>
#include <QtCore/QTimeZone>
#include <QtTest/QTest>

#include <atomic>
#include <limits>
#include <memory>
#include <mutex>
#include <thread>

using vexdesk::Deal;
using vexdesk::FieldType;

namespace {

constexpr int nord = 1;
constexpr int derivatives = 5;
constexpr int board = 7;
constexpr long long alfa = 4000000001;

const QDate today(2024, 1, 15);

// The venue's clock as if it were UTC.
datetime at(const QDate& day, const QTime& time)
{
    return datetime(QDateTime(day, time, Qt::UTC).toMSecsSinceEpoch());
}

datetime at(int hour, int minute, int second = 0, int msec = 0)
{
    return at(today, QTime(hour, minute, second, msec));
}

Deal dealAt(const datetime& moment, const char* price, long long quantity = 1)
{
    Deal deal;
    deal.stockId = nord;
    deal.boardId = board;
    deal.securityId = alfa;
    deal.moment = moment;
    deal.price = decimal(QString::fromLatin1(price));
    deal.quantity = quantity;
    return deal;
}

ExportDetails detailsOfAlfa()
{
    ExportDetails details;
    details.stockId = nord;
    details.boardId = board;
    details.securityId = alfa;
    details.timeframe = 60;
    details.separator = QStringLiteral(";");
    details.dateFormat = QStringLiteral("yyyyMMdd");
    details.timeFormat = QStringLiteral("hhmmss");
    details.lineFormat = QStringLiteral("DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,VAL,OPEN_INT");
    details.dateFrom = today;
    details.dateTo = today;
    return details;
}

vexdesk::ReferenceData referenceData()
{
    vexdesk::ReferenceData data;
    data.stocks = {{nord, QStringLiteral("NORD"), QString()},
                   {derivatives, QStringLiteral("FUT"), QString()}};
    data.boards = {{QStringLiteral("NORD"), board, QStringLiteral("MAIN"), QString(), 0},
                   {QStringLiteral("FUT"), board, QStringLiteral("MAIN"), QString(), 0}};
    data.securities = {{QStringLiteral("NORD"), QStringLiteral("MAIN"), alfa,
                        QStringLiteral("ALFA"), QString(), 2},
                       {QStringLiteral("FUT"), QStringLiteral("MAIN"), alfa + 1,
                        QStringLiteral("FALFA"), QString(), 2}};
    return data;
}

} // namespace

class TestDealsExport final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void writesEachBarOnceAndTheLastOneAfterTheScan();
    void writesNothingWithoutDeals();
    void takesAbsentFieldsForNothing();
    void leavesOtherSeriesOut();
    void leavesOtherDaysOut();
    void datesADealByTheVenuesClock_data();
    void datesADealByTheVenuesClock();
    void anAbsentMomentIsTheFirstDayOfAll();
    void stampsAFractionOfASecondWithTheNextSecond();
    void foldsAnEarlierDealIntoTheOpenBar();
    void findsDealsOfTheVenueWithItsOwnId();
    void skipsASecurityThatTheDirectoryDoesNotKnow_data();
    void skipsASecurityThatTheDirectoryDoesNotKnow();
    void skipsWhereThereIsNoTableOfDeals();
    void skipsWhereThereIsNoRegister();
    void readsOtherTypesOfColumns();
    void readsAMomentThatIsText();
    void anAbsentMomentThatIsTextIsTheFirstDayOfAll();
    void clampsOpenInterest_data();
    void clampsOpenInterest();
    void throwsForATypeThatDealsDoNotHave_data();
    void throwsForATypeThatDealsDoNotHave();
    void takesAbsentFieldsOfAnyTypeForNothing();
    void doesNotLookAtTheFieldsOfOtherSeries();
    void throwsForAKeyThatDoesNotFit_data();
    void throwsForAKeyThatDoesNotFit();
    void tellsItsProgressEveryThousandRows();
    void goesOnFromTheLastProgressOfTheDays();
    void followsTheStoredDays();
    void scansOnceForEachDayFromTodayOn();
    void scansNoMoreWhenTheDiskIsFull();
    void holdsTheTableWhileItScans();
    void scansWhileDealsArrive();

private:
    Table* deals() { return vexdesk::dealsTable(*m_core->database()); }
    Table* dealsWith(const QString& column, FieldType type);
    void add(const Deal& deal);
    QByteArray run(const ExportDetails& details = detailsOfAlfa(), const QDate& day = today,
                   int start = 0);
    bool isUnlocked();

    std::unique_ptr<vexdesk::Core> m_core;
    QList<int> m_progress;
};

void TestDealsExport::init()
{
    testsupport::failOnStrayWarnings();
    vexdesk::ReferenceData::install(referenceData());
    m_core = std::make_unique<vexdesk::Core>();
    m_progress.clear();
}

void TestDealsExport::cleanup()
{
    m_core.reset();
}

// The table of deals with another type of one of its columns.
Table* TestDealsExport::dealsWith(const QString& column, FieldType type)
{
    QList<Table::Column> columns = vexdesk::dealsColumns();
    for (Table::Column& candidate : columns) {
        if (candidate.name == column)
            candidate.type = type;
    }
    return m_core->database()->createTable(vexdesk::dealsTableName(), columns);
}

void TestDealsExport::add(const Deal& deal)
{
    Table* const table = deals();
    const Record row = vexdesk::DealWriter(table).row(deal);
    const std::lock_guard lock(*table);
    table->insert(row);
}

QByteArray TestDealsExport::run(const ExportDetails& details, const QDate& day, int start)
{
    QByteArray written;
    tadata::BarExporter exporter(details, [&written](QByteArrayView lines) { written += lines; });
    tadata::exportDeals(details, day, {start, [this](int percent) { m_progress.append(percent); }},
                        exporter);
    exporter.finish();
    return written;
}

bool TestDealsExport::isUnlocked()
{
    // From another thread: a lock does not let its own thread in twice.
    bool unlocked = false;
    std::thread([this, &unlocked] {
        unlocked = deals()->try_lock();
        if (unlocked)
            deals()->unlock();
    }).join();
    return unlocked;
}

void TestDealsExport::writesEachBarOnceAndTheLastOneAfterTheScan()
{
    Deal first = dealAt(at(10, 0, 1), "120.50", 3);
    first.value = decimal(QStringLiteral("361.50"));
    first.openInterest = 10;
    add(first);
    Deal second = dealAt(at(10, 0, 59), "121.00", 2);
    second.value = decimal(QStringLiteral("242.00"));
    second.openInterest = 12;
    add(second);
    add(dealAt(at(10, 1, 0), "119.00", 1));
    add(dealAt(at(10, 1, 0, 1), "120.00", 5));
    QCOMPARE(run(), QByteArray("20240115;100100;120.50;121.00;119.00;119.00;6;603.50;0\n"
                               "20240115;100200;120.00;120.00;120.00;120.00;5;0;0\n"));
    QVERIFY(isUnlocked());
}

void TestDealsExport::writesNothingWithoutDeals()
{
    QVERIFY(deals());
    QCOMPARE(run(), QByteArray());
    QVERIFY(m_progress.isEmpty());
}

void TestDealsExport::takesAbsentFieldsForNothing()
{
    Deal deal;
    deal.stockId = nord;
    deal.boardId = board;
    deal.securityId = alfa;
    deal.moment = at(10, 0);
    add(deal);
    QCOMPARE(run(), QByteArray("20240115;100000;0;0;0;0;0;0;0\n"));
}

void TestDealsExport::leavesOtherSeriesOut()
{
    Deal other = dealAt(at(10, 0), "1");
    other.stockId = nord + 1;
    add(other);
    other = dealAt(at(10, 0), "2");
    other.boardId = board + 1;
    add(other);
    other = dealAt(at(10, 0), "3");
    other.securityId = alfa + 1;
    add(other);
    other.securityId = static_cast<int>(alfa);
    add(other);
    other.securityId.reset();
    add(other);
    QCOMPARE(run(), QByteArray());
    add(dealAt(at(10, 0), "4"));
    QCOMPARE(run(), QByteArray("20240115;100000;4;4;4;4;1;0;0\n"));
}

void TestDealsExport::leavesOtherDaysOut()
{
    add(dealAt(at(today.addDays(-1), QTime(23, 59, 59, 999)), "1"));
    add(dealAt(at(today.addDays(1), QTime(0, 0)), "2"));
    add(dealAt(datetime(std::numeric_limits<qint64>::min()), "3"));
    add(dealAt(datetime(std::numeric_limits<qint64>::max()), "4"));
    QCOMPARE(run(), QByteArray());

    add(dealAt(at(0, 0), "5"));
    add(dealAt(at(23, 59, 59, 999), "6"));
    // The last interval of a day ends at the midnight of the next one.
    QCOMPARE(run(), QByteArray("20240115;000000;5;5;5;5;1;0;0\n"
                               "20240116;000000;6;6;6;6;1;0;0\n"));
}

void TestDealsExport::datesADealByTheVenuesClock_data()
{
    QTest::addColumn<QByteArray>("zone");
    for (const char* zone : {"UTC", "Europe/Moscow", "America/New_York", "Pacific/Kiritimati"})
        QTest::newRow(zone) << QByteArray(zone);
}

void TestDealsExport::datesADealByTheVenuesClock()
{
    QFETCH(const QByteArray, zone);
    const QByteArray before = qgetenv("TZ");
    qputenv("TZ", zone);
    tzset();
    add(dealAt(datetime(1705276800000), "1")); // 2024-01-15 00:00 UTC
    add(dealAt(datetime(1705363199999), "2"));
    add(dealAt(datetime(1705363200000), "3"));
    const QByteArray written = run();
    before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
    tzset();
    QCOMPARE(written, QByteArray("20240115;000000;1;1;1;1;1;0;0\n"
                                 "20240116;000000;2;2;2;2;1;0;0\n"));
}

void TestDealsExport::anAbsentMomentIsTheFirstDayOfAll()
{
    Deal deal = dealAt(datetime(), "7");
    deal.moment.reset();
    add(deal);
    QCOMPARE(run(), QByteArray());
    QCOMPARE(run(detailsOfAlfa(), QDate(1970, 1, 1)),
             QByteArray("19700101;000000;7;7;7;7;1;0;0\n"));
}

void TestDealsExport::stampsAFractionOfASecondWithTheNextSecond()
{
    add(dealAt(at(10, 0, 0, 500), "1"));
    ExportDetails details = detailsOfAlfa();
    details.timeframe = 1;
    QCOMPARE(run(details), QByteArray("20240115;100001;1;1;1;1;1;0;0\n"));
}

void TestDealsExport::foldsAnEarlierDealIntoTheOpenBar()
{
    add(dealAt(at(10, 5), "2"));
    add(dealAt(at(9, 0), "9"));
    add(dealAt(at(10, 5, 1), "3"));
    QCOMPARE(run(), QByteArray("20240115;100500;2;9;2;9;2;0;0\n"
                               "20240115;100600;3;3;3;3;1;0;0\n"));
}

// The register has the securities of this venue under another id, the deals have its own.
void TestDealsExport::findsDealsOfTheVenueWithItsOwnId()
{
    Deal deal = dealAt(at(10, 0), "5");
    deal.stockId = derivatives;
    deal.securityId = alfa + 1;
    add(deal);
    deal.stockId = nord;
    deal.price = decimal(QStringLiteral("1"));
    add(deal);
    ExportDetails details = detailsOfAlfa();
    details.stockId = derivatives;
    details.securityId = alfa + 1;
    QCOMPARE(run(details), QByteArray("20240115;100000;5;5;5;5;1;0;0\n"));
}

void TestDealsExport::skipsASecurityThatTheDirectoryDoesNotKnow_data()
{
    QTest::addColumn<int>("stockId");
    QTest::addColumn<int>("boardId");
    QTest::addColumn<qint64>("securityId");
    QTest::newRow("stock") << nord + 1 << board << qint64(alfa);
    QTest::newRow("board") << nord << board + 1 << qint64(alfa);
    QTest::newRow("security") << nord << board << qint64(alfa + 2);
    QTest::newRow("nothing") << 0 << 0 << qint64(0);
    QTest::newRow("unknown stock") << -1 << 0 << qint64(0);
}

void TestDealsExport::skipsASecurityThatTheDirectoryDoesNotKnow()
{
    QFETCH(const int, stockId);
    QFETCH(const int, boardId);
    QFETCH(const qint64, securityId);
    Deal deal = dealAt(at(10, 0), "5");
    deal.stockId = stockId;
    deal.boardId = boardId;
    deal.securityId = securityId;
    add(deal);
    ExportDetails details = detailsOfAlfa();
    details.stockId = stockId;
    details.boardId = boardId;
    details.securityId = securityId;
    QCOMPARE(run(details), QByteArray());
}

void TestDealsExport::skipsWhereThereIsNoTableOfDeals()
{
    QCOMPARE(run(), QByteArray());
    m_core.reset();
    QCOMPARE(run(), QByteArray());
}

void TestDealsExport::skipsWhereThereIsNoRegister()
{
    vexdesk::ReferenceData::install({});
    QVERIFY(!SecurityDirectory::i().table());
    add(dealAt(at(10, 0), "5"));
    QCOMPARE(run(), QByteArray());
}

void TestDealsExport::readsOtherTypesOfColumns()
{
    QList<Table::Column> columns = vexdesk::dealsColumns();
    for (Table::Column& column : columns) {
        if (column.name == u"stock_id" || column.name == u"sec_id")
            column.type = FieldType::Code;
        if (column.name == u"board_id")
            column.type = FieldType::Int64;
        if (column.name == u"quantity" || column.name == u"open_interest")
            column.type = FieldType::Int32;
    }
    std::reverse(columns.begin(), columns.end());
    m_core->database()->createTable(vexdesk::dealsTableName(), columns);
    Deal deal = dealAt(at(10, 0), "5", -3);
    deal.openInterest = 8;
    add(deal);
    QCOMPARE(run(), QByteArray("20240115;100000;5;5;5;5;-3;0;8\n"));
}

void TestDealsExport::readsAMomentThatIsText()
{
    for (const FieldType type : {FieldType::Code, FieldType::Text}) {
        m_core = nullptr;
        m_core = std::make_unique<vexdesk::Core>();
        QVERIFY(dealsWith(QStringLiteral("moment"), type));
        add(dealAt(at(10, 0, 0, 250), "5"));
        QCOMPARE(run(), QByteArray("20240115;100100;5;5;5;5;1;0;0\n"));
    }
}

// As in a column of moments: the first day of all.
void TestDealsExport::anAbsentMomentThatIsTextIsTheFirstDayOfAll()
{
    for (const FieldType type : {FieldType::Code, FieldType::Text}) {
        m_core = nullptr;
        m_core = std::make_unique<vexdesk::Core>();
        QVERIFY(dealsWith(QStringLiteral("moment"), type));
        Deal deal = dealAt(at(10, 0), "5");
        deal.moment.reset();
        add(deal);
        QCOMPARE(run(), QByteArray());
        QCOMPARE(run(detailsOfAlfa(), QDate(1970, 1, 1)),
                 QByteArray("19700101;000000;5;5;5;5;1;0;0\n"));
    }
}

void TestDealsExport::clampsOpenInterest_data()
{
    QTest::addColumn<qint64>("interest");
    QTest::addColumn<QByteArray>("written");
    QTest::newRow("fits") << qint64(2147483647) << QByteArray("2147483647");
    QTest::newRow("above") << qint64(2147483648) << QByteArray("2147483647");
    QTest::newRow("below") << qint64(-3000000000) << QByteArray("-2147483648");
}

void TestDealsExport::clampsOpenInterest()
{
    QFETCH(const qint64, interest);
    QFETCH(const QByteArray, written);
    Deal deal = dealAt(at(10, 0), "5");
    deal.openInterest = interest;
    deal.quantity = 5000000000;
    add(deal);
    QCOMPARE(run(), QByteArray("20240115;100000;5;5;5;5;5000000000;0;" + written + '\n'));
}

void TestDealsExport::throwsForATypeThatDealsDoNotHave_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<int>("type");
    const auto rows = [](const char* column, std::initializer_list<FieldType> types) {
        for (const FieldType type : types) {
            QTest::addRow("%s %d", column, static_cast<int>(type))
                << QString::fromLatin1(column) << static_cast<int>(type);
        }
    };
    using enum FieldType;
    rows("moment", {Int32, Int64, Double, Decimal, XDecimal});
    rows("price", {Int32, Int64, Double, XDecimal, Code, DateTime, Text});
    rows("value", {Int32, Int64, Double, XDecimal, Code, DateTime, Text});
    rows("quantity", {Double, Decimal, XDecimal, Code, DateTime, Text});
    rows("open_interest", {Double, Decimal, XDecimal, Code, DateTime, Text});
}

void TestDealsExport::throwsForATypeThatDealsDoNotHave()
{
    QFETCH(const QString, column);
    QFETCH(const int, type);
    Table* const table = dealsWith(column, static_cast<FieldType>(type));
    Deal deal = dealAt(at(10, 0), "5");
    deal.openInterest.reset();
    deal.moment.reset();
    deal.price.reset();
    deal.quantity.reset();
    Record row = vexdesk::DealWriter(table).row(deal);
    if (column != u"moment")
        row.field(table->columnIndex(QStringLiteral("moment"))) = at(10, 0);
    Field field = row.field(table->columnIndex(column));
    if (type == static_cast<int>(FieldType::DateTime))
        field = at(10, 0);
    else
        field = 1;
    {
        const std::lock_guard lock(*table);
        table->insert(row);
    }
    QString message;
    try {
        run();
    } catch (const Exception& exception) {
        message = exception.message();
    }
    QCOMPARE(message, QStringLiteral("Incorrect type conversion."));
    QVERIFY(isUnlocked());
}

void TestDealsExport::takesAbsentFieldsOfAnyTypeForNothing()
{
    for (const char* column : {"moment", "price", "value", "quantity", "open_interest"}) {
        m_core = nullptr;
        m_core = std::make_unique<vexdesk::Core>();
        QVERIFY(dealsWith(QString::fromLatin1(column), FieldType::Double));
        Deal deal;
        deal.stockId = nord;
        deal.boardId = board;
        deal.securityId = alfa;
        add(deal);
        QCOMPARE(run(detailsOfAlfa(), QDate(1970, 1, 1)),
                 QByteArray("19700101;000000;0;0;0;0;0;0;0\n"));
    }
}

void TestDealsExport::doesNotLookAtTheFieldsOfOtherSeries()
{
    QVERIFY(dealsWith(QStringLiteral("quantity"), FieldType::Text));
    Deal other = dealAt(at(10, 0), "5");
    other.boardId = board + 1;
    add(other);
    QCOMPARE(run(), QByteArray());
}

void TestDealsExport::throwsForAKeyThatDoesNotFit_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("message");
    QTest::newRow("a moment for the venue")
        << QStringLiteral("stock_id") << static_cast<int>(FieldType::DateTime)
        << QStringLiteral("Can't convert from %1 to %2");
    QTest::newRow("a number that is too large")
        << QStringLiteral("sec_id") << static_cast<int>(FieldType::Int32)
        << QStringLiteral("Can't convert from '%1'' to %2");
}

void TestDealsExport::throwsForAKeyThatDoesNotFit()
{
    QFETCH(const QString, column);
    QFETCH(const int, type);
    QFETCH(QString, message);
    QVERIFY(dealsWith(column, static_cast<FieldType>(type)));
    const QString to = vexdesk::typeName(static_cast<FieldType>(type));
    message = message.contains(QStringLiteral("''"))
                  ? message.arg(QString::number(alfa), to)
                  : message.arg(vexdesk::typeName(FieldType::Int32), to);
    QString thrown;
    try {
        run();
    } catch (const Exception& exception) {
        thrown = exception.message();
    }
    QCOMPARE(thrown, message);
    QVERIFY(isUnlocked());
}

void TestDealsExport::tellsItsProgressEveryThousandRows()
{
    auto addTo = [this, i = 0](int count) mutable {
        for (; i < count; ++i) {
            Deal deal = dealAt(at(10, 0), "5");
            // Rows that are left out count too.
            deal.boardId = i % 10 == 0 ? board : board + 1;
            add(deal);
        }
    };
    addTo(999);
    QVERIFY(!run().isEmpty());
    QCOMPARE(m_progress, QList<int>());
    addTo(2500);
    QVERIFY(!run(detailsOfAlfa(), today, -1).isEmpty());
    // 1000 / 2500 of the way from -1 to 100, and twice that.
    QCOMPARE(m_progress, QList<int>({39, 79}));
    m_progress.clear();
    QVERIFY(!run(detailsOfAlfa(), today, 50).isEmpty());
    QCOMPARE(m_progress, QList<int>({70, 90}));
}

void TestDealsExport::goesOnFromTheLastProgressOfTheDays()
{
    for (int i = 0; i < 2500; ++i)
        add(dealAt(at(10, 0), "5"));
    const QTemporaryDir dir;
    ExportDetails details = detailsOfAlfa();
    details.outputPath = dir.filePath(QStringLiteral("out.txt"));
    details.dateFrom = today.addDays(-1);
    QList<int> progress;
    const QString error = tadata::exportBars(
                              details, {today, -1}, [&dir] { return QDir(dir.path()); },
                              [&progress](int percent) { progress.append(percent); })
                              .outcome.message();
    QVERIFY2(error.isNull(), qPrintable(error));
    // One past day of two; the scan goes on from its 50.
    QCOMPARE(progress, QList<int>({50, 70, 90, 100}));
}

void TestDealsExport::followsTheStoredDays()
{
    add(dealAt(at(10, 0, 30), "7.5"));
    const QTemporaryDir dir;
    testsupport::writeFile(dir.filePath(QStringLiteral("20240114_60.iss")),
                           "100000;1;2;0;1;5;0;0\n");
    testsupport::writeFile(dir.filePath(QStringLiteral("20240115_60.iss")),
                           "100000;9;9;9;9;9;9;9\n");
    ExportDetails details = detailsOfAlfa();
    details.outputPath = dir.filePath(QStringLiteral("out.txt"));
    details.dateFrom = today.addDays(-1);
    const QString error = tadata::exportBars(
                              details, {today, 0}, [&dir] { return QDir(dir.path()); }, [](int) {})
                              .outcome.message();
    QVERIFY2(error.isNull(), qPrintable(error));
    QCOMPARE(testsupport::readFile(details.outputPath),
             QByteArray("\xef\xbb\xbf"
                        "20240114;100000;1;2;0;1;5;0;0\n"
                        "20240115;100100;7.5;7.5;7.5;7.5;1;0;0\n"));
}

// Whoever asks for days to come gets today's deals for each of them.
void TestDealsExport::scansOnceForEachDayFromTodayOn()
{
    add(dealAt(at(10, 0), "5"));
    const QTemporaryDir dir;
    testsupport::writeFile(dir.filePath(QStringLiteral("20240116_60.iss")),
                           "100000;9;9;9;9;9;9;9\n");
    ExportDetails details = detailsOfAlfa();
    details.outputPath = dir.filePath(QStringLiteral("out.txt"));
    details.lineFormat = QStringLiteral("OPEN");
    details.dateTo = today.addDays(2);
    QList<int> progress;
    const auto result = tadata::exportBars(
        details, {today, 0}, [&dir] { return QDir(dir.path()); },
        [&progress](int percent) { progress.append(percent); });
    QVERIFY(result.outcome);
    QCOMPARE(testsupport::readFile(details.outputPath), QByteArray("\xef\xbb\xbf"
                                                                   "5\n5\n5\n"));
    QCOMPARE(progress, QList<int>({100}));
}

void TestDealsExport::scansNoMoreWhenTheDiskIsFull()
{
    for (int i = 0; i < 1000; ++i)
        add(dealAt(at(10, 0), "5"));
    ExportDetails details = detailsOfAlfa();
    details.outputPath = QStringLiteral("/dev/full");
    if (!QFile::exists(details.outputPath))
        QSKIP("there is no file that is always full here");
    details.dateTo = today.addDays(2);
    QList<int> progress;
    const auto result = tadata::exportBars(
        details, {today, 0}, [] { return QDir(); },
        [&progress](int percent) { progress.append(percent); });
    QVERIFY(!result.outcome);
    QCOMPARE(progress, QList<int>({100}));
}

void TestDealsExport::holdsTheTableWhileItScans()
{
    for (int i = 0; i < 1000; ++i)
        add(dealAt(at(10, 0), "5"));
    bool wasLocked = false;
    const ExportDetails details = detailsOfAlfa();
    tadata::BarExporter exporter(details, [](QByteArrayView) {});
    tadata::exportDeals(details, today, {0, [this, &wasLocked](int) { wasLocked = !isUnlocked(); }},
                        exporter);
    QVERIFY(wasLocked);
    QVERIFY(isUnlocked());
}

// Each scan sees some first part of what arrives, whole.
void TestDealsExport::scansWhileDealsArrive()
{
    constexpr int count = 20000;
    Table* const table = deals();
    std::atomic<bool> started = false;
    std::thread feed([this, table, &started] {
        const vexdesk::DealWriter writer(table);
        for (int i = 0; i < count; ++i) {
            m_core->rawQueue()->post(table, writer.row(dealAt(at(10, 0, 0, 1), "5")));
            started = true;
        }
    });
    while (!started)
        std::this_thread::yield();
    ExportDetails details = detailsOfAlfa();
    details.lineFormat = QStringLiteral("VOL");
    int before = 0;
    for (int scan = 0; scan < 50; ++scan) {
        const int volume = run(details).trimmed().toInt();
        QVERIFY(volume >= before && volume <= count);
        before = volume;
    }
    feed.join();
    QCOMPARE(run(details), QByteArray::number(count) + '\n');
}

QTEST_GUILESS_MAIN(TestDealsExport)
#include "tst_dealsexport.moc"
