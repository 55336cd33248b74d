// SPDX-License-Identifier: MIT
// The ways of an import as a user runs them: guesses, modes, clocks, bad lines, the way back.

#include "commandtest.h"

#include "support/filetree.h"

#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtTest/QTest>

#include <cerrno>
#include <cstring>

using namespace testsupport;

namespace {

const QString dayFile = QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss");

constexpr char threeBars[] = "20240115,100000,1,1,1,1\n"
                             "20240115,100100,2,2,2,2\n"
                             "20240115,100200,3,3,3,3\n";

constexpr char namedColumns[] = "Date;Time;Open;High;Low;Close;Vol;Ticker\n"
                                "2024-01-15;10:00;1.51;1.7;1.4;1.6;3;AA\n"
                                "2024-01-15;10:01;1.6;1.8;1.5;1.7;4;BB\n";

QByteArray record(const char* time, const char* price)
{
    QByteArray line = time;
    for (int i = 0; i < 4; ++i)
        line += ';' + QByteArray(price) + ".00";
    return line + ";0;0.00;0\n";
}

} // namespace

class TadataWaysTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void modesMeetWhatIsStored_data();
    void modesMeetWhatIsStored();
    void aMergeWithABadLineChangesNothing();
    void theClockOfTheFile_data();
    void theClockOfTheFile();
    void patternsOfDatesMayBeAny();
    void badLinesArePassedOver();
    void rejectsAreTheLinesThemselves();
    void rejectsThatCannotBeMadeCostNothing();
    void rejectsThatCannotBeWrittenSayWhy();
    void onlyBadLinesAreAFailure();
    void aFailureIsPutBack();
    void aFailedMergeOfSecondsIsToBeTakenBack();
    void aFormatIsGuessed();
    void whatIsGivenIsNotGuessed();
    void aGuessThatIsNotEnoughIsRefused();
    void aFileThatCannotBeReadIsNoWrongLine();
    void aSeriesThatNobodyKnowsNeedsDecimals();

private:
    QJsonArray points() const
    {
        const QByteArray json = runTadata(words("points --json --store") << path("store")).out;
        return QJsonDocument::fromJson(json).object().value(QStringLiteral("points")).toArray();
    }
    // Without --columns and --no-header.
    Outcome importPlainly(const QByteArray& content, const QStringList& more) const
    {
        writeFile(path("bars.csv"), content);
        return runTadata(words("import")
                         << path("bars.csv") << words("--store") << path("store") << more);
    }
};

void TadataWaysTest::modesMeetWhatIsStored_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("by");
    QTest::addColumn<QByteArray>("content");
    const QByteArray ten = record("100000", "1");
    const QByteArray eleven = record("110000", "6");
    QTest::newRow("replace") << QStringLiteral("replace") << QStringLiteral("import")
                             << record("100100", "5") + eleven;
    QTest::newRow("merge") << QStringLiteral("merge") << QStringLiteral("merge")
                           << ten + record("100100", "5") + record("100200", "3") + eleven;
    QTest::newRow("fill") << QStringLiteral("fill") << QStringLiteral("fill")
                          << ten + record("100100", "2") + record("100200", "3") + eleven;
}

void TadataWaysTest::modesMeetWhatIsStored()
{
    QFETCH(const QString, mode);
    QFETCH(const QString, by);
    QFETCH(const QByteArray, content);
    QCOMPARE(import(threeBars), succeeded());
    const QByteArray more = "20240115,100100,5,5,5,5\n20240115,110000,6,6,6,6\n";
    QCOMPARE(import(more, {QStringLiteral("--mode"), mode}), succeeded());
    QCOMPARE(stored(), (Tree{{dayFile, content}}));
    QCOMPARE(points().at(0).toObject().value(QStringLiteral("by")).toString(), by);
    // Once more, and it is as it was: a fill and a merge touch nothing then.
    const qsizetype before = points().size();
    QCOMPARE(import(more, {QStringLiteral("--mode"), mode}), succeeded());
    QCOMPARE(stored(), (Tree{{dayFile, content}}));
    QCOMPARE(points().size(), mode == u"replace" ? before + 1 : before);
}

