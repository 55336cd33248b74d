// SPDX-License-Identifier: MIT
#include "desk/terminal.h"

#include "desk/commandline.h"
#include "desk/datadirectory.h"
#include "desk/daywatcher.h"
#include "desk/deskapplication.h"
#include "desk/errorreport.h"
#include "desk/languagechoice.h"
#include "desk/mainwindow.h"

#include <vexdesk/terminal/deals.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QLocale>
#include <QtCore/QTimer>

#include <cstdio>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::Terminal)
};

void installReferenceData(const QString& file)
{
    const auto data = file.isEmpty() ? ReferenceData::standard() : ReferenceData::fromFile(file);
    if (data) {
        ReferenceData::install(*data);
        return;
    }
    ReferenceData::install(ReferenceData::demonstration());
    reportError(Text::tr("%1\n\nБудут использованы демонстрационные данные.").arg(data.message()));
}

} // namespace

Terminal::Terminal(const DeskApplication& application, const DataDirectory& directory,
                   const CommandLine& commandLine)
{
    // Before the first plug-in runs: it may ask for a venue at once.
    installReferenceData(commandLine.referenceFile);
    if (const Outcome kept = directory.canKeep(); !kept)
        m_core.reportProblem(kept.message());
    dealsTable(*m_core.database());
    m_loader.setLanguage(application.language());
    QObject::connect(&m_loader, &PluginLoader::callFailed, &application, &reportError);
    m_window = std::make_unique<MainWindow>(m_loader);
    m_loader.load(commandLine.pluginDirectories.isEmpty() ? PluginLoader::standardDirectories()
                                                          : commandLine.pluginDirectories,
                  &m_core);
    m_loader.initStage(IPlugin::InitStage::PluginsReady);
}

Terminal::~Terminal() = default;

int Terminal::run()
{
    m_window->show();
    QTimer::singleShot(0, &m_loader,
                       [this] { m_loader.initStage(IPlugin::InitStage::WindowShown); });
    const DayWatcher dayWatcher(m_core.notifier());
    const int exitCode = QApplication::exec();
    end();
    return exitCode;
}

void Terminal::end()
{
    m_loader.unload();
    const QStringList problems = m_core.problems();
    for (const QString& problem : problems)
        std::fprintf(stderr, "%s\n", qUtf8Printable(problem));
}

Language spokenLanguage()
{
    return chooseLanguage(
        {CommandLine::languageIn(QCoreApplication::arguments()), LanguageChoice::stored()},
        QLocale::system().uiLanguages());
}

} // namespace vexdesk
