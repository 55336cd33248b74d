// SPDX-License-Identifier: MIT
// What is shown of the health of a store, without a window.

#include "calendarmodel.h"
#include "dayremarks.h"
#include "healthbook.h"
#include "illstore.h"
#include "remarksmodel.h"
#include "seriesmodel.h"

#include "support/dayfiles.h"
#include "support/eventually.h"
#include "support/filetree.h"
#include "support/hold.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <QtCore/QLocale>
#include <QtCore/QTemporaryDir>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <cerrno>
#include <memory>

using tadata::HealthBook;
using tadata::SeriesDigest;
using tadata::SharedDigest;
using testsupport::alfa;
using testsupport::brokenDay;
using testsupport::gapDay;
using testsupport::missingDay;
using testsupport::vega;
using vexdesk::ChartMark;

namespace {

SharedDigest digestWith(const QString& series, int timeframe, double share, int gaps)
{
    SeriesDigest digest;
    digest.series = series;
    digest.timeframe = timeframe;
    digest.share = share;
    digest.coverage = QString::number(share);
    digest.sums.gaps = gaps;
    digest.first = digest.last = QDate(2024, 1, 1);
    return std::make_shared<const SeriesDigest>(digest);
}

QStringList namesIn(const SeriesModel& model)
{
    QStringList names;
    for (int row = 0; row < model.rowCount(); ++row)
        names.append(model.index(row, SeriesModel::Series).data().toString());
    return names;
}

} // namespace

class TestHealth final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void digestHoldsWhatWasFound();
    void remarksSayWhatIsWrong();
    void brokerListHasTheDaysThatLackBars();
    void aYoungSeriesHasTooFewDaysToJudge();
    void aMissingDayIsNeverCoveredInFull();
    void seriesAreShown();
    void datesAreThoseOfTheLanguage();
    void seriesAreSorted_data();
    void seriesAreSorted();
    void seriesAreFiltered();
    void calendarShowsEachDayOnce();
    void calendarKnowsTheStateOfADay();
    void calendarGoesFromFaultToFault();
    void remarksAreShown();
    void bookFollowsChanges();
    void bookFollowsCommandsAtOnce();
    void bookFollowsCommandsDuringALook();
    void bookReadsOnlyWhatWasAskedFor();
    void bookForgetsWhatIsGone();
    void bookTriesAgainWhatCouldNotBeRead();
    void bookNamesADirectoryThatCannotBeListed();
    void bookGoesWhileItReads();

private:
    QDir root() const { return QDir(m_dir->filePath(QStringLiteral("store"))); }
    /// A book that has looked at the whole store.
    void open();
    SharedDigest digest(const QString& series) const { return m_book->digest(series, 60); }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<HealthBook> m_book;
};

void TestHealth::init()
{
    testsupport::failOnStrayWarnings();
    QLocale::setDefault(QLocale::c()); // numbers and dates
    m_dir = std::make_unique<QTemporaryDir>();
    testsupport::makeIllStore(root());
}

void TestHealth::cleanup()
{
    m_book.reset();
    m_dir.reset();
}

void TestHealth::open()
{
    m_book = std::make_unique<HealthBook>(root());
    m_book->setPauses(std::chrono::milliseconds(20), 0);
    m_book->followAll(true);
    EVENTUALLY(m_book->isKnown());
    QCOMPARE(m_book->series().size(), 2);
}

void TestHealth::digestHoldsWhatWasFound()
{
    open();
    const SharedDigest whole = digest(alfa);
    QVERIFY(whole && !whole->isWrong && whole->remarkable.empty());
    QCOMPARE(whole->coverage, QStringLiteral("1.0000"));
    QCOMPARE(whole->bars, qint64(65 * 60));
    const SharedDigest ill = digest(vega);
    QVERIFY(ill && ill->isWrong);
    QCOMPARE(ill->missingDays, QList<QDate>{missingDay});
    QCOMPARE(ill->sums.gaps, qint64(1));
    QCOMPARE(ill->sums.badLines, qint64(1));
    QCOMPARE(ill->brokenLines(), qint64(1));
    QVERIFY(ill->share < 1);
    QCOMPARE(ill->remarkable.size(), size_t(2));
    const tadata::DayMark* const mark = ill->mark(gapDay);
    QVERIFY(mark);
    QCOMPARE(mark->day(), gapDay);
    QCOMPARE(mark->bars, 50);
    QCOMPARE(mark->expected, 60);
    QCOMPARE(mark->lacking, 10);
    QVERIFY(!ill->mark(missingDay));
    QVERIFY(!ill->remarks(gapDay.addDays(1)));
    QVERIFY(!m_book->digest(vega, 1));
}

