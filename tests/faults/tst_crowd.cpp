// SPDX-License-Identifier: MIT
// Eight programs and a terminal with charts work on one store, each at its own random jobs: no line
// is mixed of two, nothing crashes, no lock stays, and all of it can be taken back.
//
//   TADATA_CROWD_ROUNDS=N  jobs of each program (12)
//   TADATA_CROWD_SEED=N    the first of the three seeds (1)

#include "cli/tadatarunner.h"

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QRandomGenerator>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

using testsupport::Outcome;
using testsupport::plainEnvironment;
using testsupport::readFile;
using testsupport::readTree;
using testsupport::runProgram;
using testsupport::runTadata;
using testsupport::words;
using testsupport::writeFile;

namespace {

constexpr int files = 6;
const QStringList allSeries{QStringLiteral("NORD/MAIN/ALFA"), QStringLiteral("NORD/MAIN/BETA")};

// One bar a minute with the same price everywhere: a line tells of which file it is.
QByteArray bars(int file)
{
    QByteArray lines;
    for (int day = 15 + file % 3; day <= 18; ++day) {
        for (int minute = file; minute < 600; minute += 1 + file % 2)
            lines +=
                "202401" + QByteArray::number(day) + ',' +
                QTime(9, 0).addSecs(minute * 60).toString(QStringLiteral("hhmmss")).toLatin1() +
                (',' + QByteArray::number(100 + file)).repeated(4) + '\n';
    }
    return lines;
}

// A minute may be made of seconds from two files.
bool isMinute(const QByteArray& line)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{6}(;10\\d){4};0;0;0)?$"));
    return form.match(QString::fromUtf8(line)).hasMatch();
}

int number(const char* variable, int otherwise)
{
    bool isNumber = false;
    const int value = qEnvironmentVariableIntValue(variable, &isNumber);
    return isNumber ? value : otherwise;
}

// Whether its charts follow the files.
bool isWatching(const QProcess& program)
{
    const QDir opened(QStringLiteral("/proc/%1/fdinfo").arg(program.processId()));
    const QStringList names = opened.entryList(QDir::Files);
    return std::any_of(names.begin(), names.end(), [&opened](const QString& name) {
        return readFile(opened.filePath(name)).count("\ninotify wd:") >= allSeries.size();
    });
}

template <typename Values>
auto oneOf(QRandomGenerator& random, const Values& values)
{
    return *std::next(std::begin(values), random.bounded(int(std::size(values))));
}

} // namespace

class TestCrowd final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }
    void allAtOnce_data();
    void allAtOnce();

private:
    QString path(const QString& name) const { return m_dir->filePath(name); }
    QString store() const { return path(QStringLiteral("bin/user/tadata")); }
    QStringList importLine(int file, const QString& series, int timeframe, const QString& mode,
                           const QString& place) const;
    QStringList exportLine(const QString& series) const;
    QStringList jobLine(int program, QRandomGenerator& random) const;
    void startTerminal(QProcess& terminal) const;
    void work(int program, int seed);
    void learnLines();
    QByteArray wrongLines() const;
    QByteArray wrongExport() const;
    QByteArray wrongExportAtEnd() const;
    QByteArray takeAllBack() const;

    std::unique_ptr<QTemporaryDir> m_dir;
    QSet<QByteArray> m_lines; // that an import stores
    std::mutex m_mutex;
    QByteArrayList m_problems;
    std::atomic<int> m_done = 0;
    std::atomic<int> m_refused = 0;
};

void TestCrowd::init()
{
    testsupport::failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_problems.clear();
    m_done = m_refused = 0;
    for (int file = 0; file < files; ++file)
        writeFile(path(QStringLiteral("%1.csv").arg(file)), bars(file));
    learnLines();
    for (const QString& series : allSeries)
        QCOMPARE(runTadata(importLine(0, series, 60, QStringLiteral("replace"), store())).exitCode,
                 0);
}

QStringList TestCrowd::exportLine(const QString& series) const
{
    return words("export --finished-only --from 2024-01-14 --to 2024-01-19 --series")
           << series << QStringLiteral("--store") << store() << path(QStringLiteral("out.txt"));
}

QStringList TestCrowd::importLine(int file, const QString& series, int timeframe,
                                  const QString& mode, const QString& place) const
{
    return words("import --decimals 0 --no-header --columns "
                 "date=0,time=1,open=2,high=3,low=4,close=5 --keep 100000 --wait 200")
           << QStringLiteral("--timeframe") << QString::number(timeframe)
           << QStringLiteral("--mode") << mode << QStringLiteral("--series") << series
           << QStringLiteral("--store") << place << path(QStringLiteral("%1.csv").arg(file));
}

