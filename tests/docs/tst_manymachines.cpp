// SPDX-License-Identifier: MIT
// What docs/many-machines.md shows: a store is filled and computed with by a cluster of two worker
// processes on this machine, and what comes out is what tadata exports.

#include "markdown.h"
#include "tools.h"

#include "cli/tadatarunner.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QDateTime>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <algorithm>
#include <memory>
#include <vector>

using namespace testsupport;

namespace {

constexpr char heading[] = "DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,VAL,OI\n";

QByteArray decimal(qint64 hundredths)
{
    return QByteArray::number(static_cast<double>(hundredths) / 100, 'f', 2);
}

// Minute bars from a moment on, in which some minutes are missing.
QByteArray minutes(const char* begin, int count, int security)
{
    const auto price = [security](int n) { return 12000 + n * 37 * security % 100; };
    QDateTime end = QDateTime::fromString(QLatin1String(begin), QStringLiteral("yyyyMMddhhmm"));
    end.setTimeSpec(Qt::UTC);
    QByteArray lines;
    for (int n = 1; n <= count; ++n) {
        end = end.addSecs(60);
        if (n % 7 == security)
            continue;
        const int open = price(n);
        const int close = price(n + 1);
        const int volume = 1 + n * 53 % 997;
        lines += end.toString(QStringLiteral("yyyyMMdd,hhmmss")).toUtf8() + ',' + decimal(open) +
                 ',' + decimal(std::max(open, close) + n % 4) + ',' +
                 decimal(std::min(open, close) - n % 3) + ',' + decimal(close) + ',' +
                 QByteArray::number(volume) + ',' + decimal(qint64(volume) * close) + ',' +
                 QByteArray::number(n) + '\n';
    }
    return lines;
}

// A bar in a form that does not depend on who wrote it.
QString barText(const QString& series, QString end, const QStringList& numbers)
{
    QString text = series + u' ' + end.remove(u'-').remove(u':').remove(u' ');
    for (const QString& number : numbers)
        text += u' ' + QString::number(number.toDouble(), 'f', 2);
    return text;
}

// One bar of several in a row.
QString folded(const QStringList& bars)
{
    QStringList all = bars.value(0).split(u' ');
    for (const QString& bar : bars.mid(1)) {
        const QStringList next = bar.split(u' ');
        const auto number = [](double value) { return QString::number(value, 'f', 2); };
        all[1] = next[1];
        all[3] = number(std::max(all[3].toDouble(), next[3].toDouble()));
        all[4] = number(std::min(all[4].toDouble(), next[4].toDouble()));
        all[5] = next[5];
        all[6] = number(all[6].toDouble() + next[6].toDouble());
        all[7] = number(all[7].toDouble() + next[7].toDouble());
        all[8] = next[8];
    }
    return all.join(u' ');
}

QStringList linesOf(const QByteArray& text)
{
    return QString::fromUtf8(text).split(u'\n', Qt::SkipEmptyParts);
}

// As the editor writes a day: money before pieces.
void exchangeVolumes(const QString& path)
{
    QByteArray edited;
    const QList<QByteArray> lines = readFile(path).trimmed().split('\n');
    for (const QByteArray& line : lines) {
        QList<QByteArray> fields = line.split(';');
        fields.swapItemsAt(5, 6);
        edited += fields.join(';') + '\n';
    }
    writeFile(path, edited);
}

} // namespace

class ManyMachinesTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void workersImport();
    void daskGivesFiveMinuteBars();
    void duckdbWritesAndReadsParquet();

private:
    QString path(const char* name) const { return m_dir->filePath(QLatin1String(name)); }
    // Code of the page, with the test's directory in the place of the shared one.
    QString code(const char* language, int number) const;
    Outcome runPython(const QString& program, const QString& text) const;

    QStringList importLine(const QString& security, const QString& store) const;
    void importHere() const;
    // The days of the store that the snippets could stumble over.
    void addOddDays() const;
    // The finished bars of all series in 2024.
    QStringList exported(int timeframe) const;

    // The scheduler and two workers, by the commands of the page.
    void startCluster(const QString& program);
    void start(const QString& command, const QString& more);
    void writeProgramThatTells() const;

    Page m_page;
    std::unique_ptr<QTemporaryDir> m_dir;
    QProcessEnvironment m_environment;
    std::vector<std::unique_ptr<QProcess>> m_cluster;
    const QStringList m_securities = words("ALFA LYRA VEGA");
};

void ManyMachinesTest::init()
{
    failOnStrayWarnings();
    m_page = readPage(QStringLiteral(SOURCE_FOLDER "/docs/many-machines.md"));
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("tadata")));
    m_environment = plainEnvironment();
    m_environment.insert(QStringLiteral("PATH"),
                         path("bin") + u':' + m_environment.value(QStringLiteral("PATH")));
    for (int i = 0; i < m_securities.size(); ++i) {
        const QString folder = path("incoming/") + m_securities.at(i);
        writeFile(folder + QStringLiteral("/1.csv"), heading + minutes("202312312350", 20, i + 1) +
                                                         minutes("202401151000", 100, i + 1));
        // Goes on with a day of the first file.
        writeFile(folder + QStringLiteral("/2.csv"), heading + minutes("202401151130", 60, i + 2) +
                                                         minutes("202403312320", 80, i + 1) +
                                                         minutes("202412312340", 40, i + 1));
    }
}

