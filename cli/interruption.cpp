// SPDX-License-Identifier: MIT
#include "interruption.h"

#include <csignal>

namespace tadata::cli {

namespace {

std::atomic<bool> isInterrupted = false;
std::atomic<int> interruptedBy = 0;
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free);

extern "C" void noteSignal(int number)
{
    interruptedBy = number;
    isInterrupted = true;
}

void setHandlers(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int number : {SIGINT, SIGTERM})
        ::sigaction(number, &action, nullptr);
}

} // namespace

Interruption::Interruption()
{
    setHandlers(noteSignal);
}

Interruption::~Interruption()
{
    setHandlers(SIG_DFL);
}

const std::atomic<bool>* Interruption::flag()
{
    return &isInterrupted;
}

std::optional<ExitCode> Interruption::exitCode()
{
    switch (interruptedBy) {
    case SIGINT:
        return ExitCode::Interrupted;
    case SIGTERM:
        return ExitCode::Terminated;
    default:
        return std::nullopt;
    }
}

} // namespace tadata::cli
