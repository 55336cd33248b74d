// SPDX-License-Identifier: MIT
// Several programs change one store at once.

#include "cli/tadatarunner.h"

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLockFile>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <algorithm>
#include <csignal>
#include <memory>
#include <vector>

using testsupport::Outcome;
using testsupport::plainEnvironment;
using testsupport::readFile;
using testsupport::readTree;
using testsupport::runTadata;
using testsupport::words;
using testsupport::writeFile;

class TestMeetings final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }
    void severalImportsAtOnce_data();
    void severalImportsAtOnce();
    void whoWaitsTooLongSaysWhoHoldsIt_data();
    void whoWaitsTooLongSaysWhoHoldsIt();
    void aWaitCanBeInterrupted_data();
    void aWaitCanBeInterrupted();
    void aFileThatChangesMeanwhileIsNamed();
    void theLockOfAKilledProgramDoesNotLast();
    void aLockIsRemovedByHand();

private:
    QString path(const QString& name) const { return m_dir->filePath(name); }
    QString lockPath() const { return path(QStringLiteral("store-restore/locks/S/B/X.lock")); }
    QStringList importLine(const QString& file, const QString& series, const char* store) const;
    std::unique_ptr<QProcess> start(const QStringList& line) const;
    std::unique_ptr<QProcess> startImportThatWaits() const;

    std::unique_ptr<QTemporaryDir> m_dir;
};

namespace {

constexpr int patience = 240'000;

// Two days whose bars tell which file they are of.
QByteArray bars(int price)
{
    QByteArray lines;
    for (const char* day : {"20240115", "20240116"}) {
        for (int i = 0; i < 3000; ++i)
            lines += QByteArray(day) + ',' +
                     QTime(1, 0).addSecs(i * 20).toString(QStringLiteral("hhmmss")).toLatin1() +
                     (',' + QByteArray::number(price)).repeated(4) + '\n';
    }
    return lines;
}

} // namespace

void TestMeetings::init()
{
    testsupport::failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

QStringList TestMeetings::importLine(const QString& file, const QString& series,
                                     const char* store) const
{
    return words("import --decimals 0 --no-header --timeframe 1 --columns "
                 "date=0,time=1,open=2,high=3,low=4,close=5")
           << path(file) << QStringLiteral("--series") << series << QStringLiteral("--store")
           << path(QLatin1String(store));
}

std::unique_ptr<QProcess> TestMeetings::start(const QStringList& line) const
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(plainEnvironment());
    process->setWorkingDirectory(m_dir->path());
    process->start(testsupport::tadataProgram(), line, QIODevice::ReadOnly);
    return process;
}

void TestMeetings::severalImportsAtOnce_data()
{
    QTest::addColumn<int>("programs");
    QTest::addColumn<bool>("inOneSeries");
    QTest::newRow("two in one series") << 2 << true;
    QTest::newRow("eight in one series") << 8 << true;
    QTest::newRow("two in different series") << 2 << false;
    QTest::newRow("eight in different series") << 8 << false;
}

