// SPDX-License-Identifier: MIT
#include "boardhealth.h"
#include "healthreport.h"
#include "storehealth.h"

#include "support/dayfiles.h"
#include "support/filetree.h"
#include "support/localzone.h"
#include "support/strictlog.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <memory>

using tadata::DayHealth;
using tadata::Gap;
using tadata::HealthQuery;
using tadata::SeriesHealth;
using tadata::StoreHealth;
using tadata::UnreadFile;
using tadata::Wide;

class TestStoreHealth final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void findsNothingInAWholeYear_data();
    void findsNothingInAWholeYear();
    void knowsAHoliday();
    void knowsAHalfDay();
    void tellsAnOutageOfOneSeries();
    void tellsAnOutageOfTheBoard();
    void asksNothingOfASparseSeries();
    void followsTheClock();
    void countsUnusualBarsOfTheSeriesItself();
    void seesOnlyItsOwnBoardAndTimeframe();
    void looksAtSeriesThatAreNotAskedFor();
    void reportsAnInterval();
    void addsUpMissingDays();
    void ordersSeriesByCodePoint();
    void listsWhatIsNamed();
    void goesOnAfterAnUnreadableFile();
    void passesOverOtherTimeframes();
    void listsASeriesOfTwoTimeframesOnce();
    void tellsOfNamesThatAreNoText();
    void opensNoBoardThatIsNotAskedFor();
    void tellsDaysToAskFor();
    void isTheSameInEveryOrderOfEntries();
    void countsTheDaysThatAreAskedFor_data();
    void countsTheDaysThatAreAskedFor();
    void theOnlyDayIsAllThatIsAskedFor();
    void expectsNothingOfAWeekdayWithoutBars();
    void stopsBetweenDays();
    void looksAtNoOtherSeriesAfterAStop();
    void tellsOfAFileOnce();
    void knowsTheFirstDayAndTheLast();

private:
    using Times = QList<int>; // minutes of the day

    void write(const QString& series, const QDate& day, const Times& times, int timeframe = 60);
    /// Workdays from 2024-01-01 on.
    void writeDays(const QString& series, const Times& times, const QDate& last = {2024, 7, 31});
    void remove(const QString& series, const QDate& day);
    QList<SeriesHealth> read(const HealthQuery& query = {});
    SeriesHealth first(const HealthQuery& query = {}) { return read(query).value(0); }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::vector<UnreadFile> m_unread;
};

namespace {

const QString alfa = QStringLiteral("NORD/MAIN/ALFA");
const QString vega = QStringLiteral("NORD/MAIN/VEGA");
const QDate someDay(2024, 6, 5);

QList<int> span(int first, int count)
{
    QList<int> times;
    for (int i = 0; i < count; ++i)
        times.append(first + i);
    return times;
}

const QList<int>& session()
{
    static const QList<int> times = span(600, 60);
    return times;
}

DayHealth dayOf(const SeriesHealth& health, const QDate& day)
{
    for (const DayHealth& one : health.days) {
        if (one.day == day)
            return one;
    }
    return {};
}

QString shown(const std::vector<Gap>& gaps)
{
    QStringList texts;
    for (const Gap& gap : gaps) {
        texts.append(QStringLiteral("%1-%2 %3%4")
                         .arg(gap.from / 60)
                         .arg(gap.to / 60)
                         .arg(gap.bars)
                         .arg(gap.isQuiet ? QStringLiteral(" quiet") : QString()));
    }
    return texts.join(QStringLiteral(", "));
}

bool isSpotless(const SeriesHealth& health)
{
    return !health.isWrong() && coverageOf(health) == u"1.0000" && health.closed.isEmpty() &&
           health.unproven.isEmpty();
}

} // namespace

void TestStoreHealth::init()
{
    testsupport::failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_unread.clear();
}

