// SPDX-License-Identifier: MIT
// tadata health: what it prints, and what it tells the shell.

#include "commandtest.h"

#include "support/filetree.h"

#include <QtCore/QDate>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtTest/QTest>

using namespace testsupport;

class TadataHealthTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void tellsOfAHealthyStore();
    void tellsWhatIsWrong();
    void printsJsonAndNothingElse();
    void listsWhatToAskFor();
    void drawsAMonth_data();
    void drawsAMonth();
    void speaksEnglish();
    void refusesWrongLines_data();
    void refusesWrongLines();
    void needsAStore();
    void needsTheNamedSeries();
    void goesOnAfterAnUnreadableFile();
    void seesWhatTheEditorRemoved();
    void isTheSameAfterAnExport();

private:
    Outcome health(const QStringList& more = {},
                   const QProcessEnvironment& environment = plainEnvironment()) const
    {
        return runTadata(words("health --store") << path("store") << more, environment);
    }
    QString dayPath(const QString& series, const QDate& day) const
    {
        return path("store") + u'/' + series + day.toString(QStringLiteral("/yyyyMMdd")) +
               QStringLiteral("_60.iss");
    }
    /// A day of bars from 10:00 on.
    void write(const QString& series, const QDate& day, int count) const;
    /// Twelve weeks of workdays from 2024-01-01 with 20 bars each.
    void writeWeeks(const QString& series) const;
    QJsonArray daysOf(const QStringList& more = {}) const;
};

namespace {

const QString alfa = QStringLiteral("NORD/MAIN/ALFA");
const QString vega = QStringLiteral("NORD/MAIN/VEGA");
const QDate someDay(2024, 1, 31);

QByteArray barAt(int minute)
{
    return "10" + QByteArray::number(minute).rightJustified(2, '0') +
           "00;1.50;1.70;1.40;1.60;5;0.00;0\n";
}

} // namespace

void TadataHealthTest::write(const QString& series, const QDate& day, int count) const
{
    QByteArray content;
    for (int minute = 0; minute < count; ++minute)
        content += barAt(minute);
    writeFile(dayPath(series, day), content);
}

void TadataHealthTest::writeWeeks(const QString& series) const
{
    for (QDate day(2024, 1, 1); day < QDate(2024, 3, 25); day = day.addDays(1)) {
        if (day.dayOfWeek() < 6)
            write(series, day, 20);
    }
}

QJsonArray TadataHealthTest::daysOf(const QStringList& more) const
{
    const QJsonObject report = QJsonDocument::fromJson(health(words("--json") + more).out).object();
    return report[QStringLiteral("series")]
        .toArray()[0]
        .toObject()[QStringLiteral("days")]
        .toArray();
}

void TadataHealthTest::tellsOfAHealthyStore()
{
    writeWeeks(alfa);
    const QByteArray line = "NORD/MAIN/ALFA 60: покрытие 1.0000, с 2024-01-01 по 2024-03-22, "
                            "баров: 1200; замечаний нет\n";
    QCOMPARE(health(), succeeded(line));
    QVERIFY(QDir(path("store")).mkpath(QStringLiteral("NORD/AUX")));
    QCOMPARE(health(), succeeded(line));
}

void TadataHealthTest::tellsWhatIsWrong()
{
    writeWeeks(alfa);
    writeWeeks(vega);
    write(alfa, someDay, 10);
    QVERIFY(QFile::remove(dayPath(alfa, someDay.addDays(1))));
    writeFile(dayPath(vega, someDay), readFile(dayPath(vega, someDay)) + "nonsense\n" + barAt(5) +
                                          "102000;2.50;2.70;2.40;2.30;5;0.00;0\n");
    const QByteArray text =
        "NORD/MAIN/ALFA 60: покрытие 0.9750, с 2024-01-01 по 2024-03-22, баров: 1170; разрывов: 1 "
        "(баров: 10), пропущенных дней: 1\n"
        "NORD/MAIN/VEGA 60: покрытие 1.0000, с 2024-01-01 по 2024-03-22, баров: 1202; ошибочных "
        "строк: 1, повторов времени: 1, невозможных цен: 1, скачков: 1, строк не по порядку: 1\n"
        "\n"
        "NORD/MAIN/ALFA 60 2024-02-01: нет файла дня\n"
        "NORD/MAIN/ALFA 60 2024-01-31: нет баров с 10:10:00 по 10:19:00 (баров: 10)\n"
        "NORD/MAIN/VEGA 60 2024-01-31: не записи баров — строки 21; повторов времени: 1; "
        "невозможных цен: 1; скачки в 10:20:00\n";
    QCOMPARE(health(), (Outcome{1, text, {}}));
}

