// SPDX-License-Identifier: MIT
#pragma once

#include "commands.h"

#include <QtCore/QDate>
#include <QtCore/QMap>

#include <optional>

namespace tadata::cli {

/// Thrown for a command line that is wrong; main() prints it with a hint.
struct UsageError
{
    QString text;
};

/// An integer, as every option and file of tadata writes one.
std::optional<qint64> integerFrom(QStringView text);

/// The words after a command's name, taken apart by its options; those that a profile holds
/// (--profile) are as if they had been given. Every function throws UsageError
/// with the option, the value that was given and what it takes; names are those of the command's
/// options.
class CommandLine final
{
public:
    /// Checks all that the table says. The command must live as long.
    CommandLine(const Command& command, const QStringList& words);
    CommandLine(Command&& command, const QStringList& words) = delete;

    const QStringList& positional() const { return m_positional; }

    /// The options that were given, there or by --profile, with their values.
    const QMap<QString, QString>& given() const { return m_values; }
    bool isSet(const char* option) const;
    /// The value that was given, otherwise the option's fallback.
    std::optional<QString> value(const char* option) const;
    /// The same, of an option that always has one.
    QString text(const char* option) const;
    /// The same of a file or a directory, whose name is not empty.
    std::optional<QString> path(const char* option) const;
    /// A number of this interval, both ends included; none where the option has no value.
    std::optional<int> number(const char* option, int from, int to) const;
    /// A day such as 2024-01-31; none where the option has no value.
    std::optional<QDate> day(const char* option) const;

    /// Throws UsageError: the option's value is wrong. `why` says more than what it takes.
    [[noreturn]] void refuse(const char* option, const QString& why = QString()) const;

private:
    const Option& optionOf(const QString& name) const;
    void takeOption(const QString& word, QStringList& rest);
    void takeProfile();
    void take(const Option& option, const QString& value);
    void checkPartners() const;
    void checkMissing() const;

    const Command& m_command;
    QMap<QString, QString> m_values;
    QStringList m_positional;
};

/// The value of --date-format. Throws UsageError for one that does not name a day.
QString parseDateFormat(const CommandLine& line);

/// The value of --separator, with its words as what they stand for. Throws UsageError.
QString parseSeparator(const CommandLine& line);

} // namespace tadata::cli
