// SPDX-License-Identifier: MIT
#include "importstore.h"

#include "importseries.h"
#include "storework.h"

#include <vexdesk/history/storepaths.h>

namespace tadata::cli {

using vexdesk::Outcome;
using vexdesk::Result;

ImportStore::ImportStore(const std::optional<QString>& root,
                         const vexdesk::StoreJobSettings& settings, bool makesDirectories)
    : m_root(root)
    , m_makesDirectories(makesDirectories)
    , m_job(settings)
{}

Outcome ImportStore::begin(const QList<SeriesCodes>& series)
{
    const std::lock_guard lock(m_mutex);
    return beginLocked(series);
}

Outcome ImportStore::beginLocked(const QList<SeriesCodes>& series)
{
    if (m_begun)
        return *m_begun;
    QStringList names;
    for (const SeriesCodes& codes : series)
        names.append(codes.name());
    m_begun = m_job.begin(root(), vexdesk::sortedByCodePoint(names));
    return *m_begun;
}

Result<QList<QDir>> ImportStore::directories(const QList<SeriesCodes>& series)
{
    const std::lock_guard lock(m_mutex);
    if (const Outcome begun = beginLocked(series); !begun)
        return begun.failure();
    QList<QDir> directories;
    for (const SeriesCodes& codes : series) {
        if (Outcome reached = checkReached(root(), codes); !reached)
            return reached.failure();
        directories.append(seriesDirIn(root(), codes));
        if (Outcome made = m_makesDirectories ? makeDirectory(directories.last()) : Outcome();
            !made)
            return made.failure();
    }
    return directories;
}

QDir ImportStore::root() const
{
    return m_root ? QDir(*m_root) : vexdesk::storePlace();
}

Outcome ImportStore::keep(const QStringList& paths)
{
    const std::lock_guard lock(m_mutex);
    return m_job.keeper()->keep(paths);
}

Outcome ImportStore::end(bool takesBack)
{
    const std::lock_guard lock(m_mutex);
    return takesBack ? m_job.takeBack() : m_job.end();
}

} // namespace tadata::cli
