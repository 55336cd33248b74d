// SPDX-License-Identifier: MIT
#pragma once

#include "serieshealth.h"
#include "timesofday.h"

#include <QtCore/QString>

#include <optional>

namespace tadata {

/// A file of the store that could not be read to its end, or the directory of a series that could
/// not be listed.
struct UnreadFile
{
    enum class Reason { NotListed, NotOpened, Changing, Broken };

    QString path;
    Reason reason = Reason::Broken;
    QString message; ///< of what is broken
};

/// What one day file says by itself.
struct DayFile
{
    DayHealth health; ///< without its usual times
    TimesOfDay times; ///< at which there is a bar
    std::optional<UnreadFile> failure;
};

/// Reads a day file. An open that is more than `jumpPercent` of the close before away from it is a
/// jump. Any thread.
DayFile readDayFile(const QString& path, const QDate& day, int jumpPercent);

} // namespace tadata
