// SPDX-License-Identifier: MIT
// The bars of the chosen series as they are on disk, however they come there.

#include "desk/chart/seriesfeed.h"
#include "desk/chart/wallclock.h"
#include "support/dayfiles.h"
#include "support/faults.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtCore/QScopeGuard>
#include <QtCore/QSemaphore>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <algorithm>
#include <memory>
#include <mutex>

using testsupport::barLine;
using testsupport::barLines;
using testsupport::dayFile;
using testsupport::writeFile;
using vexdesk::BarSeries;
using vexdesk::PathWatcher;
using vexdesk::SeriesDay;
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
    void tellsTheDaysBeforeTheyAreRead();
    void readsWhatIsInViewAndAroundIt();
    void readsTheMiddleFirst();
    void summariesAreEnoughForLongCandles();
    void keepsWhatWasWantedLast();
    void aViewThatDoesNotFitIsReadOnce();
    void tellsWhatIsMissingForLong();
    void showsTheOldBarsUntilTheNewOnesAreRead();
    void readsAChangedDayThatIsOutOfView();
    void tellsWhatWasReadBeforeAnotherWish();
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
    void tellsWhatItCouldNotReadAndTriesAgain();
    void isSilentWhenItIsStopped();
    void canGoWhileItReads();
    void neitherAFileNorAListingIsWaitedFor();
    void takesNoMoreMemoryThanItMay();

private:
    QString path(const QString& name) const;
    /// Of the days in memory; -1 as long as nothing was told.
    qsizetype barCount() const;
    std::vector<int> daysInMemory() const;
    void wantAll(bool needsBars = true);
    /// Day after day, of files that nobody is writing.
    void writeDays(int count, int bars) const;
    /// With bars that take at most so many bytes.
    void restart(qint64 mostMemory);
    /// Makes all files as old as those that nobody is writing.
    void settle() const;

    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<SeriesFeed> m_feed;
    std::shared_ptr<const BarSeries> m_series; // the one that was told last
    int m_told = 0;
    bool m_wantsAll = true; // as a chart that shows everything
};

void TestSeriesFeed::init()
{
    testsupport::failOnStrayWarnings();
    m_root = std::make_unique<QTemporaryDir>();
    m_wantsAll = true;
    restart(SeriesFeed::usualMemory);
}

