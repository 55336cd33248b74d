// SPDX-License-Identifier: MIT
// Dates as the languages of the terminal write them in numbers.

#include "support/strictlog.h"

#include <vexdesk/dateformat.h>

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtTest/QTest>

class TestDateFormat final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void hasAllDigits_data();
    void hasAllDigits();
    void isThatOfTheDefaultLocale();
};

void TestDateFormat::hasAllDigits_data()
{
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("moment");
    QTest::newRow("C") << "dd.MM.yyyy"
                       << "dd.MM.yyyy HH:mm:ss";
    QTest::newRow("ru_RU") << "dd.MM.yyyy"
                           << "dd.MM.yyyy HH:mm:ss";
    QTest::newRow("en_US") << "MM/dd/yyyy"
                           << "MM/dd/yyyy hh:mm:ss AP";
    QTest::newRow("sv_SE") << "yyyy-MM-dd"
                           << "yyyy-MM-dd HH:mm:ss";
}

void TestDateFormat::hasAllDigits()
{
    const QLocale locale{QLatin1String(QTest::currentDataTag())};
    QTEST(vexdesk::shownDateFormat(locale), "date");
    // Some languages part the hour from its half of the day by another blank.
    QTEST(vexdesk::shownMomentFormat(locale).replace(QChar(0x202f), u' '), "moment");
}

void TestDateFormat::isThatOfTheDefaultLocale()
{
    const QDateTime moment(QDate(2024, 2, 3), QTime(4, 5, 6));
    QLocale::setDefault(QLocale(QStringLiteral("en_GB")));
    QCOMPARE(vexdesk::shownDate(moment.date()), QStringLiteral("03/02/2024"));
    QCOMPARE(vexdesk::shownMoment(moment), QStringLiteral("03/02/2024 04:05:06"));
    QLocale::setDefault(QLocale::c());
    QCOMPARE(vexdesk::shownDate(moment.date()), QStringLiteral("03.02.2024"));
    QCOMPARE(vexdesk::shownMoment(moment), QStringLiteral("03.02.2024 04:05:06"));
}

QTEST_GUILESS_MAIN(TestDateFormat)
#include "tst_dateformat.moc"
