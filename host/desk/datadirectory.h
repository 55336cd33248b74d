// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

#include <QtCore/QLockFile>
#include <QtCore/QString>

namespace vexdesk {

/// The directory in which the terminal keeps its history and settings: whether anything can be kept
/// there, and whether another terminal works with it. User-interface thread only.
class DataDirectory final
{
public:
    /// Takes the directory, which is the one that ICore::getDir gives for an empty path, unless
    /// another terminal has it. What was left by one that has ended is in nobody's way.
    DataDirectory();
    /// Gives it back.
    ~DataDirectory();

    DataDirectory(const DataDirectory&) = delete;
    DataDirectory& operator=(const DataDirectory&) = delete;

    /// Whether another terminal works with it now.
    bool isTaken() const { return m_taken; }
    /// Asks the user, where it is taken, whether to go on all the same.
    bool mayBeUsed() const;
    /// For another terminal that is to be started before this one has ended.
    void giveBack();

    /// Whether something can be kept there; the message is a sentence for the user that names the
    /// directory. Looks at the disk now.
    Outcome canKeep() const;

private:
    QString m_path;
    QLockFile m_lock;
    bool m_taken = false;
};

} // namespace vexdesk
