// SPDX-License-Identifier: MIT
#include "desk/chart/viewhistory.h"

namespace vexdesk {

namespace {

constexpr size_t most = 100;

void push(std::vector<ViewHistory::State>& states, const ViewHistory::State& state)
{
    states.push_back(state);
    if (states.size() > most)
        states.erase(states.begin());
}

std::optional<ViewHistory::State> step(std::vector<ViewHistory::State>& from,
                                       std::vector<ViewHistory::State>& to,
                                       const ViewHistory::State& state)
{
    // Where nothing has moved, nothing would be seen to happen.
    while (!from.empty() && from.back() == state)
        from.pop_back();
    if (from.empty())
        return std::nullopt;
    push(to, state);
    const ViewHistory::State next = from.back();
    from.pop_back();
    return next;
}

} // namespace

void ViewHistory::leave(const State& state)
{
    m_forward.clear();
    if (m_back.empty() || m_back.back() != state)
        push(m_back, state);
}

void ViewHistory::clear()
{
    m_back.clear();
    m_forward.clear();
}

std::optional<ViewHistory::State> ViewHistory::back(const State& state)
{
    return step(m_back, m_forward, state);
}

std::optional<ViewHistory::State> ViewHistory::forward(const State& state)
{
    return step(m_forward, m_back, state);
}

} // namespace vexdesk
