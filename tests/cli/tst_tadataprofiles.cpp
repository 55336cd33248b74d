// SPDX-License-Identifier: MIT
// Options that are saved under a name.

#include "commandtest.h"

#include "support/filetree.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QTest>

using namespace testsupport;

class TadataProfilesTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void areShownAndForgotten();
    void takeThePlaceOfOptions();
    void theCommandLineWins();
    void lieInTheSettings();
    void groupsOfGroupsAreNone();
    void saysThatTheSettingsCannotBeWritten();
    void narrowAGuess();
    void wrongOnesAreRefused_data();
    void wrongOnesAreRefused();

private:
    Outcome run(const QStringList& line) const { return runProgram(m_program, line); }
    Outcome run(const char* line) const { return run(words(line)); }
    Outcome importWith(const char* options) const
    {
        return run(words("import")
                   << path("bars.csv") << words("--store") << path("store") << words(options));
    }

    // A copy, which has settings of its own.
    QString m_program;
};

void TadataProfilesTest::init()
{
    CommandTest::init();
    m_program = path("tadata");
    QVERIFY(QFile::copy(tadataProgram(), m_program));
    writeFile(path("user/.keep"), "");
    writeFile(path("bars.csv"), "15.01.2024;100000;1;1;1;1\n");
}

void TadataProfilesTest::areShownAndForgotten()
{
    QCOMPARE(run("profile list"), succeeded());
    QCOMPARE(run("profile save broker --no-header --separator semicolon --date-format dd.MM.yyyy"),
             succeeded());
    QCOMPARE(run(words("profile save") << QStringLiteral("Мой брокер") << words("--separator=|")),
             succeeded());
    QCOMPARE(run("profile list"), succeeded("broker\nМой брокер\n"));
    QCOMPARE(run("profile show broker"),
             succeeded("--separator semicolon\n--date-format dd.MM.yyyy\n--no-header\n"));
    QCOMPARE(run(words("profile show") << QStringLiteral("Мой брокер")),
             succeeded("--separator '|'\n"));
    // What was saved before is gone.
    QCOMPARE(run("profile save broker --timeframe 1"), succeeded());
    QCOMPARE(run("profile show broker"), succeeded("--timeframe 1\n"));
    QCOMPARE(run("profile delete broker"), succeeded());
    QCOMPARE(run("profile list"), succeeded("Мой брокер\n"));
    for (const char* action : {"show", "delete"})
        QCOMPARE(run(words("profile") << QLatin1String(action) << QStringLiteral("broker")),
                 failed(QStringLiteral("профиля «broker» нет")));
}

void TadataProfilesTest::takeThePlaceOfOptions()
{
    QCOMPARE(run("profile save b --no-header --separator semicolon --date-format dd.MM.yyyy "
                 "--columns date=0,time=1,open=2,high=3,low=4,close=5 --series NORD/MAIN/ALFA"),
             succeeded());
    QCOMPARE(importWith("--profile b"), succeeded());
    QCOMPARE(stored(), (Tree{{QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss"),
                              "100000;1.00;1.00;1.00;1.00;0;0.00;0\n"}}));
}

