// SPDX-License-Identifier: MIT
// tadata guess: what it prints, and what it tells the shell.

#include "commandtest.h"

#include "support/filetree.h"

#include <QtCore/QFile>
#include <QtTest/QTest>

#include <cerrno>

using namespace testsupport;

class TadataGuessTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void printsTheCommandToUse_data();
    void printsTheCommandToUse();
    void itsCommandImportsTheFile();
    void anImportNamesTheColumnsThatItLeavesOut();
    void printsJsonAndNothingElse();
    void printsEveryAlternative();
    void saysWhatIsMissing_data();
    void saysWhatIsMissing();
    void refusesWhatCannotBeRead_data();
    void refusesWhatCannotBeRead();
    void refusesWrongLines();

private:
    Outcome guess(const QString& file, const QStringList& more = {}) const
    {
        return runTadata(words("guess") << more << file, plainEnvironment(), m_dir->path());
    }
    Outcome guessOf(const QByteArray& content, const QStringList& more = {}) const
    {
        writeFile(path("file.csv"), content);
        return guess(QStringLiteral("file.csv"), more);
    }
};

namespace {

constexpr char bars[] =
    "05.05.14;10:01;1.38;1.40;1.370;1.39;7\n05.05.14;10:02;1.39;1.40;1.37;1.38;0\n";
constexpr char forOthers[] = "Для инструмента, которого нет в справочнике, добавьте --decimals ";

QByteArray importOf(const QByteArray& file, const QByteArray& options)
{
    return "tadata import " + file + " --series ПЛОЩАДКА/РЕЖИМ/ИНСТРУМЕНТ " + options + '\n';
}

} // namespace

void TadataGuessTest::printsTheCommandToUse_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("command");
    const QByteArray columns = "date=0,time=1,open=2,high=3,low=4,close=5,volume=6";
    const QByteArray options =
        "--no-header --date-format dd.MM.yy --time-format hh:mm --columns " + columns;
    const auto row = [](const char* name, const QByteArray& content, const QByteArray& command) {
        QTest::newRow(name) << QString::fromUtf8(name) << content << command;
    };
    row("semicolons.csv", bars,
        importOf("semicolons.csv", "--timeframe 60 --separator semicolon " + options));
    row("commas.csv", QByteArray(bars).replace(';', ','),
        importOf("commas.csv", "--timeframe 60 --separator comma " + options));
    row("spaces.csv", QByteArray(bars).replace(';', ' '),
        importOf("spaces.csv", "--timeframe 60 --separator space " + options));
    row("tabs.csv", QByteArray(bars).replace(';', '\t'),
        importOf("tabs.csv", "--timeframe 60 --separator tab " + options));
    row("a bar's.csv", QByteArray(bars).replace(';', '|'),
        importOf("'a bar'\\''s.csv'", "--timeframe 60 --separator '|' " + options));
    row("header.csv",
        QByteArray("<DATE>;<TIME>;<OPEN>;<HIGH>;<LOW>;<CLOSE>;<VOL>\n") +
            QByteArray(bars).replace("10:02", "10:02:30").replace("10:01", "10:01:00"),
        importOf("header.csv", "--timeframe 1 --separator semicolon --date-format dd.MM.yy "
                               "--time-format hh:mm:ss --columns " +
                                   columns));
}

void TadataGuessTest::printsTheCommandToUse()
{
    QFETCH(const QString, file);
    QFETCH(const QByteArray, content);
    QFETCH(const QByteArray, command);
    writeFile(path(file), content);
    QCOMPARE(guess(file), succeeded(command + forOthers + "3.\n"));
}

// What is printed as words of a shell.
void TadataGuessTest::itsCommandImportsTheFile()
{
    const QByteArray printed = guessOf(bars).out;
    QStringList line = QString::fromUtf8(printed.split('\n').first()).split(u' ');
    QCOMPARE(line.takeFirst(), QStringLiteral("tadata"));
    line.replaceInStrings(QStringLiteral("ПЛОЩАДКА/РЕЖИМ/ИНСТРУМЕНТ"),
                          QStringLiteral("NORD/MAIN/ALFA"));
    line << words("--store") << path("store");
    QCOMPARE(runTadata(line, plainEnvironment(), m_dir->path()), succeeded());
    QCOMPARE(stored().value(QStringLiteral("NORD/MAIN/ALFA/20140505_60.iss")),
             "100100;1.38;1.40;1.37;1.39;7;0.00;0\n100200;1.39;1.40;1.37;1.38;0;0.00;0\n");
}

void TadataGuessTest::anImportNamesTheColumnsThatItLeavesOut()
{
    writeFile(path("file.csv"),
              "date,time,open,high,low,close,Объём в шт.\n20240115,1000,1,2,1,2,5\n");
    const Outcome outcome =
        runTadata(words("import --series A/B/C --store") << path("store") << path("file.csv"));
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.err.contains("Столбцы, которые не взяты: Объём в шт.; нужный называют в "
                                  "--columns\n"),
             outcome.err.constData());
}

