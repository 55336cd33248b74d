// SPDX-License-Identifier: MIT
#include "desk/commandline.h"
#include "desk/datadirectory.h"
#include "desk/deskapplication.h"
#include "desk/mainwindow.h"
#include "desk/terminal.h"
#include "tour/charttour.h"
#include "tour/editortour.h"
#include "tour/exporttour.h"
#include "tour/importtour.h"
#include "tour/optionstour.h"
#include "tour/qualitytour.h"
#include "tour/tour.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QTimer>

#include <cstdio>
#include <cstdlib>

using vexdesk::Tour;

namespace {

/// Ends the process on the spot: dialogs of the plug-in may be open.
[[noreturn]] void fail(const QString& reason)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(reason));
    std::fflush(stderr);
    std::_Exit(EXIT_FAILURE);
}

void addSteps(Tour& tour, vexdesk::MainWindow& window, const QDir& directory)
{
    if (!directory.mkpath(QStringLiteral(".")) || !vexdesk::addImportTour(tour, window, directory))
        fail(Tour::tr("Невозможно записать в каталог %1").arg(directory.path()));
    vexdesk::addChartTour(tour, window, [&] { vexdesk::addEditorTour(tour, window); });
    vexdesk::addExportTour(tour, window, directory);
    vexdesk::addOptionsTour(tour, window);
    if (!vexdesk::addQualityTour(tour, window, directory))
        fail(Tour::tr("Невозможно записать в каталог %1").arg(directory.path()));
    QObject::connect(&tour, &Tour::failed, &fail);
    QObject::connect(&tour, &Tour::finished, &window, &QWidget::close);
}

} // namespace

int main(int argc, char** argv)
{
    vexdesk::DeskApplication application(argc, argv);
    vexdesk::setApplicationIdentity();
    application.setLanguage(vexdesk::spokenLanguage());
    // The system's own file dialog is not made of widgets that the tour could use.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        Tour::tr("Показать терминал и его модули в работе: пройти график, импорт, правку, экспорт, "
                 "настройки и качество данных, сохранить картинки шагов и выйти. Бары серии "
                 "NORD/MAIN/ALFA с 15 по 17 января 2024 года заменяются."));
    parser.addPositionalArgument(QStringLiteral("DIR"), Tour::tr("Каталог для картинок."));
    const auto commandLine = vexdesk::CommandLine::read(parser);
    if (parser.positionalArguments().size() != 1)
        vexdesk::CommandLine::refuse(Tour::tr("Укажите один каталог для картинок."));

    // Taken, so that a terminal that is started meanwhile asks; the tour has nobody to ask.
    const vexdesk::DataDirectory dataDirectory;
    vexdesk::Terminal terminal(application, dataDirectory, commandLine);
    terminal.window().setDemoDeals(true); // today's deals are exported
    const QDir directory(parser.positionalArguments().constFirst());
    Tour tour(directory);
    addSteps(tour, terminal.window(), directory);
    // After the plug-ins have been told of the window.
    QTimer::singleShot(0, &tour, &Tour::start);
    return terminal.run();
}
