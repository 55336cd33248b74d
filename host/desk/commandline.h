// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QCommandLineOption>
#include <QtCore/QList>
#include <QtCore/QStringList>

class QCommandLineParser;

namespace vexdesk {

/// What the user asked for when starting a program that shows the terminal.
struct CommandLine
{
    /// Instead of the standard directories; empty when the user named none. Absolute.
    QStringList pluginDirectories;
    QString referenceFile; ///< empty when the user named none

    static constexpr char languageOption[] = "language";

    /// The code after "--language", whatever else is in the arguments and whether it is one; empty
    /// without one. What the rest of the command line has to say is said in that language.
    static QString languageIn(const QStringList& arguments);

    /// Whether the arguments seem to ask for what the program prints of itself, for which nobody
    /// needs a screen. Only read() is sure.
    static bool asksForText(const QStringList& arguments);

    /// The arguments as they are without "--language" and its code: it would win over what the user
    /// has chosen since.
    static QStringList withoutLanguage(const QStringList& arguments);

    /// Reads the arguments of the process; `parser` has the program's description and keeps what is
    /// set of its `own` options. "--help", "--version" and what cannot be understood end the
    /// process here: the first two with the exit code 0, the rest as refuse() does.
    static CommandLine read(QCommandLineParser& parser,
                            const QList<QCommandLineOption>& own = QList<QCommandLineOption>());

    /// Ends the process with the exit code 1 and this message on the standard error output.
    [[noreturn]] static void refuse(const QString& reason);
};

} // namespace vexdesk
