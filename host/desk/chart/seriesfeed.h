// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/dayreader.h"
#include "desk/chart/pathwatcher.h"

#include <QtCore/QFutureWatcher>
#include <QtCore/QThreadPool>

namespace vexdesk {

/// Which series of a store, at which timeframe.
struct SeriesKey
{
    QString stockCode;
    QString boardCode;
    QString securityName;
    int timeframe = 0; ///< in seconds

    bool operator==(const SeriesKey&) const = default;
    bool isSameSeriesAs(const SeriesKey& other) const
    {
        return stockCode == other.stockCode && boardCode == other.boardCode &&
               securityName == other.securityName;
    }
};

/// What one reading has found.
struct ReadSeries
{
    ReadDays days;
    std::shared_ptr<const BarSeries> series;
};

/// Reads a chosen series in a thread of its own and reads again what changes on disk, for as long
/// as it is chosen. Its owner is the chart; user-interface thread only.
class SeriesFeed final : public QObject
{
    Q_OBJECT

public:
    /// `root` is the store's.
    explicit SeriesFeed(const QString& root, QObject* parent = nullptr);
    ~SeriesFeed() override;

    /// Reads this series from now on; what was read of another one is not told any more.
    void choose(const SeriesKey& key);
    /// Reads nothing any more.
    void stop();
    const SeriesKey& key() const { return m_key; }

    /// How many day files were read so far, for those who want to know that no more are than must.
    int filesRead() const { return m_filesRead; }

Q_SIGNALS:
    /// The chosen series as it is on disk now: all of it, read for the first time or again.
    void loaded(const std::shared_ptr<const vexdesk::BarSeries>& series);
    /// While it is read.
    void progressed(int done, int total);

private:
    void read();
    void finish();
    void watchFiles();

    QString m_root;
    SeriesKey m_key;
    QString m_directory;
    PathWatcher m_watcher;
    ReadDays m_days;
    QFutureWatcher<ReadSeries> m_reading;
    bool m_isOutdated = false; // something has changed since the reading began
    bool m_isLoaded = false;
    int m_filesRead = 0;
    QThreadPool m_pool; // an import that fills the global one does not keep the chart waiting
};

} // namespace vexdesk
