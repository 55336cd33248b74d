// SPDX-License-Identifier: MIT
// The few lines by which other tools read the store, as docs/store-format.md shows them: they run,
// on a store that an import has made, and give what they should.

#include "markdown.h"
#include "tools.h"

#include "cli/tadatarunner.h"
#include "editortadatamodel.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <memory>

using namespace testsupport;

namespace {

constexpr char bars[] = "20240115,093000,120.00,120.15,119.90,120.10,1450,174145.00,3\n"
                        "20240115,093100,120.10,120.20,120.05,120.20,830,99766.00,4\n"
                        "20240115,100200,120.20,120.20,99.50,120.05,3000000000,360150000000.00,5\n"
                        "20240116,095900,121.00,121.40,120.95,121.30,2040,247452.00,6\n"
                        "20240116,100000,9.30,9.35,9.10,9.15,960,8784.00,7\n"
                        "20240117,100000,9.15,9.15,9.15,9.15,1,9.15,8\n";

// A directory with an "awk" that is this program: the commands call it by that name.
QString awkThatIs(const QString& program, const QTemporaryDir& directory)
{
    const QString found = QStandardPaths::findExecutable(program);
    if (found.isEmpty() || !QFile::link(found, directory.filePath(QStringLiteral("awk"))))
        return QString();
    return directory.path();
}

} // namespace

class StoreSnippetsTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void areThreeLinesAtMost();
    void pandasGivesBarsWithTimestamps();
    void duckdbGivesDays();
    void awkGivesDays_data();
    void awkGivesDays();
    void awkTellsEditedFiles_data();
    void awkTellsEditedFiles();
    void awkFindsTheVolumeInEditedFiles_data();
    void awkFindsTheVolumeInEditedFiles();

private:
    QString code(const char* language, int number = 0) const
    {
        return m_page.codes(QLatin1String(language)).value(number);
    }
    QDir series() const { return QDir(m_dir->filePath(QStringLiteral("store/NORD/MAIN/VEGA"))); }
    // Runs a program in the directory of the series.
    Outcome run(const QString& program, const QStringList& words,
                const QString& pathBefore = QString()) const;
    void runAwk(const QString& command, const QByteArray& wanted) const;
    // Deletes a bar as the user does: the editor shows a day and writes it again.
    void editDay(const QDate& day, const QTime& time) const;

    Page m_page;
    std::unique_ptr<QTemporaryDir> m_dir;
};

void StoreSnippetsTest::init()
{
    failOnStrayWarnings();
    m_page = readPage(QStringLiteral(SOURCE_FOLDER "/docs/store-format.md"));
    m_dir = std::make_unique<QTemporaryDir>();
    const QString file = m_dir->filePath(QStringLiteral("bars.csv"));
    writeFile(file, bars);
    QCOMPARE(runTadata(QStringList{QStringLiteral("import"), file, QStringLiteral("--store"),
                                   m_dir->filePath(QStringLiteral("store"))} +
                       words("--series NORD/MAIN/VEGA --no-header --columns "
                             "date=0,time=1,open=2,high=3,low=4,close=5,volume=6,value=7,oi=8")),
             succeeded());
    // What lies beside the minute files is not to be read.
    writeFile(series().filePath(QStringLiteral("20240115_1.iss")), "093001;1;1;1;1;1;1;1\n");
    writeFile(series().filePath(QStringLiteral("20240115_60")), "093100;1;1;1;1;1;1;1\n");
}

void StoreSnippetsTest::cleanup()
{
    m_dir.reset();
}

Outcome StoreSnippetsTest::run(const QString& program, const QStringList& words,
                               const QString& pathBefore) const
{
    QProcessEnvironment environment = plainEnvironment();
    // Where it is installed, a locale whose numbers have a comma.
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("ru_RU.UTF-8"));
    if (!pathBefore.isEmpty())
        environment.insert(QStringLiteral("PATH"),
                           pathBefore + u':' + environment.value(QStringLiteral("PATH")));
    QProcess process;
    process.setWorkingDirectory(series().path());
    process.setProcessEnvironment(environment);
    process.start(program, words, QIODevice::ReadOnly);
    constexpr int patience = 240'000;
    Outcome outcome;
    if (process.waitForFinished(patience) && process.exitStatus() == QProcess::NormalExit)
        outcome.exitCode = process.exitCode();
    outcome.out = process.readAllStandardOutput();
    outcome.err = process.readAllStandardError();
    return outcome;
}

