// SPDX-License-Identifier: MIT
// One import of many files.

#include "commandtest.h"

#include "support/filetree.h"

#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLockFile>
#include <QtTest/QTest>

using namespace testsupport;

namespace {

QByteArray bar(const char* day, const char* price)
{
    QByteArray line = QByteArray(day) + ",100000";
    for (int i = 0; i < 4; ++i)
        line += ',' + QByteArray(price);
    return line + '\n';
}

QByteArray record(const char* price)
{
    QByteArray line = "100000";
    for (int i = 0; i < 4; ++i)
        line += ';' + QByteArray(price) + ".00";
    return line + ";0;0.00;0\n";
}

} // namespace

class TadataManyTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void eachFileHasItsSeries();
    void filesOfOneSeriesComeInTheirOrder_data();
    void filesOfOneSeriesComeInTheirOrder();
    void tickersAreSeries();
    void tickersThatComeBackAreForAMerge();
    void whatIsPrintedKeepsTheOrder();
    void aFileThatFailsKeepsNoneBack();
    void noFileBeginsAfterAFailureIfItMustNot();
    void thereIsOnePoint();
    void oneFailureTakesAllBack();
    void oneLockKeepsAllBack();
    void aNameWithoutACodeIsRefused();
    void noDigitOfAPriceIsLost();

private:
    void write(const QByteArray& name, const QByteArray& content) const
    {
        writeFile(path(name.constData()), content);
    }
    // Of the files with these names; {name} is their series unless the options say otherwise.
    Outcome importAll(const char* names, const QStringList& more = {}) const;
    QJsonArray points() const
    {
        const QByteArray json = runTadata(words("points --json --store") << path("store")).out;
        return QJsonDocument::fromJson(json).object().value(QStringLiteral("points")).toArray();
    }
};

Outcome TadataManyTest::importAll(const char* names, const QStringList& more) const
{
    QStringList line = words("import --no-header --decimals 2 --store store") + more;
    if (!more.contains(QStringLiteral("--series")))
        line += words("--series A/B/{name}");
    if (!more.contains(QStringLiteral("--columns")))
        line += words("--columns date=0,time=1,open=2,high=3,low=4,close=5");
    return runTadata(line + words(names), plainEnvironment(), m_dir->path());
}

void TadataManyTest::eachFileHasItsSeries()
{
    write("one.csv", bar("20240115", "1"));
    write("two.old.csv", bar("20240115", "2"));
    write("three", bar("20240115", "3"));
    const Outcome outcome = importAll("one.csv two.old.csv ./three");
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.out, QByteArray());
    QVERIFY2(outcome.err.startsWith("Файлов: 3, не удалось: 0, не начато: 0, баров: 3, дней: 3, "
                                    "ошибочных строк: 0, секунд: "),
             outcome.err.constData());
    QCOMPARE(outcome.err.count('\n'), 1);
    const Tree expected{{QStringLiteral("A/B/one/20240115_60.iss"), record("1")},
                        {QStringLiteral("A/B/two.old/20240115_60.iss"), record("2")},
                        {QStringLiteral("A/B/three/20240115_60.iss"), record("3")}};
    QCOMPARE(stored(), expected);
}

void TadataManyTest::filesOfOneSeriesComeInTheirOrder_data()
{
    QTest::addColumn<QString>("jobs");
    for (const char* jobs : {"1", "2", "8"})
        QTest::addRow("%s at once", jobs) << QString::fromLatin1(jobs);
}

// The last file to write the day wins.
void TadataManyTest::filesOfOneSeriesComeInTheirOrder()
{
    QFETCH(const QString, jobs);
    QByteArray names;
    for (int i = 0; i < 12; ++i) {
        const QByteArray name = "file" + QByteArray::number(i) + ".csv";
        const QByteArray price = QByteArray::number(i + 1);
        // The earlier, the longer.
        write(name, bar("20240116", price.constData()).repeated(qsizetype(12 - i) * 200) +
                        bar("20240115", price.constData()));
        names += name + ' ';
    }
    QCOMPARE(importAll(names.constData(), words("--series A/B/C --jobs") << jobs).exitCode, 0);
    QCOMPARE(stored().value(QStringLiteral("A/B/C/20240115_60.iss")), record("12"));
    QCOMPARE(stored().value(QStringLiteral("A/B/C/20240116_60.iss")), record("12").repeated(200));
}