void TestStoreHealth::write(const QString& series, const QDate& day, const Times& times,
                            int timeframe)
{
    QByteArray content;
    for (const int minute : times)
        content += testsupport::barLine(QTime(minute / 60, minute % 60), 1);
    testsupport::writeFile(m_dir->filePath(series + u'/' + vexdesk::dayFileName(day, timeframe)),
                           content);
}

void TestStoreHealth::writeDays(const QString& series, const Times& times, const QDate& last)
{
    for (QDate day(2024, 1, 1); day <= last; day = day.addDays(1)) {
        if (day.dayOfWeek() < 6)
            write(series, day, times);
    }
}

void TestStoreHealth::remove(const QString& series, const QDate& day)
{
    QVERIFY(QFile::remove(m_dir->filePath(series + u'/' + vexdesk::dayFileName(day, 60))));
}

QList<SeriesHealth> TestStoreHealth::read(const HealthQuery& query)
{
    QList<SeriesHealth> found;
    int percent = 0;
    StoreHealth store(QDir(m_dir->path()), query);
    m_unread = store.read([&found](const SeriesHealth& health) { found.append(health); },
                          [&percent](int now) {
                              QVERIFY(now >= percent && now <= 100);
                              percent = now;
                          });
    return found;
}

void TestStoreHealth::findsNothingInAWholeYear_data()
{
    QTest::addColumn<QByteArray>("zone");
    for (const char* zone : {"UTC", "Europe/Moscow", "America/New_York", "Pacific/Apia"})
        QTest::newRow(zone) << QByteArray(zone);
}

void TestStoreHealth::findsNothingInAWholeYear()
{
    QFETCH(const QByteArray, zone);
    const testsupport::LocalZone local(zone);
    writeDays(alfa, session(), QDate(2024, 12, 31));
    const SeriesHealth health = first();
    QVERIFY(isSpotless(health));
    QCOMPARE(health.days.size(), size_t(262));
    QCOMPARE(health.bars(), 262 * 60);
    QCOMPARE(health.first, QDate(2024, 1, 1));
    QCOMPARE(health.last, QDate(2024, 12, 31));
    QCOMPARE(dayOf(health, someDay).expected, 60);
}

void TestStoreHealth::knowsAHoliday()
{
    writeDays(alfa, session());
    remove(alfa, someDay);
    QCOMPARE(first().unproven, QList<QDate>{someDay});
    writeDays(vega, session());
    QCOMPARE(first().missingDays, QList<QDate>{someDay});
    remove(vega, someDay);
    QCOMPARE(first().closed, QList<QDate>{someDay});
    QCOMPARE(coverageOf(first()), QStringLiteral("1.0000"));
}

void TestStoreHealth::knowsAHalfDay()
{
    writeDays(alfa, session());
    writeDays(vega, session());
    write(alfa, someDay, span(600, 30));
    write(vega, someDay, span(600, 30));
    for (const SeriesHealth& health : read()) {
        const DayHealth day = dayOf(health, someDay);
        QCOMPARE(shown(day.gaps), QStringLiteral("630-659 30 quiet"));
        QCOMPARE(day.missing, 30);
        QCOMPARE(coverageOf(day), QStringLiteral("1.0000"));
        QVERIFY(!health.isWrong());
    }
}

void TestStoreHealth::tellsAnOutageOfOneSeries()
{
    writeDays(alfa, session());
    writeDays(vega, session());
    write(alfa, someDay, span(600, 20) + span(630, 30));
    const QList<SeriesHealth> found = read();
    const DayHealth day = dayOf(found[0], someDay);
    QCOMPARE(shown(day.gaps), QStringLiteral("620-629 10"));
    QCOMPARE(coverageOf(day), QStringLiteral("0.8333"));
    QVERIFY(found[0].isWrong() && isSpotless(found[1]));
}

