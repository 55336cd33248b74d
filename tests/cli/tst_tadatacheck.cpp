// SPDX-License-Identifier: MIT
// tadata check: what it prints, and what it tells the shell.

#include "commandtest.h"

#include "support/filetree.h"

#include <QtTest/QTest>

#include <cerrno>

using namespace testsupport;

class TadataCheckTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void printsJsonAndNothingElse();
    void tellsATraderWhatMatters();
    void speaksEnglish();
    void tellsTheShell();
    void tellsTheShellOfAnyProblemWhenStrict();
    void writesNothing();
    void guessesWhatItIsNotTold();
    void refusesWrongLines_data();
    void refusesWrongLines();
    void namesWhatItCannotRead();

private:
    Outcome check(const QByteArray& content, const QStringList& more = {},
                  const QProcessEnvironment& environment = plainEnvironment()) const
    {
        writeFile(path("bars.csv"), content);
        QStringList line = importLine(path("bars.csv"), more);
        line[0] = QStringLiteral("check");
        return runTadata(line, environment);
    }
    QString day(const char* name) const
    {
        return path("store") + QStringLiteral("/NORD/MAIN/ALFA/") + QLatin1String(name);
    }
};

namespace {

const QByteArray bars = "20240115,100000,1,2,1,2\n20240115,100100,1,2,1,2\n";
const QByteArray storedDay = "095900;1.00;2.00;1.00;2.00;0;0.00;0\n";

} // namespace

void TadataCheckTest::printsJsonAndNothingElse()
{
    writeFile(day("20240115_60.iss"), storedDay);
    const QByteArray report =
        R"({"badLines":1,"bars":2,"counts":{"bad-line":1},"days":[{"bars":2,"day":"2024-01-15",)"
        R"("lost":1,"outcome":"replaced","result":2,"stored":1}],"error":)"
        R"("Ошибка при импорте 3-й строки:\nНедостаточное количество столбцов.","file":"FILE",)"
        R"("first":"2024-01-15T10:00:00","last":"2024-01-15T10:01:00","lines":3,)"
        R"("mode":"replace","problems":[{"day":null,"kind":"bad-line","line":3,)"
        R"("text":"Недостаточное количество столбцов"}],"series":"NORD/MAIN/ALFA",)"
        R"("spacing":60,"stopsAtLine":3,"timeframe":60,"wouldImport":false})"
        "\n";
    QCOMPARE(check(bars + "bad\n", words("--json")),
             (Outcome{1, QByteArray(report).replace("FILE", path("bars.csv").toUtf8()), {}}));
    const QByteArray empty =
        R"({"badLines":0,"bars":0,"counts":{},"days":[],"error":"","file":"FILE","first":null,)"
        R"("last":null,"lines":0,"mode":"fill","problems":[],"series":"NORD/MAIN/ALFA",)"
        R"("spacing":null,"stopsAtLine":null,"timeframe":1,"wouldImport":true})"
        "\n";
    QCOMPARE(check("", words("--json --mode fill --timeframe 1")),
             succeeded(QByteArray(empty).replace("FILE", path("bars.csv").toUtf8())));
}

void TadataCheckTest::tellsATraderWhatMatters()
{
    writeFile(day("20240115_60.iss"), storedDay);
    const QByteArray text = path("bars.csv").toUtf8() +
                            " → NORD/MAIN/ALFA 60\n"
                            "Импорт закончится на строке 3. Ошибка при импорте 3-й строки: "
                            "Недостаточное количество столбцов.\n"
                            "Баров: 2, строк: 3, ошибочных строк: 1; с 2024-01-15 10:00:00 по "
                            "2024-01-15 10:01:00; обычно через 60 с\n"
                            "Дней: 1; новых: 0, без изменений: 0, заменяемых: 1, дополняемых: 0\n"
                            "Пропадёт баров: 1. Больше всего: 2024-01-15 (1)\n"
                            "На что посмотреть:\n"
                            "  Ошибочные строки: 1 (строки 3)\n"
                            "    3: Недостаточное количество столбцов\n";
    QCOMPARE(check(bars + "bad\n"), (Outcome{1, text, {}}));
}