// By different names of the store.
void TestMeetings::severalImportsAtOnce()
{
    QFETCH(const int, programs);
    QFETCH(const bool, inOneSeries);
    QVERIFY(QDir().mkpath(path(QStringLiteral("store"))));
    QVERIFY(QFile::link(path(QStringLiteral("store")), path(QStringLiteral("link"))));
    QMap<QString, QList<QByteArray>> wanted; // of each day file
    std::vector<std::unique_ptr<QProcess>> running;
    for (int i = 0; i < programs; ++i) {
        const QString file = QStringLiteral("%1.csv").arg(i);
        writeFile(path(file), bars(100 + i));
        const QString alone = QStringLiteral("alone%1").arg(i);
        QCOMPARE(runTadata(importLine(file, QStringLiteral("S/B/X"), qPrintable(alone))).exitCode,
                 0);
        const QString series =
            inOneSeries ? QStringLiteral("S/B/X") : QStringLiteral("S/B/X%1").arg(i);
        const auto tree = readTree(QDir(path(alone)));
        for (auto one = tree.begin(); one != tree.end(); ++one)
            wanted[series + one.key().mid(5)].append(*one);
        const char* const store = i % 3 == 0 ? "store" : i % 3 == 1 ? "link" : "store/";
        running.push_back(start(importLine(file, series, store) << words("--wait 200")));
    }
    for (const auto& process : running) {
        QVERIFY(process->waitForFinished(patience));
        QCOMPARE(process->readAllStandardError(), QByteArray());
        QCOMPARE(process->exitCode(), 0);
    }
    const auto stored = readTree(QDir(path(QStringLiteral("store"))));
    QCOMPARE(stored.keys(), wanted.keys());
    for (auto file = stored.begin(); file != stored.end(); ++file)
        QVERIFY2(wanted[file.key()].contains(*file), qPrintable(file.key()));
    // All days of a series are of the program that was the last.
    if (inOneSeries) {
        const qsizetype last = wanted.first().indexOf(stored.first());
        for (auto file = stored.begin(); file != stored.end(); ++file)
            QCOMPARE(wanted[file.key()].indexOf(*file), last);
    }
    const Outcome points =
        runTadata(words("points --json --store") << path(QStringLiteral("store")));
    QCOMPARE(points.exitCode, 0);
    QCOMPARE(QJsonDocument::fromJson(points.out)
                 .object()
                 .value(QStringLiteral("points"))
                 .toArray()
                 .size(),
             programs);
}

void TestMeetings::whoWaitsTooLongSaysWhoHoldsIt_data()
{
    QTest::addColumn<QStringList>("line");
    for (const char* line : {"delete S/B/X --all", "copy S/B/X S/B/Y", "rename S/B/Y S/B/X"})
        QTest::newRow(line) << words(line);
    QTest::newRow("import") << words("import --series S/B/X --decimals 0 --columns "
                                     "date=0,time=1,open=2,high=3,low=4,close=5 bars.csv");
    QTest::newRow("undo") << words("undo");
}

void TestMeetings::whoWaitsTooLongSaysWhoHoldsIt()
{
    QFETCH(const QStringList, line);
    writeFile(path(QStringLiteral("bars.csv")), bars(7));
    for (const char* series : {"S/B/X", "S/B/Y"})
        QCOMPARE(runTadata(importLine(QStringLiteral("bars.csv"), QLatin1String(series), "store"))
                     .exitCode,
                 0);
    QLockFile lock(line.first() == u"undo" ? lockPath().chopped(6) + QStringLiteral("Y.lock")
                                           : lockPath());
    QVERIFY(lock.lock());
    const auto before = readTree(QDir(m_dir->path()));
    const Outcome outcome =
        runTadata(line + words("--wait 0 --store store"), plainEnvironment(), m_dir->path());
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.out, QByteArray());
    QVERIFY2(outcome.err.contains(QByteArray::number(QCoreApplication::applicationPid())) &&
                 outcome.err.contains(lock.fileName().toUtf8()),
             outcome.err.constData());
    QCOMPARE(readTree(QDir(m_dir->path())), before);
}

// For the lock of its series. It has its handlers by the time that it opens the input, which it
// then holds open.
std::unique_ptr<QProcess> TestMeetings::startImportThatWaits() const
{
    const QString input = path(QStringLiteral("bars.csv"));
    writeFile(input, bars(7));
    auto waiting =
        start(importLine(QStringLiteral("bars.csv"), QStringLiteral("S/B/X"), "store") << "--wait"
                                                                                       << "100000");
    if (!waiting->waitForStarted())
        return nullptr;
    const QString open = QStringLiteral("/proc/%1/fd").arg(waiting->processId());
    const auto hasInput = [&] {
        const QFileInfoList files = QDir(open).entryInfoList(QDir::Files);
        return std::any_of(files.cbegin(), files.cend(),
                           [&](const QFileInfo& file) { return file.symLinkTarget() == input; });
    };
    return QTest::qWaitFor(hasInput, patience) ? std::move(waiting) : nullptr;
}

void TestMeetings::aWaitCanBeInterrupted_data()
{
    QTest::addColumn<int>("signal");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("SIGHUP") << SIGHUP << 129;
    QTest::newRow("SIGTERM") << SIGTERM << 143;
}

