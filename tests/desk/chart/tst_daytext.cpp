// SPDX-License-Identifier: MIT
// Dates as people type them.

#include "desk/chart/daytext.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

using vexdesk::OfferedDays;

namespace {

const OfferedDays offered{QDate(2016, 3, 1), QDate(2023, 11, 20), QDate(2023, 11, 15)};

} // namespace

class TestDayText final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void isReadAsItIsMeant_data();
    void isReadAsItIsMeant();
    void followsTheOrderOfTheLanguage_data();
    void followsTheOrderOfTheLanguage();
    void whatIsNoDayIsNone_data();
    void whatIsNoDayIsNone();
    void everyDayReadsItself();
};

void TestDayText::isReadAsItIsMeant_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("day");
    const auto row = [](const char* text, const QDate& day) {
        QTest::newRow(text) << QString::fromLatin1(text) << day;
    };
    row("29.02.2020", {2020, 2, 29});
    row("29.2.20", {2020, 2, 29});
    row(" 29 / 02 / 2020 ", {2020, 2, 29});
    row("29-02-2020", {2020, 2, 29});
    row("29022020", {2020, 2, 29});
    row("290220", {2020, 2, 29});
    row("2020-02-29", {2020, 2, 29});
    row("2020.2.29.", {2020, 2, 29});
    // Not in the year that is shown, nor in one that is not stored: in the nearest other one.
    row("29.02", {2020, 2, 29});
    row("2902", {2020, 2, 29});
    row("16.05", {2023, 5, 16});
    // This year's is not stored yet.
    row("24.12", {2022, 12, 24});
    row("16", {2023, 11, 16});
    row("7", {2023, 11, 7});
    row("31", {2023, 10, 31}); // November has none
    row("02.2020", {2020, 2, 1});
    row("2020-02", {2020, 2, 1});
    // Where it is nowhere, it is a day all the same.
    row("01.02.2030", {2030, 2, 1});
    row("01.01.70", {1970, 1, 1});
    row("01.01.69", {2069, 1, 1});
}

void TestDayText::isReadAsItIsMeant()
{
    QFETCH(const QString, text);
    const auto day = vexdesk::dayOfText(text, QStringLiteral("dd.MM.yyyy"), offered);
    QVERIFY(day.has_value());
    QTEST(*day, "day");
}

void TestDayText::followsTheOrderOfTheLanguage_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* format, const char* text) {
        QTest::addRow("%s %s", format, text)
            << QString::fromLatin1(format) << QString::fromLatin1(text);
    };
    row("MM/dd/yyyy", "02/29/2020");
    row("MM/dd/yyyy", "02292020");
    row("MM/dd/yyyy", "2/29");
    row("MM/dd/yyyy", "0229");
    row("yyyy-MM-dd", "2020-02-29");
    row("yyyy-MM-dd", "20200229");
    row("yyyy-MM-dd", "200229");
    row("yyyy-MM-dd", "02-29");
    row("dd/MM/yyyy", "2020-02-29");
}

void TestDayText::followsTheOrderOfTheLanguage()
{
    QFETCH(const QString, format);
    QFETCH(const QString, text);
    QCOMPARE(vexdesk::dayOfText(text, format, offered), std::optional(QDate(2020, 2, 29)));
}

void TestDayText::whatIsNoDayIsNone_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"", " ", ".", "x", "29.02.2023", "30.02", "32", "0", "00.02", "12.13",
                             "1.2.3.4", "29.02.20201", "123", "1234567", "-5x", "29,5,x", "12:30"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void TestDayText::whatIsNoDayIsNone()
{
    QFETCH(const QString, text);
    const auto day = vexdesk::dayOfText(text, QStringLiteral("dd.MM.yyyy"), offered);
    QVERIFY2(!day, qPrintable(day.value_or(QDate()).toString(Qt::ISODate)));
}

void TestDayText::everyDayReadsItself()
{
    for (QDate day(1999, 12, 1); day < QDate(2029, 1, 1); day = day.addDays(1)) {
        for (const char* format : {"dd.MM.yyyy", "MM/dd/yyyy", "yyyy-MM-dd", "d.M.yy"}) {
            const QString pattern = QString::fromLatin1(format);
            const auto read = vexdesk::dayOfText(day.toString(pattern), pattern, offered);
            QCOMPARE(read, std::optional(day));
        }
    }
}

QTEST_GUILESS_MAIN(TestDayText)
#include "tst_daytext.moc"