void TestStoreHealth::tellsAnOutageOfTheBoard()
{
    writeDays(alfa, session());
    writeDays(vega, session());
    write(alfa, someDay, span(600, 20) + span(630, 30));
    write(vega, someDay, span(600, 21) + span(629, 31));
    QList<SeriesHealth> found = read();
    // The other one has bars at both ends of it.
    QCOMPARE(shown(dayOf(found[0], someDay).gaps), QStringLiteral("620-629 10"));
    QCOMPARE(shown(dayOf(found[1], someDay).gaps), QStringLiteral("621-628 8 quiet"));
    write(alfa, someDay, span(600, 21) + span(629, 31));
    found = read();
    QCOMPARE(shown(dayOf(found[0], someDay).gaps), QStringLiteral("621-628 8 quiet"));
    // An empty file is a witness, a missing one is none.
    write(vega, someDay, {});
    QCOMPARE(shown(dayOf(read()[0], someDay).gaps), QStringLiteral("621-628 8 quiet"));
    remove(vega, someDay);
    QCOMPARE(shown(dayOf(read()[0], someDay).gaps), QStringLiteral("621-628 8"));
}

void TestStoreHealth::asksNothingOfASparseSeries()
{
    for (QDate day(2024, 1, 1); day.year() == 2024; day = day.addDays(1)) {
        Times times;
        for (int minute = 600; minute < 660; ++minute) {
            if ((minute * 7 + day.dayOfYear()) % 3 == 0)
                times.append(minute);
        }
        write(alfa, day, times);
    }
    QVERIFY(isSpotless(first()));
    QCOMPARE(dayOf(first(), someDay).expected, 0);
}

// In the weeks around a clock change the hour before it and the one after it are not usual.
void TestStoreHealth::followsTheClock()
{
    for (QDate day(2024, 1, 1); day.year() == 2024; day = day.addDays(1))
        write(alfa, day, day < someDay ? span(600, 60) : span(540, 60));
    const SeriesHealth health = first();
    QCOMPARE(dayOf(health, QDate(2024, 1, 15)).expected, 60);
    QCOMPARE(dayOf(health, QDate(2024, 12, 15)).expected, 60);
    QCOMPARE(dayOf(health, someDay).expected, 0);
    QVERIFY(!dayOf(health, QDate(2024, 12, 15)).hasGap());
}

void TestStoreHealth::countsUnusualBarsOfTheSeriesItself()
{
    Times usual;
    for (int minute = 600; minute < 660; minute += 2)
        usual.append(minute);
    writeDays(alfa, usual);
    writeDays(vega, usual);
    // Both are silent from 620 to 630, but for a bar between the usual ones.
    const Times before = usual.mid(0, 10);
    const Times after = usual.mid(16);
    write(alfa, someDay, before + Times{625} + after);
    write(vega, someDay, before + after);
    QList<SeriesHealth> found = read();
    QCOMPARE(shown(dayOf(found[0], someDay).gaps), QStringLiteral("620-630 6 quiet"));
    QCOMPARE(shown(dayOf(found[1], someDay).gaps), QStringLiteral("620-630 6"));
    write(vega, someDay, before + Times{625} + after);
    found = read();
    QCOMPARE(shown(dayOf(found[0], someDay).gaps), QStringLiteral("620-630 6"));
    QCOMPARE(shown(dayOf(found[1], someDay).gaps), QStringLiteral("620-630 6"));
}

void TestStoreHealth::seesOnlyItsOwnBoardAndTimeframe()
{
    writeDays(alfa, session());
    writeDays(QStringLiteral("NORD/OTHER/VEGA"), session());
    write(vega, someDay, session(), 1);
    remove(alfa, someDay);
    QCOMPARE(first().unproven, QList<QDate>{someDay});
    QVERIFY(first().missingDays.isEmpty());
}

void TestStoreHealth::looksAtSeriesThatAreNotAskedFor()
{
    writeDays(alfa, session());
    writeDays(vega, session());
    write(alfa, someDay, span(600, 20) + span(630, 30));
    HealthQuery query;
    query.series = QStringList{alfa};
    QCOMPARE(read(query).size(), 1);
    QCOMPARE(shown(dayOf(first(query), someDay).gaps), QStringLiteral("620-629 10"));
    write(vega, someDay, span(600, 20));
    QCOMPARE(shown(dayOf(first(query), someDay).gaps), QStringLiteral("620-629 10 quiet"));
    const QDate other = someDay.addDays(1);
    remove(alfa, other);
    QCOMPARE(first(query).missingDays, QList<QDate>{other});
}