void TadataHealthTest::printsJsonAndNothingElse()
{
    writeWeeks(alfa);
    write(alfa, someDay, 10);
    const QByteArray report =
        R"({"series":[{"bars":10,"closed":[],"coverage":"0.5000","days":[{"badLines":[],)"
        R"("bars":10,"coverage":"0.5000","day":"2024-01-31","duplicates":0,"edited":0,)"
        R"("expected":20,"gaps":[{"bars":10,"from":"10:10:00","to":"10:19:00"}],"jumps":[],)"
        R"("missing":10,"outOfOrder":0,"prices":0,"quiet":[],"volume":0}],"first":"2024-01-01",)"
        R"("last":"2024-03-22","missingDays":[],"series":"NORD/MAIN/ALFA","timeframe":60,)"
        R"("unproven":[]}]})"
        "\n";
    const QStringList line = words("--json --from 2024-01-31 --to 2024-01-31");
    QCOMPARE(health(line), (Outcome{1, report, {}}));
    QCOMPARE(health(line + words("--gap 11")).exitCode, 0);
    QCOMPARE(health(words("--json --to 2023-01-01")).exitCode, 0);
    QVERIFY(QDir(path("store")).removeRecursively() && QDir().mkdir(path("store")));
    QCOMPARE(health(words("--json")), succeeded("{\"series\":[]}\n"));
}

void TadataHealthTest::listsWhatToAskFor()
{
    writeWeeks(alfa);
    writeWeeks(vega);
    write(alfa, someDay, 10);
    QVERIFY(QFile::remove(dayPath(alfa, someDay.addDays(-5))));
    QVERIFY(QFile::remove(dayPath(alfa, someDay.addDays(5))));
    writeFile(dayPath(vega, someDay), readFile(dayPath(vega, someDay)) + "nonsense\n");
    QCOMPARE(health(words("--list")), (Outcome{1,
                                               "NORD/MAIN/ALFA 60 2024-01-26\n"
                                               "NORD/MAIN/ALFA 60 2024-01-31\n"
                                               "NORD/MAIN/ALFA 60 2024-02-05\n",
                                               {}}));
    QCOMPARE(health(words("--list NORD/MAIN/VEGA")), (Outcome{1, {}, {}}));
}

void TadataHealthTest::drawsAMonth_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QByteArray>("days");
    QTest::newRow("UTF-8") << QStringLiteral("C.UTF-8")
                           << QByteArray("             1!  2█  3   4\n"
                                         " 5█  6█  7x  8█  9█ 10  11\n"
                                         "12▄ 13█ 14█ 15█ 16█ 17  18\n"
                                         "19▁ 20█ 21█ 22█ 23█ 24  25\n"
                                         "26█ 27█ 28█ 29█\n");
    QTest::newRow("ASCII") << QStringLiteral("C")
                           << QByteArray("             1!  2@  3   4\n"
                                         " 5@  6@  7x  8@  9@ 10  11\n"
                                         "12= 13@ 14@ 15@ 16@ 17  18\n"
                                         "19. 20@ 21@ 22@ 23@ 24  25\n"
                                         "26@ 27@ 28@ 29@\n");
}

void TadataHealthTest::drawsAMonth()
{
    QFETCH(const QString, locale);
    writeWeeks(alfa);
    writeWeeks(vega);
    QVERIFY(QFile::remove(dayPath(alfa, QDate(2024, 2, 1))));
    QVERIFY(QFile::remove(dayPath(alfa, QDate(2024, 2, 7))));
    QVERIFY(QFile::remove(dayPath(vega, QDate(2024, 2, 7))));
    write(alfa, QDate(2024, 2, 12), 10);
    write(alfa, QDate(2024, 2, 19), 0);
    QProcessEnvironment environment = plainEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), locale);
    const Outcome outcome = health(words("NORD/MAIN/ALFA --month 2024-02"), environment);
    QCOMPARE(outcome.exitCode, 1);
    const qsizetype begin = outcome.out.indexOf("Вс\n") + qsizetype(sizeof "Вс");
    QTEST(outcome.out.mid(begin, outcome.out.indexOf("\n\n") + 1 - begin), "days");
}

void TadataHealthTest::speaksEnglish()
{
    writeWeeks(alfa);
    QProcessEnvironment environment = plainEnvironment();
    environment.insert(QStringLiteral("TADATA_LANGUAGE"), QStringLiteral("en"));
    QCOMPARE(health({}, environment),
             succeeded("NORD/MAIN/ALFA 60: coverage 1.0000, from 2024-01-01 to 2024-03-22, bars: "
                       "1200; nothing to remark\n"));
    QCOMPARE(health(words("--json"), environment), health(words("--json")));
}

