// SPDX-License-Identifier: MIT
// The command of saved options: profile.
#include "guesstext.h"
#include "importoptions.h"
#include "profiles.h"
#include "suggestion.h"

namespace tadata::cli {

using vexdesk::Outcome;

namespace {

// The commands that take --profile.
QList<Command> commandsWithProfiles()
{
    return {importCommand(), checkCommand(), guessCommand()};
}

// What any of them can be given, once each. Nothing must be given, alone or with another one: the
// rest may come with the command.
QList<Option> savedOptions()
{
    QList<Option> options;
    QStringList names{profileOption().name, QStringLiteral("json")};
    for (const Command& command : commandsWithProfiles()) {
        for (Option option : command.options) {
            if (names.contains(option.name))
                continue;
            names.append(option.name);
            option.isRequired = false;
            option.partner.clear();
            options.append(option);
        }
    }
    return options;
}

QString profileName(const CommandLine& line)
{
    const QString name = line.positional().value(1);
    if (!isProfileName(name) || hasUnprintable(name))
        throw UsageError{Text::tr("неверное имя профиля «%1»; нужно: непустое имя без «/», «\\», "
                                  "пробелов по краям и управляющих символов, не с «-» в начале")
                             .arg(escaped(name))};
    return name;
}

ExitCode noSuchProfile(const QString& name)
{
    return fail(Text::tr("профиля «%1» нет").arg(name) + suggestion(name, profileNames()));
}

ExitCode save(const CommandLine& line)
{
    const QString name = profileName(line);
    if (line.given().isEmpty())
        throw UsageError{Text::tr("не задано ни одного параметра, который сохранить")};
    checkOptions(line);
    ProfileOptions options = line.given();
    for (const Option& option : savedOptions()) {
        if (option.isSwitch() && options.contains(option.name))
            options[option.name] = QStringLiteral("true");
    }
    const Outcome saved = saveProfile(name, options);
    return saved ? ExitCode::Success : fail(saved.failure());
}

ExitCode show(const CommandLine& line)
{
    const QString name = profileName(line);
    const std::optional<ProfileOptions> options = profileOptions(name);
    if (!options)
        return noSuchProfile(name);
    QString text;
    for (const Option& option : savedOptions()) {
        if (!options->contains(option.name))
            continue;
        text += QStringLiteral("--") + option.name;
        if (!option.isSwitch())
            text += u' ' + shellWord(options->value(option.name));
        text += u'\n';
    }
    return printOutput(text);
}

ExitCode list()
{
    QString text;
    for (const QString& name : profileNames())
        text += escaped(name) + u'\n';
    return printOutput(text);
}

ExitCode forget(const CommandLine& line)
{
    const QString name = profileName(line);
    if (!profileOptions(name))
        return noSuchProfile(name);
    const Outcome deleted = deleteProfile(name);
    return deleted ? ExitCode::Success : fail(deleted.failure());
}

ExitCode runProfile(const CommandLine& line)
{
    const QStringList actions = QStringLiteral("save list show delete").split(u' ');
    const QString action = line.positional().first();
    if (!actions.contains(action))
        throw UsageError{Text::tr("неизвестное действие «%1»; нужно: %2")
                             .arg(escaped(action), actions.join(QStringLiteral(", "))) +
                         suggestion(action, actions)};
    if (action != u"save" && !line.given().isEmpty())
        throw UsageError{Text::tr("profile %1 не принимает параметров").arg(action)};
    if (action == u"list") {
        if (line.positional().size() > 1)
            throw UsageError{Text::tr("лишнее слово «%1»").arg(escaped(line.positional()[1]))};
        return list();
    }
    if (action == u"save")
        return save(line);
    return action == u"show" ? show(line) : forget(line);
}

} // namespace

Command profileCommand()
{
    return {.name = QStringLiteral("profile"),
            .words = Text::tr("save|show|delete ИМЯ | list"),
            .fewestWords = 1,
            .mostWords = 2,
            .summary = Text::tr("Сохранить параметры под именем для --profile."),
            .description = Text::tr(
                "save сохраняет параметры, которые import, check и guess возьмут по --profile ИМЯ, "
                "вместо прежних того же имени; list печатает имена, show — параметры, delete "
                "забывает их. Они лежат в настройках терминала."),
            .options = savedOptions(),
            .example = QStringLiteral(
                "tadata profile save broker --separator semicolon --date-format dd.MM.yyyy"),
            .run = runProfile};
}

} // namespace tadata::cli
