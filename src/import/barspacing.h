// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QtGlobal>

#include <optional>
#include <vector>

namespace tadata {

/// Counts how far the bars of a file are apart. A plain value; one thread at a time.
class BarSpacing final
{
public:
    BarSpacing();

    /// The distance of a bar from the one before on the same day, in seconds; only those above 0
    /// count.
    void add(int seconds)
    {
        if (seconds > 0)
            ++m_counts[static_cast<size_t>(seconds)];
    }

    /// The most frequent one, of several the smallest; none without any.
    std::optional<int> usual() const;
    /// Whether bars that are so far apart can hardly have this timeframe.
    bool isStrangeFor(int timeframe) const;

private:
    std::vector<qint64> m_counts; ///< by the distance
};

} // namespace tadata