void TestSeriesFeed::restart(qint64 mostMemory)
{
    m_feed = std::make_unique<SeriesFeed>(m_root->path(), mostMemory);
    m_series.reset();
    m_told = 0;
    connect(m_feed.get(), &SeriesFeed::loaded, this,
            [this](const std::shared_ptr<const BarSeries>& series) {
                m_series = series;
                ++m_told;
                if (m_wantsAll)
                    wantAll();
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

void TestSeriesFeed::writeDays(int count, int bars) const
{
    for (int i = 0; i < count; ++i)
        writeFile(path(dayFile(day.addDays(i))), barLines(ten, bars));
    settle();
}

qsizetype TestSeriesFeed::barCount() const
{
    if (!m_series)
        return -1;
    qsizetype count = 0;
    for (const SeriesDay& one : m_series->days())
        count += one.bars ? one.bars->size() : 0;
    return count;
}

// As distances from the first.
std::vector<int> TestSeriesFeed::daysInMemory() const
{
    std::vector<int> days;
    for (const SeriesDay& one : m_series->days()) {
        if (one.bars)
            days.push_back(static_cast<int>(day.daysTo(one.day)));
    }
    return days;
}

void TestSeriesFeed::wantAll(bool needsBars)
{
    if (!m_series->days().empty())
        m_feed->want({m_series->days().front().day, m_series->days().back().day, needsBars});
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
    QCOMPARE(m_series->days()[0].bars->at(0).time, vexdesk::wallTime(day, ten));
    QCOMPARE(m_series->timeframe(), 60);
}

void TestSeriesFeed::tellsTheDaysBeforeTheyAreRead()
{
    m_wantsAll = false;
    writeDays(3, 5);
    m_feed->choose(alfa);
    QTRY_COMPARE(m_told, 1);
    QCOMPARE(m_series->days().size(), 3U);
    for (const SeriesDay& one : m_series->days()) {
        QVERIFY(!one.summary && !one.bars);
        QCOMPARE(one.bytes, barLines(ten, 5).size());
    }
    QCOMPARE(m_feed->filesRead(), 0);
    // What is wanted in the meantime is read when the days are known.
    m_feed->choose(vega);
    m_feed->choose(alfa);
    m_feed->want({day, day, true});
    QTRY_COMPARE(daysInMemory(), (std::vector<int>{0, 1}));
}

void TestSeriesFeed::readsWhatIsInViewAndAroundIt()
{
    m_wantsAll = false;
    writeDays(30, 5);
    m_feed->choose(alfa);
    m_feed->want({day.addDays(10), day.addDays(12), true});
    QTRY_COMPARE(m_feed->filesRead(), 10);
    QTRY_COMPARE(daysInMemory(), (std::vector<int>{7, 8, 9, 10, 11, 12, 13, 14, 15}));
    QTRY_VERIFY(m_series->days()[29].summary); // for the last price
    for (const int unread : {0, 6, 16, 28})
        QVERIFY(!m_series->days()[static_cast<size_t>(unread)].summary);
    m_feed->want({day.addDays(11), day.addDays(13), true});
    QTRY_COMPARE(daysInMemory().back(), 16);
    QCOMPARE(m_feed->filesRead(), 11);
    QCOMPARE(daysInMemory().front(), 7);
}

void TestSeriesFeed::readsTheMiddleFirst()
{
    constexpr int days = 21;
    writeDays(days, 5);
    std::mutex mutex;
    std::vector<int> read;
    std::vector<std::unique_ptr<testsupport::Meanwhile>> notes;
    for (int i = 0; i < days; ++i) {
        notes.push_back(std::make_unique<testsupport::Meanwhile>(
            testsupport::SystemCall::Read, dayFile(day.addDays(i)), [i, &mutex, &read] {
                const std::lock_guard<std::mutex> lock(mutex);
                read.push_back(i);
            }));
    }
    m_feed->choose(alfa);
    QTRY_COMPARE(barCount(), 5 * days);
    QCOMPARE(read.size(), size_t(days));
    const int ahead = vexdesk::DayQueue::usualReaders();
    for (int i = 0; i < days; ++i) {
        const int distance = std::abs(read[static_cast<size_t>(i)] - days / 2);
        // A day that was begun early may be the last to be noted, but none is begun too early.
        QVERIFY2(distance <= (i + ahead) / 2 + 1,
                 qPrintable(QStringLiteral("%1 at %2").arg(distance).arg(i)));
    }
}

void TestSeriesFeed::summariesAreEnoughForLongCandles()
{
    m_wantsAll = false;
    writeDays(10, 5);
    m_feed->choose(alfa);
    QTRY_COMPARE(m_told, 1);
    wantAll(false);
    QTRY_VERIFY(std::all_of(m_series->days().begin(), m_series->days().end(),
                            [](const SeriesDay& one) { return one.summary != nullptr; }));
    QCOMPARE(m_feed->filesRead(), 10);
    QCOMPARE(barCount(), 0);
    QCOMPARE(m_feed->memory(), 0);
    QCOMPARE(m_series->days()[4].summary->count, qsizetype(5));
    wantAll(true);
    QTRY_COMPARE(barCount(), 50);
    QCOMPARE(m_feed->filesRead(), 20);
    wantAll(false); // they stay as long as there is room
    QCOMPARE(barCount(), 50);
}

void TestSeriesFeed::keepsWhatWasWantedLast()
{
    constexpr int days = 30;
    constexpr qsizetype bars = 500;
    writeDays(days, bars);
    const qint64 oneDay = vexdesk::readDay(path(dayFile(day)), day).bars->bytes();
    const qint64 most = 6 * oneDay + oneDay / 2;
    restart(most);
    m_wantsAll = false;
    m_feed->choose(alfa);
    for (int i = 0; i < days; ++i) {
        m_feed->want({day.addDays(i), day.addDays(i), true});
        QTRY_VERIFY(m_series && m_series->days()[static_cast<size_t>(i)].bars);
        QVERIFY(m_feed->memory() <= most);
        QVERIFY(barCount() <= 6 * bars);
    }
    QTRY_COMPARE(daysInMemory(), (std::vector<int>{24, 25, 26, 27, 28, 29}));
    // What was let go is read again when it is wanted.
    m_feed->want({day, day, true});
    QTRY_COMPARE(daysInMemory(), (std::vector<int>{0, 1, 26, 27, 28, 29}));
    m_feed->stop();
    QCOMPARE(m_feed->memory(), 0);
}

void TestSeriesFeed::aViewThatDoesNotFitIsReadOnce()
{
    constexpr int days = 31;
    writeDays(days, 500);
    const qint64 oneDay = vexdesk::readDay(path(dayFile(day)), day).bars->bytes();
    const qint64 most = 6 * oneDay + oneDay / 2;
    restart(most);
    m_feed->choose(alfa);
    QTRY_VERIFY(m_series && !m_series->days().empty() &&
                std::all_of(m_series->days().begin(), m_series->days().end(),
                            [](const SeriesDay& one) { return one.summary != nullptr; }));
    QVERIFY(m_feed->memory() <= most);
    const std::vector<int> kept = daysInMemory();
    QVERIFY(!kept.empty());
    for (const int one : kept)
        QVERIFY(std::abs(one - days / 2) <= 3);
    // Of those that take less room than their files the bars are read when the days are listed once
    // more, which may have been in the meantime.
    QVERIFY2(m_feed->filesRead() <= days + 6, qPrintable(QString::number(m_feed->filesRead())));
    // The farthest day comes last: by then it is known what was read again in vain.
    writeFile(path(dayFile(day.addDays(days))), barLines(ten, 1));
    QTRY_VERIFY(m_series->days().size() == days + 1U && m_series->days()[days].summary);
    QCOMPARE(daysInMemory().size(), 6U);
    QVERIFY2(m_feed->filesRead() <= days + 1 + 6, qPrintable(QString::number(m_feed->filesRead())));
}

void TestSeriesFeed::tellsWhatIsMissingForLong()
{
    constexpr int days = 5;
    writeDays(days, 5);
    QSemaphore goOn;
    const testsupport::Meanwhile slow(testsupport::SystemCall::Read, dayFile(day.addDays(1)),
                                      [&goOn] { goOn.acquire(); });
    const auto release = qScopeGuard([&goOn] { goOn.release(); });
    QSignalSpy progressed(m_feed.get(), &SeriesFeed::progressed);
    m_feed->choose(alfa);
    QTRY_VERIFY(!progressed.empty());
    QVERIFY(progressed.last()[0].toInt() < days);
    QCOMPARE(progressed.last()[1].toInt(), days);
    goOn.release();
    QTRY_COMPARE(progressed.last()[0].toInt(), days);
    QCOMPARE(barCount(), 5 * days);
}

void TestSeriesFeed::showsTheOldBarsUntilTheNewOnesAreRead()
{
    writeDays(3, 5);
    m_feed->choose(alfa);
    QTRY_COMPARE(barCount(), 15);
    QSemaphore isRead;
    QSemaphore goOn;
    const testsupport::Meanwhile slow(testsupport::SystemCall::Read, dayFile(day.addDays(1)), [&] {
        isRead.release();
        goOn.acquire();
    });
    const auto release = qScopeGuard([&goOn] { goOn.release(); });
    writeFile(path(dayFile(day.addDays(1))), barLines(ten, 7));
    writeFile(path(dayFile(day.addDays(3))), barLines(ten, 1));
    QTRY_VERIFY(isRead.available() > 0);
    QTRY_COMPARE(m_series->days().size(), 4U);
    QCOMPARE(m_series->days()[1].bars->size(), qsizetype(5));
    goOn.release();
    QTRY_COMPARE(barCount(), 18);
}

void TestSeriesFeed::readsAChangedDayThatIsOutOfView()
{
    m_wantsAll = false;
    writeDays(30, 5);
    m_feed->choose(alfa);
    m_feed->want({day.addDays(20), day.addDays(20), false});
    QTRY_VERIFY(m_series && m_series->days().size() == 30U && m_series->days()[20].summary);
    m_feed->want({day, day, true});
    QTRY_COMPARE(daysInMemory(), (std::vector<int>{0, 1}));
    writeFile(path(dayFile(day.addDays(20))), barLines(ten, 8));
    QTRY_COMPARE(m_series->days()[20].summary->count, qsizetype(8));
    QVERIFY(!m_series->days()[20].bars);
    QVERIFY(!m_series->days()[15].summary);
}

// A wish takes what was read up to then, and it is told all the same.
void TestSeriesFeed::tellsWhatWasReadBeforeAnotherWish()
{
    m_wantsAll = false;
    writeDays(3, 5);
    m_feed->choose(alfa);
    QTRY_COMPARE(m_told, 1);
    // No event is handled meanwhile, so all is taken by the wishes.
    for (int wish = 0; m_feed->filesRead() < 3; ++wish)
        m_feed->want({day, day.addDays(1 + wish % 2), false});
    QCOMPARE(m_told, 1);
    QTRY_VERIFY(std::all_of(m_series->days().begin(), m_series->days().end(),
                            [](const SeriesDay& one) { return one.summary != nullptr; }));
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
    QTRY_COMPARE(m_series->days()[0].bars->at(0).volume, 1002);
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
    constexpr qsizetype days = 30;
    writeDays(days, 5);
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
    constexpr qsizetype days = 500;
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < days; ++i) {
        writeFile(path(dayFile(day.addDays(i))), barLines(ten, 5));
        QCoreApplication::processEvents();
    }
    QTRY_COMPARE(barCount(), 5 * days);
    // Not more often than by a few words for each time that the watcher has told a change.
    constexpr int betweenWords = 30; // ms
    QVERIFY2(m_told <= 3 * (timer.elapsed() / PathWatcher::usualDelay + 1) +
                           timer.elapsed() / betweenWords,
             qPrintable(QStringLiteral("%1 times in %2 ms").arg(m_told).arg(timer.elapsed())));
}

void TestSeriesFeed::forgetsTheSeriesThatWasChosenBefore()
{
    writeFile(path(dayFile(day)), barLines(ten, 5));
    writeFile(m_root->filePath(QStringLiteral("NORD/MAIN/VEGA/") + dayFile(day)), barLines(ten, 9));
    m_feed->choose(alfa);
    m_feed->choose(vega); // while the other one is read
    QTRY_COMPARE(barCount(), 9);
    QCOMPARE(m_told, 2); // the days, and then their bars
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

void TestSeriesFeed::tellsWhatItCouldNotReadAndTriesAgain()
{
    writeDays(3, 5);
    const QDate second = day.addDays(1);
    {
        const testsupport::Fault fault(testsupport::SystemCall::Read, dayFile(second), EIO);
        m_feed->choose(alfa);
        QTRY_VERIFY(m_series && m_series->days().size() == 3 && !m_series->days()[1].reading);
        QCOMPARE(m_series->days()[1].reading.message(), qt_error_string(EIO));
        // A day that is not known is none without bars.
        QVERIFY(!m_series->days()[1].summary);
        QTRY_COMPARE(barCount(), 10);
    }
    m_feed->readAgain();
    QTRY_COMPARE(barCount(), 15);
    QVERIFY(m_series->days()[1].reading);
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

// On a disk that does not answer.
void TestSeriesFeed::neitherAFileNorAListingIsWaitedFor()
{
    writeDays(3, 5);
    QSemaphore isRead;
    QSemaphore goOn;
    QSemaphore hasEnded;
    const testsupport::Meanwhile slow(testsupport::SystemCall::Read, dayFile(day), [&] {
        isRead.release();
        goOn.acquire();
        hasEnded.release();
    });
    m_feed->choose(alfa);
    QTRY_COMPARE(isRead.available(), 1);
    m_feed->stop();
    QCOMPARE(m_feed->memory(), 0);
    m_feed->choose(alfa);
    m_feed.reset();
    QCOMPARE(hasEnded.available(), 0);
    goOn.release();
    hasEnded.acquire();
}

// Counted are those that are kept, those that wait, and those that are shown until they are told
// to be gone.
void TestSeriesFeed::takesNoMoreMemoryThanItMay()
{
    constexpr int days = 60;
    writeDays(days, 500);
    const qint64 oneDay = vexdesk::readDay(path(dayFile(day)), day).bars->bytes();
    const qint64 most = 6 * oneDay + oneDay / 2;
    const qint64 mostInAll = most + 2 * (most / 25 + vexdesk::DayQueue::usualReaders() * oneDay);
    restart(most);
    m_wantsAll = false;
    m_feed->choose(alfa);
    QTRY_COMPARE(m_told, 1);
    qint64 highest = 0;
    // No event is handled between the wishes of a round, so nothing is told of what they let go.
    for (int round = 0; round < 20; ++round) {
        for (int i = 0; i < 200; ++i) {
            const QDate one = day.addDays((round * 7 + i * 11) % days);
            m_feed->want({one, one.addDays(2), true});
            highest = std::max(highest, m_feed->allMemory());
            qint64 shown = 0;
            for (const SeriesDay& known : m_series->days())
                shown += known.bars ? known.bars->bytes() : 0;
            QVERIFY(m_feed->memory() <= most);
            QVERIFY2(m_feed->allMemory() <= mostInAll,
                     qPrintable(QString::number(double(m_feed->allMemory()) / double(oneDay))));
            QVERIFY(shown <= m_feed->allMemory());
        }
        const int last = (round * 7 + 199 * 11) % days;
        QTRY_VERIFY(m_series->days()[static_cast<size_t>(last)].bars);
    }
    QVERIFY(highest > most);
    m_feed->want({day, day, true});
    QTRY_VERIFY(m_series->days()[0].bars);
}

QTEST_GUILESS_MAIN(TestSeriesFeed)
#include "tst_seriesfeed.moc"