void TadataProfilesTest::theCommandLineWins()
{
    QCOMPARE(
        run("profile save b --no-header --separator comma --date-format dd.MM.yyyy "
            "--columns date=0,time=1,open=2,high=3,low=4,close=5 --from-zone UTC --decimals 4"),
        succeeded());
    QCOMPARE(importWith("--profile b --separator semicolon --series NORD/MAIN/ALFA --to-zone UTC "
                        "--decimals=0"),
             succeeded());
    QCOMPARE(stored(),
             (Tree{{QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss"), "100000;1;1;1;1;0;0;0\n"}}));
    // Without the other zone the line is wrong.
    QCOMPARE(importWith("--profile b --separator semicolon --series NORD/MAIN/ALFA").exitCode, 2);
}

void TadataProfilesTest::lieInTheSettings()
{
    writeFile(path("user/vexdesk.ini"),
              "[TADataManager]\n"
              "Profiles\\b\\columns=date=0,time=1,open=2,high=3,low=4,close=5\n"
              "Profiles\\b\\date-format=dd.MM.yyyy\n"
              "Profiles\\b\\separator=semicolon\n"
              "Profiles\\b\\no-header=true\n"
              "Profiles\\b\\skip-bad=false\n"
              "Profiles\\b\\of-a-later-version=1\n");
    QCOMPARE(importWith("--profile b --series NORD/MAIN/ALFA"), succeeded());
    QCOMPARE(stored().size(), 1);
}

// In the settings, which somebody may have written by hand, they would be some.
void TadataProfilesTest::groupsOfGroupsAreNone()
{
    writeFile(path("user/vexdesk.ini"), "[TADataManager]\n"
                                        "Profiles\\a\\b\\date-format=dd.MM.yyyy\n");
    for (const char* name : {"a/b", "a\\b"}) {
        const Outcome outcome = importWith(
            QByteArray("--series NORD/MAIN/ALFA --profile " + QByteArray(name)).constData());
        QCOMPARE(outcome.exitCode, 2);
        QVERIFY2(QString::fromUtf8(outcome.err)
                     .contains(QStringLiteral("профиля «%1» нет").arg(QLatin1String(name))),
                 outcome.err.constData());
    }
}

void TadataProfilesTest::saysThatTheSettingsCannotBeWritten()
{
    QVERIFY(QDir().mkpath(path("user/vexdesk.ini")));
    QCOMPARE(run("profile save b --timeframe 1"),
             failed(QStringLiteral("Невозможно записать файл настроек терминала")));
}

void TadataProfilesTest::narrowAGuess()
{
    writeFile(path("bars.csv"), "01/02/2024,1000,1,2,1,2\n01/02/2024,1001,2,2,1,1\n");
    const QStringList guess = words("guess") << path("bars.csv");
    QCOMPARE(run(guess).exitCode, 1);
    QCOMPARE(run("profile save us --date-format MM/dd/yyyy --mode merge"), succeeded());
    const Outcome outcome = run(guess + words("--profile us"));
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.out.contains("--date-format MM/dd/yyyy"), outcome.out.constData());
    QCOMPARE(importWith("--profile us --series NORD/MAIN/ALFA").exitCode, 0);
    QCOMPARE(stored().keys(), QStringList{QStringLiteral("NORD/MAIN/ALFA/20240102_60.iss")});
}

void TadataProfilesTest::wrongOnesAreRefused_data()
{
    QTest::addColumn<QStringList>("line");
    QTest::addColumn<int>("exitCode");
    const auto row = [](const char* name, const char* line, int exitCode = 2) {
        QTest::newRow(name) << words(line) << exitCode;
    };
    row("no action", "profile");
    row("unknown action", "profile store b --timeframe 1");
    row("no name", "profile save --timeframe 1");
    row("name with a slash", "profile save a/b --timeframe 1");
    row("name with a backslash", "profile save a\\b --timeframe 1");
    row("nothing to save", "profile save b");
    row("wrong value", "profile save b --timeframe 2");
    row("wrong columns", "profile save b --columns date=0");
    row("wrong pattern", "profile save b --date-format MM.dd");
    row("unknown zone", "profile save b --from-zone Nowhere/City");
    row("a profile of a profile", "profile save b --profile c");
    row("unknown option", "profile save b --colums date=0");
    row("list with a name", "profile list b");
    row("show with an option", "profile show b --timeframe 1");
    row("none to show", "profile show b", 1);
}

void TadataProfilesTest::wrongOnesAreRefused()
{
    QFETCH(const QStringList, line);
    QFETCH(const int, exitCode);
    QCOMPARE(run(line).exitCode, exitCode);
    QCOMPARE(run("profile list"), succeeded());
}

QTEST_GUILESS_MAIN(TadataProfilesTest)
#include "tst_tadataprofiles.moc"
