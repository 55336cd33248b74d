// SPDX-License-Identifier: MIT
#include "desk/commandline.h"

#include <vexdesk/terminal/language.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>

#include <cstdio>
#include <cstdlib>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::CommandLine)
};

QCommandLineOption languageChoice()
{
    return QCommandLineOption(
        QLatin1String(CommandLine::languageOption),
        Text::tr("Язык терминала: ru или en. Без этого параметра — выбранный в меню, а если не "
                 "выбран, то язык пользователя."),
        Text::tr("язык"));
}

QCommandLineOption helpOption()
{
    return {{QStringLiteral("h"), QStringLiteral("help")},
            Text::tr("Показать эту справку и выйти.")};
}

QCommandLineOption versionOption()
{
    return {{QStringLiteral("v"), QStringLiteral("version")}, Text::tr("Показать версию и выйти.")};
}

} // namespace

QString CommandLine::languageIn(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.addOption(languageChoice());
    parser.parse(arguments); // fails with every other option, which is of no account here
    return parser.value(QLatin1String(languageOption));
}

bool CommandLine::asksForText(const QStringList& arguments)
{
    const QCommandLineOption help = helpOption();
    const QCommandLineOption version = versionOption();
    QCommandLineParser parser;
    parser.addOptions({help, version});
    parser.parse(arguments); // fails with every other option
    return parser.isSet(help) || parser.isSet(version);
}

QStringList CommandLine::withoutLanguage(const QStringList& arguments)
{
    const QString name = QStringLiteral("--") + QLatin1String(languageOption);
    QStringList rest;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        if (arguments.at(i) == name)
            ++i; // with the code behind it
        else if (!arguments.at(i).startsWith(name + u'='))
            rest.append(arguments.at(i));
    }
    return rest;
}

void CommandLine::refuse(const QString& reason)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(reason));
    std::exit(EXIT_FAILURE);
}

CommandLine CommandLine::read(QCommandLineParser& parser, const QList<QCommandLineOption>& own)
{
    const QCommandLineOption plugins(
        QStringLiteral("plugins"),
        Text::tr("Искать модули в этом каталоге, а не в обычных. Можно указать несколько раз."),
        Text::tr("каталог"));
    const QCommandLineOption reference(
        QStringLiteral("reference"),
        Text::tr("Взять площадки, режимы торгов и инструменты из этого файла."), Text::tr("файл"));
    const QCommandLineOption language = languageChoice();
    const QCommandLineOption help = helpOption();
    const QCommandLineOption version = versionOption();
    parser.addOptions({plugins, reference, language});
    parser.addOptions(own);
    parser.addOptions({help, version});

    if (!parser.parse(QCoreApplication::arguments()))
        refuse(parser.errorText());
    if (parser.isSet(help))
        parser.showHelp();
    if (parser.isSet(version))
        parser.showVersion();

    CommandLine result;
    const QStringList directories = parser.values(plugins);
    for (const QString& directory : directories)
        result.pluginDirectories.append(
            QDir::cleanPath(QDir::current().absoluteFilePath(directory)));
    const QString code = parser.value(language);
    if (parser.isSet(language) && !languageOf(code))
        refuse(Text::tr("Неизвестный язык «%1»: бывает ru или en.").arg(code));
    result.referenceFile = parser.value(reference);
    return result;
}

} // namespace vexdesk
