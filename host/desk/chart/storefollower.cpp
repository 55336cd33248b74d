// SPDX-License-Identifier: MIT
#include "desk/chart/storefollower.h"

#include <vexdesk/history/storepaths.h>

#include <QtConcurrent/QtConcurrentRun>

namespace vexdesk {

StoreFollower::StoreFollower(QString root, QObject* parent)
    : QObject(parent)
    , m_root(std::move(root))
{
    connect(&m_watcher, &PathWatcher::changed, this, &StoreFollower::list);
    connect(&m_listing, &QFutureWatcherBase::finished, this, &StoreFollower::take);
}

StoreFollower::~StoreFollower() = default;

// The directories without bars too: a series is new when its first day file comes.
StoreFollower::Listing StoreFollower::listingOf(const QString& root)
{
    const StoreDirectories below = storeDirectories(QDir(root));
    return {listStore(QDir(root)), QStringList{root} + below.stocks + below.boards + below.series};
}

void StoreFollower::start()
{
    m_isWanted = true;
    list();
}

void StoreFollower::stop()
{
    m_isWanted = false;
    m_watcher.watch({});
}

void StoreFollower::list()
{
    if (!m_isWanted)
        return;
    m_isOutdated = m_listing.isRunning();
    if (!m_isOutdated)
        m_listing.setFuture(QtConcurrent::run(&m_pool, listingOf, m_root));
}

void StoreFollower::take()
{
    if (!m_isWanted)
        return;
    if (m_isOutdated)
        m_watcher.tellSoon();
    const Listing stored = m_listing.result();
    m_watcher.watch(stored.directories);
    Q_EMIT listed(stored.series);
}

} // namespace vexdesk
