// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/recordline.h>
#include <vexdesk/outcome.h>

#include <QtCore/QFile>

#include <array>

namespace tadata {

/// Tells whether a day file holds the very bytes that an import of these bars would write. Reads
/// the file along with the bars and not much further than both are alike; neither is ever in memory
/// as a whole. One thread at a time.
class FileComparison final
{
public:
    FileComparison() = default;
    Q_DISABLE_COPY_MOVE(FileComparison)

    /// Begins anew with another file. Fails where it cannot be opened and for what is no file.
    vexdesk::Outcome open(const QString& path);
    bool isOpen() const { return m_file.isOpen(); }

    void write(const vexdesk::StoredBar& bar)
    {
        if (m_isSame)
            compare(bar);
    }

    /// Ends with what was found. Fails where the file could not be read.
    vexdesk::Result<bool> close();

private:
    static constexpr qsizetype blockSize = 16384;
    static_assert(blockSize >= vexdesk::maxRecordLine);

    void compare(const vexdesk::StoredBar& bar);
    void read();

    QFile m_file;
    bool m_isSame = false; ///< so far
    vexdesk::Outcome m_outcome;
    std::array<char, vexdesk::maxRecordLine> m_line;
    // What was read and not compared yet.
    std::array<char, blockSize> m_stored;
    qsizetype m_begin = 0;
    qsizetype m_end = 0;
};

} // namespace tadata