void TestCrowd::learnLines()
{
    m_lines.clear();
    for (int file = 0; file < files; ++file) {
        for (const int timeframe : {1, 60}) {
            const QString alone = path(QStringLiteral("alone%1-%2").arg(file).arg(timeframe));
            QCOMPARE(runTadata(importLine(file, allSeries[0], timeframe, QStringLiteral("replace"),
                                          alone))
                         .exitCode,
                     0);
            for (const QByteArray& content : readTree(QDir(alone))) {
                const QByteArrayList lines = content.split('\n');
                m_lines.unite(QSet<QByteArray>(lines.begin(), lines.end()));
            }
        }
    }
}

// Five programs change the store, two look at it; the last one is the editor.
QStringList TestCrowd::jobLine(int program, QRandomGenerator& random) const
{
    const QStringList where{QStringLiteral("--store"), store()};
    const QString series = oneOf(random, allSeries);
    const QStringList keeps = words("--keep 100000 --wait 200");
    switch (program) {
    case 0:
    case 1:
    case 2:
        return importLine(random.bounded(files), series, oneOf(random, std::array{1, 60}),
                          oneOf(random, words("replace merge fill")), store());
    case 3:
        return words("undo") + keeps + where;
    case 4:
        return QStringList{QStringLiteral("delete"), series} +
               words(oneOf(random, std::array{"--to 2024-01-15", "--from 2024-01-18"})) + keeps +
               where;
    case 5:
        return exportLine(series);
    case 6:
        return QStringList{oneOf(random, words("list health points"))} + where;
    default:
        return {store(), series};
    }
}

// An undo may find that others have gone on, a reader that a file went under it; each says so.
void TestCrowd::work(int program, int seed)
{
    QRandomGenerator random(static_cast<quint32>(seed * 100 + program));
    for (int round = number("TADATA_CROWD_ROUNDS", 12); round > 0; --round) {
        const QStringList line = jobLine(program, random);
        const Outcome outcome =
            program == 7 ? runProgram(QStringLiteral(EDIT_ROWS), line) : runTadata(line);
        const bool mustSucceed = program < 3;
        // The exit code 1 of health may mean that days are missing, which it says in its report.
        const bool isTold = outcome.exitCode == 1 && !(outcome.err + outcome.out).isEmpty();
        ++m_done;
        m_refused += isTold ? 1 : 0;
        QByteArray problem;
        if (outcome.exitCode != 0 && (!isTold || mustSucceed))
            problem = "exit code " + QByteArray::number(outcome.exitCode) + ": " +
                      outcome.err.left(300) + outcome.out.left(300);
        else if (outcome.exitCode == 0 && program == 5)
            problem = wrongExport();
        if (problem.isEmpty())
            continue;
        const std::lock_guard lock(m_mutex);
        m_problems.append(line.join(u' ').toUtf8() + ": " + problem);
    }
}

// With both charts open.
void TestCrowd::startTerminal(QProcess& terminal) const
{
    QSettings settings(path(QStringLiteral("bin/user/vexdesk.ini")), QSettings::IniFormat);
    QStringList charts;
    for (const QString& series : allSeries) {
        const QStringList codes = series.split(u'/');
        const QJsonObject chart{{QStringLiteral("stock"), codes[0]},
                                {QStringLiteral("board"), codes[1]},
                                {QStringLiteral("security"), codes[2]}};
        charts.append(QString::fromUtf8(QJsonDocument(chart).toJson(QJsonDocument::Compact)));
    }
    settings.setValue(QStringLiteral("Desk/Charts/recent"), charts);
    settings.setValue(QStringLiteral("Desk/Charts/tabs"), allSeries);
    settings.setValue(QStringLiteral("Desk/Charts/current"), allSeries[0]);
    settings.sync();
    const QString program = path(QStringLiteral("bin/vexdesk-desk"));
    QVERIFY(QFile::copy(QStringLiteral(DESK_PROGRAM), program));
    QProcessEnvironment environment = plainEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_dir->path());
    terminal.setProcessEnvironment(environment);
    terminal.start(program, {QStringLiteral("--plugins"),
                             QFileInfo(QStringLiteral(TADATAMANAGER_FILE)).path()});
    QVERIFY(terminal.waitForStarted());
    QTRY_VERIFY(isWatching(terminal));
}