void TestHealth::remarksSayWhatIsWrong()
{
    open();
    const auto ofGap = tadata::remarksOn(*digest(vega), gapDay);
    QCOMPARE(ofGap.size(), size_t(1));
    // Bars are stamped with their ends: the stretch begins where the first missing one does.
    const ChartMark gap{ChartMark::Kind::Warning, gapDay, QTime(10, 19), QTime(10, 29),
                        QStringLiteral("Нет баров с 10:20 по 10:29 (10)")};
    QVERIFY2(ofGap[0] == gap, qPrintable(ofGap[0].text + ofGap[0].from.toString()));
    const auto ofBroken = tadata::remarksOn(*digest(vega), brokenDay);
    QCOMPARE(ofBroken.size(), size_t(1));
    QVERIFY(ofBroken[0].kind == ChartMark::Kind::Fault);
    QCOMPARE(ofBroken[0].text, QStringLiteral("Не записи баров: строки 2"));
    QVERIFY(!ofBroken[0].from.isValid());
    const auto ofMissing = tadata::remarksOn(*digest(vega), missingDay);
    QCOMPARE(ofMissing.size(), size_t(1));
    QVERIFY(tadata::remarksOn(*digest(alfa), gapDay).empty());
    QVERIFY(tadata::dayInWords(*digest(vega), gapDay)
                .startsWith(QStringLiteral("14.02.2024; баров: 50, обычно 60, покрытие 83.3 %; ")));
    QCOMPARE(tadata::dayInWords(*digest(vega), QDate(2024, 2, 17)),
             QStringLiteral("17.02.2024; ничего не хранится"));
}

void TestHealth::brokerListHasTheDaysThatLackBars()
{
    open();
    QCOMPARE(tadata::brokerList(m_book->series()),
             QByteArray("NORD/MAIN/VEGA 60 2024-02-14\nNORD/MAIN/VEGA 60 2024-03-05\n"));
}

void TestHealth::aYoungSeriesHasTooFewDaysToJudge()
{
    const QDir young(m_dir->filePath(QStringLiteral("young")));
    const QDate monday(2024, 1, 15);
    testsupport::healDay(young, monday);
    const QByteArray bars =
        testsupport::readFile(young.filePath(testsupport::dayPath(vega, monday)));
    for (const int day : {0, 1, 3})
        testsupport::writeFile(young.filePath(testsupport::dayPath(alfa, monday.addDays(day))),
                               bars);
    for (const int day : {2, 3})
        testsupport::healDay(young, monday.addDays(day));
    testsupport::writeFile(young.filePath(vega + u'/' + testsupport::dayFile(monday, 1)), bars);
    HealthBook book(young);
    book.followAll(true);
    EVENTUALLY(book.isKnown());
    const SharedDigest digest = book.digest(vega, 60);
    QVERIFY(digest);
    QCOMPARE(digest->missingDays, QList<QDate>{QDate(2024, 1, 16)});
    QCOMPARE(tadata::coverageText(*digest), QStringLiteral("мало данных"));
    QCOMPARE(tadata::dayInWords(*digest, monday),
             QStringLiteral("15.01.2024; баров: 60, для оценки покрытия мало данных"));
    QCOMPARE(tadata::brokerList({digest}), QByteArray("NORD/MAIN/VEGA 60 2024-01-16\n"));
    // Seconds have no usual times, however many are stored.
    const SharedDigest seconds = book.digest(vega, 1);
    QVERIFY(seconds);
    QCOMPARE(tadata::coverageText(*seconds), QStringLiteral("не оценивается"));
    QCOMPARE(tadata::dayInWords(*seconds, monday), QStringLiteral("15.01.2024; баров: 60"));
}

// Of a weekday that is seldom stored no bars are expected, and the share rounds to a whole.
void TestHealth::aMissingDayIsNeverCoveredInFull()
{
    for (const QDate& day : {gapDay, brokenDay, missingDay})
        testsupport::healDay(root(), day);
    const QDate saturday(2024, 1, 20);
    testsupport::writeFile(root().filePath(testsupport::dayPath(alfa, saturday)),
                           testsupport::barLines(QTime(10, 0), 60));
    open();
    QCOMPARE(digest(vega)->missingDays, QList<QDate>{saturday});
    QCOMPARE(tadata::coverageText(*digest(vega)), QStringLiteral("менее 100 %"));
    QVERIFY(digest(vega)->share < digest(alfa)->share);
    QCOMPARE(tadata::coverageText(*digest(alfa)), QStringLiteral("100.0 %"));
}