void TestStoreHealth::reportsAnInterval()
{
    writeDays(alfa, session());
    writeDays(vega, session());
    write(alfa, someDay, span(600, 50));
    for (const QDate& day : {someDay.addDays(-1), someDay.addDays(1), someDay.addDays(2)})
        remove(alfa, day);
    HealthQuery query;
    query.scope.from = someDay;
    query.scope.to = someDay.addDays(1);
    const SeriesHealth health = first(query);
    QCOMPARE(health.days.size(), size_t(1));
    QCOMPARE(health.bars(), 50);
    QCOMPARE(health.missingDays, QList<QDate>{someDay.addDays(1)});
    // 50 of the day's 60 and of the 60 that are to be expected on the other one.
    QCOMPARE(coverageOf(health), QStringLiteral("0.4167"));
    QCOMPARE(health.first, QDate(2024, 1, 1));
    QCOMPARE(health.last, QDate(2024, 7, 31));
    query.scope.from = QDate(2025, 1, 1);
    query.scope.to = QDate();
    QVERIFY(isSpotless(first(query)) && first(query).days.empty());
}

void TestStoreHealth::addsUpMissingDays()
{
    writeDays(alfa, session());
    writeDays(vega, session());
    remove(alfa, someDay);
    remove(alfa, someDay.addDays(1));
    const SeriesHealth health = first();
    QCOMPARE(qint64(health.missedBars), 120);
    QCOMPARE(qint64(health.missedParts), 1);
    QCOMPARE(coverageOf(health), QStringLiteral("0.9869")); // 151 / 153
    // Six Wednesdays and Thursdays without bars: not all of them have usual times.
    for (const int days : {0, 1}) {
        for (QDate day = QDate(2024, 1, 3).addDays(days); day < QDate(2024, 2, 12);
             day = day.addDays(7))
            write(alfa, day, {});
    }
    const SeriesHealth uneven = first();
    int wednesdays = 0;
    int thursdays = 0;
    for (const DayHealth& day : uneven.days) {
        wednesdays += day.day.dayOfWeek() == 3 ? day.expected : 0;
        thursdays += day.day.dayOfWeek() == 4 ? day.expected : 0;
    }
    // 30 of the one and 29 of the other are stored.
    QVERIFY(wednesdays % 30 != 0 || thursdays % 29 != 0);
    QVERIFY(uneven.missedBars * 30 * 29 ==
            (Wide(wednesdays) * 29 + Wide(thursdays) * 30) * uneven.missedParts);
}

void TestStoreHealth::ordersSeriesByCodePoint()
{
    const QStringList names{QStringLiteral("A-/M/S"), QStringLiteral("A/M/S"),
                            QStringLiteral("A/M/a"), QStringLiteral("A/M/\uff5e"),
                            QStringLiteral("A/M/\U0001d11e")};
    for (const QString& name : names) {
        write(name, someDay, session(), 1);
        write(name, someDay, session(), 60);
        write(name, someDay, session(), 300);
    }
    QStringList found;
    for (const SeriesHealth& health : read())
        found.append(QStringLiteral("%1 %2").arg(health.series).arg(health.timeframe));
    QStringList wanted;
    for (const QString& name : names)
        wanted << name + QStringLiteral(" 60") << name + QStringLiteral(" 1");
    QCOMPARE(found, wanted);
}

