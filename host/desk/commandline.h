// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace vexdesk {

/// What the user asked for when starting the terminal.
struct CommandLine
{
    /// Instead of the standard directories; empty when the user named none. Absolute.
    QStringList pluginDirectories;
    QString referenceFile;    ///< empty when the user named none
    QString language;         ///< a language's code; empty when the user named none
    QString tourDirectory;    ///< where the tour's pictures go; empty when no tour is wanted
    bool listPlugins = false; ///< instead of opening the window
    bool demoDeals = false;   ///< fill today's deals with made-up ones

    static constexpr char languageOption[] = "language";

    /// The code after "--language", whatever else is in the arguments and whether it is one; empty
    /// without one. What the rest of the command line has to say is said in that language.
    static QString languageIn(const QStringList& arguments);

    /// The arguments as they are without "--language" and its code: it would win over what the user
    /// has chosen since.
    static QStringList withoutLanguage(const QStringList& arguments);

    /// Reads the arguments of the process. "--help", "--version" and an unknown option end the
    /// process here: the first two with the exit code 0, the last one with 1 and a message on the
    /// standard error output.
    static CommandLine read();
};

} // namespace vexdesk