void TestHealth::seriesAreShown()
{
    open();
    SeriesModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setSeries(m_book->series());
    QCOMPARE(namesIn(model), QStringList({alfa, vega}));
    const auto text = [&model](int column) { return model.index(1, column).data().toString(); };
    QCOMPARE(text(SeriesModel::Bars), QStringLiteral("минуты"));
    QCOMPARE(text(SeriesModel::First), QStringLiteral("01.01.2024"));
    QCOMPARE(text(SeriesModel::Last), QStringLiteral("29.03.2024"));
    QCOMPARE(text(SeriesModel::Gaps), QStringLiteral("1"));
    QCOMPARE(text(SeriesModel::MissingDays), QStringLiteral("1"));
    QCOMPARE(text(SeriesModel::Broken), QStringLiteral("1"));
    QCOMPARE(text(SeriesModel::Jumps), QString());
    QCOMPARE(model.rowOf(vega, 60), 1);
    QCOMPARE(model.rowOf(vega, 1), -1);
    for (int column = 0; column < SeriesModel::ColumnCount; ++column) {
        QVERIFY(!model.headerData(column, Qt::Horizontal).toString().isEmpty());
        QVERIFY(!model.headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString().isEmpty());
    }
}

void TestHealth::datesAreThoseOfTheLanguage()
{
    open();
    QLocale::setDefault(QLocale(QStringLiteral("en_GB")));
    SeriesModel model;
    model.setSeries(m_book->series());
    QCOMPARE(model.index(0, SeriesModel::Last).data().toString(), QStringLiteral("29/03/2024"));
    QVERIFY(tadata::dayInWords(*digest(vega), gapDay).startsWith(QStringLiteral("14/02/2024; ")));
}

void TestHealth::seriesAreSorted_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("isAscending");
    QTest::addColumn<QString>("order");
    QTest::newRow("names") << int(SeriesModel::Series) << true << "a b c";
    QTest::newRow("names backwards") << int(SeriesModel::Series) << false << "c b a";
    QTest::newRow("coverage, numbers and no texts")
        << int(SeriesModel::Coverage) << true << "b c a";
    QTest::newRow("gaps, most first") << int(SeriesModel::Gaps) << false << "a b c";
    QTest::newRow("equal ones stay in the order of names")
        << int(SeriesModel::Jumps) << false << "a b c";
}

void TestHealth::seriesAreSorted()
{
    QFETCH(int, column);
    QFETCH(bool, isAscending);
    QFETCH(QString, order);
    SeriesModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setSeries({digestWith(QStringLiteral("a"), 60, 1, 10),
                     digestWith(QStringLiteral("b"), 60, 0.09, 9),
                     digestWith(QStringLiteral("c"), 60, 0.5, 1)});
    model.sort(column, isAscending ? Qt::AscendingOrder : Qt::DescendingOrder);
    QCOMPARE(namesIn(model).join(u' '), order);
}

void TestHealth::seriesAreFiltered()
{
    SeriesModel model;
    model.setSeries({digestWith(QStringLiteral("NORD/MAIN/ALFA"), 60, 1, 0),
                     digestWith(QStringLiteral("NORD/SPOT/VEGA"), 60, 1, 0),
                     digestWith(QStringLiteral("EAST/MAIN/VEGA"), 60, 1, 0)});
    model.setFilter(QStringLiteral("vega  nord"));
    QCOMPARE(namesIn(model), QStringList{QStringLiteral("NORD/SPOT/VEGA")});
    QCOMPARE(model.shown().size(), 1);
    QCOMPARE(model.allCount(), 3);
    model.setFilter(QStringLiteral("nothing"));
    QCOMPARE(model.rowCount(), 0);
    model.setFilter(QString());
    QCOMPARE(model.rowCount(), 3);
}

