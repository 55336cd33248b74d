// SPDX-License-Identifier: MIT
#pragma once

#include "filereview.h"

#include <QtCore/QDir>

#include <memory>

namespace tadata {

/// Follows an import without writing, bar by bar, and says what it would make of each day. One
/// thread at a time.
class DaysPreview
{
public:
    DaysPreview() = default;
    virtual ~DaysPreview() = default;
    Q_DISABLE_COPY_MOVE(DaysPreview)

    /// The next bar, what the file has of its day so far, and whether a run of that day begins.
    /// Fails where a stored file cannot be read. The bar may be the stop of the import.
    virtual vexdesk::Outcome take(const FileLine& line, const DayInFile& day, bool beginsRun) = 0;

    /// What ends the import; none so far.
    const std::optional<ImportStop>& stop() const { return m_stop; }
    /// Ends the import, unless it has ended.
    void stopAt(qint64 line, const QString& message, bool isOfStoredLine = false)
    {
        if (!m_stop)
            m_stop = ImportStop{line, message, isOfStoredLine};
    }

    /// Once all bars were taken, or the import has ended: no bar may be taken by the file's days
    /// before this.
    virtual vexdesk::Result<std::vector<CheckedDay>> finish() = 0;

private:
    std::optional<ImportStop> m_stop;
};

} // namespace tadata
