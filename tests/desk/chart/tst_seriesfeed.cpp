// SPDX-License-Identifier: MIT
// The bars of the chosen series as they are on disk, however they come there.

#include "desk/chart/seriesfeed.h"
#include "desk/chart/wallclock.h"
#include "support/dayfiles.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

using testsupport::barLine;
using testsupport::barLines;
using testsupport::dayFile;
using testsupport::writeFile;
using vexdesk::BarSeries;
using vexdesk::PathWatcher;
using vexdesk::SeriesFeed;
using vexdesk::SeriesKey;

namespace {

const QDate day(2024, 1, 15);
const QTime ten(10, 0);
const SeriesKey alfa{QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("ALFA"), 60};
const SeriesKey vega{QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("VEGA"), 60};

} // namespace

class TestSeriesFeed final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void readsAChosenSeries();
    void anEmptySeriesIsToldToo();
    void seesANewDayFile();
    void seesAFileThatIsWrittenInPlace();
    void seesAFileThatIsReplacedAgainAndAgain();
    void seesAFileThatIsRemoved();
    void waitsForADirectoryThatIsNotThere();
    void seesADirectoryThatGoesAndComesBack();
    void readsOnlyTheDaysThatHaveChanged();
    void tellsManyFilesInFewTurns();
    void forgetsTheSeriesThatWasChosenBefore();
    void aWatcherTellsThatItHasBegunToWatch();
    void isSilentWhenItIsStopped();
    void canGoWhileItReads();

private:
    QString path(const QString& name) const;
    qsizetype barCount() const { return m_series ? m_series->size() : -1; }
    /// Makes all files as old as those that nobody is writing.
    void settle() const;

    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<SeriesFeed> m_feed;
    std::shared_ptr<const BarSeries> m_series; // the one that was told last
    int m_told = 0;
};

void TestSeriesFeed::init()
{
    testsupport::failOnStrayWarnings();
    m_root = std::make_unique<QTemporaryDir>();
    m_feed = std::make_unique<SeriesFeed>(m_root->path());
    m_series.reset();
    m_told = 0;
    connect(m_feed.get(), &SeriesFeed::loaded, this,
            [this](const std::shared_ptr<const BarSeries>& series) {
                m_series = series;
                ++m_told;
            });
}

void TestSeriesFeed::cleanup()
{
    m_feed.reset();
    m_root.reset();
}

QString TestSeriesFeed::path(const QString& name) const
{
    return m_root->filePath(QStringLiteral("NORD/MAIN/ALFA/") + name);
}

void TestSeriesFeed::settle() const
{
    const QDir directory(path(QString()));
    const QStringList names = directory.entryList(QDir::Files);
    for (const QString& name : names) {
        QFile file(directory.filePath(name));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-60),
                                 QFileDevice::FileModificationTime));
    }
}

void TestSeriesFeed::readsAChosenSeries()
{
    writeFile(path(dayFile(day)), barLines(ten, 5));
    writeFile(path(dayFile(day.addDays(1))), barLines(ten, 7));
    m_feed->choose(alfa);
    QTRY_COMPARE(barCount(), 12);
    QCOMPARE(m_series->firstTime(), vexdesk::wallTime(day, ten));
}

void TestSeriesFeed::anEmptySeriesIsToldToo()
{
    m_feed->choose(alfa);
    QTRY_COMPARE(barCount(), 0);
}

void TestSeriesFeed::seesANewDayFile()
{
    writeFile(path(dayFile(day)), barLines(ten, 5));
    m_feed->choose(alfa);
    QTRY_COMPARE(barCount(), 5);
    writeFile(path(dayFile(day.addDays(1))), barLines(ten, 3));
    QTRY_COMPARE(barCount(), 8);
}

void TestSeriesFeed::seesAFileThatIsWrittenInPlace()
{
    writeFile(path(dayFile(day)), barLines(ten, 5));
    settle();
    m_feed->choose(alfa);
    QTRY_COMPARE(barCount(), 5);
    QFile file(path(dayFile(day)));
    QVERIFY(file.open(QIODevice::Append));
    file.write(barLine(QTime(10, 5), 6));
    QVERIFY(file.flush());
    QTRY_COMPARE(barCount(), 6);
    // Of the same size.
    writeFile(path(dayFile(day)), barLines(ten, 6, 2));
    QTRY_COMPARE(m_series->at(0).volume, 1002);
}

