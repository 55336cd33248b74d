// SPDX-License-Identifier: MIT
// Programs that change a store are killed at each call of the system that changes something, and
// each such call fails once: what they had done can be taken back.

#include "cli/tadatarunner.h"

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <cerrno>
#include <csignal>
#include <memory>

using testsupport::Outcome;
using testsupport::plainEnvironment;
using testsupport::readFile;
using testsupport::runProgram;
using testsupport::runTadata;
using testsupport::words;
using testsupport::writeFile;

namespace {

// Content and permissions of each file.
using Files = QMap<QString, std::pair<QByteArray, int>>;

Files filesBelow(const QString& root)
{
    Files files;
    QDirIterator walk(root, QDir::Files | QDir::Hidden | QDir::System,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        files.insert(QDir(root).relativeFilePath(path),
                     {readFile(path), int(walk.fileInfo().permissions())});
    }
    return files;
}

// What a killed program may leave is not a part of the store.
Files withoutTemporary(Files files)
{
    static const QRegularExpression name(QStringLiteral("/\\.tadata-\\d+-\\d+\\.tmp$"));
    const QStringList paths = files.keys();
    for (const QString& path : paths) {
        if (name.match(path).hasMatch())
            files.remove(path);
    }
    return files;
}

// The editor empties a file that it may not remove.
Files withoutEmpty(Files files)
{
    files.removeIf([](Files::iterator file) { return file.value().first.isEmpty(); });
    return files;
}

QByteArray bars(std::initializer_list<const char*> days, int price)
{
    QByteArray lines;
    for (const char* day : days) {
        for (int minute = 1; minute < 4; ++minute)
            lines += QByteArray(day) + ",1000" + QByteArray::number(minute * 15 - 5) + ',' +
                     QByteArray::number(price) + ',' + QByteArray::number(price + 1) + ',' +
                     QByteArray::number(price - 1) + ',' + QByteArray::number(price) + '\n';
    }
    return lines;
}

} // namespace

class TestTakingBack final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }
    void killedAtEachStep_data() { commands(); }
    void killedAtEachStep();
    void eachCallFailsOnce_data();
    void eachCallFailsOnce();
    void interruptedAtEachStep_data();
    void interruptedAtEachStep();

private:
    static void commands();
    QString path(const char* name) const { return m_dir->filePath(QLatin1String(name)); }
    QString store() const { return path("store"); }
    QStringList importLine(const char* file, int timeframe) const;
    void prepare();
    void refresh();
    QStringList commandLine(const QString& command) const;
    Outcome run(const QStringList& line, const QString& variable, const QString& value) const;
    QStringList points() const;
    void takeBack(const QStringList& pointsBefore, const QByteArray& what) const;

    std::unique_ptr<QTemporaryDir> m_dir;
    Files m_before;
};

void TestTakingBack::init()
{
    testsupport::failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

void TestTakingBack::commands()
{
    QTest::addColumn<QString>("command");
    for (const char* name :
         {"import", "import seconds", "undo", "edit", "delete", "copy", "rename"})
        QTest::newRow(name) << name;
}

QStringList TestTakingBack::importLine(const char* file, int timeframe) const
{
    return words("import --series S/B/X --decimals 0 --no-header --wait 0 --columns "
                 "date=0,time=1,open=2,high=3,low=4,close=5 --timeframe")
           << QString::number(timeframe) << QStringLiteral("--store") << store() << path(file);
}

// A store with both timeframes of two days, the second of them changed by another import.
void TestTakingBack::prepare()
{
    writeFile(path("old.csv"), bars({"20240115", "20240116"}, 50));
    writeFile(path("second.csv"), bars({"20240116"}, 70));
    writeFile(path("new.csv"), bars({"20240115", "20240116", "20240117"}, 90));
    for (const int timeframe : {60, 1})
        QCOMPARE(runTadata(importLine("old.csv", timeframe)).exitCode, 0);
    QCOMPARE(runTadata(importLine("second.csv", 60)).exitCode, 0);
    QVERIFY(QDir().mkpath(path("kept")));
    for (const char* name : {"store", "store-restore"})
        QCOMPARE(runProgram(QStringLiteral("cp"), {QStringLiteral("-a"), path(name), path("kept")})
                     .exitCode,
                 0);
    m_before = filesBelow(store());
    QVERIFY(m_before.size() == 6);
}

// The same store anew.
void TestTakingBack::refresh()
{
    for (const char* name : {"store", "store-restore"}) {
        QVERIFY(QDir(path(name)).removeRecursively());
        QCOMPARE(runProgram(QStringLiteral("cp"),
                            {QStringLiteral("-a"), path("kept/") + QLatin1String(name), path(name)})
                     .exitCode,
                 0);
    }
    QFile::remove(path("calls"));
}

QStringList TestTakingBack::commandLine(const QString& command) const
{
    const QStringList where = words("--wait 0 --store") << store();
    if (command == u"edit")
        return {QStringLiteral(EDIT_ROWS), store(), QStringLiteral("S/B/X")};
    QStringList line{testsupport::tadataProgram()};
    if (command == u"import")
        return line + importLine("new.csv", 60);
    if (command == u"import seconds")
        return line + importLine("new.csv", 1);
    if (command == u"delete")
        return line + words("delete S/B/X --to 2024-01-15") + where;
    if (command == u"undo")
        return line + words("undo") + where;
    return line << command << words("S/B/X S/B/Y") << where;
}

Outcome TestTakingBack::run(const QStringList& line, const QString& variable,
                            const QString& value) const
{
    QProcessEnvironment environment = plainEnvironment();
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(CHANGING_CALLS));
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("verify_asan_link_order=0"));
    environment.insert(QStringLiteral("TADATA_TEST_CALLS"), path("calls"));
    environment.insert(variable, value);
    return runProgram(line.first(), line.mid(1), environment);
}

