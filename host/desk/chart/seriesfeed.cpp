// SPDX-License-Identifier: MIT
#include "desk/chart/seriesfeed.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/storepaths.h>

#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QElapsedTimer>

namespace vexdesk {

namespace {

constexpr int quietTime = 50; // ms

int changedDays(const ReadDays& before, const ReadDays& after)
{
    int count = 0;
    for (const auto& [day, read] : after) {
        const auto known = before.find(day);
        if (known == before.end() || known->second.bars != read.bars)
            ++count;
    }
    return count;
}

// The days that were read again are others, whatever is in them.
bool haveSameBars(const ReadDays& left, const ReadDays& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const auto& one, const auto& other) {
                          return one.first == other.first && one.second.bars == other.second.bars;
                      });
}

void readSeries(QPromise<ReadSeries>& promise, const QString& directory, int timeframe,
                const ReadDays& before)
{
    QElapsedTimer sinceBegin;
    sinceBegin.start();
    const auto progress = [&](int done, int total) {
        if (done == 0)
            promise.setProgressRange(0, total);
        // A short reading is not worth a word.
        else if (sinceBegin.elapsed() >= quietTime)
            promise.setProgressValue(done);
        return !promise.isCanceled();
    };
    ReadSeries read;
    read.days = readDays(directory, timeframe, before, progress);
    read.series = std::make_shared<const BarSeries>(seriesOf(read.days));
    promise.addResult(std::move(read));
}

} // namespace

SeriesFeed::SeriesFeed(const QString& root, QObject* parent)
    : QObject(parent)
    , m_root(root)
{
    connect(&m_watcher, &PathWatcher::changed, this, &SeriesFeed::read);
    connect(&m_reading, &QFutureWatcherBase::finished, this, &SeriesFeed::finish);
    connect(&m_reading, &QFutureWatcherBase::progressValueChanged, this,
            [this](int done) { Q_EMIT progressed(done, m_reading.progressMaximum()); });
}

SeriesFeed::~SeriesFeed()
{
    m_reading.cancel(); // the pool waits for its end
}

void SeriesFeed::stop()
{
    m_reading.cancel();
    m_reading.setFuture(QFuture<ReadSeries>()); // nothing of it is told any more
    m_isOutdated = false;
    m_isLoaded = false;
    m_key = SeriesKey();
    m_directory.clear();
    m_days.clear();
    m_watcher.watch({});
}

void SeriesFeed::choose(const SeriesKey& key)
{
    if (key == m_key)
        return;
    stop();
    m_key = key;
    m_directory = seriesPath(QDir(m_root), key.stockCode, key.boardCode, key.securityName);
    read();
}

void SeriesFeed::read()
{
    if (m_directory.isEmpty())
        return;
    m_isOutdated = m_reading.isRunning();
    if (m_isOutdated)
        return;
    watchFiles();
    m_reading.setFuture(
        QtConcurrent::run(&m_pool, readSeries, m_directory, m_key.timeframe, m_days));
}

void SeriesFeed::finish()
{
    if (m_reading.isCanceled())
        return;
    const ReadSeries read = m_reading.result();
    m_filesRead += changedDays(m_days, read.days);
    const bool isNew = !m_isLoaded || !haveSameBars(m_days, read.days);
    m_isLoaded = true;
    m_days = read.days;
    watchFiles();
    if (m_isOutdated)
        m_watcher.tellSoon();
    if (isNew)
        Q_EMIT loaded(read.series);
}

void SeriesFeed::watchFiles()
{
    // A directory tells of files that come and go, but not of one that is written in place.
    QStringList paths{m_directory};
    for (const auto& [day, read] : m_days)
        paths.append(m_directory + u'/' + dayFileName(day, m_key.timeframe));
    m_watcher.watch(paths);
}

} // namespace vexdesk
