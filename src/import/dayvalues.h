// SPDX-License-Identifier: MIT
#pragma once

#include "timesofday.h"

#include <vexdesk/history/recordline.h>
#include <vexdesk/outcome.h>

#include <QtCore/QDate>
#include <QtCore/QString>

#include <vector>

namespace tadata {

/// What becomes of the bars of a day, by their times.
struct DayChange
{
    int added = 0;    ///< times that had none
    int replaced = 0; ///< that had one of other values
    int lost = 0;     ///< that have none any more

    DayChange& operator+=(const DayChange& other);
    bool operator==(const DayChange&) const = default;
};

/// The times of the bars in a day file; lines that are no bar are passed over. Fails where the file
/// cannot be read.
vexdesk::Result<TimesOfDay> storedTimes(const QString& path, const QDate& day);

/// The bars of a day, as far as it takes to tell whether those of two days are the same: some bytes
/// of each. Of several of one time the last counts. A plain value; one thread at a time.
class DayValues final
{
public:
    /// Of the bars in a day file, see storedTimes().
    static vexdesk::Result<DayValues> ofFile(const QString& path, const QDate& day);

    void clear() { m_bars.clear(); }
    void add(const vexdesk::StoredBar& bar);
    /// A stored line; passed over if it is no bar.
    void add(QByteArrayView line, const QDate& day);
    /// The content of a day file.
    void addLines(QByteArrayView lines, const QDate& day);

    TimesOfDay times() const;
    DayChange changeTo(const DayValues& after) const;

private:
    struct Bar
    {
        int second = 0;
        size_t sum = 0; ///< of all its values
    };

    std::vector<Bar> lastOfEach() const;

    std::vector<Bar> m_bars; ///< as they came
};

} // namespace tadata
