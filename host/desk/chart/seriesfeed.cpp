// SPDX-License-Identifier: MIT
#include "desk/chart/seriesfeed.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/storepaths.h>

#include <algorithm>
#include <utility>

namespace vexdesk {

namespace {

constexpr int tellingTime = 30; // ms, between two pictures while much is read
constexpr int quietTime = 50;   // ms, a short reading is not worth a word
constexpr int partBeside = 25;  // of the memory

bool lacksBars(const SeriesDay& day)
{
    const bool canHaveBars =
        !day.summary || (day.summary->count > 0 && day.summary->count <= mostBarsOfDay);
    return !day.bars && canHaveBars;
}

} // namespace

SeriesFeed::SeriesFeed(const QString& root, qint64 mostMemory, QObject* parent)
    : QObject(parent)
    , m_root(root)
    , m_mostMemory(mostMemory)
    , m_mostBeside(mostMemory / partBeside)
    , m_queue([this] { deliverSoon(); }, DayQueue::usualReaders(), m_mostBeside)
{
    connect(&m_watcher, &PathWatcher::changed, this, &SeriesFeed::list);
    for (QTimer* const timer : {&m_tellTimer, &m_watchTimer, &m_patience})
        timer->setSingleShot(true);
    m_watchTimer.setInterval(PathWatcher::usualDelay);
    m_patience.setInterval(quietTime);
    connect(&m_tellTimer, &QTimer::timeout, this, &SeriesFeed::tell);
    connect(&m_watchTimer, &QTimer::timeout, this, &SeriesFeed::watchFiles);
    connect(&m_patience, &QTimer::timeout, this, [this] {
        m_tellsProgress = true;
        tellProgress();
    });
}

SeriesFeed::~SeriesFeed() = default;

void SeriesFeed::stop()
{
    m_listing.forget();
    m_queue.forget();
    for (QTimer* const timer : {&m_tellTimer, &m_watchTimer, &m_patience})
        timer->stop();
    m_tellsProgress = false;
    m_hasNews = false;
    m_isOutdated = false;
    m_isListed = false;
    m_listingOutcome = {};
    m_key = SeriesKey();
    m_directory.clear();
    m_wanted = WantedDays();
    m_days.clear();
    m_memory = 0;
    m_letGo = 0;
    m_told.reset();
    m_watcher.watch({});
    m_watcher.tellNoMoreLater();
}

void SeriesFeed::choose(const SeriesKey& key)
{
    if (key == m_key)
        return;
    stop();
    m_key = key;
    m_directory = seriesPath(QDir(m_root), key.stockCode, key.boardCode, key.securityName);
    m_watcher.watch({m_directory});
    list();
}

void SeriesFeed::want(const WantedDays& days)
{
    if (days == m_wanted)
        return;
    m_wanted = days;
    takeDeliveries();
    orderDays();
    tellProgress();
}

void SeriesFeed::list()
{
    if (m_directory.isEmpty())
        return;
    m_isOutdated = m_listing.isRunning();
    if (m_isOutdated)
        return;
    m_listing.run([directory = m_directory,
                   timeframe = m_key.timeframe] { return listDays(directory, timeframe); },
                  [this](const auto& listed) { finishListing(listed); });
}

void SeriesFeed::finishListing(const Result<std::vector<ListedDay>>& listed)
{
    if (m_isOutdated)
        m_watcher.tellSoon();
    m_watcher.tellNoMoreLater();
    const Outcome before =
        std::exchange(m_listingOutcome, listed ? Outcome() : Outcome(listed.failure()));
    bool isNew = m_listingOutcome != before;
    if (listed) {
        isNew = takeListing(*listed) || isNew;
        orderDays();
    } else {
        m_watcher.tellLater();
    }
    watchSoon();
    const bool isFirst = !std::exchange(m_isListed, true);
    if (isNew || isFirst)
        tell();
}

// Whether there are others than before, as far as is seen without reading.
bool SeriesFeed::takeListing(const std::vector<ListedDay>& listed)
{
    takeDeliveries();
    ++m_listings;
    bool isNew = listed.size() != m_days.size();
    std::vector<Day> days;
    days.reserve(listed.size());
    auto known = m_days.begin();
    for (const ListedDay& one : listed) {
        known = std::find_if(known, m_days.end(),
                             [&one](const Day& day) { return day.shown.day >= one.day; });
        Day& day = days.emplace_back();
        if (known != m_days.end() && known->shown.day == one.day)
            day = std::move(*known);
        day.isCurrent = day.isCurrent && day.stamp.isSameAs(one.stamp);
        day.hasFailed = false;
        if (!day.shown.summary && (!day.shown.day.isValid() || day.stamp.size != one.stamp.size))
            isNew = true;
        day.shown.day = one.day;
        day.shown.bytes = one.stamp.size;
        day.stamp = one.stamp;
    }
    m_days = std::move(days);
    m_memory = 0;
    for (const Day& day : m_days)
        m_memory += day.shown.bars ? day.memory : 0;
    return isNew;
}

SeriesFeed::Stretch SeriesFeed::inView() const
{
    if (!m_wanted.first.isValid() || !m_wanted.last.isValid())
        return {};
    const auto indexFrom = [this](const QDate& date) -> qsizetype {
        const auto found = std::partition_point(
            m_days.begin(), m_days.end(), [date](const Day& day) { return day.shown.day < date; });
        return found - m_days.begin();
    };
    const qsizetype begin = indexFrom(m_wanted.first);
    return {begin, std::max(begin, indexFrom(m_wanted.last.addDays(1)))};
}

// As much again on both sides.
SeriesFeed::Stretch SeriesFeed::around() const
{
    if (!m_wanted.first.isValid() || !m_wanted.last.isValid())
        return {};
    const Stretch view = inView();
    const qsizetype width = std::max<qsizetype>(1, view.end - view.begin);
    return {std::max<qsizetype>(0, view.begin - width),
            std::min(static_cast<qsizetype>(m_days.size()), view.end + width)};
}

std::vector<qsizetype> SeriesFeed::nearestFirst() const
{
    const Stretch view = inView();
    const Stretch all = around();
    std::vector<qsizetype> days;
    days.reserve(static_cast<size_t>(all.end - all.begin));
    qsizetype after = (view.begin + view.end) / 2;
    qsizetype before = after - 1;
    while (before >= all.begin || after < all.end) {
        if (after < all.end)
            days.push_back(after++);
        if (before >= all.begin)
            days.push_back(before--);
    }
    return days;
}

DayOrder SeriesFeed::orderFor(const Day& day, bool isForBars) const
{
    const QString name = dayFileName(day.shown.day, m_key.timeframe);
    return {day.shown.day, m_directory + u'/' + name, day.stamp, m_listings, isForBars};
}

// What cannot be read now is tried again when it was listed anew.
bool SeriesFeed::mustBeRead(const Day& day, bool hasRoom)
{
    return !day.hasFailed &&
           (!day.isCurrent || !day.shown.reading || (hasRoom && lacksBars(day.shown)));
}

void SeriesFeed::orderDays()
{
    ++m_turn;
    std::vector<DayOrder> orders;
    qint64 memory = 0;
    bool hasRoom = m_wanted.needsBars;
    for (const qsizetype index : nearestFirst()) {
        Day& day = m_days[static_cast<size_t>(index)];
        // In the file a bar takes more room than in memory.
        memory += day.shown.summary ? day.memory : day.stamp.size;
        hasRoom = hasRoom && memory <= m_mostMemory;
        if (hasRoom)
            day.wantedAt = m_turn;
        if (mustBeRead(day, hasRoom))
            orders.push_back(orderFor(day, hasRoom || day.shown.bars));
    }
    const Stretch done = around();
    const auto last = static_cast<qsizetype>(m_days.size()) - 1;
    for (qsizetype i = 0; i <= last; ++i) {
        const Day& day = m_days[static_cast<size_t>(i)];
        const bool isWanted =
            day.shown.summary || !day.shown.reading || (i == last && m_wanted.last.isValid());
        if (!done.has(i) && mustBeRead(day, false) && isWanted)
            orders.push_back(orderFor(day, day.shown.bars != nullptr));
    }
    m_queue.order(std::move(orders));
}

// As long as too much is shown that was let go, what was read waits.
void SeriesFeed::takeDeliveries()
{
    if (isTooMuchLetGo())
        return;
    const std::vector<DayDelivery> deliveries = m_queue.take();
    for (const DayDelivery& delivery : deliveries)
        keep(delivery);
    if (deliveries.empty())
        return;
    dropBars();
    m_hasNews = true;
}

void SeriesFeed::keep(const DayDelivery& delivery)
{
    ++m_filesRead;
    const DayOrder& order = delivery.order;
    const auto found = std::partition_point(m_days.begin(), m_days.end(), [&order](const Day& day) {
        return day.shown.day < order.day;
    });
    if (found == m_days.end() || found->shown.day != order.day)
        return; // the file is gone
    if (!delivery.read.summary) {
        keepFailed(*found, delivery.read.outcome.failure());
        return;
    }
    found->isCurrent = order.isGoodFor(found->stamp, m_listings);
    found->shown.reading = delivery.read.outcome;
    found->hasFailed = !delivery.read.outcome;
    letGo(*found);
    found->shown.summary = delivery.read.summary;
    found->memory = delivery.read.bytes;
    if (order.isForBars && delivery.read.bars) {
        found->shown.bars = delivery.read.bars;
        m_memory += found->memory;
    }
}

// What was read of the same content stays.
void SeriesFeed::keepFailed(Day& day, const Failure& why)
{
    day.hasFailed = true;
    day.shown.reading = why;
    m_watcher.tellLater();
    if (day.isCurrent)
        return;
    letGo(day);
    day.shown.summary.reset();
}

void SeriesFeed::letGo(Day& day)
{
    if (day.shown.bars) {
        m_memory -= day.memory;
        m_letGo += day.memory;
    }
    day.shown.bars.reset();
}

// Those go first that were not wanted for the longest time and are the farthest away.
void SeriesFeed::dropBars()
{
    if (m_memory <= m_mostMemory)
        return;
    const Stretch view = inView();
    const auto inMemory = [this](qsizetype index) {
        return m_days[static_cast<size_t>(index)].shown.bars != nullptr;
    };
    std::vector<qsizetype> days;
    for (qsizetype i = 0; i < static_cast<qsizetype>(m_days.size()); ++i) {
        if (inMemory(i))
            days.push_back(i);
    }
    const auto isFirst = [this, view](qsizetype left, qsizetype right) {
        const auto rank = [this, view](qsizetype index) {
            const qsizetype distance = std::abs(2 * index + 1 - view.begin - view.end);
            return std::pair(m_days[static_cast<size_t>(index)].wantedAt, -distance);
        };
        return rank(left) < rank(right);
    };
    std::sort(days.begin(), days.end(), isFirst);
    for (auto next = days.begin(); m_memory > m_mostMemory && next != days.end(); ++next) {
        Day& day = m_days[static_cast<size_t>(*next)];
        letGo(day);
        day.wantedAt = 0;
    }
}

void SeriesFeed::deliverSoon()
{
    QMetaObject::invokeMethod(this, &SeriesFeed::deliver, Qt::QueuedConnection);
}

void SeriesFeed::deliver()
{
    if (isTooMuchLetGo())
        deliverSoon(); // when this was told
    // What this call was made for may have been taken before, by a listing or a wish.
    takeDeliveries();
    if (!m_hasNews)
        return;
    watchSoon();
    const Stretch view = inView();
    const auto isIn = [this](const Day& day) { return !isMissing(day); };
    const bool isComplete =
        std::all_of(m_days.begin() + view.begin, m_days.begin() + view.end, isIn);
    const bool isAwaited = m_patience.isActive() || m_tellsProgress;
    if ((isComplete && isAwaited) || m_queue.isIdle() || m_sinceTold.hasExpired(tellingTime) ||
        isTooMuchLetGo())
        tell();
    else if (!m_tellTimer.isActive())
        m_tellTimer.start(static_cast<int>(tellingTime - m_sinceTold.elapsed()));
}

void SeriesFeed::tell()
{
    m_tellTimer.stop();
    m_sinceTold.start();
    m_hasNews = false;
    m_letGo = 0;
    std::vector<SeriesDay> days;
    days.reserve(m_days.size());
    for (const Day& day : m_days)
        days.push_back(day.shown);
    const auto series =
        std::make_shared<const BarSeries>(m_key.timeframe, std::move(days), m_told.lock().get());
    m_told = series;
    Q_EMIT loaded(series);
    tellProgress();
}

bool SeriesFeed::isMissing(const Day& day) const
{
    const bool needsBars = m_wanted.needsBars && day.wantedAt == m_turn;
    if (day.hasFailed)
        return false;
    return !day.shown.summary || (needsBars && lacksBars(day.shown));
}

void SeriesFeed::tellProgress()
{
    const Stretch view = inView();
    const auto total = static_cast<int>(view.end - view.begin);
    const auto missing =
        static_cast<int>(std::count_if(m_days.begin() + view.begin, m_days.begin() + view.end,
                                       [this](const Day& day) { return isMissing(day); }));
    if (missing > 0 && !m_tellsProgress && !m_patience.isActive())
        m_patience.start();
    if (missing == 0)
        m_patience.stop();
    if (missing == 0 ? std::exchange(m_tellsProgress, false) : m_tellsProgress)
        Q_EMIT progressed(total - missing, total);
}

// Not while much is read: to watch costs about as much as reading, and when it has begun the days
// are listed again.
void SeriesFeed::watchSoon()
{
    if (m_queue.isIdle() && !m_watchTimer.isActive())
        m_watchTimer.start();
}

void SeriesFeed::watchFiles()
{
    // A directory tells of files that come and go, but not of one that is written in place.
    std::vector<QDate> days;
    for (const Day& day : m_days) {
        if (day.shown.summary || !day.shown.reading)
            days.push_back(day.shown.day);
    }
    m_watcher.watchMany(
        [directory = m_directory, timeframe = m_key.timeframe, days = std::move(days)] {
            QStringList paths{directory};
            for (const QDate& day : days)
                paths.append(directory + u'/' + dayFileName(day, timeframe));
            return paths;
        });
}

} // namespace vexdesk