void TestStoreHealth::listsWhatIsNamed()
{
    write(alfa, someDay, session());
    HealthQuery query;
    query.series = QStringList{alfa};
    query.timeframe = 1;
    const QList<SeriesHealth> found = read(query);
    QCOMPARE(found.size(), 1);
    QVERIFY(found[0].days.empty() && !found[0].first.isValid());
    QCOMPARE(healthReport(found[0]).text(),
             QByteArray(R"({"bars":0,"closed":[],"coverage":"1.0000","days":[],"first":null,)"
                        R"("last":null,"missingDays":[],"series":"NORD/MAIN/ALFA","timeframe":1,)"
                        R"("unproven":[]})"));
    query.series.clear();
    QVERIFY(read(query).isEmpty());
    query.series = QStringList{alfa, vega};
    QCOMPARE(StoreHealth(QDir(m_dir->path()), query).notStored(), QStringList{vega});
}

void TestStoreHealth::passesOverOtherTimeframes()
{
    write(alfa, someDay, session(), 300);
    QVERIFY(read().isEmpty());
    HealthQuery query;
    query.series = QStringList{alfa};
    QCOMPARE(StoreHealth(QDir(m_dir->path()), query).notStored(), QStringList{alfa});
}

void TestStoreHealth::listsASeriesOfTwoTimeframesOnce()
{
    write(alfa, someDay, session(), 1);
    write(alfa, someDay, session(), 60);
    HealthQuery query;
    query.series = QStringList{alfa};
    for (const int timeframe : {1, 60}) {
        query.timeframe = timeframe;
        const QList<SeriesHealth> found = read(query);
        QCOMPARE(found.size(), 1);
        QCOMPARE(found[0].timeframe, timeframe);
        QCOMPARE(found[0].days.size(), size_t(1));
    }
}

void TestStoreHealth::goesOnAfterAnUnreadableFile()
{
    writeDays(alfa, session());
    writeDays(vega, session());
    write(alfa, someDay, span(600, 20));
    write(vega, someDay, span(600, 20));
    const QString path = m_dir->filePath(vega + u'/' + vexdesk::dayFileName(someDay, 60));
    QVERIFY(QFile::resize(path, qint64(1024) * 1024 * 1024 + 1));
    const QList<SeriesHealth> found = read();
    QCOMPARE(found.size(), 1);
    QCOMPARE(found[0].series, alfa);
    // Nobody knows what the other one has in it.
    QCOMPARE(shown(dayOf(found[0], someDay).gaps), QStringLiteral("620-659 40"));
    QCOMPARE(m_unread.size(), size_t(1));
    QCOMPARE(m_unread[0].path, path);
}

void TestStoreHealth::tellsOfNamesThatAreNoText()
{
    writeDays(alfa, session());
    const std::filesystem::path board = m_dir->filePath(QStringLiteral("NORD/MAIN")).toStdString();
    std::filesystem::create_directory(board / "\xff");
    std::filesystem::copy(board / "ALFA/20240605_60.iss", board / "\xff/20240605_60.iss");
    const QList<SeriesHealth> found = read();
    QCOMPARE(found.size(), 1);
    QCOMPARE(found[0].series, alfa);
    QCOMPARE(m_unread.size(), size_t(1));
    QCOMPARE(m_unread[0].reason, UnreadFile::Reason::NotListed);
    std::filesystem::remove_all(board / "\xff"); // Qt cannot
}

// What cannot be read there is nothing to those who ask for another board.
void TestStoreHealth::opensNoBoardThatIsNotAskedFor()
{
    write(alfa, someDay, session());
    const QString other = QStringLiteral("NORD/OTHER/ALFA");
    write(other, someDay, session());
    const std::filesystem::path board = m_dir->filePath(QStringLiteral("NORD/OTHER")).toStdString();
    std::filesystem::rename(board / "ALFA", board / "\xff");
    HealthQuery query;
    query.series = QStringList{alfa};
    QCOMPARE(read(query).size(), 1);
    QCOMPARE(m_unread.size(), size_t(0));
    QCOMPARE(read().size(), 1);
    QCOMPARE(m_unread.size(), size_t(1));
    std::filesystem::remove_all(board / "\xff"); // Qt cannot
}

