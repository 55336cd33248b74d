// SPDX-License-Identifier: MIT
#pragma once

#include "output.h"

#include <atomic>
#include <optional>

namespace tadata::cli {

/// While it lives SIGINT and SIGTERM do not end the program: they ask its job to end. One at a
/// time.
class Interruption final
{
public:
    Interruption();
    ~Interruption();
    Q_DISABLE_COPY_MOVE(Interruption)

    /// Set once a signal has come.
    static const std::atomic<bool>* flag();
    /// What the shell expects of a program that the signal has ended; none without one.
    static std::optional<ExitCode> exitCode();
};

} // namespace tadata::cli
