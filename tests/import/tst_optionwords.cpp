// SPDX-License-Identifier: MIT
#include "optionwords.h"

#include <QtTest/QTest>

class TestOptionWords final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsColumns();
    void refusesColumns_data();
    void refusesColumns();
    void readsSeparators_data();
    void readsSeparators();
    void namesModes();
};

void TestOptionWords::readsColumns()
{
    using Columns = QMap<qint32, qint32>;
    const auto shortest =
        tadata::columnsOfWord(QStringLiteral("date=0,time=1,open=2,high=3,low=4,close=5"));
    QVERIFY2(shortest, qPrintable(shortest.message()));
    QCOMPARE(*shortest, Columns({{1, 0}, {2, 1}, {3, 2}, {4, 3}, {5, 4}, {6, 5}}));
    const auto all = tadata::columnsOfWord(QStringLiteral(
        "ticker=0,oi=9,value=8,volume=7,close=6,low=5,high=4,open=3,time=20,date=1"));
    QVERIFY2(all, qPrintable(all.message()));
    QCOMPARE(
        *all,
        Columns(
            {{1, 1}, {2, 20}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 7}, {8, 8}, {9, 9}, {10, 0}}));
}

void TestOptionWords::refusesColumns_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const char* word, const char* error) {
        QTest::newRow(name) << QString::fromUtf8(word) << QString::fromUtf8(error);
    };
    row("nothing", "", "роли «» нет");
    row("unknown role", "date=0,none=1", "роли «none» нет");
    row("another case", "Date=0", "роли «Date» нет");
    row("no column", "date", "«date» не называет номера столбца");
    row("no number", "date=x", "«date=x» не называет номера столбца");
    row("below zero", "date=-1", "«date=-1» не называет номера столбца");
    row("two numbers", "date=0=1", "«date=0=1» не называет номера столбца");
    row("role twice", "date=0,time=1,date=2", "роль «date» названа дважды");
    row("column twice", "date=0,time=0", "столбец 0 назначен дважды");
    row("date is missing", "time=1,open=2,high=3,low=4,close=5", "нет роли «date»");
    row("close is missing", "date=0,time=1,open=2,high=3,low=4,volume=5", "нет роли «close»");
}

void TestOptionWords::refusesColumns()
{
    QFETCH(const QString, word);
    QTEST(tadata::columnsOfWord(word).message(), "error");
}

void TestOptionWords::readsSeparators_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("separator"); // null: refused
    const auto row = [](const char* name, const char* word, const char* separator) {
        QTest::newRow(name) << QString::fromUtf8(word) << QString::fromUtf8(separator);
    };
    row("comma", "comma", ",");
    row("semicolon", "semicolon", ";");
    row("space", "space", " ");
    row("tab", "tab", "\t");
    row("itself", "|", "|");
    row("several", "::", "::");
    row("another case", "Comma", "Comma");
    row("nothing", "", nullptr);
    row("line feed", "\n", nullptr);
    row("carriage return", "\r", nullptr);
    row("line feed within", "a\nb", nullptr);
}

void TestOptionWords::readsSeparators()
{
    QFETCH(const QString, word);
    QFETCH(const QString, separator);
    const auto read = tadata::separatorOfWord(word);
    QCOMPARE(read.has_value(), !separator.isNull());
    if (read)
        QCOMPARE(*read, separator);
}

void TestOptionWords::namesModes()
{
    QCOMPARE(tadata::modeWord(ImportMode::Replace), QStringLiteral("replace"));
    QCOMPARE(tadata::modeWord(ImportMode::Merge), QStringLiteral("merge"));
    QCOMPARE(tadata::modeWord(ImportMode::Fill), QStringLiteral("fill"));
    QCOMPARE(tadata::pointMaker(ImportMode::Replace), QStringLiteral("import"));
    QCOMPARE(tadata::pointMaker(ImportMode::Merge), QStringLiteral("merge"));
    QCOMPARE(tadata::pointMaker(ImportMode::Fill), QStringLiteral("fill"));
}

QTEST_GUILESS_MAIN(TestOptionWords)
#include "tst_optionwords.moc"