QByteArray TestCrowd::wrongLines() const
{
    const auto stored = readTree(QDir(store()));
    for (auto file = stored.begin(); file != stored.end(); ++file) {
        const QByteArrayList lines = file->split('\n');
        const bool isDerived = !file.key().endsWith(u".iss");
        const auto isUnknown = [&](const QByteArray& line) {
            return isDerived ? !isMinute(line) : !m_lines.contains(line);
        };
        const auto wrong = std::find_if(lines.begin(), lines.end(), isUnknown);
        if (wrong != lines.end())
            return file.key().toUtf8() + " has the line '" + *wrong + '\'';
        // The time comes first, with as many digits in all lines; the last text is empty.
        const auto twice = std::adjacent_find(
            lines.begin(), lines.end() - 1, [](const QByteArray& left, const QByteArray& right) {
                return left.left(left.indexOf(';')) >= right.left(right.indexOf(';'));
            });
        if (twice != lines.end() - 1)
            return file.key().toUtf8() + " is not sorted at '" + *twice + '\'';
    }
    return {};
}

// Each line is a bar that an import stores, sorted and only once.
QByteArray TestCrowd::wrongExport() const
{
    static const QRegularExpression form(
        QStringLiteral("^(?:ALFA|BETA),60,(\\d{8}),((\\d{6}),.*)$"));
    QByteArrayList lines = readFile(path(QStringLiteral("out.txt"))).split('\n');
    if (!lines.takeLast().isEmpty() || !lines.takeFirst().contains("<TICKER>"))
        return "the output is not whole";
    QString last;
    for (const QByteArray& line : lines) {
        const auto bar = form.match(QString::fromUtf8(line));
        const QString moment = bar.captured(1) + bar.captured(3);
        if (!m_lines.contains(bar.captured(2).replace(u',', u';').toUtf8()))
            return "exported was '" + line + '\'';
        if (moment <= last)
            return "exported out of order was '" + line + '\'';
        last = moment;
    }
    return {};
}

// All that is stored in minutes.
QByteArray TestCrowd::wrongExportAtEnd() const
{
    for (const QString& series : allSeries) {
        if (const Outcome outcome = runTadata(exportLine(series)); outcome.exitCode != 0)
            return "not exported: " + outcome.err;
        qsizetype bars = 0;
        const auto stored = readTree(QDir(store() + u'/' + series));
        for (auto file = stored.begin(); file != stored.end(); ++file)
            bars += file.key().endsWith(u"_60.iss") ? file->count('\n') : 0;
        if (readFile(path(QStringLiteral("out.txt"))).count('\n') != bars + 1)
            return "not all bars are exported";
        if (QByteArray wrong = wrongExport(); !wrong.isEmpty())
            return wrong;
    }
    return {};
}

// From the newest point to the oldest.
QByteArray TestCrowd::takeAllBack() const
{
    const QStringList where{QStringLiteral("--store"), store()};
    const Outcome listed = runTadata(words("points --json") + where);
    const QJsonArray points =
        QJsonDocument::fromJson(listed.out)[QStringLiteral("points")].toArray();
    for (const auto& point : points) {
        const QString id = point[QStringLiteral("id")].toString();
        const Outcome undone = runTadata(words("undo --keep 100000") + where + QStringList{id});
        if (undone.exitCode != 0)
            return "not taken back: " + undone.err;
    }
    return readTree(QDir(store())).isEmpty() ? QByteArray() : "something is left";
}

void TestCrowd::allAtOnce_data()
{
    QTest::addColumn<int>("seed");
    const int first = number("TADATA_CROWD_SEED", 1);
    for (int seed = first; seed < first + 3; ++seed)
        QTest::addRow("seed %d", seed) << seed;
}

void TestCrowd::allAtOnce()
{
    QFETCH(const int, seed);
    QProcess terminal;
    startTerminal(terminal);
    std::vector<std::thread> programs;
    for (int program = 0; program < 8; ++program)
        programs.emplace_back([this, program, seed] { work(program, seed); });
    for (std::thread& program : programs)
        program.join();
    QVERIFY2(m_problems.isEmpty(), m_problems.join('\n').constData());
    QCOMPARE(terminal.state(), QProcess::Running);
    terminal.kill();
    QVERIFY(terminal.waitForFinished());
    // The platform says this of every window.
    const QByteArray said = terminal.readAllStandardError().replace(
        "This plugin does not support propagateSizeHints()\n", "");
    QCOMPARE(said, QByteArray());

    QCOMPARE(wrongLines(), QByteArray());
    QCOMPARE(wrongExportAtEnd(), QByteArray());
    QDirIterator left(m_dir->path(), {QStringLiteral("*.lock"), QStringLiteral("*.tmp")},
                      QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (left.hasNext())
        QCOMPARE(left.next(), path(QStringLiteral("bin/user/vexdesk.lock")));
    QCOMPARE(takeAllBack(), QByteArray());
    qInfo("%d jobs, of which %d were refused and said why", int(m_done), int(m_refused));
}

QTEST_GUILESS_MAIN(TestCrowd)
#include "tst_crowd.moc"