void TestMeetings::aWaitCanBeInterrupted()
{
    QFETCH(const int, signal);
    QFETCH(const int, exitCode);
    QVERIFY(QDir().mkpath(path(QStringLiteral("store-restore/locks/S/B"))));
    QLockFile lock(lockPath());
    QVERIFY(lock.lock());
    const auto waiting = startImportThatWaits();
    QVERIFY(waiting);
    QCOMPARE(::kill(static_cast<pid_t>(waiting->processId()), signal), 0);
    QVERIFY(waiting->waitForFinished(patience));
    QCOMPARE(waiting->exitStatus(), QProcess::NormalExit);
    QCOMPARE(waiting->exitCode(), exitCode);
    QVERIFY(!QFileInfo::exists(path(QStringLiteral("store"))));
}

void TestMeetings::aFileThatChangesMeanwhileIsNamed()
{
    QVERIFY(QDir().mkpath(path(QStringLiteral("store-restore/locks/S/B"))));
    QLockFile lock(lockPath());
    QVERIFY(lock.lock());
    const auto waiting = startImportThatWaits();
    QVERIFY(waiting);
    const QString input = path(QStringLiteral("bars.csv"));
    QFile file(input);
    QVERIFY(file.open(QIODevice::Append));
    QVERIFY(file.write(bars(8)) > 0);
    file.close();
    lock.unlock();
    QVERIFY(waiting->waitForFinished(patience));
    QCOMPARE(waiting->exitCode(), 1);
    QCOMPARE(
        QString::fromUtf8(waiting->readAllStandardError()),
        QStringLiteral("Невозможно прочитать файл %1: он изменился, пока его читали\n").arg(input));
}

void TestMeetings::theLockOfAKilledProgramDoesNotLast()
{
    writeFile(path(QStringLiteral("bars.csv")), bars(7));
    QVERIFY(QDir().mkpath(path(QStringLiteral("store-restore/locks/S/B"))));
    QProcess dead;
    dead.start(testsupport::tadataProgram(), words("--version"));
    const qint64 number = dead.processId();
    QVERIFY(dead.waitForFinished(patience));
    QLockFile mine(lockPath());
    QVERIFY(mine.lock());
    const QByteArray content = readFile(lockPath());
    mine.unlock();
    QByteArrayList lines = content.split('\n');
    lines[0] = QByteArray::number(number);
    writeFile(lockPath(), lines.join('\n'));
    QCOMPARE(runTadata(importLine(QStringLiteral("bars.csv"), QStringLiteral("S/B/X"), "store")
                       << words("--wait 0"))
                 .exitCode,
             0);
    QVERIFY(!QFileInfo::exists(lockPath()));
}

void TestMeetings::aLockIsRemovedByHand()
{
    const QStringList unlock = words("unlock S/B/X --store") << path(QStringLiteral("store"));
    QCOMPARE(runTadata(unlock), testsupport::succeeded("Серия S/B/X не заблокирована\n"));
    QVERIFY(QDir().mkpath(path(QStringLiteral("store-restore/locks/S/B"))));
    QLockFile mine(lockPath());
    QVERIFY(mine.lock());
    const QByteArray number = QByteArray::number(QCoreApplication::applicationPid());
    const Outcome refused = runTadata(unlock);
    QCOMPARE(refused.exitCode, 1);
    QVERIFY2(refused.err.contains(number), refused.err.constData());
    QVERIFY(QFileInfo::exists(lockPath()));
    const Outcome forced = runTadata(unlock + words("--force"));
    QCOMPARE(forced.exitCode, 0);
    QVERIFY2(forced.out.contains(number), forced.out.constData());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("own lock file")));
    mine.unlock();
    QVERIFY(!QFileInfo::exists(lockPath()));

    writeFile(lockPath(), number + "\ntadata\nelsewhere\n");
    const Outcome strange = runTadata(unlock);
    QCOMPARE(strange.exitCode, 0);
    QVERIFY2(strange.out.contains("elsewhere"), strange.out.constData());
    QVERIFY(!QFileInfo::exists(lockPath()));
}

QTEST_GUILESS_MAIN(TestMeetings)
#include "tst_meetings.moc"
