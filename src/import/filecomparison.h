// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/recordline.h>
#include <vexdesk/outcome.h>

#include <QtCore/QFile>

#include <array>

namespace tadata {

/// Tells whether a day file holds the very bytes that an import of these bars would write. Reads
/// the file along with the bars and only as far as both are alike; neither is ever in memory as a
/// whole. One thread at a time.
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
            append(bar);
    }

    /// Ends with what was found. Fails where the file could not be read.
    vexdesk::Result<bool> close();

private:
    static constexpr qsizetype enough = 16384;

    void append(const vexdesk::StoredBar& bar);
    void compare();
    qint64 read(qint64 count);

    QFile m_file;
    bool m_isSame = false; ///< so far
    vexdesk::Outcome m_outcome;
    qsizetype m_size = 0; ///< of the lines that were not compared yet
    std::array<char, enough + vexdesk::maxRecordLine> m_lines;
    std::array<char, enough + vexdesk::maxRecordLine> m_stored;
};

} // namespace tadata
