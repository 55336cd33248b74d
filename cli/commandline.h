// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace tadata::cli {

/// What every command of tadata returns to the shell.
enum ExitCode {
    Success = 0,
    Failure = 1,    ///< the work could not be done; standard error says why
    WrongUsage = 2, ///< the command line is wrong; nothing was done
};

/// Thrown for a command line that is wrong; main() prints it with a hint.
struct UsageError
{
    QString text;
};

/// The words after the command's name, parsed. Throws UsageError.
class CommandLine final
{
public:
    /// An option that takes a value, or a switch when `takesValue` is false.
    struct Option
    {
        const char* name;
        bool takesValue = true;
    };

    CommandLine(const QStringList& words, std::initializer_list<Option> options);

    bool isSet(const char* option) const;
    std::optional<QString> value(const char* option) const;
    QString required(const char* option) const;
    const QStringList& positional() const { return m_positional; }

private:
    QMap<QString, QString> m_values;
    QStringList m_positional;
};

/// A separator as the user gives it: the text itself, or one of the words comma, semicolon, space.
/// Throws UsageError for an empty text or one with a line end.
QString parseSeparator(const QString& text);

/// A number of digits after the point. Throws UsageError unless it is from 0 to 15.
int parseDecimals(const QString& text);

/// Gives Text::tr, the texts of tadata in the user's language.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(tadata)
};

/// Writes one line to standard error.
void printError(const QString& text);

/// Writes a text to standard output. A failure, which has been told to the user, when not all of it
/// could be written.
ExitCode printOutput(const QString& text);

} // namespace tadata::cli