void TadataWaysTest::aMergeWithABadLineChangesNothing()
{
    QCOMPARE(import(threeBars), succeeded());
    const Tree before = stored();
    for (const char* mode : {"merge", "fill"}) {
        const Outcome outcome = import("20240114,100100,5,5,5,5\nwrong\n",
                                       {QStringLiteral("--mode"), QLatin1String(mode)});
        QCOMPARE(messageOf(outcome), failed(QStringLiteral("Ошибка при импорте 2-й строки:\n"
                                                           "Недостаточное количество столбцов.")));
        QCOMPARE(stored(), before);
        QCOMPARE(points().size(), 1);
    }
}

void TadataWaysTest::theClockOfTheFile_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("day");
    QTest::addColumn<QByteArray>("time");
    const auto row = [](const char* name, const char* options, const char* day, const char* time) {
        QTest::newRow(name) << words(options) << QString::fromLatin1(day) << QByteArray(time);
    };
    row("as it is", "", "20240115", "233000");
    row("stamps of ends", "--stamp end", "20240115", "233000");
    row("stamps of beginnings", "--stamp begin", "20240115", "233100");
    row("shift", "--shift 30", "20240116", "000000");
    row("shift back", "--shift -1411", "20240114", "235900");
    row("zones", "--from-zone Europe/Moscow --to-zone America/New_York", "20240115", "153000");
    row("all of them", "--stamp begin --shift=60 --from-zone UTC --to-zone Europe/Moscow",
        "20240116", "033100");
}

void TadataWaysTest::theClockOfTheFile()
{
    QFETCH(const QStringList, options);
    QFETCH(const QString, day);
    QFETCH(const QByteArray, time);
    for (const char* mode : {"replace", "merge"}) {
        QCOMPARE(import("20240115,233000,1,1,1,1\n", options + words("--mode") + words(mode)),
                 succeeded());
        QCOMPARE(stored(), (Tree{{QStringLiteral("NORD/MAIN/ALFA/%1_60.iss").arg(day),
                                  record(time.constData(), "1")}}));
    }
}

void TadataWaysTest::patternsOfDatesMayBeAny()
{
    const QStringList options = words("--date-format d.M.yyyy --time-format h:m");
    QCOMPARE(import("15.1.2024,10:0,1,1,1,1\n", options), succeeded());
    QCOMPARE(stored(), (Tree{{dayFile, record("100000", "1")}}));
    // Such a pattern has no other name.
    QCOMPARE(messageOf(import("2024-01-15,10:0,1,1,1,1\n", options)),
             failed(QStringLiteral("Ошибка при импорте 1-й строки:\nДата '2024-01-15' не "
                                   "соответствует заявленному формату 'd.M.yyyy'.")));
    QCOMPARE(messageOf(import("15.1.2024,100000,1,1,1,1\n", options)),
             failed(QStringLiteral("Ошибка при импорте 1-й строки:\nВремя '100000' не "
                                   "соответствует заявленному формату 'h:m'.")));
}

void TadataWaysTest::badLinesArePassedOver()
{
    const QByteArray bars = QByteArray("wrong\n") + threeBars + "  \n20240116,1000,1,1,1,1\n" +
                            "20240117,100000,1,1,1,1\n";
    // What is there already is not written again.
    const char* days = "2";
    for (const char* mode : {"replace", "merge", "fill"}) {
        QCOMPARE(import(bars, words("--skip-bad --series NORD/MAIN/BARK --decimals 2 --mode")
                                  << QLatin1String(mode)),
                 succeeded("Баров: 4, дней: " + QByteArray(days) + ", ошибочных строк: 2\n"));
        QCOMPARE(stored().size(), 2);
        days = "0";
    }
}

void TadataWaysTest::rejectsAreTheLinesThemselves()
{
    const QByteArray mark = "\xef\xbb\xbf";
    const QStringList options = words("header --rejects") << path("rejects.csv");
    QCOMPARE(import(mark + "a header\r\n" + threeBars, options),
             succeeded("Баров: 3, дней: 1, ошибочных строк: 0\n"));
    QVERIFY(!QFileInfo::exists(path("rejects.csv")));
    QCOMPARE(import(mark + "a header\r\nwrong\r\n" + threeBars + "20240116,1000,1,1,1,1", options),
             succeeded("Баров: 3, дней: 1, ошибочных строк: 2\n"));
    QCOMPARE(readFile(path("rejects.csv")), mark + "a header\r\nwrong\r\n20240116,1000,1,1,1,1");
    // It is not written over, whatever else is to be said.
    const Outcome again = import("", options);
    QCOMPARE(again.exitCode, 2);
    QVERIFY(again.err.contains("такой файл уже есть"));
}

