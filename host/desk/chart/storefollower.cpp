// SPDX-License-Identifier: MIT
#include "desk/chart/storefollower.h"

#include "desk/chart/directorynames.h"

#include <vexdesk/history/filestate.h>
#include <vexdesk/history/links.h>
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
    const StoreCatalog stored = storeCatalog(QDir(root));
    QStringList problems;
    for (const QString& directory : stored.unreadable)
        problems.append(unreadableDirectory(directory).message);
    for (const QString& link : stored.lostLinks)
        problems.append(lostLink(link).message);
    return {stored.series, problems, isMissing(root),
            QStringList{root} + below.stocks + below.boards + below.series};
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
    m_watcher.tellNoMoreLater();
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
    m_watcher.tellNoMoreLater();
    // One that comes back before it is watched again may not be told of.
    if (stored.isMissing || !stored.problems.isEmpty())
        m_watcher.tellLater();
    Q_EMIT troubled(stored.problems);
    Q_EMIT missed(stored.isMissing);
    Q_EMIT listed(stored.series);
}

} // namespace vexdesk
