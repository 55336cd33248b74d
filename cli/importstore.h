// SPDX-License-Identifier: MIT
#pragma once

#include "series.h"

#include <vexdesk/history/filekeeper.h>
#include <vexdesk/history/storejob.h>

#include <mutex>

namespace tadata::cli {

/// The store as the imports of one command see it: with the locks of all their series and one
/// restore point. What they ask for they may ask from several threads; the rest is for one.
class ImportStore final : public vexdesk::FileKeeper
{
public:
    /// In the store with this root, or the terminal's. Directories of series are made when they are
    /// asked for, if that is wanted.
    ImportStore(const std::optional<QString>& root, const vexdesk::StoreJobSettings& settings,
                bool makesDirectories);

    /// Takes the locks; nothing else of the store is touched. Only the first call does anything,
    /// and all say what came of it.
    vexdesk::Outcome begin(const QList<SeriesCodes>& series);
    /// Begins, if that is still to be done, and gives the directories of these series. Fails where
    /// one cannot be made.
    vexdesk::Result<QList<QDir>> directories(const QList<SeriesCodes>& series);
    vexdesk::Outcome keep(const QStringList& paths) override;

    /// Ends the restore point, or puts back all that was touched.
    vexdesk::Outcome end(bool takesBack);

private:
    vexdesk::Outcome beginLocked(const QList<SeriesCodes>& series);
    QDir root() const;

    std::optional<QString> m_root;
    bool m_makesDirectories;
    std::mutex m_mutex; ///< of what follows
    vexdesk::StoreJob m_job;
    std::optional<vexdesk::Outcome> m_begun;
};

} // namespace tadata::cli
