// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/dayqueue.h"
#include "desk/chart/pathwatcher.h"
#include "desk/chart/readerthreads.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

namespace vexdesk {

/// Which series of a store, at which stored timeframe.
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

/// The part of a series that a chart shows.
struct WantedDays
{
    QDate first; ///< both are included
    QDate last;
    bool needsBars = true; ///< false: the summaries of the days are enough

    bool operator==(const WantedDays&) const = default;
};

/// Reads of a chosen series what is wanted, in threads of its own, and reads again what changes on
/// disk, for as long as it is chosen. Its owner is the chart; user-interface thread only.
///
/// Each day in view is read, the nearest to its middle first, then as many days on both sides, and
/// the last day of the series. A summary is kept of every day that was read; the bars of those that
/// were wanted last, as long as they take no more memory than they may. Nothing that is still being
/// read is waited for, by stop() or at the end: see readerthreads.h.
///
/// Beside the bars that are kept there are those that wait to be taken and those that were let go
/// but are still shown, for nothing was told since: each of them a twenty-fifth of what may be
/// kept, and a day for each reader. With the usual memory it is less than 500 MB altogether.
class SeriesFeed final : public QObject
{
    Q_OBJECT

public:
    static constexpr qint64 usualMemory = qint64(400) * 1024 * 1024;

    /// `root` is the store's. The bars in memory take at most `mostMemory` bytes.
    explicit SeriesFeed(const QString& root, qint64 mostMemory = usualMemory,
                        QObject* parent = nullptr);
    ~SeriesFeed() override;

    /// Lists the days of this series and reads what is wanted of it from now on; what was read or
    /// wanted of another one is forgotten.
    void choose(const SeriesKey& key);
    /// Reads nothing any more and lets go what was read.
    void stop();
    const SeriesKey& key() const { return m_key; }

    /// Reads again what could not be read, as it does by itself when something changes, and after
    /// some seconds.
    void readAgain() { list(); }
    /// Why the days could not be listed the last time: as long as that is so the days are those
    /// that were known before.
    const Outcome& listing() const { return m_listingOutcome; }

    /// What is in view now. Before the days are listed it may be said too.
    void want(const WantedDays& days);

    /// How many day files were read so far, for those who want to know that no more are than must.
    int filesRead() const { return m_filesRead; }
    /// What the bars in memory take, in bytes.
    qint64 memory() const { return m_memory; }
    /// The same with those that wait to be taken and those that are let go but still shown.
    qint64 allMemory() const { return m_memory + m_letGo + m_queue.waiting(); }

Q_SIGNALS:
    /// The chosen series as far as it is known now: after the days were listed, at first with
    /// nothing read, after some of them were read, and when the files have changed.
    void loaded(const std::shared_ptr<const vexdesk::BarSeries>& series);
    /// Of the days in view so many were read. Not said when all are read soon; where it was said,
    /// it is said once more when all are.
    void progressed(int done, int total);

private:
    struct Day
    {
        SeriesDay shown;
        DayStamp stamp;         // as it was listed last
        bool isCurrent = false; // whether it was read since the file has changed
        bool hasFailed = false; // since it was listed last
        qint64 memory = 0;      // what its bars took when they were read last
        int wantedAt = 0;       // the turn at which its bars were wanted last
    };
    // Indices of days; the end is not included.
    struct Stretch
    {
        qsizetype begin = 0;
        qsizetype end = 0;

        bool has(qsizetype index) const { return begin <= index && index < end; }
    };

    void list();
    void finishListing(const Result<std::vector<ListedDay>>& listed);
    bool takeListing(const std::vector<ListedDay>& listed);
    Stretch inView() const;
    Stretch around() const;
    std::vector<qsizetype> nearestFirst() const;
    void orderDays();
    DayOrder orderFor(const Day& day, bool isForBars) const;
    void takeDeliveries();
    void keep(const DayDelivery& delivery);
    static bool mustBeRead(const Day& day, bool hasRoom);
    void keepFailed(Day& day, const Failure& why);
    void letGo(Day& day);
    bool isTooMuchLetGo() const { return m_letGo > m_mostBeside; }
    void dropBars();
    void deliver();
    void deliverSoon(); // any thread
    void tell();
    void tellProgress();
    bool isMissing(const Day& day) const;
    void watchSoon();
    void watchFiles();

    const QString m_root;
    const qint64 m_mostMemory;
    const qint64 m_mostBeside; // waiting, and let go
    SeriesKey m_key;
    QString m_directory;
    WantedDays m_wanted;
    int m_turn = 0; // counts what was wanted
    std::vector<Day> m_days;
    qint64 m_memory = 0;
    std::weak_ptr<const BarSeries> m_told; // last
    qint64 m_letGo = 0;                    // bytes of bars, since something was told last
    int m_listings = 0;                    // so many are done
    Outcome m_listingOutcome;
    bool m_isListed = false;
    bool m_isOutdated = false; // something has changed since the listing began
    int m_filesRead = 0;
    PathWatcher m_watcher;
    bool m_hasNews = false; // something was read and not told yet
    QElapsedTimer m_sinceTold;
    QTimer m_tellTimer;
    QTimer m_watchTimer;
    QTimer m_patience; // runs out when something in view is missing for long
    bool m_tellsProgress = false;
    Errand<Result<std::vector<ListedDay>>> m_listing{this};
    DayQueue m_queue; // the first to go, since it calls back
};

} // namespace vexdesk
