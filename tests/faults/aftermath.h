// SPDX-License-Identifier: MIT
#pragma once

#include "faults/storejobs.h"

/// What a job may leave, and has to say, where a call of the system has failed.
namespace testsupport {

/// What a job does where nothing fails.
struct Undisturbed
{
    Outcome outcome; ///< in plain texts
    QList<MadeCall> calls;
    QByteArrayList meant; ///< the file or directory that each of them is for
    Files outputs;
    Files store;
    Files made; ///< the store before it puts back what it has done, if it does
};

Undisturbed runUndisturbed(StoreJobs& jobs, const QString& job);

/// What is wrong with a run at which something has failed; empty where nothing is.
QByteArray wrongAfterFault(const QString& job, const StoreJobs& jobs, const Undisturbed& done,
                           const Outcome& outcome, const CallOrder& order);

} // namespace testsupport