void TestStoreHealth::tellsDaysToAskFor()
{
    writeDays(alfa, session());
    writeDays(vega, session());
    write(alfa, someDay, span(600, 20));
    const QDate other = someDay.addDays(-20);
    remove(alfa, other);
    write(alfa, someDay.addDays(1), span(600, 56));
    QCOMPARE(daysToAskFor(first()), (QList<QDate>{other, someDay}));
}

void TestStoreHealth::isTheSameInEveryOrderOfEntries()
{
    QByteArray wanted;
    QList<QDate> days;
    for (QDate day(2024, 1, 1); day < QDate(2024, 7, 1); day = day.addDays(1))
        days.append(day);
    for (const int first : {0, 50, 150}) {
        init();
        for (qsizetype i = 0; i < days.size(); ++i) {
            const qsizetype at = (first + i * 5) % days.size();
            write(at % 2 == 0 ? alfa : vega, days[at], span(600, at % 7 == 0 ? 50 : 60));
            write(at % 3 == 0 ? vega : alfa, days[at], span(600, 60));
        }
        QByteArray reports;
        for (const SeriesHealth& health : read())
            reports += healthReport(health).report();
        if (wanted.isEmpty())
            wanted = reports;
        QCOMPARE(reports, wanted);
    }
    QVERIFY(wanted.contains("\"from\""));
}

void TestStoreHealth::countsTheDaysThatAreAskedFor_data()
{
    QTest::addColumn<QStringList>("series");
    QTest::addColumn<int>("timeframe"); // 0: both
    QTest::addColumn<QList<int>>("percents");
    const QStringList all;
    QTest::newRow("all") << all << 0 << QList<int>{12, 25, 37, 50, 62, 75, 87, 100};
    QTest::newRow("minutes") << all << 60 << QList<int>{20, 40, 60, 80, 100};
    QTest::newRow("seconds") << all << 1 << QList<int>{33, 66, 100};
    QTest::newRow("a series") << QStringList(alfa) << 0 << QList<int>{20, 40, 60, 80, 100};
    QTest::newRow("its minutes") << QStringList(alfa) << 60 << QList<int>{50, 100};
    QTest::newRow("its seconds") << QStringList(alfa) << 1 << QList<int>{33, 66, 100};
    QTest::newRow("another's seconds") << QStringList(vega) << 1 << QList<int>{};
}

void TestStoreHealth::countsTheDaysThatAreAskedFor()
{
    QFETCH(const QStringList, series);
    QFETCH(const int, timeframe);
    for (int day = 0; day < 3; ++day) {
        write(alfa, someDay.addDays(day), session(), 1);
        write(vega, someDay.addDays(day), session());
    }
    write(alfa, someDay, session());
    write(alfa, someDay.addDays(1), session());
    HealthQuery query;
    query.series = series;
    if (timeframe != 0)
        query.timeframe = timeframe;
    QList<int> percents;
    StoreHealth(QDir(m_dir->path()), query)
        .read([](const SeriesHealth&) {}, [&percents](int percent) { percents.append(percent); });
    QTEST(percents, "percents");
}

void TestStoreHealth::theOnlyDayIsAllThatIsAskedFor()
{
    write(alfa, someDay, session());
    QList<int> percents;
    StoreHealth(QDir(m_dir->path()), {})
        .read([](const SeriesHealth&) {}, [&percents](int percent) { percents.append(percent); });
    QCOMPARE(percents, QList<int>{100});
}

// Another series of the board has one on a Saturday.
void TestStoreHealth::expectsNothingOfAWeekdayWithoutBars()
{
    writeDays(alfa, session());
    writeDays(vega, session());
    const QDate saturday(2024, 6, 8);
    write(vega, saturday, session());
    const SeriesHealth health = first();
    QCOMPARE(health.missingDays, QList<QDate>{saturday});
    QCOMPARE(qint64(health.missedBars), 0);
    QCOMPARE(coverageOf(health), QStringLiteral("1.0000"));
}

