#include "desk/commandline.h"

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

} // namespace

CommandLine CommandLine::read()
{
    const QCommandLineOption plugins(
        QStringLiteral("plugins"),
        Text::tr("Искать модули в этом каталоге, а не в обычных. Можно указать несколько раз."),
        Text::tr("каталог"));
    const QCommandLineOption reference(
        QStringLiteral("reference"),
        Text::tr("Взять площадки, режимы торгов и инструменты из этого файла."), Text::tr("файл"));
    const QCommandLineOption tour(
        QStringLiteral("tour"),
        Text::tr("Показать терминал в работе: пройти импорт от меню до сохранённых баров серии "
                 "NORD/MAIN/ALFA, сохранить картинки шагов в этот каталог и выйти."),
        Text::tr("каталог"));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  Text::tr("Показать эту справку и выйти."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     Text::tr("Показать версию и выйти."));
    QCommandLineParser parser;
    parser.setApplicationDescription(Text::tr("Торговый терминал Vexdesk."));
    parser.addOptions({plugins, reference, tour, help, version});

    if (!parser.parse(QCoreApplication::arguments())) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(parser.errorText()));
        std::exit(EXIT_FAILURE);
    }
    if (parser.isSet(help))
        parser.showHelp();
    if (parser.isSet(version))
        parser.showVersion();

    CommandLine result;
    const QStringList directories = parser.values(plugins);
    for (const QString& directory : directories)
        result.pluginDirectories.append(
            QDir::cleanPath(QDir::current().absoluteFilePath(directory)));
    result.referenceFile = parser.value(reference);
    result.tourDirectory = parser.value(tour);
    return result;
}

} // namespace vexdesk
