// SPDX-License-Identifier: MIT
// tadata: the batch companion of the terminal's history plug-in, for scripts and scheduled runs.

#include "commandline.h"
#include "help.h"
#include "suggestion.h"

#include <vexdesk/terminal/core.h>
#include <vexdesk/terminal/language.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QTranslator>

#include <csignal>
#include <exception>
#include <memory>
#include <vector>

namespace {

using namespace tadata::cli;

// The texts of the program, of what it shares with the plug-in, and of the terminal's library.
// Without their files they are Russian.
std::vector<std::unique_ptr<QTranslator>> installTranslations()
{
    const vexdesk::Language language = vexdesk::chooseLanguage(
        {qEnvironmentVariable("TADATA_LANGUAGE")}, QLocale::system().uiLanguages());
    std::vector<std::unique_ptr<QTranslator>> installed;
    for (const char* name : {"tadata", "tadatamanager", "vexdesk"}) {
        auto translation = vexdesk::loadTranslation(QLatin1String(name), language,
                                                    vexdesk::translationDirectories());
        if (!translation)
            continue;
        QCoreApplication::installTranslator(translation.get());
        installed.push_back(std::move(translation));
    }
    return installed;
}

bool asksForHelp(const QStringList& words)
{
    return words.contains(QStringLiteral("--help")) || words.contains(QStringLiteral("-h"));
}

ExitCode run(const QStringList& words)
{
    const QList<Command> known = commands();
    const QString name = words.value(0);
    for (const Command& command : known) {
        if (name == command.name) {
            const QStringList rest = words.mid(1);
            return asksForHelp(rest) ? printOutput(commandHelp(command))
                                     : command.run(CommandLine(command, rest));
        }
    }
    if (name == u"--version")
        return printOutput(QStringLiteral("tadata " TADATA_VERSION "\n"));
    if (name == u"--help" || name == u"-h")
        return printOutput(generalHelp(known));
    QStringList names;
    for (const Command& command : known)
        names.append(command.name);
    throw UsageError{name.isEmpty() ? Text::tr("нет команды")
                                    : Text::tr("неизвестная команда «%1»").arg(escaped(name)) +
                                          suggestion(name, names)};
}

} // namespace

int main(int argc, char* argv[])
{
    // A file that may not become larger is told as any other that cannot be written.
    std::signal(SIGXFSZ, SIG_IGN);
    // Who reads what is printed may go at any time: what is being done to a store is done all the
    // same.
    std::signal(SIGPIPE, SIG_IGN);
    const QCoreApplication application(argc, argv);
    vexdesk::setApplicationIdentity();
    const auto translations = installTranslations();
    try {
        return static_cast<int>(run(QCoreApplication::arguments().mid(1)));
    } catch (const UsageError& error) {
        printError(Text::tr("tadata: %1\nПодсказка: tadata --help").arg(error.text));
        return static_cast<int>(ExitCode::WrongUsage);
    } catch (const std::exception& error) {
        // No memory, or no thread. Locks and points are let go of on the way here.
        printError(
            Text::tr("tadata: команда не закончена: %1").arg(QString::fromLocal8Bit(error.what())));
        return static_cast<int>(ExitCode::Failure);
    }
}
