// SPDX-License-Identifier: MIT
#include "fileclock.h"

#include <QtCore/QDateTime>
#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

using tadata::ClockChange;
using tadata::ZoneClock;

class TestFileClock final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void changesAsItIsTold_data();
    void changesAsItIsTold();
    void namesASkippedTime();
    void theStampIsAddedBeforeTheZones();
    void keepsMilliseconds();
    void saysWhenItChangesNothing();
    void agreesWithASearchOverAllMoments_data();
    void agreesWithASearchOverAllMoments();
};

namespace {

QTimeZone zone(const char* name)
{
    return name ? QTimeZone(QByteArray(name)) : QTimeZone();
}

QString moment(const QDate& date, const QTime& time)
{
    return QDateTime(date, time, Qt::UTC).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

} // namespace

void TestFileClock::changesAsItIsTold_data()
{
    QTest::addColumn<FileClock>("clock");
    QTest::addColumn<int>("timeframe");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    const auto row = [](const char* name, const FileClock& clock, int timeframe, const char* before,
                        const char* after) {
        QTest::newRow(name) << clock << timeframe << QString::fromLatin1(before)
                            << QString::fromLatin1(after);
    };
    row("stamp of a minute", {true, {}, {}, 0}, 60, "2024-01-15 10:00:00", "2024-01-15 10:01:00");
    row("stamp of a second", {true, {}, {}, 0}, 1, "2024-01-15 10:00:00", "2024-01-15 10:00:01");
    row("stamp over midnight", {true, {}, {}, 0}, 60, "2023-12-31 23:59:00", "2024-01-01 00:00:00");
    row("shift back", {false, {}, {}, -1440}, 60, "2024-03-01 00:30:00", "2024-02-29 00:30:00");
    row("shift on", {false, {}, {}, 61}, 60, "2024-01-15 23:00:00", "2024-01-16 00:01:00");
    row("winter", {false, zone("America/New_York"), zone("Europe/Moscow"), 0}, 60,
        "2024-01-15 18:30:00", "2024-01-16 02:30:00");
    row("summer", {false, zone("America/New_York"), zone("Europe/Moscow"), 0}, 60,
        "2024-07-15 18:30:00", "2024-07-16 01:30:00");
    row("shown twice", {false, zone("Europe/Berlin"), zone("UTC"), 0}, 60, "2024-10-27 02:30:00",
        "2024-10-27 00:30:00");
    row("after it", {false, zone("Europe/Berlin"), zone("UTC"), 0}, 60, "2024-10-27 03:00:00",
        "2024-10-27 02:00:00");
    row("before the skip", {false, zone("Europe/Berlin"), zone("UTC"), 0}, 60,
        "2024-03-31 01:59:59", "2024-03-31 00:59:59");
    row("behind the skip", {false, zone("Europe/Berlin"), zone("UTC"), 0}, 60,
        "2024-03-31 03:00:00", "2024-03-31 01:00:00");
    row("into the skip", {false, zone("UTC"), zone("Europe/Berlin"), 0}, 60, "2024-03-31 01:00:00",
        "2024-03-31 03:00:00");
    row("all of it", {true, zone("UTC"), zone("Asia/Kathmandu"), -45}, 60, "2024-01-15 18:59:00",
        "2024-01-16 00:00:00");
    row("before 1970", {false, zone("UTC"), zone("Etc/GMT-1"), 0}, 60, "1960-12-31 23:30:00",
        "1961-01-01 00:30:00");
    row("changed in the last hour of a day", {false, zone("UTC"), zone("Europe/Zurich"), 0}, 60,
        "1894-05-31 23:45:00", "1894-06-01 00:45:00");
}

void TestFileClock::changesAsItIsTold()
{
    QFETCH(const FileClock, clock);
    QFETCH(const int, timeframe);
    QFETCH(const QString, before);
    QDate date = QDate::fromString(before.left(10), QStringLiteral("yyyy-MM-dd"));
    QTime time = QTime::fromString(before.mid(11), QStringLiteral("hh:mm:ss"));
    QVERIFY(ClockChange(clock, timeframe).change(&date, &time));
    QTEST(moment(date, time), "after");
}

void TestFileClock::namesASkippedTime()
{
    QDate date(2024, 3, 31);
    QTime time(2, 30);
    ClockChange change({false, zone("Europe/Berlin"), zone("UTC"), 0}, 60);
    QCOMPARE(change.change(&date, &time).message(),
             QStringLiteral("Время '02:30:00' пропущено часами зоны Europe/Berlin"));
    QCOMPARE(moment(date, time), QStringLiteral("2024-03-31 02:30:00"));
}

void TestFileClock::theStampIsAddedBeforeTheZones()
{
    ClockChange change({true, zone("Europe/Berlin"), zone("UTC"), 0}, 60);
    QDate date(2024, 3, 31);
    QTime time(1, 59);
    QCOMPARE(change.change(&date, &time).message(),
             QStringLiteral("Время '02:00:00' пропущено часами зоны Europe/Berlin"));
    time = QTime(2, 59);
    QVERIFY(change.change(&date, &time));
    QCOMPARE(moment(date, time), QStringLiteral("2024-03-31 01:00:00"));
}

void TestFileClock::keepsMilliseconds()
{
    QDate date(2024, 1, 15);
    QTime time(23, 59, 59, 250);
    QVERIFY(ClockChange({true, {}, {}, 0}, 1).change(&date, &time));
    QCOMPARE(date, QDate(2024, 1, 16));
    QCOMPARE(time, QTime(0, 0, 0, 250));
}

void TestFileClock::saysWhenItChangesNothing()
{
    QVERIFY(FileClock().changesNothing());
    QVERIFY(!(FileClock{true, {}, {}, 0}.changesNothing()));
    QVERIFY(!(FileClock{false, {}, {}, 1}.changesNothing()));
    // Skipped times are bad all the same.
    QVERIFY(!(FileClock{false, zone("UTC"), zone("UTC"), 0}.changesNothing()));
}

void TestFileClock::agreesWithASearchOverAllMoments_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char* name : {"Europe/Berlin", "America/New_York", "Asia/Kathmandu", "Pacific/Apia",
                             "Africa/Casablanca", "Australia/Lord_Howe", "Europe/Moscow"})
        QTest::newRow(name) << QByteArray(name);
}

