// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>

#include <array>

namespace tadata {

/// Tells the days on which the local clock is not changed: on these, times of day stand in the
/// order of the moments that they name. One thread at a time.
class LocalDays final
{
public:
    /// False as well for a day that was not asked for often enough to be worth looking at.
    bool isKnownAsEven(const QDate& day);

private:
    struct Known
    {
        QDate day;
        int asked = 0;
        bool isEven = false;
    };

    std::array<Known, 2> m_known; ///< a day and the one after it, as bars of one day have them
    size_t m_oldest = 0;
};

} // namespace tadata
