// SPDX-License-Identifier: MIT
#include "desk/chart/seriesfeed.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/storepaths.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QSet>

#include <atomic>

namespace vexdesk {

namespace {

constexpr int progressInterval = 50; // ms

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

} // namespace

/// One reading. The thread that reads writes what the feed looks at when it has finished.
struct SeriesFeed::Job
{
    QString directory;
    int timeframe = 0;
    ReadDays before;
    std::atomic_bool isCancelled = false;

    ReadDays days;
    std::shared_ptr<const BarSeries> series;
};

SeriesFeed::SeriesFeed(const QString& root, QObject* parent)
    : QObject(parent)
    , m_root(root)
{
    connect(&m_watcher, &PathWatcher::changed, this, &SeriesFeed::read);
}

SeriesFeed::~SeriesFeed()
{
    stop();
}

void SeriesFeed::stop()
{
    if (m_job)
        m_job->isCancelled = true;
    m_job.reset();
    m_isOutdated = false;
    m_isLoaded = false;
    m_key = SeriesKey();
    m_directory.clear();
    m_days.clear();
    m_watchedFiles.clear();
    m_watcher.watch({});
}

void SeriesFeed::choose(const SeriesKey& key)
{
    if (key == m_key)
        return;
    stop();
    m_key = key;
    m_directory = seriesPath(QDir(m_root), key.stockCode, key.boardCode, key.securityName);
    m_watcher.watch({m_directory});
    read();
}

void SeriesFeed::read()
{
    if (m_directory.isEmpty())
        return;
    if (m_job) {
        m_isOutdated = true;
        return;
    }
    m_isOutdated = false;
    m_watcher.watch(watchedPaths());
    m_job = std::make_shared<Job>();
    m_job->directory = m_directory;
    m_job->timeframe = m_key.timeframe;
    m_job->before = m_days;
    m_thread.start([this, job = m_job] {
        QElapsedTimer sinceTold;
        sinceTold.start();
        const auto progress = [&](int done, int total) {
            if (sinceTold.elapsed() >= progressInterval) {
                sinceTold.restart();
                QMetaObject::invokeMethod(
                    this,
                    [this, job, done, total] {
                        if (job == m_job)
                            Q_EMIT progressed(done, total);
                    },
                    Qt::QueuedConnection);
            }
            return !job->isCancelled;
        };
        job->days = readDays(job->directory, job->timeframe, job->before, progress);
        job->series = std::make_shared<const BarSeries>(seriesOf(job->days));
        QMetaObject::invokeMethod(
            this, [this, job] { finish(job); }, Qt::QueuedConnection);
    });
}

QStringList SeriesFeed::watchedPaths() const
{
    QStringList paths{m_directory};
    paths += m_watchedFiles;
    return paths;
}

void SeriesFeed::finish(const std::shared_ptr<Job>& job)
{
    if (job != m_job)
        return;
    m_job.reset();
    m_filesRead += changedDays(m_days, job->days);
    const bool isNew = !m_isLoaded || !haveSameBars(m_days, job->days);
    m_isLoaded = true;
    m_days = job->days;
    watchFiles();
    if (m_isOutdated)
        m_watcher.tellSoon();
    if (isNew)
        Q_EMIT loaded(job->series);
}

void SeriesFeed::watchFiles()
{
    // A directory tells of files that come and go, but not of one that is written in place.
    const QSet<QString> watched(m_watchedFiles.begin(), m_watchedFiles.end());
    m_watchedFiles.clear();
    for (const auto& [day, read] : m_days)
        m_watchedFiles.append(m_directory + u'/' + dayFileName(day, m_key.timeframe));
    m_watcher.watch(watchedPaths());
    // What was written after it was read and before it was watched is read once more.
    qsizetype index = 0;
    for (const auto& [day, read] : m_days) {
        const QString& path = m_watchedFiles.at(index++);
        if (!watched.contains(path) && !read.stamp.isSameAs(dayStamp(path))) {
            m_watcher.tellSoon();
            return;
        }
    }
}

} // namespace vexdesk
