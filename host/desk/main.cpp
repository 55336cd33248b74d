// SPDX-License-Identifier: MIT
#include "desk/commandline.h"
#include "desk/datadirectory.h"
#include "desk/daywatcher.h"
#include "desk/deskapplication.h"
#include "desk/errorreport.h"
#include "desk/languagechoice.h"
#include "desk/mainwindow.h"
#include "desk/pluginlist.h"
#include "desk/pluginloader.h"
#include "desk/tour/charttour.h"
#include "desk/tour/editortour.h"
#include "desk/tour/exporttour.h"
#include "desk/tour/importtour.h"
#include "desk/tour/optionstour.h"
#include "desk/tour/tour.h"

#include <vexdesk/terminal/core.h>
#include <vexdesk/terminal/database.h>
#include <vexdesk/terminal/deals.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QLocale>
#include <QtCore/QProcess>
#include <QtCore/QTimer>

#include <cstdio>
#include <cstdlib>

namespace {

/// Before the first plug-in runs: it may ask for a venue at once.
void installReferenceData(const QString& file)
{
    using vexdesk::ReferenceData;
    const auto data = file.isEmpty() ? ReferenceData::standard() : ReferenceData::fromFile(file);
    if (data) {
        ReferenceData::install(*data);
        return;
    }
    ReferenceData::install(ReferenceData::demonstration());
    vexdesk::reportError(QCoreApplication::translate(
                             "vexdesk::Main", "%1\n\nБудут использованы демонстрационные данные.")
                             .arg(data.message()));
}

/// The failure of a tour ends the process on the spot: dialogs of the plug-in may be open.
[[noreturn]] void failTour(const QString& reason)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(reason));
    std::fflush(stderr);
    std::_Exit(EXIT_FAILURE);
}

void startTour(vexdesk::Tour& tour, vexdesk::MainWindow& window, const QDir& directory)
{
    if (!directory.mkpath(QStringLiteral(".")) || !vexdesk::addImportTour(tour, window, directory))
        failTour(QCoreApplication::translate("vexdesk::Main", "Невозможно записать в каталог %1")
                     .arg(directory.path()));
    vexdesk::addChartTour(tour, window, [&] { vexdesk::addEditorTour(tour, window); });
    vexdesk::addExportTour(tour, window, directory);
    vexdesk::addOptionsTour(tour, window);
    QObject::connect(&tour, &vexdesk::Tour::failed, &failTour);
    QObject::connect(&tour, &vexdesk::Tour::finished, &window, &QWidget::close);
    tour.start();
}

// Before the rest of the command line is read: what is wrong with it is said in that language.
vexdesk::Language spokenLanguage()
{
    return vexdesk::chooseLanguage({vexdesk::CommandLine::languageIn(QCoreApplication::arguments()),
                                    vexdesk::LanguageChoice::stored()},
                                   QLocale::system().uiLanguages());
}

void startAgain(const QStringList& arguments)
{
    if (!QProcess::startDetached(QCoreApplication::applicationFilePath(),
                                 vexdesk::CommandLine::withoutLanguage(arguments)))
        vexdesk::reportError(QCoreApplication::translate(
            "vexdesk::Main", "Терминал не удалось запустить снова: сделайте это сами."));
}

/// What was reported after the window went, or what nobody has read.
void printProblems(const vexdesk::Core& core)
{
    const QStringList problems = core.problems();
    for (const QString& problem : problems)
        std::fprintf(stderr, "%s\n", qUtf8Printable(problem));
}

/// The process's exit code.
int listPlugins(vexdesk::PluginLoader& loader, const vexdesk::Core& core)
{
    std::fputs(qUtf8Printable(vexdesk::pluginList(loader.records())), stdout);
    const bool areAllLoaded = loader.refusedCount() == 0;
    loader.unload();
    printProblems(core);
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
    application.setLanguage(spokenLanguage());
    const vexdesk::CommandLine commandLine = vexdesk::CommandLine::read();
    installReferenceData(commandLine.referenceFile);

    // A list of plug-ins changes nothing, and a tour has nobody to ask.
    vexdesk::DataDirectory dataDirectory;
    if (!commandLine.listPlugins && commandLine.tourDirectory.isEmpty() &&
        !dataDirectory.mayBeUsed())
        return EXIT_SUCCESS;
    vexdesk::Core core;
    if (const QString fault = dataDirectory.writeFault(); !fault.isEmpty())
        core.reportProblem(fault);
    vexdesk::dealsTable(*core.database());
    vexdesk::PluginLoader loader;
    loader.setLanguage(application.language());
    QObject::connect(&loader, &vexdesk::PluginLoader::callFailed, &application,
                     &vexdesk::reportError);
    vexdesk::MainWindow window(loader);
    loader.load(commandLine.pluginDirectories.isEmpty()
                    ? vexdesk::PluginLoader::standardDirectories()
                    : commandLine.pluginDirectories,
                &core);
    loader.initStage(IPlugin::InitStage::PluginsReady);
    if (commandLine.listPlugins)
        return listPlugins(loader, core);
    window.setDemoDeals(commandLine.demoDeals);
    window.show();
    QTimer::singleShot(0, &loader,
                       [&loader] { loader.initStage(IPlugin::InitStage::WindowShown); });
    const vexdesk::DayWatcher dayWatcher(core.notifier());

    const QDir tourDirectory(commandLine.tourDirectory);
    vexdesk::Tour tour(tourDirectory);
    if (!commandLine.tourDirectory.isEmpty()) {
        // The system's own file dialog is not made of widgets that the tour could use.
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        startTour(tour, window, tourDirectory);
    }

    const int exitCode = QApplication::exec();
    loader.unload();
    printProblems(core);
    dataDirectory.giveBack();
    if (window.isRestartWanted())
        startAgain(arguments);
    return exitCode;
}
