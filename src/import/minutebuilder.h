// SPDX-License-Identifier: MIT
#pragma once

#include "bardescription.h"

#include <optional>

namespace tadata {

/// Derives minute bars from the second bars of one series, as they come: nothing is sorted, and a
/// bar that is earlier than the open minute goes into it.
///
/// A minute bar is stamped with the next whole minute after its first second, so a second that is
/// itself a whole minute opens the minute after it, and the last minute of a day is stamped
/// 00:00:00 with the date of that day: a minute file holds the bars of its own day's seconds, and
/// those who collect these files read the time 00:00:00 as the day's end.
class MinuteBuilder final
{
public:
    /// Adds a bar. When it begins a new minute, the minute that was open is returned.
    /// Throws a QString when the sum of the money volumes does not fit.
    std::optional<BarDescription> add(const BarDescription& bar);

    /// Closes the open minute, if there is one, and returns it.
    std::optional<BarDescription> take();

private:
    void merge(const BarDescription& bar);

    std::optional<BarDescription> m_minute;
};

} // namespace tadata