namespace {

// Since 1970 all offsets of these zones are quarters of an hour.
std::optional<qint64> searchedMoment(const QTimeZone& zone, qint64 shown)
{
    constexpr int quarter = 900;
    for (int step = -104; step <= 104; ++step) {
        const qint64 moment = shown + step * quarter;
        const QDateTime there = QDateTime::fromSecsSinceEpoch(moment, QTimeZone::utc());
        if (moment + zone.offsetFromUtc(there) == shown)
            return moment;
    }
    return std::nullopt;
}

} // namespace

void TestFileClock::agreesWithASearchOverAllMoments()
{
    QFETCH(const QByteArray, name);
    const QTimeZone zone(name);
    ZoneClock clock(zone);
    // Most of them near where the clock is changed.
    const QTimeZone::OffsetDataList changes =
        zone.transitions(QDateTime(QDate(2005, 1, 1), QTime(0, 0), Qt::UTC),
                         QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::UTC));
    QRandomGenerator random(1);
    for (int round = 0; round < 2000; ++round) {
        const qint64 near =
            changes.isEmpty()
                ? 1'400'000'000
                : changes.at(random.bounded(int(changes.size()))).atUtc.toSecsSinceEpoch();
        const qint64 shown = near + random.bounded(-100'000, 100'000);
        const std::optional<qint64> wanted = searchedMoment(zone, shown);
        QCOMPARE(clock.momentOf(shown), wanted);
        if (wanted)
            QCOMPARE(clock.shownAt(*wanted), shown);
    }
}

QTEST_GUILESS_MAIN(TestFileClock)
#include "tst_fileclock.moc"