void TadataCheckTest::speaksEnglish()
{
    QProcessEnvironment english = plainEnvironment();
    english.insert(QStringLiteral("TADATA_LANGUAGE"), QStringLiteral("en"));
    const Outcome outcome = check(bars, {}, english);
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.out.contains("\nThe import would come to its end.\n"),
             outcome.out.constData());
}

void TadataCheckTest::tellsTheShell()
{
    QCOMPARE(check(bars).exitCode, 0);
    QCOMPARE(check(bars + "bad\n").exitCode, 1);
    QCOMPARE(check(bars + "bad\n", words("--skip-bad")).exitCode, 0);
    QCOMPARE(check("bad\n", words("--skip-bad")).exitCode, 1);
}

void TadataCheckTest::tellsTheShellOfAnyProblemWhenStrict()
{
    const QStringList strict = words("--strict --max-problems 0");
    QCOMPARE(check(bars, strict).exitCode, 0);
    QCOMPARE(check("20240115,000000,1.005,2,1,2\n", strict).exitCode, 0);
    QCOMPARE(check("20240115,000000,3,2,1,2\n", strict).exitCode, 1);
    QCOMPARE(check("20240115,000000,3,2,1,2\n").exitCode, 0);
}

void TadataCheckTest::writesNothing()
{
    check(bars + "bad\n", words("--rejects") << path("rejects"));
    QCOMPARE(readDirectories(directory()), QStringList());
    QCOMPARE(readTree(directory()).keys(), QStringList{QStringLiteral("bars.csv")});
}

void TadataCheckTest::guessesWhatItIsNotTold()
{
    QByteArray content = "<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>\n";
    for (int minute = 10; minute < 40; ++minute)
        content += "20240115,10" + QByteArray::number(minute) + "00,1,2,1,2\n";
    writeFile(path("bars.csv"), content);
    const Outcome outcome = runTadata(words("check --json --series NORD/MAIN/ALFA --store")
                                      << path("store") << path("bars.csv"));
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY(outcome.out.contains("\"bars\":30,"));
    QVERIFY(!outcome.err.isEmpty());
}

void TadataCheckTest::refusesWrongLines_data()
{
    QTest::addColumn<QStringList>("more");
    QTest::newRow("problems") << words("--max-problems -1");
    QTest::newRow("wait") << words("--wait x");
    QTest::newRow("points") << words("--undo-on-error --no-restore-point");
    QTest::newRow("tickers") << words("--series A/B/{ticker} --decimals 2");
    QTest::newRow("decimals") << words("--series A/B/C");
    QTest::newRow("two files") << words("other.csv");
}

void TadataCheckTest::refusesWrongLines()
{
    QFETCH(const QStringList, more);
    const Outcome outcome = check(bars, more);
    QCOMPARE(outcome.exitCode, 2);
    QVERIFY(outcome.out.isEmpty() && !outcome.err.isEmpty());
}

void TadataCheckTest::namesWhatItCannotRead()
{
    QDir().mkpath(day("20240115_60.iss"));
    QCOMPARE(check(bars, words("--json")),
             failed(QStringLiteral("Невозможно открыть файл ") + day("20240115_60.iss"), EISDIR));
    QVERIFY(QDir(path("store")).removeRecursively());
    const QProcessEnvironment faulty =
        faultyEnvironment(QStringLiteral("read"), QStringLiteral("bars.csv"), EIO);
    const Outcome outcome = check(bars, words("--json"), faulty);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY(outcome.out.isEmpty());
    QVERIFY(outcome.err.contains("bars.csv"));
}

QTEST_GUILESS_MAIN(TadataCheckTest)
#include "tst_tadatacheck.moc"
