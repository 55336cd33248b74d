// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

#include <QtCore/QDir>

#include <atomic>
#include <functional>

namespace vexdesk {
class FileKeeper;
}

/// What a job is given beside its settings. A job knows no dialog and no terminal's store.
namespace tadata {

/// Called with the percentage of the work that is done, from the thread that runs the job.
using ProgressSink = std::function<void(int percent)>;

/// Gives the directory of the series. Asked once at most and only when the job needs it, so that
/// nothing is made for a job that cannot begin.
using SeriesDir = std::function<QDir()>;

/// The same for a job that writes to it: who gives it may refuse, and the job ends with that.
using WritableSeriesDir = std::function<vexdesk::Result<QDir>()>;

/// What surrounds a job; all of it may be missing.
struct Surroundings
{
    vexdesk::FileKeeper* keeper = nullptr;   ///< is told of each file of the store beforehand
    const std::atomic<bool>* stop = nullptr; ///< once it is set the job ends, between two lines
};

} // namespace tadata
