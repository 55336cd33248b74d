// SPDX-License-Identifier: MIT
#pragma once

#include "job.h"

#include <vexdesk/outcome.h>

#include <QtCore/QString>

#include <functional>

class QProgressDialog;

/// How a command runs its job and tells the user about it. User-interface thread, except shownOn().
namespace tadata {

/// Runs the job on a thread of the application's global pool, which is one larger meanwhile, behind
/// a progress dialog that cannot be cancelled, and returns what came of it. What the job throws
/// comes out of here.
vexdesk::Outcome runJob(const QString& title, const QString& text,
                        const std::function<vexdesk::Outcome(QProgressDialog*)>& job);

/// Carries each value to the dialog by a queued call, so that it is set on the user-interface
/// thread. For any thread; the dialog must outlive the sink.
ProgressSink shownOn(QProgressDialog* dialog);

/// What a command says when its job has ended, besides the job's own message.
struct OutcomeTexts
{
    QString errorTitle;
    QString successTitle;
    QString success;
};

/// Shows the message of a job that failed, or the one of success.
void reportOutcome(const vexdesk::Outcome& outcome, const OutcomeTexts& texts);

} // namespace tadata
