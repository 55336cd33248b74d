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

[[noreturn]] void refuse(const QString& reason)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(reason));
    std::exit(EXIT_FAILURE);
}

QCommandLineOption languageChoice()
{
    return QCommandLineOption(
        QLatin1String(CommandLine::languageOption),
        Text::tr("Язык терминала: ru или en. Без этого параметра — выбранный в меню, а если не "
                 "выбран, то язык пользователя."),
        Text::tr("язык"));
}

} // namespace

QString CommandLine::languageIn(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.addOption(languageChoice());
    parser.parse(arguments); // fails with every other option, which is of no account here
    return parser.value(QLatin1String(languageOption));
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

CommandLine CommandLine::read()
{
    const QCommandLineOption plugins(
        QStringLiteral("plugins"),
        Text::tr("Искать модули в этом каталоге, а не в обычных. Можно указать несколько раз."),
        Text::tr("каталог"));
    const QCommandLineOption reference(
        QStringLiteral("reference"),
        Text::tr("Взять площадки, режимы торгов и инструменты из этого файла."), Text::tr("файл"));
    const QCommandLineOption language = languageChoice();
    const QCommandLineOption tour(
        QStringLiteral("tour"),
        Text::tr("Показать терминал в работе: пройти импорт от меню до сохранённых баров серии "
                 "NORD/MAIN/ALFA, сохранить картинки шагов в этот каталог и выйти."),
        Text::tr("каталог"));
    const QCommandLineOption list(
        QStringLiteral("list-plugins"),
        Text::tr("Загрузить модули, назвать загруженные и отклонённые и выйти. Код выхода 1, если "
                 "хотя бы один отклонён."));
    const QCommandLineOption demoDeals(
        QStringLiteral("demo-deals"),
        Text::tr("Заполнить сегодняшние сделки всех инструментов придуманными. Пока терминал "
                 "работает, они попадают и в экспорт за сегодня."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  Text::tr("Показать эту справку и выйти."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     Text::tr("Показать версию и выйти."));
    QCommandLineParser parser;
    parser.setApplicationDescription(Text::tr("Торговый терминал Vexdesk."));
    parser.addOptions({plugins, reference, language, demoDeals, list, tour, help, version});

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
    result.language = parser.value(language);
    if (parser.isSet(language) && !languageOf(result.language))
        refuse(Text::tr("Неизвестный язык «%1»: бывает ru или en.").arg(result.language));
    result.referenceFile = parser.value(reference);
    result.tourDirectory = parser.value(tour);
    result.listPlugins = parser.isSet(list);
    // The tour shows an export of today.
    result.demoDeals = parser.isSet(demoDeals) || parser.isSet(tour);
    return result;
}

} // namespace vexdesk