void TestSeriesFeed::seesAFileThatIsReplacedAgainAndAgain()
{
    writeFile(path(dayFile(day)), barLines(ten, 1));
    m_feed->choose(alfa);
    QTRY_COMPARE(barCount(), 1);
    for (int count = 2; count < 6; ++count) {
        // As the editor does: another file takes the name.
        QSaveFile file(path(dayFile(day)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(barLines(ten, count));
        QVERIFY(file.commit());
        QTRY_COMPARE(barCount(), count);
        // What is written into that other file is seen too.
        QFile same(path(dayFile(day)));
        QVERIFY(same.open(QIODevice::Append));
        same.write(barLine(QTime(12, 0), 50));
        QVERIFY(same.flush());
        QTRY_COMPARE(barCount(), count + 1);
    }
}

void TestSeriesFeed::seesAFileThatIsRemoved()
{
    writeFile(path(dayFile(day)), barLines(ten, 5));
    writeFile(path(dayFile(day.addDays(1))), barLines(ten, 3));
    m_feed->choose(alfa);
    QTRY_COMPARE(barCount(), 8);
    QVERIFY(QFile::remove(path(dayFile(day))));
    QTRY_COMPARE(barCount(), 3);
    QVERIFY(QFile::remove(path(dayFile(day.addDays(1)))));
    QTRY_COMPARE(barCount(), 0);
}

void TestSeriesFeed::waitsForADirectoryThatIsNotThere()
{
    m_feed->choose(alfa);
    QTRY_COMPARE(barCount(), 0);
    writeFile(path(dayFile(day)), barLines(ten, 5));
    QTRY_COMPARE(barCount(), 5);
    writeFile(path(dayFile(day.addDays(1))), barLines(ten, 5));
    QTRY_COMPARE(barCount(), 10);
}

void TestSeriesFeed::seesADirectoryThatGoesAndComesBack()
{
    writeFile(path(dayFile(day)), barLines(ten, 5));
    m_feed->choose(alfa);
    QTRY_COMPARE(barCount(), 5);
    QVERIFY(QDir(m_root->filePath(QStringLiteral("NORD"))).removeRecursively());
    QTRY_COMPARE(barCount(), 0);
    writeFile(path(dayFile(day)), barLines(ten, 4));
    QTRY_COMPARE(barCount(), 4);
}

void TestSeriesFeed::readsOnlyTheDaysThatHaveChanged()
{
    constexpr int days = 30;
    for (int i = 0; i < days; ++i)
        writeFile(path(dayFile(day.addDays(i))), barLines(ten, 5));
    settle();
    m_feed->choose(alfa);
    QTRY_COMPARE(barCount(), 5 * days);
    QCOMPARE(m_feed->filesRead(), days);
    const auto before = m_series;
    writeFile(path(dayFile(day.addDays(3))), barLines(ten, 6));
    QTRY_COMPARE(barCount(), 5 * days + 1);
    for (size_t i = 0; i < days; ++i)
        QCOMPARE(m_series->days()[i] == before->days()[i], i != 3);
}

void TestSeriesFeed::tellsManyFilesInFewTurns()
{
    m_feed->choose(alfa);
    QTRY_COMPARE(barCount(), 0);
    m_told = 0;
    constexpr int days = 500;
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < days; ++i) {
        writeFile(path(dayFile(day.addDays(i))), barLines(ten, 5));
        QCoreApplication::processEvents();
    }
    QTRY_COMPARE(barCount(), 5 * days);
    // Not more often than the watcher's delay allows.
    QVERIFY2(m_told <= timer.elapsed() / PathWatcher::usualDelay + 1,
             qPrintable(QStringLiteral("%1 times in %2 ms").arg(m_told).arg(timer.elapsed())));
}

void TestSeriesFeed::forgetsTheSeriesThatWasChosenBefore()
{
    writeFile(path(dayFile(day)), barLines(ten, 5));
    writeFile(m_root->filePath(QStringLiteral("NORD/MAIN/VEGA/") + dayFile(day)), barLines(ten, 9));
    m_feed->choose(alfa);
    m_feed->choose(vega); // while the other one is read
    QTRY_COMPARE(barCount(), 9);
    QCOMPARE(m_told, 1);
    m_feed->choose(alfa);
    QTRY_COMPARE(barCount(), 5);
    QCOMPARE(m_feed->key(), alfa);
}

// What has been done to a path before is not told by the system.
void TestSeriesFeed::aWatcherTellsThatItHasBegunToWatch()
{
    PathWatcher watcher;
    QSignalSpy changed(&watcher, &PathWatcher::changed);
    watcher.watch({m_root->path()});
    QVERIFY(changed.wait());
    watcher.watch({m_root->path(), path(dayFile(day))}); // waited for in the same directory
    writeFile(path(dayFile(day)), barLines(ten, 5));
    QVERIFY(changed.wait());
}

void TestSeriesFeed::isSilentWhenItIsStopped()
{
    writeFile(path(dayFile(day)), barLines(ten, 5));
    m_feed->choose(alfa);
    QTRY_COMPARE(barCount(), 5);
    m_feed->stop();
    PathWatcher watcher;
    QSignalSpy changed(&watcher, &PathWatcher::changed);
    watcher.watch({path(QString())});
    m_told = 0;
    writeFile(path(dayFile(day.addDays(1))), barLines(ten, 5));
    QVERIFY(changed.wait());
    QCOMPARE(m_told, 0);
}

void TestSeriesFeed::canGoWhileItReads()
{
    for (int i = 0; i < 50; ++i)
        writeFile(path(dayFile(day.addDays(i))), barLines(ten, 500));
    m_feed->choose(alfa);
    m_feed.reset();
    QCoreApplication::processEvents();
    QCOMPARE(m_told, 0);
}

QTEST_GUILESS_MAIN(TestSeriesFeed)
#include "tst_seriesfeed.moc"