void TestHealth::calendarShowsEachDayOnce()
{
    SeriesDigest digest;
    digest.first = QDate(2019, 12, 30);
    digest.last = QDate(2024, 12, 31);
    CalendarModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setSeries(std::make_shared<const SeriesDigest>(digest));
    QSet<QDate> seen;
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int column = 0; column < model.columnCount(); ++column) {
            const QDate day = model.dayAt(model.index(row, column));
            if (!day.isValid())
                continue;
            QVERIFY(!seen.contains(day));
            seen.insert(day);
            QCOMPARE(model.indexOf(day), model.index(row, column));
            QCOMPARE(row % 8, day.dayOfWeek());
        }
    }
    QCOMPARE(seen.size(), digest.first.daysTo(digest.last) + 1);
    QVERIFY(!model.indexOf(digest.last.addDays(1)).isValid());
    model.setSeries(nullptr);
    QCOMPARE(model.rowCount(), 0);
}

void TestHealth::calendarKnowsTheStateOfADay()
{
    open();
    CalendarModel model;
    model.setSeries(digest(vega));
    const auto at = [&model](const QDate& day, int role) { return model.indexOf(day).data(role); };
    using State = CalendarModel::State;
    QCOMPARE(at(missingDay, CalendarModel::StateRole).toInt(), int(State::Missing));
    QCOMPARE(at(gapDay, CalendarModel::StateRole).toInt(), int(State::Stored));
    QCOMPARE(at(gapDay, CalendarModel::ShareRole).toDouble(), 50.0 / 60);
    QVERIFY(at(brokenDay, CalendarModel::WrongRole).toBool());
    QVERIFY(!at(gapDay, CalendarModel::WrongRole).toBool());
    QVERIFY(!at(gapDay.addDays(1), CalendarModel::WrongRole).toBool());
    QCOMPARE(at(QDate(2024, 2, 17), CalendarModel::StateRole).toInt(), int(State::Free));
    QVERIFY(at(gapDay, Qt::ToolTipRole)
                .toString()
                .endsWith(QStringLiteral("Нет баров с 10:20 по 10:29 (10)")));
    QCOMPARE(at(gapDay, Qt::AccessibleTextRole), at(gapDay, Qt::ToolTipRole));
    QVERIFY(!(model.index(0, 0).flags() & Qt::ItemIsSelectable));
    QCOMPARE(model.index(0, 0).data().toString(), QStringLiteral("2024"));
}

void TestHealth::calendarGoesFromFaultToFault()
{
    open();
    CalendarModel model;
    model.setSeries(digest(vega));
    QCOMPARE(model.nextWrongDay(QDate(2024, 1, 1), 1), gapDay);
    QCOMPARE(model.nextWrongDay(gapDay, 1), missingDay);
    QCOMPARE(model.nextWrongDay(brokenDay, -1), missingDay);
    QVERIFY(!model.nextWrongDay(brokenDay, 1).isValid());
}

void TestHealth::remarksAreShown()
{
    open();
    RemarksModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setRemarks(tadata::remarksOn(*digest(vega), gapDay));
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.index(0, RemarksModel::Kind).data().toString(), QStringLiteral("Внимание"));
    QCOMPARE(model.remarkAt(0).to, QTime(10, 29));
}

void TestHealth::bookFollowsChanges()
{
    open();
    testsupport::healDay(root(), gapDay);
    EVENTUALLY_EQUAL(digest(vega)->sums.gaps, qint64(0));
    QVERIFY(QFile::remove(root().filePath(testsupport::dayPath(alfa, missingDay))));
    EVENTUALLY(digest(vega)->missingDays.isEmpty());
    // Whoever has read something keeps it: what is shown does not change under a painter.
    const SharedDigest before = digest(vega);
    testsupport::healDay(root(), brokenDay);
    EVENTUALLY(digest(vega) != before);
    QCOMPARE(before->sums.badLines, qint64(1));
    QCOMPARE(digest(vega)->sums.badLines, qint64(0));
}

void TestHealth::bookFollowsCommandsAtOnce()
{
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("store-restore")));
    open();
    // No look by itself comes before the test has failed.
    m_book->setPauses(std::chrono::minutes(5), 0);
    const QSignalSpy looks(m_book.get(), &HealthBook::looked);
    m_book->look();
    EVENTUALLY(!looks.isEmpty());
    testsupport::healDay(root(), gapDay);
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("store-restore/20240101-000000-1")));
    EVENTUALLY_EQUAL(digest(vega)->sums.gaps, qint64(0));
}