// Known before a day is replaced, and not only when the first bad line comes.
void TadataWaysTest::rejectsThatCannotBeWrittenSayWhy()
{
    writeFile(path("in.txt"), QByteArray("wrong\n").repeated(1000));
    const QString rejects = path("rejects.csv");
    const Outcome outcome =
        runTadataLimited(importLine(path("in.txt"), {QStringLiteral("--rejects"), rejects}));
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.err.contains(rejects.toUtf8()), outcome.err.constData());
    QVERIFY2(outcome.err.contains(strerror(EFBIG)), outcome.err.constData());
}

void TadataWaysTest::rejectsThatCannotBeMadeCostNothing()
{
    QCOMPARE(import(threeBars, {}), succeeded());
    const auto before = stored();
    const QString nowhere = path("nowhere/rejects.csv");
    const Outcome outcome = import(QByteArray("20240115;235900;1;1;1;1\nwrong\n"),
                                   {QStringLiteral("--rejects"), nowhere});
    QCOMPARE(outcome, failed(QStringLiteral("Невозможно открыть файл ") + nowhere, ENOENT));
    QCOMPARE(stored(), before);
}

void TadataWaysTest::onlyBadLinesAreAFailure()
{
    const Outcome outcome = import("wrong\n\n20240115;100000;1;1;1;1\n", words("--skip-bad"));
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.out, QByteArray("Баров: 0, дней: 0, ошибочных строк: 2\n"));
    QVERIFY2(outcome.err.contains("Недостаточное количество столбцов.\n  wrong\n"),
             outcome.err.constData());
    QVERIFY(stored().isEmpty());
    QVERIFY(points().isEmpty());
    // Nothing at all is none.
    QCOMPARE(import("", words("--skip-bad")).exitCode, 0);
}

void TadataWaysTest::aFailureIsPutBack()
{
    QCOMPARE(import(threeBars), succeeded());
    const Tree before = stored();
    const QByteArray failing = "20240115,100000,9,9,9,9\n20240116,100000,9,9,9,9\nwrong\n";
    QCOMPARE(import(failing, words("--undo-on-error")).exitCode, 1);
    QCOMPARE(stored(), before);
    QCOMPARE(points().size(), 1);
    QCOMPARE(import(failing).exitCode, 1);
    QCOMPARE(stored().size(), 2);
    QCOMPARE(points().size(), 2);
}

// Done again it would leave the days alone whose seconds are right, and their minutes short.
void TadataWaysTest::aFailedMergeOfSecondsIsToBeTakenBack()
{
    const QByteArray days = "20240115,100000,1,1,1,1\n20240116,100000,2,2,2,2\n";
    const QString inTheWay = path("store/NORD/MAIN/ALFA/20240116_60");
    QVERIFY(QDir().mkpath(inTheWay));
    const auto advice = [&](const char* more) {
        const Outcome outcome = import(days, words("--timeframe 1 --mode merge") + words(more));
        return outcome.exitCode == 1 && outcome.err.contains(inTheWay.toUtf8())
                   ? outcome.err.mid(outcome.err.indexOf("Минутные"))
                   : QByteArray("not failed so");
    };
    const QByteArray mayBeShort = "Минутные файлы записанных дней могут быть неполными";
    QCOMPARE(advice("--undo-on-error").count(mayBeShort), 0);
    QCOMPARE(advice(""), mayBeShort + ": прежде чем повторять импорт, отмените этот "
                                      "(tadata undo).\n");
    // Nothing new is written, and nothing is short for it.
    QCOMPARE(advice("").count(mayBeShort), 0);
    QCOMPARE(runTadata(words("undo --store") << path("store")).exitCode, 0);
    QCOMPARE(advice("--no-restore-point"), mayBeShort + ".\n");
}

