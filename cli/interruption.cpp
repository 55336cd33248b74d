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

void setHandler(int number, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(number, &action, nullptr);
}

// By nohup, for what is to go on without its terminal.
bool isIgnored(int number)
{
    struct sigaction action = {};
    return ::sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void setHandlers(void (*handler)(int))
{
    for (const int number : {SIGINT, SIGTERM})
        setHandler(number, handler);
    if (!isIgnored(SIGHUP))
        setHandler(SIGHUP, handler);
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
    case SIGHUP:
        return ExitCode::HungUp;
    case SIGINT:
        return ExitCode::Interrupted;
    case SIGTERM:
        return ExitCode::Terminated;
    default:
        return std::nullopt;
    }
}

} // namespace tadata::cli