// While another look is at work, which has read the day by now.
void TestHealth::bookFollowsCommandsDuringALook()
{
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("store-restore")));
    open();
    m_book->setPauses(std::chrono::minutes(5), 0);
    const QSignalSpy looks(m_book.get(), &HealthBook::looked);
    m_book->look();
    EVENTUALLY(!looks.isEmpty());
    testsupport::healDay(root(), brokenDay);
    testsupport::Hold hold({testsupport::SystemCall::Open}, testsupport::dayPath(vega, brokenDay));
    m_book->look();
    EVENTUALLY(hold.isReached());
    testsupport::healDay(root(), gapDay);
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("store-restore/20240101-000000-1")));
    QCoreApplication::processEvents();
    hold.letGo();
    EVENTUALLY_EQUAL(digest(vega)->sums.gaps, qint64(0));
}

void TestHealth::bookReadsOnlyWhatWasAskedFor()
{
    testsupport::writeFile(root().filePath(QStringLiteral("EAST/MAIN/BETA/20240115_60.iss")),
                           testsupport::barLines(QTime(10, 0), 5));
    m_book = std::make_unique<HealthBook>(root());
    m_book->setPauses(std::chrono::milliseconds(20), 0);
    const QSignalSpy changes(m_book.get(), &HealthBook::changed);
    m_book->followBoard(QStringLiteral("EAST/MAIN"));
    EVENTUALLY(digest(QStringLiteral("EAST/MAIN/BETA")));
    QVERIFY(!digest(vega));
    QVERIFY(!m_book->isKnown());
    m_book->followAll(true);
    EVENTUALLY(digest(vega));
    EVENTUALLY(m_book->isKnown());
    m_book->followAll(false);
    testsupport::writeFile(root().filePath(QStringLiteral("EAST/MAIN/BETA/20240115_60.iss")),
                           testsupport::barLines(QTime(10, 0), 6));
    EVENTUALLY_EQUAL(digest(QStringLiteral("EAST/MAIN/BETA"))->bars, qint64(6));
}

void TestHealth::bookForgetsWhatIsGone()
{
    open();
    QVERIFY(QDir(root().filePath(QStringLiteral("NORD"))).removeRecursively());
    EVENTUALLY(m_book->series().isEmpty());
    QVERIFY(!digest(vega));
}

void TestHealth::bookTriesAgainWhatCouldNotBeRead()
{
    const testsupport::OtherUser user;
    QTemporaryDir own;
    const QDir store(own.filePath(QStringLiteral("store")));
    testsupport::makeIllStore(store);
    HealthBook book(store);
    book.setPauses(std::chrono::milliseconds(20), 0);
    const QString path = store.filePath(testsupport::dayPath(vega, gapDay));
    {
        const testsupport::Permissions none(path, 0);
        book.followAll(true);
        EVENTUALLY_EQUAL(book.problems().size(), 1);
        QVERIFY2(book.problems().first().contains(path), qPrintable(book.problems().first()));
        QVERIFY2(book.problems().first().endsWith(qt_error_string(EACCES)),
                 qPrintable(book.problems().first()));
        QVERIFY(!book.digest(vega, 60));
        QVERIFY(book.digest(alfa, 60));
    }
    EVENTUALLY(book.digest(vega, 60));
    QVERIFY(book.problems().isEmpty());
}

// Its series must not pass for one that is gone.
void TestHealth::bookNamesADirectoryThatCannotBeListed()
{
    const testsupport::OtherUser user;
    QTemporaryDir own;
    const QDir store(own.filePath(QStringLiteral("store")));
    testsupport::makeIllStore(store);
    HealthBook book(store);
    book.setPauses(std::chrono::milliseconds(20), 0);
    book.followAll(true);
    EVENTUALLY(book.digest(vega, 60));
    {
        const testsupport::Permissions none(store.filePath(vega), 0);
        EVENTUALLY_EQUAL(book.problems().size(), 1);
        QCOMPARE(book.problems(),
                 QStringList{QStringLiteral("Невозможно прочитать каталог %1: %2")
                                 .arg(store.filePath(vega), qt_error_string(EACCES))});
    }
    EVENTUALLY(book.problems().isEmpty());
    QVERIFY(book.digest(vega, 60));
}

void TestHealth::bookGoesWhileItReads()
{
    for (int i = 0; i < 20; ++i) {
        HealthBook book(root());
        book.followAll(true);
        if (i % 2 == 0)
            QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
}

QTEST_GUILESS_MAIN(TestHealth)
#include "tst_health.moc"