void TadataWaysTest::aFormatIsGuessed()
{
    const Outcome known = importPlainly(namedColumns, words("--series NORD/MAIN/ALFA"));
    QCOMPARE(known.exitCode, 0);
    QCOMPARE(known.out, QByteArray());
    QVERIFY2(known.err.contains("--separator semicolon --date-format yyyy-MM-dd --time-format "
                                "hh:mm --columns date=0,time=1,open=2,high=3,low=4,close=5,"
                                "volume=6,ticker=7"),
             known.err.constData());
    QCOMPARE(stored(), (Tree{{dayFile, "100000;1.51;1.70;1.40;1.60;3;0.00;0\n"
                                       "100100;1.60;1.80;1.50;1.70;4;0.00;0\n"}}));
    // As many decimals as the file's prices have.
    QCOMPARE(importPlainly(namedColumns, words("--series A/B/C --mode merge")).exitCode, 0);
    QCOMPARE(readFile(path("store/A/B/C/20240115_60.iss")),
             QByteArray("100000;1.51;1.70;1.40;1.60;3;0.00;0\n"
                        "100100;1.60;1.80;1.50;1.70;4;0.00;0\n"));
    QCOMPARE(importPlainly(namedColumns, words("--series A/B/C --decimals 1")).exitCode, 0);
    QVERIFY(readFile(path("store/A/B/C/20240115_60.iss")).startsWith("100000;1.5;1.7;"));
    // One of many.
    QCOMPARE(importPlainly(namedColumns, words("--series T/{name}/{ticker}")).exitCode, 0);
    QCOMPARE(readFile(path("store/T/bars/BB/20240115_60.iss")),
             QByteArray("100100;1.60;1.80;1.50;1.70;4;0.00;0\n"));
}

// A date that could be of two forms, and a first line that looks like a header.
void TadataWaysTest::whatIsGivenIsNotGuessed()
{
    const QByteArray bars = "01/02/2024,1000,1,2,1,2\n01/02/2024,1001,2,2,1,1\n";
    const QStringList series = words("--series NORD/MAIN/ALFA");
    QCOMPARE(importPlainly(bars, series).exitCode, 2);
    const Outcome outcome = importPlainly(bars, series + words("--date-format MM/dd/yyyy"));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(stored().keys(), QStringList{QStringLiteral("NORD/MAIN/ALFA/20240102_60.iss")});
    QCOMPARE(importPlainly(bars, series + words("--date-format dd/MM/yyyy --timeframe 1")).exitCode,
             0);
    QVERIFY(stored().contains(QStringLiteral("NORD/MAIN/ALFA/20240201_1.iss")));
}

void TadataWaysTest::aGuessThatIsNotEnoughIsRefused()
{
    const Outcome outcome = importPlainly("01/02/2024,1000,1,2,1,2\n01/02/2024,1001,2,2,1,1\n",
                                          words("--series NORD/MAIN/ALFA"));
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.out, QByteArray());
    for (const char* form : {"--date-format dd/MM/yyyy ", "--date-format MM/dd/yyyy "})
        QVERIFY2(outcome.err.contains(form), outcome.err.constData());
    QVERIFY(!QFileInfo::exists(path("store")));
    QVERIFY(!QFileInfo::exists(path("store-restore")));
}

void TadataWaysTest::aFileThatCannotBeReadIsNoWrongLine()
{
    const QStringList line = words("import nothing.csv --series NORD/MAIN/ALFA --store")
                             << path("store");
    QCOMPARE(runTadata(line),
             failed(QStringLiteral("Невозможно открыть файл nothing.csv"), ENOENT));
}

void TadataWaysTest::aSeriesThatNobodyKnowsNeedsDecimals()
{
    const QStringList columns =
        words("--separator semicolon --date-format yyyy-MM-dd --time-format hh:mm "
              "--columns date=0,time=1,open=2,high=3,low=4,close=5,ticker=7");
    for (const char* series : {"A/B/C", "A/B/{name}", "A/B/{ticker}"}) {
        const Outcome outcome =
            importPlainly(namedColumns, columns + words("--series") + words(series));
        QCOMPARE(outcome.exitCode, 2);
        QVERIFY2(outcome.err.contains("нет в справочнике"), outcome.err.constData());
        QVERIFY(!QFileInfo::exists(path("store")));
    }
}

QTEST_GUILESS_MAIN(TadataWaysTest)
#include "tst_tadataways.moc"