void ManyMachinesTest::cleanup()
{
    // The workers first: the scheduler is the one that was started first.
    while (!m_cluster.empty()) {
        QProcess& last = *m_cluster.back();
        last.terminate();
        if (!last.waitForFinished()) {
            last.kill();
            last.waitForFinished();
        }
        m_cluster.pop_back();
    }
    m_dir.reset();
}

QString ManyMachinesTest::code(const char* language, int number) const
{
    QString text = m_page.codes(QLatin1String(language)).value(number);
    return text.replace(QStringLiteral("/srv/bars"), m_dir->path());
}

Outcome ManyMachinesTest::runPython(const QString& program, const QString& text) const
{
    const QString file = path("snippet.py");
    writeFile(file, text.toUtf8() + '\n');
    return runProgram(program, {file}, m_environment, m_dir->path());
}

QStringList ManyMachinesTest::importLine(const QString& security, const QString& store) const
{
    const QString files = path("incoming/") + security;
    return {QStringLiteral("import"),
            files + QStringLiteral("/1.csv"),
            files + QStringLiteral("/2.csv"),
            QStringLiteral("--series"),
            QStringLiteral("NORD/MAIN/") + security,
            QStringLiteral("--mode"),
            QStringLiteral("merge"),
            QStringLiteral("--store"),
            store};
}

void ManyMachinesTest::importHere() const
{
    for (const QString& security : m_securities)
        QCOMPARE(runTadata(importLine(security, path("tadata"))).exitCode, 0);
}

void ManyMachinesTest::addOddDays() const
{
    exchangeVolumes(path("tadata/NORD/MAIN/ALFA/20240115_60.iss"));
    // One from which the editor has deleted everything, and what is not to be read.
    writeFile(path("tadata/NORD/MAIN/ALFA/20240116_60.iss"), "");
    writeFile(path("tadata/NORD/MAIN/VEGA/20240115_1.iss"),
              "100001;1.00;1.00;1.00;1.00;1;1.00;1\n");
    writeFile(path("tadata/NORD/MAIN/VEGA/20240115_60"), "100100;1.00;1.00;1.00;1.00;1;1.00;1\n");
    writeFile(path("tadata/NORD/MAIN/EMPTY/20240115_60.iss"), "");
}

QStringList ManyMachinesTest::exported(int timeframe) const
{
    QStringList bars;
    for (const QString& security : m_securities) {
        const QString series = QStringLiteral("NORD/MAIN/") + security;
        const QString file = path("export.txt");
        const QStringList command{QStringLiteral("export"),      file,
                                  QStringLiteral("--series"),    series,
                                  QStringLiteral("--store"),     path("tadata"),
                                  QStringLiteral("--timeframe"), QString::number(timeframe)};
        const Outcome outcome = runTadata(
            command + words("--from 2024-01-01 --to 2024-12-31 --finished-only --no-header"));
        if (outcome != succeeded())
            return {QString::fromUtf8(outcome.err)};
        for (const QString& line : linesOf(readFile(file))) {
            const QStringList fields = line.split(u',');
            bars.append(barText(series, fields.value(2) + fields.value(3), fields.mid(4)));
        }
    }
    return bars;
}

// tadata as the workers find it; it tells which of them has called it.
void ManyMachinesTest::writeProgramThatTells() const
{
    const QString program = path("bin/tadata");
    writeFile(program, QStringLiteral("#!/bin/sh\necho $PPID >> '%1'\nexec '%2' \"$@\"\n")
                           .arg(path("callers"), tadataProgram())
                           .toUtf8());
    QVERIFY(QFile::setPermissions(program, QFile::ReadUser | QFile::WriteUser | QFile::ExeUser));
}

void ManyMachinesTest::start(const QString& command, const QString& more)
{
    QStringList line = QProcess::splitCommand(command) + more.split(u' ');
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(m_environment);
    process->setWorkingDirectory(m_dir->path());
    process->setProcessChannelMode(QProcess::MergedChannels);
    process->setStandardOutputFile(path("cluster.log"), QIODevice::Append);
    const QString program = line.takeFirst();
    process->start(program, line, QIODevice::ReadOnly);
    QVERIFY(process->waitForStarted());
    m_cluster.push_back(std::move(process));
}

void ManyMachinesTest::startCluster(const QString& program)
{
    writeProgramThatTells();
    start(code("sh", 0),
          QStringLiteral("--host 127.0.0.1 --port 0 --dashboard-address 127.0.0.1:0"));
    for (int i = 0; i < 2; ++i)
        start(code("sh", 1),
              QStringLiteral("--no-nanny --no-dashboard --local-directory ") + path("workers"));
    if (QTest::currentTestFailed())
        return;
    const Outcome ready =
        runPython(program, QStringLiteral("from dask.distributed import Client\n"
                                          "client = Client(scheduler_file='%1/scheduler.json')\n"
                                          "client.wait_for_workers(2, timeout=120)\n")
                               .arg(m_dir->path()));
    QVERIFY2(ready.exitCode == 0, (ready.err + readFile(path("cluster.log"))).constData());
}

