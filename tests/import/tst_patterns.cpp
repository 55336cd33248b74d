// SPDX-License-Identifier: MIT
#include "patterns.h"

#include <QtTest/QTest>

class TestPatterns final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsWhatNamesADay_data();
    void knowsWhatNamesADay();
    void knowsWhatHasHoursAndMinutes_data();
    void knowsWhatHasHoursAndMinutes();
};

void TestPatterns::knowsWhatNamesADay_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("namesADay");
    for (const char* pattern :
         {"yyyyMMdd", "ddMMyy", "d.M.yy", "d MMM yyyy", "d MMMM yyyy", "'d' dd'M'MM'yy'yyyy"})
        QTest::newRow(pattern) << QString::fromLatin1(pattern) << true;
    // Names of weekdays, years of other lengths, other letters, and what stands between quotes.
    for (const char* pattern :
         {"", "yyyyMM", "yyyydd", "MMdd", "dddMMyyyy", "ddddMMyyyy", "ddMMMMMyyyy", "ddMMyyy",
          "ddMMy", "ddMMyyyyy", "ddmmyyyy", "DDMMYYYY", "'dd'MMyyyy", "dd'MM'yyyy", "ddMM'yyyy'"})
        QTest::newRow(pattern) << QString::fromLatin1(pattern) << false;
    QTest::newRow("a quote that is open") << QStringLiteral("dd'MMyyyy") << false;
    QTest::newRow("two quotes") << QStringLiteral("dd''MM''yyyy") << true;
}

void TestPatterns::knowsWhatNamesADay()
{
    QFETCH(const QString, pattern);
    QTEST(tadata::namesADay(pattern), "namesADay");
}

void TestPatterns::knowsWhatHasHoursAndMinutes_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("hasHours");
    QTest::addColumn<bool>("hasMinutes");
    const auto row = [](const char* pattern, bool hasHours, bool hasMinutes) {
        QTest::newRow(pattern) << QString::fromLatin1(pattern) << hasHours << hasMinutes;
    };
    row("", false, false);
    row("hhmmss", true, true);
    row("h:m", true, true);
    row("HH:mm", true, true);
    row("H", true, false);
    row("mm", false, true);
    row("hhhmmm", false, false);
    row("MM", false, false);
    row("'hh'mm", false, true);
    row("hh'mm'", true, false);
}

void TestPatterns::knowsWhatHasHoursAndMinutes()
{
    QFETCH(const QString, pattern);
    QTEST(tadata::hasHours(pattern), "hasHours");
    QTEST(tadata::hasMinutes(pattern), "hasMinutes");
}

QTEST_GUILESS_MAIN(TestPatterns)
#include "tst_patterns.moc"
