// SPDX-License-Identifier: MIT
#include "restoresettings.h"

#include "support/strictlog.h"

#include <vexdesk/appsettings.h>

#include <QtTest/QTest>

#include <limits>

namespace {

constexpr qint64 megabyte = 1048576;
const QString keep = QStringLiteral("keep");
const QString megabytes = QStringLiteral("megabytes");

AppSettings settings()
{
    return AppSettings(QStringLiteral("TADataManager/RestorePoints"));
}

} // namespace

class TestRestoreSettings final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanupTestCase() { settings().remove(QString()); }

    void areTheUsualOnesAtFirst();
    void areWhatWasSet();
    void whatIsNoNumberIsTheUsualOne_data();
    void whatIsNoNumberIsTheUsualOne();
    void keepNothingWhereThatIsWanted();
    void areNeverMoreThanNumbersHold();
    void megabytesAreWhole();
};

void TestRestoreSettings::init()
{
    testsupport::failOnStrayWarnings();
    settings().remove(QString());
}

void TestRestoreSettings::areTheUsualOnesAtFirst()
{
    const vexdesk::RestoreLimits limits = tadata::restoreLimits();
    QCOMPARE(limits.keep, 20);
    QCOMPARE(limits.bytes, 1024 * megabyte);
}

void TestRestoreSettings::areWhatWasSet()
{
    tadata::setRestoreLimits({.keep = 7, .bytes = 300 * megabyte});
    QCOMPARE(settings().value(keep).toInt(), 7);
    QCOMPARE(settings().value(megabytes).toInt(), 300);
    const vexdesk::RestoreLimits limits = tadata::restoreLimits();
    QCOMPARE(limits.keep, 7);
    QCOMPARE(limits.bytes, 300 * megabyte);
}

void TestRestoreSettings::whatIsNoNumberIsTheUsualOne_data()
{
    QTest::addColumn<QString>("value");
    for (const char* value : {"", "many", "-1", "1.5", "99999999999999999999"})
        QTest::newRow(value) << QString::fromLatin1(value);
}

void TestRestoreSettings::whatIsNoNumberIsTheUsualOne()
{
    QFETCH(const QString, value);
    settings().setValue(keep, value);
    settings().setValue(megabytes, value);
    const vexdesk::RestoreLimits limits = tadata::restoreLimits();
    QCOMPARE(limits.keep, 20);
    QCOMPARE(limits.bytes, 1024 * megabyte);
}

void TestRestoreSettings::keepNothingWhereThatIsWanted()
{
    settings().setValue(keep, 0);
    settings().setValue(megabytes, 0);
    const vexdesk::RestoreLimits limits = tadata::restoreLimits();
    QCOMPARE(limits.keep, 0);
    QCOMPARE(limits.bytes, 0);
}

void TestRestoreSettings::areNeverMoreThanNumbersHold()
{
    settings().setValue(keep, qint64(3'000'000'000));
    settings().setValue(megabytes, std::numeric_limits<qint64>::max());
    const vexdesk::RestoreLimits limits = tadata::restoreLimits();
    QCOMPARE(limits.keep, std::numeric_limits<int>::max());
    QCOMPARE(limits.bytes, tadata::fromMegabytes(std::numeric_limits<qint64>::max()));
    // All megabytes that there can be.
    QVERIFY(limits.bytes > std::numeric_limits<qint64>::max() - megabyte);
}

void TestRestoreSettings::megabytesAreWhole()
{
    QCOMPARE(tadata::toMegabytes(0), 0);
    QCOMPARE(tadata::toMegabytes(megabyte - 1), 0);
    QCOMPARE(tadata::toMegabytes(megabyte), 1);
    QCOMPARE(tadata::toMegabytes(3 * megabyte - 1), 2);
    QCOMPARE(tadata::fromMegabytes(3), 3 * megabyte);
}

QTEST_GUILESS_MAIN(TestRestoreSettings)
#include "tst_restoresettings.moc"