void ManyMachinesTest::workersImport()
{
    const QString program = pythonWith(QStringLiteral("distributed, pandas"));
    NEEDS(program, "Python with distributed and pandas");
    NEEDS(QStandardPaths::findExecutable(QStringLiteral("dask")), "dask");
    writeFile(path("incoming/WRONG/1.csv"),
              heading + minutes("202401151000", 30, 1) + "20240115,250000,1,1,1,1,1,1,1\n");
    startCluster(program);
    if (QTest::currentTestFailed())
        return;

    const Outcome outcome = runPython(program, code("python", 0));
    QVERIFY2(outcome.exitCode == 0, outcome.err.constData());
    const QString expected = QStringLiteral("ALFA done\nLYRA done\nVEGA done\nWRONG ");
    QVERIFY2(outcome.out.startsWith(expected.toUtf8()), outcome.out.constData());
    QVERIFY2(outcome.out.contains("Ошибка при импорте 27-й строки"), outcome.out.constData());

    for (const QString& security : m_securities)
        QCOMPARE(runTadata(importLine(security, path("other"))).exitCode, 0);
    const auto stored = readTree(QDir(path("tadata")));
    QVERIFY(stored.size() > 15);
    QCOMPARE(stored, readTree(QDir(path("other"))));

    QStringList callers = linesOf(readFile(path("callers")));
    QCOMPARE(callers.size(), 4);
    QCOMPARE(callers.removeDuplicates(), 2);
}

void ManyMachinesTest::daskGivesFiveMinuteBars()
{
    const QString program = pythonWith(QStringLiteral("distributed, pandas"));
    NEEDS(program, "Python with distributed and pandas");
    NEEDS(QStandardPaths::findExecutable(QStringLiteral("dask")), "dask");
    importHere();
    QStringList wanted = exported(300);
    const QStringList minuteBars = exported(60);
    // The bar that an export writes in two parts, as the page says.
    for (const QString& security : m_securities) {
        const QString series = QStringLiteral("NORD/MAIN/") + security;
        const QString last = series + QStringLiteral(" 20240401000000");
        static const QRegularExpression late(QStringLiteral("2024033123(56|57|58|59)00"));
        const QStringList parts = minuteBars.filter(series).filter(late) + minuteBars.filter(last);
        QVERIFY(parts.size() >= 4);
        const QStringList found = wanted.filter(last);
        QCOMPARE(found.size(), 1);
        wanted.replace(wanted.indexOf(found.first()), folded(parts));
    }
    addOddDays();

    startCluster(program);
    if (QTest::currentTestFailed())
        return;
    const Outcome outcome = runPython(
        program, code("python", 1) +
                     QStringLiteral("\nprint(len(client.scheduler_info()['workers']), end=' ')\n"
                                    "print(bars.npartitions)\n"
                                    "print(bars.compute().to_csv(header=False, "
                                    "date_format='%Y%m%d%H%M%S'))\n"));
    QVERIFY2(outcome.exitCode == 0, outcome.err.constData());
    QStringList given = linesOf(outcome.out);
    QCOMPARE(given.takeFirst(), QStringLiteral("2 3"));
    for (QString& line : given) {
        const QStringList fields = line.split(u',');
        line = barText(fields.last(), fields.first(), fields.mid(1, 7));
    }
    QVERIFY(wanted.size() > 100);
    QCOMPARE(given, wanted);
}

void ManyMachinesTest::duckdbWritesAndReadsParquet()
{
    const QString program = nodeWithDuckdb();
    NEEDS_DUCKDB(program);
    importHere();
    const QStringList wanted = exported(60);
    addOddDays();

    QByteArray out;
    // The second time the files of the first are there.
    for (const int number : {0, 0, 1}) {
        const QString file = path("snippet.sql");
        writeFile(file, code("sql", number).toUtf8());
        const Outcome outcome =
            runProgram(program, {QStringLiteral(SOURCE_FOLDER "/tests/docs/run-sql.mjs"), file});
        QVERIFY2(outcome.exitCode == 0, outcome.err.constData());
        out = outcome.out;
    }
    QStringList folders;
    for (const QString& folder : readDirectories(QDir(path("parquet")))) {
        if (folder.contains(QStringLiteral("security=")))
            folders.append(folder);
    }
    QCOMPARE(folders, words("venue=NORD/board=MAIN/security=ALFA "
                            "venue=NORD/board=MAIN/security=LYRA "
                            "venue=NORD/board=MAIN/security=VEGA"));
    QStringList given = linesOf(out);
    for (QString& line : given) {
        const QStringList fields = line.split(u' ');
        line =
            barText(fields.mid(0, 3).join(u'/'), fields.value(3) + fields.value(4), fields.mid(5));
    }
    QVERIFY(wanted.size() > 500);
    QCOMPARE(given, wanted);
}

QTEST_GUILESS_MAIN(ManyMachinesTest)
#include "tst_manymachines.moc"