void StoreSnippetsTest::editDay(const QDate& day, const QTime& time) const
{
    EditorTADataModel model(nullptr);
    model.load(series(), QDateTime(day, QTime(0, 0)), QDateTime(day, QTime(23, 59, 59)), 60);
    const int row = model.find(day.toString(QStringLiteral("yyyyMMdd ")) +
                               time.toString(QStringLiteral("hhmmss")));
    model.delRows({row});
    model.delRowsFromFiles();
}

void StoreSnippetsTest::areThreeLinesAtMost()
{
    for (const char* language : {"python", "sql", "sh"}) {
        const QStringList codes = m_page.codes(QLatin1String(language));
        QVERIFY2(!codes.isEmpty(), language);
        for (const QString& text : codes)
            QVERIFY2(text.count(u'\n') < 3, qPrintable(text));
    }
}

void StoreSnippetsTest::pandasGivesBarsWithTimestamps()
{
    const QString program = pythonWith(QStringLiteral("pandas"));
    NEEDS(program, "Python with pandas");
    const Outcome outcome =
        run(program, {QStringLiteral("-c"),
                      code("python") + QStringLiteral("\nprint(bars.to_csv(), end='')\n"
                                                      "print(bars.index.dtype, bars.volume.dtype)"
                                                      "\n")});
    QCOMPARE(outcome.out,
             QByteArray(",open,high,low,close,volume,value,interest\n"
                        "2024-01-15 09:30:00,120.0,120.15,119.9,120.1,1450,174145.0,3\n"
                        "2024-01-15 09:31:00,120.1,120.2,120.05,120.2,830,99766.0,4\n"
                        "2024-01-15 10:02:00,120.2,120.2,99.5,120.05,3000000000,"
                        "360150000000.0,5\n"
                        "2024-01-16 09:59:00,121.0,121.4,120.95,121.3,2040,247452.0,6\n"
                        "2024-01-16 10:00:00,9.3,9.35,9.1,9.15,960,8784.0,7\n"
                        "2024-01-17 10:00:00,9.15,9.15,9.15,9.15,1,9.15,8\n"
                        "datetime64[ns] int64\n"));
    QVERIFY2(outcome.exitCode == 0, outcome.err.constData());
}

void StoreSnippetsTest::duckdbGivesDays()
{
    const QString program = nodeWithDuckdb();
    NEEDS_DUCKDB(program);
    const QString file = m_dir->filePath(QStringLiteral("days.sql"));
    writeFile(file, code("sql").toUtf8());
    const Outcome outcome =
        run(program, {QStringLiteral(SOURCE_FOLDER "/tests/docs/run-sql.mjs"), file});
    QVERIFY2(outcome.exitCode == 0, outcome.err.constData());
    QCOMPARE(outcome.out, QByteArray("20240115 120 120.2 99.5 120.05 3000002280\n"
                                     "20240116 121 121.4 9.1 9.15 3000\n"
                                     "20240117 9.15 9.15 9.15 9.15 1\n"));
}

void StoreSnippetsTest::awkGivesDays_data()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("mawk") << QStringLiteral("mawk");
    QTest::newRow("gawk") << QStringLiteral("gawk");
}

void StoreSnippetsTest::runAwk(const QString& command, const QByteArray& wanted) const
{
    QFETCH(QString, program);
    const QTemporaryDir bin;
    const QString awk = awkThatIs(program, bin);
    NEEDS(awk, "This awk");
    QCOMPARE(run(QStringLiteral("sh"), {QStringLiteral("-ec"), command}, awk), succeeded(wanted));
}

void StoreSnippetsTest::awkGivesDays()
{
    runAwk(code("sh", 1), "20240115_60.iss 120.00 120.20 99.50 120.05 3000002280\n"
                          "20240116_60.iss 121.00 121.40 9.10 9.15 3000\n"
                          "20240117_60.iss 9.15 9.15 9.15 9.15 1\n");
}

void StoreSnippetsTest::awkTellsEditedFiles_data()
{
    awkGivesDays_data();
}

void StoreSnippetsTest::awkTellsEditedFiles()
{
    editDay(QDate(2024, 1, 16), QTime(9, 59));
    runAwk(code("sh", 0), "20240116_60.iss\n");
}

void StoreSnippetsTest::awkFindsTheVolumeInEditedFiles_data()
{
    awkGivesDays_data();
}

void StoreSnippetsTest::awkFindsTheVolumeInEditedFiles()
{
    editDay(QDate(2024, 1, 16), QTime(9, 59));
    runAwk(code("sh", 1), "20240115_60.iss 120.00 120.20 99.50 120.05 3000002280\n"
                          "20240116_60.iss 9.30 9.35 9.10 9.15 960\n"
                          "20240117_60.iss 9.15 9.15 9.15 9.15 1\n");
}

QTEST_GUILESS_MAIN(StoreSnippetsTest)
#include "tst_storesnippets.moc"
