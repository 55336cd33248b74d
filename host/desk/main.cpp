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
#include <QtCore/QTranslator>

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

// The command line of the process, with the options that only the terminal itself has.
class Options final
{
public:
    Options() { m_parser.setApplicationDescription(Text::tr("Торговый терминал Vexdesk.")); }

    vexdesk::CommandLine read()
    {
        return vexdesk::CommandLine::read(m_parser, {m_demoDeals, m_list});
    }
    bool areDemoDealsWanted() const { return m_parser.isSet(m_demoDeals); }
    bool isListWanted() const { return m_parser.isSet(m_list); }

private:
    const QCommandLineOption m_demoDeals{
        QStringLiteral("demo-deals"),
        Text::tr("Заполнить сегодняшние сделки всех инструментов придуманными. Пока терминал "
                 "работает, они попадают и в экспорт за сегодня.")};
    const QCommandLineOption m_list{
        QStringLiteral("list-plugins"),
        Text::tr("Загрузить модули, назвать загруженные и отклонённые и выйти. Код выхода 1, если "
                 "хотя бы один отклонён.")};
    QCommandLineParser m_parser;
};

// Prints and ends the process, on a machine without a screen too.
void describe(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(vexdesk::terminalVersion());
    vexdesk::setApplicationIdentity();
    const vexdesk::Texts texts = vexdesk::installTexts(vexdesk::spokenLanguage());
    Options().read();
}

} // namespace

int main(int argc, char** argv)
{
    QStringList arguments; // all of them: Qt takes its own away
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (vexdesk::CommandLine::asksForText(QStringList(QString()) + arguments))
        describe(argc, argv);
    vexdesk::DeskApplication application(argc, argv);
    vexdesk::setApplicationIdentity();
    application.setLanguage(vexdesk::spokenLanguage());

    Options options;
    const auto commandLine = options.read();

    // A list of plug-ins changes nothing.
    vexdesk::DataDirectory dataDirectory;
    if (!options.isListWanted() && !dataDirectory.mayBeUsed())
        return EXIT_SUCCESS;
    vexdesk::Terminal terminal(application, dataDirectory, commandLine);
    if (options.isListWanted())
        return listPlugins(terminal);
    terminal.window().setDemoDeals(options.areDemoDealsWanted());
    const int exitCode = terminal.run();
    dataDirectory.giveBack();
    if (terminal.window().isRestartWanted())
        startAgain(arguments);
    return exitCode;
}