void TadataHealthTest::refusesWrongLines_data()
{
    QTest::addColumn<QStringList>("line");
    for (const char* line :
         {"NORD/MAIN", "NORD//ALFA", "NORD/../ALFA", "--timeframe 300", "--from 2024-13-01",
          "--from 2024-02-01 --to 2024-01-01", "--gap 0", "--gap x", "--jump -1", "--jump 1.5",
          "--json --list", "--json --month 2024-01", "--list --month 2024-01",
          "--month 2024-01 --from 2024-01-01", "--month 2024-1", "--month 2024", "--series A/B/C"})
        QTest::newRow(line) << words(line);
}

void TadataHealthTest::refusesWrongLines()
{
    QFETCH(const QStringList, line);
    writeWeeks(alfa);
    const Outcome outcome = health(line);
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.out, QByteArray());
    QVERIFY(!outcome.err.isEmpty());
}

void TadataHealthTest::needsAStore()
{
    QCOMPARE(health(words("--json")), failed(QStringLiteral("Нет каталога %1").arg(path("store"))));
    QVERIFY(!QDir(path("store")).exists());
}

void TadataHealthTest::needsTheNamedSeries()
{
    writeWeeks(alfa);
    QCOMPARE(health(words("NORD/MAIN/ALFA NORD/MAIN/BORA --json")),
             failed(QStringLiteral("Серия NORD/MAIN/BORA не хранится")));
    const Outcome otherTimeframe = health(words("NORD/MAIN/ALFA --timeframe 1"));
    QCOMPARE(otherTimeframe, succeeded("NORD/MAIN/ALFA 1: ничего не хранится\n"));
}

void TadataHealthTest::goesOnAfterAnUnreadableFile()
{
    writeWeeks(alfa);
    writeWeeks(vega);
    const Outcome whole = health(words("--json NORD/MAIN/VEGA"));
    QVERIFY(QFile::resize(dayPath(alfa, someDay), qint64(1024) * 1024 * 1024 + 1));
    QCOMPARE(health(words("--json")),
             (Outcome{1, whole.out,
                      QStringLiteral("Невозможно прочитать файл %1: файл больше 1 ГБ: серии нет в "
                                     "отчёте\n")
                          .arg(dayPath(alfa, someDay))
                          .toUtf8()}));
}

void TadataHealthTest::seesWhatTheEditorRemoved()
{
    writeWeeks(alfa);
    const QJsonArray before = daysOf();
    // The editor writes the day anew: six bars are gone, the others have value and volume
    // exchanged.
    QByteArray content = readFile(dayPath(alfa, someDay));
    for (int minute = 4; minute < 10; ++minute)
        content.replace(barAt(minute), "");
    content.replace(";5;0.00;0\n", ";0.00;5;0\n");
    writeFile(dayPath(alfa, someDay), content);
    const QJsonArray after = daysOf();
    QCOMPARE(after.size(), before.size());
    for (qsizetype i = 0; i < after.size(); ++i) {
        QJsonObject day = after[i].toObject();
        if (day[QStringLiteral("day")] != someDay.toString(Qt::ISODate)) {
            QCOMPARE(day, before[i].toObject());
            continue;
        }
        QCOMPARE(day[QStringLiteral("edited")].toInt(), 14);
        QCOMPARE(day[QStringLiteral("missing")].toInt(), 6);
        QCOMPARE(
            QJsonDocument(day[QStringLiteral("gaps")].toArray()).toJson(QJsonDocument::Compact),
            QByteArray(R"([{"bars":6,"from":"10:04:00","to":"10:09:00"}])"));
    }
}

void TadataHealthTest::isTheSameAfterAnExport()
{
    writeWeeks(alfa);
    write(alfa, someDay, 12);
    QVERIFY(QFile::remove(dayPath(alfa, someDay.addDays(2))));
    const Outcome before = health(words("--json"));
    QVERIFY(before.out.contains("\"unproven\":[\"2024-02-02\"]"));
    QCOMPARE(runTadata(exportLine(path("out.csv"),
                                  words("--from 2024-01-01 --to 2024-03-31 --no-header")))
                 .exitCode,
             0);
    // Of each time the last line is the finished bar.
    QMap<QByteArray, QByteArray> finished;
    for (const QByteArray& line : readFile(path("out.csv")).mid(3).split('\n')) {
        if (!line.isEmpty())
            finished[line.split(',').mid(2, 2).join(' ')] = line + '\n';
    }
    QVERIFY(QDir(path("store")).removeRecursively());
    QCOMPARE(import(finished.values().join(),
                    words("--columns date=2,time=3,open=4,high=5,low=6,close=7,volume=8"))
                 .exitCode,
             0);
    QCOMPARE(health(words("--json")), before);
}

QTEST_GUILESS_MAIN(TadataHealthTest)

#include "tst_tadatahealth.moc"
