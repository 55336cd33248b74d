#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace vexdesk {

/// What the user asked for when starting the terminal.
struct CommandLine
{
    /// Instead of the standard directories; empty when the user named none. Absolute.
    QStringList pluginDirectories;
    QString referenceFile; ///< empty when the user named none
    QString tourDirectory; ///< where the tour's pictures go; empty when no tour is wanted

    /// Reads the arguments of the process. "--help", "--version" and an unknown option end the
    /// process here: the first two with the exit code 0, the last one with 1 and a message on the
    /// standard error output.
    static CommandLine read();
};

} // namespace vexdesk
