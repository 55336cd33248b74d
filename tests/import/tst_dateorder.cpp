// SPDX-License-Identifier: MIT
#include "dateorder.h"

#include <QtTest/QTest>

class TestDateOrder final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void seesDatesThatWereReadWrongly_data();
    void seesDatesThatWereReadWrongly();
};

void TestDateOrder::seesDatesThatWereReadWrongly_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QList<QDate>>("dates");
    QTest::addColumn<bool>("isWrong");
    using Dates = QList<QDate>;
    const auto row = [](const char* name, const char* pattern, const Dates& dates, bool isWrong) {
        QTest::newRow(name) << QString::fromLatin1(pattern) << dates << isWrong;
    };
    const Dates months{{2024, 1, 5}, {2024, 2, 5}, {2024, 3, 5}};
    row("nothing", "dd.MM.yyyy", {}, false);
    row("one", "dd.MM.yyyy", {{2024, 1, 5}}, false);
    row("months instead of days", "dd.MM.yyyy", months, true);
    row("months instead of days, first", "MM/dd/yy", months, true);
    row("the same in quotes", "'dd'.MM.yyyy", months, false);
    row("quotes around a sign", "dd'.'MM'.'yyyy", months, true);
    row("quotes between two of a letter", "d'd'MM.yyyy", months, false);
    row("a quote within a run", "ddM'M'.yyyy", months, false);
    row("single letters", "d.M.yyyy", months, false);
    row("names of months", "dd MMM yyyy", months, false);
    row("months back", "dd.MM.yyyy", {{2024, 3, 5}, {2024, 2, 5}}, true);
    row("a fortnight", "dd.MM.yyyy", {{2024, 1, 1}, {2024, 1, 12}, {2024, 1, 26}}, false);
    row("days that are no months", "dd.MM.yyyy", {{2024, 1, 13}, {2024, 2, 13}}, false);
    row("a day that is none the other way", "dd.MM.yyyy", {{2024, 2, 5}, {2024, 1, 30}}, false);
    row("both leap", "dd.MM.yyyy", {{2024, 1, 1}, {2024, 2, 2}, {2024, 6, 6}}, false);
    row("two weeks the other way", "yyMMdd", {{2001, 5, 20}, {2015, 5, 20}}, true);
    row("a day more the other way", "yyMMdd", {{2001, 5, 20}, {2016, 5, 20}}, false);
    row("two weeks back the other way", "ddMMyy", {{2015, 5, 20}, {2001, 5, 20}}, true);
    row("no more than two weeks", "yyMMdd", {{2001, 5, 1}, {2001, 5, 15}}, false);
    row("days for years of six digits", "ddMMyy", {{2020, 5, 1}, {2021, 5, 1}}, true);
    row("the last of February the other way", "yyMMdd", {{2028, 2, 4}, {2029, 2, 4}}, true);
    row("no such day the other way", "yyMMdd", {{2028, 2, 5}, {2029, 2, 5}}, false);
    row("and with four", "ddMMyyyy", {{2020, 5, 24}, {2021, 5, 24}}, false);
    row("the last of a century", "yyMMdd", {{2001, 5, 24}, {2102, 5, 24}}, true);
    // No day 0, as which the year 2000 would be read.
    row("the first of a century", "yyMMdd", {{2000, 5, 24}, {2001, 5, 24}}, false);
    row("the same date many times", "dd.MM.yyyy", {{2024, 1, 5}, {2024, 1, 5}}, false);
}

void TestDateOrder::seesDatesThatWereReadWrongly()
{
    QFETCH(const QString, pattern);
    QFETCH(const QList<QDate>, dates);
    tadata::DateOrder order(pattern);
    for (const QDate& date : dates)
        order.add(date);
    QTEST(order.isWrong(), "isWrong");
}

QTEST_GUILESS_MAIN(TestDateOrder)
#include "tst_dateorder.moc"
