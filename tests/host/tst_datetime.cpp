// SPDX-License-Identifier: MIT
#include <vexdesk/database/datetime.h>
#include <vexdesk/database/exception.h>

#include "support/strictlog.h"

#include <QtCore/QDateTime>
#include <QtTest/QTest>

#include <random>

class DateTimeTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void reads_data();
    void reads();
    void refuses_data();
    void refuses();
    void prints_data();
    void prints();
    void agreesWithTheCalendar();
    void comparesBySize();
};

void DateTimeTest::reads_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("msecs");
    QTest::newRow("epoch") << "1970-01-01 00:00:00" << qint64(0);
    QTest::newRow("milliseconds") << "1970-01-01 00:00:01.005" << qint64(1005);
    QTest::newRow("zero milliseconds") << "1970-01-02 00:00:00.000" << qint64(86400000);
    QTest::newRow("before the epoch") << "1969-12-31 23:59:59.999" << qint64(-1);
    QTest::newRow("leap day") << "2024-02-29 12:34:56" << qint64(1709210096000);
    QTest::newRow("first") << "0001-01-01 00:00:00" << qint64(-62135596800000);
    QTest::newRow("last") << "9999-12-31 23:59:59.999" << qint64(253402300799999);
    // Moscow and New York skip these hours: the clock of the machine plays no part.
    QTest::newRow("skipped in Moscow") << "2010-03-28 02:30:00" << qint64(1269743400000);
    QTest::newRow("skipped in New York") << "2024-03-10 02:30:00" << qint64(1710037800000);
}

void DateTimeTest::reads()
{
    QFETCH(QString, text);
    QFETCH(qint64, msecs);
    QCOMPARE(datetime(text).msecsSinceEpoch(), msecs);
    QCOMPARE(datetime::fromText(text).value().msecsSinceEpoch(), msecs);
}

void DateTimeTest::refuses_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("null") << QString();
    QTest::newRow("empty") << "";
    QTest::newRow("date alone") << "2024-02-28";
    QTest::newRow("minutes") << "2024-02-28 10:00";
    QTest::newRow("T") << "2024-02-28T10:00:00";
    QTest::newRow("two spaces") << "2024-02-28  1:00:00";
    QTest::newRow("point alone") << "2024-02-28 10:00:00.";
    QTest::newRow("one digit of milliseconds") << "2024-02-28 10:00:00.1";
    QTest::newRow("four digits of milliseconds") << "2024-02-28 10:00:00.1234";
    QTest::newRow("comma") << "2024-02-28 10:00:00,123";
    QTest::newRow("space before") << " 2024-02-28 10:00:00";
    QTest::newRow("space behind") << "2024-02-28 10:00:00 ";
    QTest::newRow("slashes") << "2024/02/28 10:00:00";
    QTest::newRow("day first") << "28-02-2024 10:00:00";
    QTest::newRow("no leap day") << "2023-02-29 10:00:00";
    QTest::newRow("century without leap day") << "1900-02-29 10:00:00";
    QTest::newRow("month 13") << "2024-13-01 10:00:00";
    QTest::newRow("month 0") << "2024-00-01 10:00:00";
    QTest::newRow("day 0") << "2024-01-00 10:00:00";
    QTest::newRow("year 0") << "0000-01-01 10:00:00";
    QTest::newRow("hour 24") << "2024-01-01 24:00:00";
    QTest::newRow("minute 60") << "2024-01-01 10:60:00";
    QTest::newRow("second 60") << "2024-01-01 10:00:60";
    QTest::newRow("sign") << "-024-01-01 10:00:00";
    QTest::newRow("arabic digits") << QStringLiteral("٢٠٢٤-01-01 10:00:00");
    QTest::newRow("zone") << "2024-01-01 10:00:00Z";
    QTest::newRow("percent") << "%1";
}

void DateTimeTest::refuses()
{
    QFETCH(QString, text);
    QVERIFY(!datetime::fromText(text));
    try {
        const datetime read(text);
        QFAIL(qPrintable(read.toString()));
    } catch (const Exception& error) {
        QCOMPARE(error.message(), "Can't convert from '" + text + "'' to datetime");
    }
}

void DateTimeTest::prints_data()
{
    QTest::addColumn<qint64>("msecs");
    QTest::addColumn<QString>("text");
    QTest::newRow("epoch") << qint64(0) << "1970-01-01 00:00:00";
    QTest::newRow("milliseconds") << qint64(7) << "1970-01-01 00:00:00.007";
    QTest::newRow("before the epoch") << qint64(-1) << "1969-12-31 23:59:59.999";
    QTest::newRow("first") << qint64(-62135596800000) << "0001-01-01 00:00:00";
    QTest::newRow("before the first") << qint64(-62135596800001) << "-62135596800001";
    QTest::newRow("last") << qint64(253402300799999) << "9999-12-31 23:59:59.999";
    QTest::newRow("behind the last") << qint64(253402300800000) << "253402300800000";
    QTest::newRow("least") << std::numeric_limits<qint64>::min() << "-9223372036854775808";
    QTest::newRow("most") << std::numeric_limits<qint64>::max() << "9223372036854775807";
}

void DateTimeTest::prints()
{
    QFETCH(qint64, msecs);
    QFETCH(QString, text);
    QCOMPARE(datetime(msecs).toString(), text);
}

void DateTimeTest::agreesWithTheCalendar()
{
    std::mt19937_64 random(1);
    std::uniform_int_distribution<qint64> any(-62135596800000, 253402300799999);
    for (int i = 0; i < 20000; ++i) {
        // Every other one without milliseconds.
        const qint64 msecs = i % 2 ? any(random) : any(random) / 1000 * 1000;
        const QDateTime calendar = QDateTime::fromMSecsSinceEpoch(msecs, Qt::UTC);
        const QString text = calendar.toString(calendar.time().msec() ? "yyyy-MM-dd HH:mm:ss.zzz"
                                                                      : "yyyy-MM-dd HH:mm:ss");
        QCOMPARE(datetime(msecs).toString(), text);
        QCOMPARE(datetime(text).msecsSinceEpoch(), msecs);
    }
}

void DateTimeTest::comparesBySize()
{
    QVERIFY(datetime(-1) < datetime());
    QVERIFY(datetime(1) > datetime());
    QVERIFY(datetime(5) == datetime(5));
    QVERIFY(datetime(5) != datetime(6));
}

QTEST_GUILESS_MAIN(DateTimeTest)
#include "tst_datetime.moc"