const QString tickerColumns = QStringLiteral("ticker=6,date=0,time=1,open=2,high=3,low=4,close=5");

QByteArray barOf(const char* ticker, const char* day, const char* price)
{
    return bar(day, price).chopped(1) + ',' + ticker + '\n';
}

void TadataManyTest::tickersAreSeries()
{
    write("one.csv", barOf("X", "20240115", "1") + barOf("Y", "20240115", "2"));
    write("two.csv", barOf("Y", "20240115", "3") + barOf("Z", "20240115", "4"));
    const QStringList options = words("--series A/B/{ticker} --jobs 2 --columns") << tickerColumns;
    QCOMPARE(importAll("one.csv two.csv", options).exitCode, 0);
    const Tree expected{{QStringLiteral("A/B/X/20240115_60.iss"), record("1")},
                        {QStringLiteral("A/B/Y/20240115_60.iss"), record("3")},
                        {QStringLiteral("A/B/Z/20240115_60.iss"), record("4")}};
    QCOMPARE(stored(), expected);
    const QJsonObject point = points().at(0).toObject();
    QCOMPARE(point.value(QStringLiteral("series")).toArray(),
             QJsonArray({"A/B/X", "A/B/Y", "A/B/Z"}));

    // A ticker that is no name makes a bad line.
    write("three.csv", barOf("..", "20240115", "5"));
    const Outcome outcome = importAll("three.csv", options);
    QCOMPARE(messageOf(outcome), failed(QStringLiteral("Ошибка при импорте 1-й строки:\nКод '..' "
                                                       "не может быть именем каталога.")));
    QCOMPARE(stored(), expected);
}

void TadataManyTest::tickersThatComeBackAreForAMerge()
{
    write("one.csv",
          barOf("X", "20240115", "1") + barOf("Y", "20240115", "2") + barOf("X", "20240116", "3"));
    const QStringList options = words("--series A/B/{ticker} --columns") << tickerColumns;
    const Outcome replaced = importAll("one.csv", options);
    QCOMPARE(replaced.exitCode, 1);
    QVERIFY2(replaced.err.contains("merge"), replaced.err.constData());
    QCOMPARE(importAll("one.csv", options + words("--mode merge")), succeeded());
    QCOMPARE(stored().size(), 3);
}

void TadataManyTest::whatIsPrintedKeepsTheOrder()
{
    QByteArray names;
    QByteArray expected;
    for (int i = 1; i <= 10; ++i) {
        const QByteArray name = "file" + QByteArray::number(i) + ".csv";
        const int bars = i % 2 == 0 ? i : i * 1000;
        write(name, bar("20240115", "1").repeated(bars) + "wrong\n");
        names += name + ' ';
        expected += "Баров: " + QByteArray::number(bars) + ", дней: 1, ошибочных строк: 1\n";
    }
    for (const char* jobs : {"1", "4"}) {
        const Outcome outcome =
            importAll(names.constData(), words("--skip-bad --jobs") << QLatin1String(jobs));
        QCOMPARE(outcome.exitCode, 0);
        QCOMPARE(outcome.out, expected);
        QVERIFY(outcome.err.contains(", ошибочных строк: 10, "));
    }
}

void TadataManyTest::aFileThatFailsKeepsNoneBack()
{
    write("one.csv", bar("20240115", "1"));
    write("wrong.csv", bar("20240115", "2") + "rubbish\n");
    write("two.csv", bar("20240115", "3"));
    for (const char* jobs : {"1", "3"}) {
        const Outcome outcome = importAll("one.csv missing.csv wrong.csv two.csv",
                                          words("--jobs") << QLatin1String(jobs));
        QCOMPARE(outcome.exitCode, 1);
        QVERIFY2(outcome.err.startsWith("Файл missing.csv:\nНевозможно открыть файл missing.csv: " +
                                        qt_error_string(ENOENT).toUtf8() +
                                        "\nФайл wrong.csv:\nОшибка при импорте 2-й строки:\n"),
                 outcome.err.constData());
        QVERIFY(
            outcome.err.contains("Файлов: 4, не удалось: 2, не начато: 0, баров: 3, дней: 3, "));
        QCOMPARE(stored().size(), 3);
    }
}

