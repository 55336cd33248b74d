// SPDX-License-Identifier: MIT
#include "columnroles.h"

#include <QtTest/QTest>

#include <set>

class TestColumnRoles final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsColumnsByTheirNames_data();
    void knowsColumnsByTheirNames();
    void eachRoleHasAWord();
};

void TestColumnRoles::knowsColumnsByTheirNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<ColumnRole>("role"); // None: unknown
    const auto row = [](const char* name, ColumnRole role) {
        QTest::newRow(name) << QString::fromUtf8(name) << role;
    };
    row("date", ColumnRole::Date);
    row("<DATE>", ColumnRole::Date);
    row("\"Дата\"", ColumnRole::Date);
    row(" 'Время' \t", ColumnRole::Time);
    row("< \"open\" >", ColumnRole::Open);
    row("макс", ColumnRole::High);
    row("Min", ColumnRole::Low);
    row("<CLOSE", ColumnRole::Close);
    row("VOL>", ColumnRole::Volume);
    row("Оборот", ColumnRole::Value);
    row("<OPEN_INT>", ColumnRole::OpenInterest);
    row("symbol", ColumnRole::Ticker);
    row("", ColumnRole::None);
    row("<", ColumnRole::None);
    row("<>", ColumnRole::None);
    row("dates", ColumnRole::None);
    row("x<date>", ColumnRole::None);
    row("open int", ColumnRole::None);
}

void TestColumnRoles::knowsColumnsByTheirNames()
{
    QFETCH(const QString, name);
    QTEST(tadata::roleOfColumnName(name).value_or(ColumnRole::None), "role");
}

void TestColumnRoles::eachRoleHasAWord()
{
    std::set<QString> words;
    for (int role = 1; role <= static_cast<int>(ColumnRole::Ticker); ++role)
        words.insert(tadata::roleWord(ColumnRole(role)));
    QCOMPARE(words.size(), size_t(10));
    QVERIFY(!words.contains(QString()));
    QVERIFY(tadata::roleWord(ColumnRole::None).isEmpty());
    QCOMPARE(tadata::roleWord(ColumnRole::OpenInterest), QStringLiteral("oi"));
}

QTEST_GUILESS_MAIN(TestColumnRoles)
#include "tst_columnroles.moc"