void TadataGuessTest::printsJsonAndNothingElse()
{
    const QByteArray found =
        R"({"ambiguous":[],"columns":{"close":5,"date":0,"high":3,"low":4,"open":2,"time":1,)"
        R"("volume":6},"dateFormat":"dd.MM.yy","decimals":3,"file":"file.csv","header":false,)"
        R"("lines":2,"missing":[],"separator":";","timeFormat":"hh:mm","timeframe":60})"
        "\n";
    QCOMPARE(guessOf(bars, words("--json")), succeeded(found));
    const QByteArray nothing =
        R"({"ambiguous":[],"columns":{},"dateFormat":null,"decimals":null,"file":"file.csv",)"
        R"("header":false,"lines":1,"missing":["date","prices","separator","time"],)"
        R"("separator":null,"timeFormat":null,"timeframe":60})"
        "\n";
    QCOMPARE(guessOf("nothing\n", words("--json")), (Outcome{1, nothing, {}}));
    const QByteArray open =
        R"({"ambiguous":["dd/MM/yy","MM/dd/yy"],"columns":{"close":5,"date":0,"high":3,"low":4,)"
        R"("open":2,"time":1},"dateFormat":null,"decimals":0,"file":"file.csv","header":false,)"
        R"("lines":1,"missing":[],"separator":"\t","timeFormat":"hhmm","timeframe":60})"
        "\n";
    QCOMPARE(guessOf("01/02/24\t1000\t1\t2\t1\t2\n", words("--json")), (Outcome{1, open, {}}));
}

void TadataGuessTest::printsEveryAlternative()
{
    const auto options = [](const QByteArray& form) {
        return "--timeframe 60 --separator comma --no-header --date-format " + form +
               " --time-format hhmm --columns date=0,time=1,open=2,high=3,low=4,close=5";
    };
    QCOMPARE(guessOf("01/02/24,1000,1,2,1,2\n"),
             (Outcome{1,
                      importOf("file.csv", options("dd/MM/yy")) +
                          importOf("file.csv", options("MM/dd/yy")) + forOthers + "0.\n",
                      "Вид даты неоднозначен, подходят: dd/MM/yy, MM/dd/yy.\n"}));
}

void TadataGuessTest::saysWhatIsMissing_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("separator") << QByteArray("a\n")
                               << QByteArray("Не найден разделитель: ни один не делит строки на "
                                             "одинаковое число полей, не меньше шести.\n");
    QTest::newRow("date and time") << QByteArray("1,1,2,1,2,1\n")
                                   << QByteArray("Не найден столбец даты.\n"
                                                 "Не найден столбец времени.\n");
    QTest::newRow("prices") << QByteArray("20240115,1000,1,1,1,1\n")
                            << QByteArray("Не найдены столбцы цен: open, high, low и close.\n");
}

void TadataGuessTest::saysWhatIsMissing()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QByteArray, message);
    QByteArray file = content;
    if (content.startsWith("1,")) // its first line would be taken for a header
        file += content;
    QCOMPARE(guessOf(file), (Outcome{1, {}, message}));
    // What an import can do without is told and is no failure.
    const Outcome rest =
        guessOf("date,time,open,high,low,close,vol,oi\n20240115,1000,1,2,1,2,x,x\n");
    QCOMPARE(rest.exitCode, 0);
    QVERIFY(rest.out.startsWith("tadata import"));
    QCOMPARE(rest.err, "Столбец объёма не будет импортирован: в нём не целые числа.\n"
                       "Столбец открытого интереса не будет импортирован: в нём не целые числа.\n");
}

void TadataGuessTest::refusesWhatCannotBeRead_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("message");
    QTest::newRow("missing") << QStringLiteral("no.csv")
                             << QStringLiteral("Невозможно открыть файл no.csv: ") +
                                    qt_error_string(ENOENT);
    QTest::newRow("directory") << QStringLiteral(".")
                               << QStringLiteral("Невозможно открыть файл .: ") +
                                      qt_error_string(EISDIR);
    QTest::newRow("UTF-16")
        << QStringLiteral("utf16.csv")
        << QStringLiteral("Невозможно прочитать файл utf16.csv: формат файлов в UTF-16 и UTF-32 не "
                          "угадывается; сохраните файл в UTF-8 или задайте --columns");
}

void TadataGuessTest::refusesWhatCannotBeRead()
{
    QFETCH(const QString, file);
    QFETCH(const QString, message);
    writeFile(path("utf16.csv"), QByteArray("\xff\xfe"
                                            "1\0\n\0",
                                            6));
    QCOMPARE(guess(file), failed(message));
    QCOMPARE(guess(file, words("--json")), failed(message));
}

void TadataGuessTest::refusesWrongLines()
{
    QCOMPARE(runTadata(words("guess")), refused(QStringLiteral("не задано: ФАЙЛ")));
    QCOMPARE(runTadata(words("guess a b")), refused(QStringLiteral("лишнее слово «b»")));
}

QTEST_GUILESS_MAIN(TadataGuessTest)
#include "tst_tadataguess.moc"
