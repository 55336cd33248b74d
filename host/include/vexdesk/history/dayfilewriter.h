// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>
#include <vexdesk/outcome.h>

#include <QtCore/QString>

#include <memory>

namespace vexdesk {

struct StoredBar;

/// Writes day files, one after the other, bar after bar. Each write to a file hands over whole
/// lines, so that whoever reads the file meanwhile finds no half of one. One thread at a time.
class VEXDESK_HISTORY_EXPORT DayFileWriter final
{
public:
    DayFileWriter();
    /// Closes the file; whoever has to know how that went calls close().
    ~DayFileWriter();
    Q_DISABLE_COPY_MOVE(DayFileWriter)

    /// The file that was opened last.
    QString path() const;
    /// Makes a file, or empties the one that is there. None may be open. Fails for a pipe, a socket
    /// or a device too, which is never waited for. The message says why, without the file's name.
    Outcome open(const QString& path);
    /// What fails shows when the file is closed.
    void write(const StoredBar& bar);
    /// Whether the file has taken all that was written, and if not, why, without the file's name;
    /// done where none is open. Some file systems say only now that the disk is full.
    Outcome close();

private:
    class Private;
    const std::unique_ptr<Private> m_d;
};

} // namespace vexdesk
