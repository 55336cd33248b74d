// SPDX-License-Identifier: MIT
// tadata: the batch companion of the terminal's history plug-in, for scripts and scheduled runs.

#include "commandline.h"
#include "exportcommand.h"
#include "importcommand.h"
#include "listcommand.h"

#include <vexdesk/terminal/core.h>
#include <vexdesk/terminal/language.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QTranslator>

#include <array>
#include <memory>
#include <vector>

namespace {

using namespace tadata::cli;

struct CommandEntry
{
    const char* name;
    ExitCode (*run)(const QStringList& words);
    QString (*help)();
};

constexpr std::array commands{
    CommandEntry{"import", runImport, importHelp},
    CommandEntry{"export", runExport, exportHelp},
    CommandEntry{"list", runList, listHelp},
};

QString generalHelp()
{
    return Text::tr(
        "tadata — бары для графиков терминала из командной строки\n"
        "\n"
        "Использование:\n"
        "  tadata import ФАЙЛ ...   импортировать бары из текстового файла\n"
        "  tadata export ФАЙЛ ...   записать хранимые бары в текстовый файл\n"
        "  tadata list ...          показать, что хранится\n"
        "  tadata КОМАНДА --help    всё о команде\n"
        "  tadata --version         версия\n"
        "\n"
        "Код завершения: 0 — сделано; 1 — не удалось, причина в стандартном выводе ошибок;\n"
        "2 — неверная командная строка.\n"
        "\n"
        "Сообщения — на языке пользователя или на том, который назван в переменной окружения\n"
        "TADATA_LANGUAGE: ru или en.\n");
}

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
    const QString name = words.value(0);
    for (const CommandEntry& command : commands) {
        if (name == QLatin1String(command.name)) {
            const QStringList rest = words.mid(1);
            return asksForHelp(rest) ? printOutput(command.help()) : command.run(rest);
        }
    }
    if (name == u"--version")
        return printOutput(QStringLiteral("tadata " TADATA_VERSION "\n"));
    if (name == u"--help" || name == u"-h")
        return printOutput(generalHelp());
    throw UsageError{name.isEmpty() ? Text::tr("нет команды")
                                    : Text::tr("неизвестная команда «%1»").arg(name)};
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    vexdesk::setApplicationIdentity();
    const auto translations = installTranslations();
    try {
        return run(QCoreApplication::arguments().mid(1));
    } catch (const UsageError& error) {
        printError(Text::tr("tadata: %1\nПодсказка: tadata --help").arg(error.text));
        return WrongUsage;
    }
}
