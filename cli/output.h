// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

#include <QtCore/QByteArrayView>
#include <QtCore/QCoreApplication>
#include <QtCore/QString>

namespace tadata::cli {

/// What every command of tadata returns to the shell.
enum class ExitCode {
    Success = 0,
    Failure = 1,       ///< the work could not be done; standard error says why
    WrongUsage = 2,    ///< the command line is wrong; nothing was done
    HungUp = 129,      ///< by SIGHUP, as a shell says it: its terminal has gone
    Interrupted = 130, ///< by SIGINT
    Terminated = 143,  ///< by SIGTERM
};

/// Gives Text::tr, the texts of tadata in the user's language.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(tadata)
};

/// Writes one line to standard error.
void printError(const QString& text);

/// The same, for the reason of a failure, which it returns.
ExitCode fail(const QString& reason);
/// The same, with what the system says of it, where it says anything.
ExitCode fail(const vexdesk::Failure& why);

/// Writes a text to standard output. A failure when not all of it could be written; the user has
/// been told, unless it is he who reads no more.
ExitCode printOutput(const QString& text);
/// The same of a text in UTF-8, which may be a large one.
ExitCode printUtf8(QByteArrayView text);

/// How many characters a line of standard error has room for.
int screenWidth();

/// A code or a word of the command line as a part of one printed line, whatever characters it has:
/// control characters and what is no UTF-8 as "\x0a" and "\u2028". A backslash before an x or a u
/// is doubled.
QString escaped(const QString& code);

/// Whether it has characters that can only be shown escaped.
bool hasUnprintable(const QString& code);

} // namespace tadata::cli
