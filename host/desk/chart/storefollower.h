// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/pathwatcher.h"

#include <vexdesk/history/storecatalog.h>

#include <QtCore/QFutureWatcher>
#include <QtCore/QThreadPool>

namespace vexdesk {

/// Lists what is stored, in a thread of its own, and lists it again when the store changes, for as
/// long as somebody wants to know. User-interface thread only.
class StoreFollower final : public QObject
{
    Q_OBJECT

public:
    /// `root` is the store's; it need not exist.
    explicit StoreFollower(QString root, QObject* parent = nullptr);
    ~StoreFollower() override;

    void start();
    /// Nothing is told or looked for any more.
    void stop();

Q_SIGNALS:
    /// What is stored now: once after start(), and after every change.
    void listed(const QList<vexdesk::StoredSeries>& stored);
    /// What of it could not be read, and why, before each listed(): nothing where all was. It is
    /// looked for again when something changes, and after some seconds.
    void troubled(const QStringList& problems);
    /// That the root is not there, or is again.
    void missed(bool isMissing);

private:
    // To list a store takes longer than to look at one series: not as often while an import runs.
    static constexpr int listDelay = 500; // ms

    struct Listing
    {
        QList<StoredSeries> series;
        QStringList problems;
        bool isMissing = false;
        QStringList directories; // that tell when this changes
    };

    static Listing listingOf(const QString& root);
    void list();
    void take();

    QString m_root;
    bool m_isWanted = false;
    bool m_isOutdated = false; // something has changed since the listing began
    PathWatcher m_watcher{listDelay};
    QFutureWatcher<Listing> m_listing;
    QThreadPool m_pool; // an import that fills the global one does not keep the list waiting
};

} // namespace vexdesk