// The ids, the newest first.
QStringList TestTakingBack::points() const
{
    const Outcome outcome = runTadata(words("points --json --store") << store());
    if (outcome.exitCode != 0)
        return {QString::fromUtf8(outcome.err)};
    QStringList ids;
    const QJsonArray points =
        QJsonDocument::fromJson(outcome.out).object().value(QStringLiteral("points")).toArray();
    for (const QJsonValue& point : points)
        ids.append(point.toObject().value(QStringLiteral("id")).toString());
    return ids;
}

// Where a point was left it is put back; then the store is as it was.
void TestTakingBack::takeBack(const QStringList& pointsBefore, const QByteArray& what) const
{
    const QStringList now = points();
    QVERIFY2(now.size() <= pointsBefore.size() + 1, what.constData());
    if (now.value(0) != pointsBefore.value(0)) {
        const Outcome undone = runTadata(words("undo --wait 0 --store") << store() << now.first());
        QVERIFY2(undone.exitCode == 0, (what + ": " + undone.err).constData());
        QVERIFY2(filesBelow(store()) == m_before, what.constData());
    } else {
        QVERIFY2(withoutTemporary(filesBelow(store())) == m_before, what.constData());
    }
}

void TestTakingBack::killedAtEachStep()
{
    QFETCH(const QString, command);
    prepare();
    const QStringList line = commandLine(command);
    const QStringList before = points();
    int step = 0;
    for (bool hasEnded = false; !hasEnded;) {
        refresh();
        ++step;
        const Outcome outcome =
            run(line, QStringLiteral("TADATA_TEST_KILL_AT"), QString::number(step));
        hasEnded = outcome.exitCode != -1;
        const QByteArray what = "killed at " + QByteArray::number(step) + ": " + outcome.err;
        QVERIFY2(!hasEnded || outcome.exitCode == 0, what.constData());
        takeBack(before, what);
        if (QTest::currentTestFailed())
            return;
    }
    qInfo("%d steps", step - 1);
    QVERIFY(step > 20);
}

void TestTakingBack::eachCallFailsOnce_data()
{
    commands();
}

void TestTakingBack::eachCallFailsOnce()
{
    QFETCH(const QString, command);
    prepare();
    const QStringList line = commandLine(command);
    const QStringList before = points();
    refresh();
    QCOMPARE(run(line, QStringLiteral("NOTHING"), QString()).exitCode, 0);
    const Files done = withoutEmpty(filesBelow(store()));
    const int steps = readFile(path("calls")).toInt();
    QVERIFY(steps > 20);
    for (const int error : {ENOSPC, EIO, EACCES}) {
        for (int step = 1; step <= steps; ++step) {
            refresh();
            const Outcome outcome = run(line, QStringLiteral("TADATA_TEST_FAIL_AT"),
                                        QStringLiteral("%1:%2").arg(step).arg(error));
            const QByteArray what = "error " + QByteArray::number(error) + " at " +
                                    QByteArray::number(step) + ": " + outcome.err;
            if (outcome.exitCode == 0) {
                QVERIFY2(withoutEmpty(withoutTemporary(filesBelow(store()))) == done,
                         what.constData());
            } else {
                QVERIFY2(outcome.exitCode == 1, what.constData());
                QVERIFY2(outcome.err.contains(m_dir->path().toUtf8()), what.constData());
            }
            takeBack(before, what);
            if (QTest::currentTestFailed())
                return;
        }
    }
    qInfo("%d faults", 3 * steps);
}

void TestTakingBack::interruptedAtEachStep_data()
{
    QTest::addColumn<int>("signal");
    QTest::addColumn<QStringList>("options");
    QTest::newRow("SIGINT") << SIGINT << QStringList();
    QTest::newRow("SIGTERM") << SIGTERM << QStringList();
    QTest::newRow("SIGINT, put back") << SIGINT << words("--undo-on-error");
    QTest::newRow("SIGTERM, put back") << SIGTERM << words("--undo-on-error");
}

void TestTakingBack::interruptedAtEachStep()
{
    QFETCH(const int, signal);
    QFETCH(const QStringList, options);
    prepare();
    const QStringList line = commandLine(QStringLiteral("import seconds")) + options;
    const QStringList before = points();
    refresh();
    QCOMPARE(run(line, QStringLiteral("NOTHING"), QString()).exitCode, 0);
    const Files done = filesBelow(store());
    const int steps = readFile(path("calls")).toInt();
    int interrupted = 0;
    for (int step = 1; step <= steps; ++step) {
        refresh();
        const Outcome outcome = run(line, QStringLiteral("TADATA_TEST_SIGNAL_AT"),
                                    QStringLiteral("%1:%2").arg(step).arg(signal));
        const QByteArray what = "signal at " + QByteArray::number(step) + ": " + outcome.err;
        // After its last line nothing is left to interrupt.
        const bool hasEnded = outcome.exitCode == 0;
        interrupted += hasEnded ? 0 : 1;
        QVERIFY2(hasEnded || outcome.exitCode == 128 + signal, what.constData());
        if (hasEnded)
            QVERIFY2(filesBelow(store()) == done, what.constData());
        else if (!options.isEmpty())
            QVERIFY2(filesBelow(store()) == m_before && points() == before, what.constData());
        QVERIFY2(!QFileInfo::exists(path("store-restore/") + points().first() + "/journal"),
                 what.constData());
        takeBack(before, what);
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY(interrupted > 10);
    QVERIFY(interrupted < steps);
}

QTEST_GUILESS_MAIN(TestTakingBack)
#include "tst_takingback.moc"
