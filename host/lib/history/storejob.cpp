// SPDX-License-Identifier: MIT
#include <vexdesk/history/storejob.h>

namespace vexdesk {

class StoreJob::Private final : public FileKeeper
{
public:
    explicit Private(const StoreJobSettings& wanted)
        : settings(wanted)
    {}

    Outcome keep(const QStringList& paths) override
    {
        return point ? point->keep(paths) : Outcome();
    }

    bool keepsNothing() const { return settings.limits.keep == 0; }

    Outcome prune(Outcome outcome)
    {
        const Outcome pruned = pruneRestorePoints(place, settings.limits);
        point.reset();
        locks.release();
        return outcome ? pruned : outcome;
    }

    StoreJobSettings settings;
    RestorePlace place;
    SeriesLocks locks;
    std::unique_ptr<RestorePoint> point;
};

StoreJob::StoreJob(const StoreJobSettings& settings)
    : m_d(std::make_unique<Private>(settings))
{}

StoreJob::~StoreJob() = default;

Outcome StoreJob::begin(const QDir& root, const QStringList& series)
{
    const Result<RestorePlace> place = makeRestorePlace(root);
    if (!place)
        return place.failure();
    const StoreJobSettings& settings = m_d->settings;
    if (Outcome taken = m_d->locks.take(*place, series, settings.wait, settings.stop); !taken)
        return taken;
    m_d->place = *place;
    if (settings.needsPoint || (settings.makesPoint && !m_d->keepsNothing()))
        m_d->point = std::make_unique<RestorePoint>(*place, settings.by, series, settings.source);
    return {};
}

FileKeeper* StoreJob::keeper()
{
    return m_d.get();
}

QString StoreJob::pointId() const
{
    return m_d->point ? m_d->point->id() : QString();
}

Outcome StoreJob::end()
{
    Outcome outcome;
    if (m_d->point && m_d->keepsNothing())
        m_d->point->remove();
    else if (m_d->point)
        outcome = m_d->point->finish();
    return m_d->prune(outcome);
}

Outcome StoreJob::takeBack()
{
    return m_d->prune(m_d->point ? m_d->point->takeBack() : Outcome());
}

} // namespace vexdesk
