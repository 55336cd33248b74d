// SPDX-License-Identifier: MIT
#include "timeofdayrange.h"

#include "support/strictlog.h"

#include <QtTest/QTest>

using tadata::TimeOfDayRange;

namespace {

const QDate day(2023, 1, 5);
const QTime lastSecond(23, 59, 59);

} // namespace

class TestTimeOfDayRange final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void isWholeDay_data();
    void isWholeDay();
    void isWholeDayJustWhenEverySecondIsInside();
};

void TestTimeOfDayRange::isWholeDay_data()
{
    QTest::addColumn<QDateTime>("from");
    QTest::addColumn<QDateTime>("to");
    QTest::addColumn<bool>("isWhole");
    const QDateTime midnight(day, QTime(0, 0));
    const QDateTime last(day, lastSecond);
    QTest::newRow("the day") << midnight << last << true;
    QTest::newRow("a thousandth later") << midnight.addMSecs(1) << last << false;
    QTest::newRow("a second later") << midnight.addSecs(1) << last << false;
    QTest::newRow("a minute later") << midnight.addSecs(60) << last << false;
    QTest::newRow("a thousandth less") << midnight << last.addMSecs(-1) << false;
    QTest::newRow("a second less") << midnight << last.addSecs(-1) << false;
    QTest::newRow("a minute less") << midnight << last.addSecs(-60) << false;
    QTest::newRow("more") << midnight.addSecs(-1) << last.addSecs(1) << true;
    QTest::newRow("many days") << midnight.addDays(-9) << last.addDays(9) << true;
    QTest::newRow("the day before") << midnight.addDays(-1) << last.addDays(-1) << false;
    QTest::newRow("the day after") << midnight.addDays(1) << last.addDays(1) << false;
}

void TestTimeOfDayRange::isWholeDay()
{
    QFETCH(const QDateTime, from);
    QFETCH(const QDateTime, to);
    QTEST(TimeOfDayRange(day, from, to).isWholeDay(), "isWhole");
}

void TestTimeOfDayRange::isWholeDayJustWhenEverySecondIsInside()
{
    for (int second = 0; second < 120; ++second) {
        const TimeOfDayRange later(day, QDateTime(day, QTime(0, 0).addSecs(second)),
                                   QDateTime(day, lastSecond));
        QCOMPARE(later.isWholeDay(), later.place(0) == TimeOfDayRange::Place::Inside);
        const TimeOfDayRange shorter(day, QDateTime(day, QTime(0, 0)),
                                     QDateTime(day, lastSecond.addSecs(-second)));
        constexpr int last = 24 * 60 * 60 - 1;
        QCOMPARE(shorter.isWholeDay(), shorter.place(last) == TimeOfDayRange::Place::Inside);
    }
}

QTEST_GUILESS_MAIN(TestTimeOfDayRange)
#include "tst_timeofdayrange.moc"