void TadataManyTest::noFileBeginsAfterAFailureIfItMustNot()
{
    write("one.csv", bar("20240115", "1"));
    write("two.csv", bar("20240115", "3"));
    const Outcome outcome = importAll("one.csv missing.csv two.csv", words("--stop"));
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.err.contains("не удалось: 1, не начато: 1, баров: 1, "),
             outcome.err.constData());
    QCOMPARE(stored().keys(), QStringList{QStringLiteral("A/B/one/20240115_60.iss")});
}

void TadataManyTest::thereIsOnePoint()
{
    write("one.csv", bar("20240115", "1"));
    write("two.csv", bar("20240115", "2"));
    QCOMPARE(importAll("two.csv one.csv", words("--jobs 2")).exitCode, 0);
    QCOMPARE(points().size(), 1);
    const QJsonObject point = points().at(0).toObject();
    QCOMPARE(point.value(QStringLiteral("series")).toArray(), QJsonArray({"A/B/one", "A/B/two"}));
    QCOMPARE(point.value(QStringLiteral("source")).toArray(), QJsonArray({"one.csv", "two.csv"}));
    QCOMPARE(runTadata(words("undo --store") << path("store")).exitCode, 0);
    QVERIFY(stored().isEmpty());
}

void TadataManyTest::oneFailureTakesAllBack()
{
    write("one.csv", bar("20240115", "1"));
    write("two.csv", bar("20240115", "2"));
    QCOMPARE(importAll("one.csv two.csv").exitCode, 0);
    const Tree before = stored();
    write("one.csv", bar("20240115", "5"));
    write("two.csv", bar("20240115", "6") + "rubbish\n");
    write("three.csv", bar("20240115", "7"));
    QCOMPARE(importAll("one.csv two.csv three.csv", words("--undo-on-error --jobs 2")).exitCode, 1);
    QCOMPARE(stored(), before);
    QCOMPARE(points().size(), 1);
    QCOMPARE(importAll("one.csv two.csv three.csv").exitCode, 1);
    QCOMPARE(stored().value(QStringLiteral("A/B/three/20240115_60.iss")), record("7"));
}

// Whoever holds the lock of one series, none of the others is touched.
void TadataManyTest::oneLockKeepsAllBack()
{
    write("one.csv", bar("20240115", "1"));
    write("two.csv", bar("20240115", "2"));
    QVERIFY(QDir().mkpath(path("store-restore/locks/A/B")));
    QLockFile lock(path("store-restore/locks/A/B/two.lock"));
    lock.setStaleLockTime(0);
    QVERIFY(lock.lock());
    const Outcome outcome = importAll("one.csv two.csv", words("--wait 0"));
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.err.contains("two.lock"), outcome.err.constData());
    QVERIFY(stored().isEmpty());
    QVERIFY(points().isEmpty());
}

void TadataManyTest::aNameWithoutACodeIsRefused()
{
    write("one.csv", bar("20240115", "1"));
    write(".csv", bar("20240115", "1"));
    const Outcome outcome = importAll("one.csv .csv");
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.err.contains("не получается код"), outcome.err.constData());
    QCOMPARE(stored().size(), 1);
}

// A series that nobody knows has as many decimals as any of its files.
void TadataManyTest::noDigitOfAPriceIsLost()
{
    write("one.csv", "20240115,1000,1.5,1.7,1.4,1.6\n20240115,1001,1.6,1.7,1.4,1.5\n");
    write("two.csv", "20240116,1000,1.525,1.7,1.4,1.6\n20240116,1001,1.6,1.7,1.4,1.525\n");
    for (const char* files : {"one.csv two.csv", "two.csv one.csv"}) {
        QCOMPARE(runTadata(words("import --series A/B/C --store store --jobs 2") + words(files),
                           plainEnvironment(), m_dir->path())
                     .exitCode,
                 0);
        QVERIFY(stored()
                    .value(QStringLiteral("A/B/C/20240115_60.iss"))
                    .startsWith("100000;1.500;1.700;"));
        QVERIFY(stored()
                    .value(QStringLiteral("A/B/C/20240116_60.iss"))
                    .startsWith("100000;1.525;1.700;"));
    }
}

QTEST_GUILESS_MAIN(TadataManyTest)
#include "tst_tadatamany.moc"
