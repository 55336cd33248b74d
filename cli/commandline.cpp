// SPDX-License-Identifier: MIT
#include "commandline.h"

#include "help.h"
#include "suggestion.h"

#include "optionwords.h"
#include "patterns.h"
#include "profiles.h"

#include <algorithm>

namespace tadata::cli {

namespace {

[[noreturn]] void refuseValue(const Option& option, const QString& value, const QString& why)
{
    const QString wrong = why.isNull()
                              ? Text::tr("неверное значение «%1»").arg(escaped(value))
                              : Text::tr("неверное значение «%1»: %2").arg(escaped(value), why);
    throw UsageError{Text::tr("--%1: %2; нужно: %3").arg(option.name, wrong, rightValues(option))};
}

QString withValues(const Option& option)
{
    return QStringLiteral("%1 (%2)").arg(optionUsage(option), rightValues(option));
}

QStringList optionNames(const Command& command)
{
    QStringList names;
    for (const Option& option : command.options)
        names.append(option.name);
    return names;
}

} // namespace

std::optional<qint64> integerFrom(QStringView text)
{
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

CommandLine::CommandLine(const Command& command, const QStringList& words)
    : m_command(command)
{
    QStringList rest = words;
    while (!rest.isEmpty()) {
        const QString word = rest.takeFirst();
        if (word == u"--") {
            m_positional += rest;
            break;
        }
        if (word.startsWith(u'-') && word != u"-")
            takeOption(word, rest);
        else
            m_positional.append(word);
    }
    if (m_positional.size() > command.mostWords)
        throw UsageError{
            Text::tr("лишнее слово «%1»").arg(escaped(m_positional[command.mostWords]))};
    takeProfile();
    checkPartners();
    checkMissing();
}

// What the words say wins. A profile may hold options of other commands.
void CommandLine::takeProfile()
{
    const auto name = m_values.constFind(QStringLiteral("profile"));
    if (name == m_values.constEnd())
        return;
    const std::optional<ProfileOptions> saved =
        hasUnprintable(*name) ? std::nullopt : profileOptions(*name);
    if (!saved)
        throw UsageError{Text::tr("профиля «%1» нет").arg(escaped(*name)) +
                         suggestion(*name, profileNames())};
    for (const Option& option : m_command.options) {
        const auto value = saved->constFind(option.name);
        const bool isOff = option.isSwitch() && value != saved->constEnd() && *value != u"true";
        if (value != saved->constEnd() && !isOff && !m_values.contains(option.name))
            take(option, option.isSwitch() ? QString() : *value);
    }
}

void CommandLine::take(const Option& option, const QString& value)
{
    if (!option.choices.isEmpty() && !option.choices.contains(value))
        refuseValue(option, value, QString());
    m_values.insert(option.name, value);
}

// An option's value is what follows "=", otherwise the next word, whatever it is.
void CommandLine::takeOption(const QString& word, QStringList& rest)
{
    const qsizetype equals = word.indexOf(u'=');
    const QString given = word.left(equals);
    const auto option = std::find_if(
        m_command.options.begin(), m_command.options.end(),
        [&given](const Option& known) { return given == QStringLiteral("--") + known.name; });
    if (option == m_command.options.end())
        throw UsageError{
            Text::tr("у команды %1 нет параметра %2").arg(m_command.name, escaped(given)) +
            suggestion(given, optionNames(m_command), QStringLiteral("--"))};
    QString value = equals < 0 ? QString() : word.mid(equals + 1);
    if (option->isSwitch() && equals >= 0)
        throw UsageError{Text::tr("%1 не принимает значения: «%2»").arg(given, escaped(value))};
    if (!option->isSwitch() && equals < 0) {
        if (rest.isEmpty())
            throw UsageError{
                Text::tr("%1: нет значения; нужно: %2").arg(given, rightValues(*option))};
        value = rest.takeFirst();
    }
    if (m_values.contains(option->name))
        throw UsageError{option->isSwitch()
                             ? Text::tr("%1 задан дважды").arg(given)
                             : Text::tr("%1 задан дважды: «%2» и «%3»")
                                   .arg(given, escaped(m_values[option->name]), escaped(value))};
    take(*option, value);
}

void CommandLine::checkPartners() const
{
    for (const Option& option : m_command.options) {
        if (m_values.contains(option.name) && !option.partner.isEmpty() &&
            !m_values.contains(option.partner))
            throw UsageError{Text::tr("--%1 «%2» задан без --%3; нужно и то и другое: %4")
                                 .arg(option.name, escaped(m_values[option.name]), option.partner,
                                      withValues(optionOf(option.partner)))};
    }
}

void CommandLine::checkMissing() const
{
    QStringList missing;
    if (m_positional.size() < m_command.fewestWords)
        missing.append(m_command.words);
    for (const Option& option : m_command.options) {
        if (option.isRequired && !m_values.contains(option.name))
            missing.append(withValues(option));
    }
    if (!missing.isEmpty())
        throw UsageError{Text::tr("не задано: %1").arg(missing.join(QStringLiteral(", ")))};
}

const Option& CommandLine::optionOf(const QString& name) const
{
    const auto found = std::find_if(m_command.options.begin(), m_command.options.end(),
                                    [&name](const Option& option) { return option.name == name; });
    Q_ASSERT(found != m_command.options.end());
    return *found;
}

bool CommandLine::isSet(const char* option) const
{
    return m_values.contains(optionOf(QLatin1String(option)).name);
}

std::optional<QString> CommandLine::value(const char* option) const
{
    const Option& known = optionOf(QLatin1String(option));
    const QString found = m_values.value(known.name, known.fallback);
    return found.isNull() ? std::nullopt : std::optional(found);
}

QString CommandLine::text(const char* option) const
{
    const std::optional<QString> found = value(option);
    Q_ASSERT(found);
    return found.value_or(QString());
}

std::optional<QString> CommandLine::path(const char* option) const
{
    std::optional<QString> found = value(option);
    if (found && found->isEmpty())
        refuse(option);
    return found;
}

std::optional<int> CommandLine::number(const char* option, int from, int to) const
{
    const std::optional<QString> found = value(option);
    if (!found)
        return std::nullopt;
    const std::optional<qint64> number = integerFrom(*found);
    if (!number || *number < from || *number > to)
        refuse(option);
    return static_cast<int>(*number);
}

std::optional<QDate> CommandLine::day(const char* option) const
{
    const std::optional<QString> found = value(option);
    if (!found)
        return std::nullopt;
    const QDate day = QDate::fromString(*found, QStringLiteral("yyyy-MM-dd"));
    if (!day.isValid())
        refuse(option);
    return day;
}

void CommandLine::refuse(const char* option, const QString& why) const
{
    refuseValue(optionOf(QLatin1String(option)), text(option), why);
}

QString parseDateFormat(const CommandLine& line)
{
    QString pattern = line.text("date-format");
    if (!namesADay(pattern))
        line.refuse("date-format");
    return pattern;
}

QString parseSeparator(const CommandLine& line)
{
    const std::optional<QString> separator = separatorOfWord(line.text("separator"));
    if (!separator)
        line.refuse("separator");
    return *separator;
}

} // namespace tadata::cli