void TestStoreHealth::stopsBetweenDays()
{
    writeDays(alfa, session(), QDate(2024, 2, 29));
    writeDays(vega, session(), QDate(2024, 2, 29));
    std::vector<QDate> days;
    for (QDate day(2024, 1, 1); day <= QDate(2024, 2, 29); day = day.addDays(1)) {
        if (day.dayOfWeek() < 6)
            days.push_back(day);
    }
    const std::vector<tadata::BoardSeries> board{{alfa, QDir(m_dir->filePath(alfa)), days, true},
                                                 {vega, QDir(m_dir->filePath(vega)), days, true}};
    for (const int enough : {1, 10, 44, 45}) {
        std::atomic<bool> stop = false;
        int read = 0;
        const tadata::BoardHealth health = tadata::boardHealth(
            board, 60, {}, [&] { stop = ++read >= enough; }, &stop);
        for (const SeriesHealth& found : health.series)
            QVERIFY(std::all_of(found.days.begin(), found.days.end(),
                                [](const DayHealth& day) { return day.day.isValid(); }));
        // The second one was begun only after the first.
        QCOMPARE(health.series.size(), size_t(enough <= 44 ? 1 : 2));
        // The window of the weekday is read to its end.
        QVERIFY2(read >= enough && read < enough + 9, qPrintable(QString::number(read)));
    }
}

// Two that are asked for have gaps on the same days, on which the third one cannot be read.
void TestStoreHealth::tellsOfAFileOnce()
{
    const QString gran = QStringLiteral("NORD/MAIN/GRAN");
    const QDate other = someDay.addDays(1);
    for (const QString& series : {alfa, gran}) {
        writeDays(series, session());
        write(series, someDay, span(600, 20));
        write(series, other, span(600, 20));
    }
    QStringList paths;
    for (const QDate& day : {someDay, other}) {
        write(vega, day, session());
        paths.append(m_dir->filePath(vega + u'/' + vexdesk::dayFileName(day, 60)));
        QVERIFY(QFile::resize(paths.last(), qint64(1024) * 1024 * 1024 + 1));
    }
    HealthQuery query;
    query.series = QStringList{alfa, gran};
    QCOMPARE(read(query).size(), 2);
    QStringList unread;
    for (const UnreadFile& file : m_unread)
        unread.append(file.path);
    QCOMPARE(unread, paths);
}

void TestStoreHealth::looksAtNoOtherSeriesAfterAStop()
{
    writeDays(alfa, session());
    write(alfa, someDay, span(600, 20));
    write(vega, someDay, session());
    const QString path = m_dir->filePath(vega + u'/' + vexdesk::dayFileName(someDay, 60));
    QVERIFY(QFile::resize(path, qint64(1024) * 1024 * 1024 + 1));
    std::vector<QDate> days;
    for (QDate day(2024, 1, 1); day <= QDate(2024, 7, 31); day = day.addDays(1)) {
        if (day.dayOfWeek() < 6)
            days.push_back(day);
    }
    const std::vector<tadata::BoardSeries> board{
        {alfa, QDir(m_dir->filePath(alfa)), days, true},
        {vega, QDir(m_dir->filePath(vega)), {someDay}, false}};
    for (const bool stops : {false, true}) {
        std::atomic<bool> stop = false;
        size_t read = 0;
        const tadata::BoardHealth health = tadata::boardHealth(
            board, 60, {}, [&] { stop = stops && ++read == days.size(); }, &stop);
        // The last days that were read are Fridays.
        QVERIFY(!dayOf(health.series[0], someDay).gaps.empty());
        QCOMPARE(health.unread.size(), size_t(stops ? 0 : 1));
    }
}

void TestStoreHealth::knowsTheFirstDayAndTheLast()
{
    const QDate last(9999, 12, 31);
    write(alfa, last, session());
    write(vega, QDate(1, 1, 1), session());
    const QList<SeriesHealth> found = read();
    QCOMPARE(found.size(), 2);
    QCOMPARE(found[0].last, last);
    QCOMPARE(found[1].first, QDate(1, 1, 1));
}

QTEST_GUILESS_MAIN(TestStoreHealth)

#include "tst_storehealth.moc"
