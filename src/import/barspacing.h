// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QtGlobal>

#include <array>
#include <map>
#include <optional>

namespace tadata {

/// Counts how far the bars of a file are apart. A plain value; one thread at a time. There may be
/// one for each of the many series of a file: it has some two kilobytes, and more only for far
/// distances of different lengths.
class BarSpacing final
{
public:
    /// The distance of a bar from the one before on the same day, in seconds; only those above 0
    /// count.
    void add(int seconds)
    {
        if (seconds <= 0)
            return;
        if (seconds < farFrom)
            ++m_near[static_cast<size_t>(seconds)];
        else
            addFar(seconds);
    }

    /// The most frequent one, of several the smallest; none without any.
    std::optional<int> usual() const;
    /// Whether bars that are so far apart can hardly have this timeframe.
    bool isStrangeFor(int timeframe) const;

private:
    /// Above five minutes, the longest distance that is usual for many bars.
    static constexpr int farFrom = 301;

    void addFar(int seconds);
    /// Gives the distances that there are, ascending, and how often.
    template <typename Visit>
    void visit(Visit visit) const;

    std::array<qint64, farFrom> m_near{}; ///< by the distance
    std::map<int, qint64> m_far;
};

} // namespace tadata
