// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/chartviewport.h"

#include <optional>
#include <vector>

namespace vexdesk {

/// The views that were left by jumps, to go back to and forward again. The owner's thread only.
class ViewHistory final
{
public:
    using State = ChartViewport::State;

    /// A jump from here begins; there is nothing to go forward to any more.
    void leave(const State& state);
    void clear();

    bool canGoBack() const { return !m_back.empty(); }
    bool canGoForward() const { return !m_forward.empty(); }
    /// Where to go from here; no value when there is nowhere.
    std::optional<State> back(const State& state);
    std::optional<State> forward(const State& state);

private:
    std::vector<State> m_back;
    std::vector<State> m_forward;
};

} // namespace vexdesk
