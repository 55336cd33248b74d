// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDir>

#include <functional>

/// What a job is given beside its settings. A job knows no dialog and no terminal's store.
namespace tadata {

/// Called with the percentage of the work that is done, from the thread that runs the job.
using ProgressSink = std::function<void(int percent)>;

/// Gives the directory of the series. Asked once at most and only when the job needs it, so that
/// nothing is made for a job that cannot begin.
using SeriesDir = std::function<QDir()>;

} // namespace tadata
