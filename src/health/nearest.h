// SPDX-License-Identifier: MIT
#pragma once

/// What days are compared with: the nearest other ones of their weekday.
namespace tadata {

constexpr int daysOfWeek = 7;

/// No more are looked at.
constexpr int mostNeighbours = 20;
/// Fewer say nothing.
constexpr int fewestNeighbours = 5;

/// How many of them make a habit: 80 %, rounded up.
constexpr int habitOf(int neighbours)
{
    return (neighbours * 4 + 4) / 5;
}

} // namespace tadata
