// SPDX-License-Identifier: MIT
#include "desk/commandline.h"
#include "desk/datadirectory.h"
#include "desk/deskapplication.h"
#include "desk/errorreport.h"
#include "desk/mainwindow.h"
#include "desk/pluginlist.h"
#include "desk/terminal.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QProcess>

#include <cstdio>
#include <cstdlib>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::Main)
};

void startAgain(const QStringList& arguments)
{
    if (!QProcess::startDetached(QCoreApplication::applicationFilePath(),
                                 vexdesk::CommandLine::withoutLanguage(arguments)))
        vexdesk::reportError(Text::tr("Терминал не удалось запустить снова: сделайте это сами."));
}

// The process's exit code.
int listPlugins(vexdesk::Terminal& terminal)
{
    std::fputs(qUtf8Printable(vexdesk::pluginList(terminal.plugins().records())), stdout);
    const bool areAllLoaded = terminal.plugins().refusedCount() == 0;
    terminal.end();
    return areAllLoaded ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    QStringList arguments; // all of them: Qt takes its own away
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    vexdesk::DeskApplication application(argc, argv);
    vexdesk::setApplicationIdentity();
    application.setLanguage(vexdesk::spokenLanguage());

    const QCommandLineOption demoDeals(
        QStringLiteral("demo-deals"),
        Text::tr("Заполнить сегодняшние сделки всех инструментов придуманными. Пока терминал "
                 "работает, они попадают и в экспорт за сегодня."));
    const QCommandLineOption list(
        QStringLiteral("list-plugins"),
        Text::tr("Загрузить модули, назвать загруженные и отклонённые и выйти. Код выхода 1, если "
                 "хотя бы один отклонён."));
    QCommandLineParser parser;
    parser.setApplicationDescription(Text::tr("Торговый терминал Vexdesk."));
    const auto commandLine = vexdesk::CommandLine::read(parser, {demoDeals, list});

    // A list of plug-ins changes nothing.
    vexdesk::DataDirectory dataDirectory;
    if (!parser.isSet(list) && !dataDirectory.mayBeUsed())
        return EXIT_SUCCESS;
    vexdesk::Terminal terminal(application, dataDirectory, commandLine);
    if (parser.isSet(list))
        return listPlugins(terminal);
    terminal.window().setDemoDeals(parser.isSet(demoDeals));
    const int exitCode = terminal.run();
    dataDirectory.giveBack();
    if (terminal.window().isRestartWanted())
        startAgain(arguments);
    return exitCode;
}
