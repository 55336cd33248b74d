// SPDX-License-Identifier: MIT
#include "tadataquality.h"

#include "filedrop.h"
#include "healthbook.h"
#include "healthmarks.h"
#include "healthwindow.h"
#include "pointswindow.h"
#include "pointwords.h"
#include "restorepointspage.h"
#include "safeimportwindow.h"
#include "storepoints.h"

#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/icharts.h>
#include <vexdesk/icore.h>

#include <QtGui/QIcon>
#include <QtGui/QKeySequence>

namespace {

void bringToFront(QWidget* window)
{
    const bool wasHidden = !window->isVisible();
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    if (!wasHidden)
        window->raise();
    window->activateWindow();
}

// Shows the one that is open, or a new one.
template <typename Window, typename Make>
void showOnly(QPointer<Window>& window, Make make)
{
    if (!window) {
        window = make();
        window->setAttribute(Qt::WA_DeleteOnClose);
        // The terminal ends with its own window.
        window->setAttribute(Qt::WA_QuitOnClose, false);
    }
    bringToFront(window);
}

HealthWindow::Shown answerOf(vexdesk::ChartShown shown)
{
    switch (shown) {
    case vexdesk::ChartShown::NoDay:
        return HealthWindow::Shown::NoDay;
    case vexdesk::ChartShown::NoSeries:
        return HealthWindow::Shown::NothingThere;
    case vexdesk::ChartShown::Moment:
        break;
    }
    return HealthWindow::Shown::Yes;
}

} // namespace

TADataQuality::TADataQuality() = default;

TADataQuality::~TADataQuality()
{
    closeAll();
}

QByteArrayView TADataQuality::code() const
{
    return "tadataquality";
}

QString TADataQuality::name() const
{
    return tr("Качество данных ТА");
}

QString TADataQuality::author() const
{
    return tr("Орвента");
}

QString TADataQuality::version() const
{
    return QStringLiteral(TADATAQUALITY_VERSION);
}

QString TADataQuality::description() const
{
    return tr("Безопасный импорт, здоровье и точки восстановления исторических данных");
}

void TADataQuality::init(ICore* core)
{
    m_core = core;
    m_book = std::make_unique<tadata::HealthBook>(vexdesk::storePlace());
    createMenu();
    core->addOptionsPage(new RestorePointsPage(this));
    m_drop = std::make_unique<FileDrop>(this);
    connect(m_drop.get(), &FileDrop::dropped, this, [this](const QStringList& files) {
        showSafeImport();
        m_safeImport->take({.files = files});
    });
    if (vexdesk::ICharts* const charts = core->charts())
        m_marks = std::make_unique<HealthMarks>(m_book.get(), charts);
}

void TADataQuality::tini()
{
    closeAll();
}

void TADataQuality::initStage(IPlugin::InitStage stage)
{
    if (stage == IPlugin::InitStage::WindowShown && m_core)
        tellInterruptions();
}

void TADataQuality::tellInterruptions()
{
    m_interruptions.start(
        [root = vexdesk::storePlace()](const std::atomic<bool>&) {
            QStringList told;
            if (const auto points = tadata::storePoints(root)) {
                for (const vexdesk::RestorePointRecord& point : points->interrupted)
                    told.prepend(tadata::interruptionInWords(point));
            }
            return told;
        },
        [this](const QStringList& told) {
            for (const QString& text : told)
                m_core->reportProblem(text);
        });
}

void TADataQuality::closeAll()
{
    m_interruptions.stop();
    m_drop.reset();
    delete m_safeImport.data();
    delete m_health.data();
    delete m_points.data();
    m_marks.reset();
    m_book.reset();
}

void TADataQuality::createMenu()
{
    CommandContainer* const menu = ActionManager::instance()->container(
        "TA", tr("Тех. &анализ"), "MenuBar", QByteArray(), "25");
    auto* const commands = new CommandContainer("TADataQuality", this);
    commands->setTitle(tr("&Качество данных ТА"));
    menu->addContainer(commands, "B", "Quality");

    createMenuCommand(commands, "TADataQuality.SafeImport", QStringLiteral("safeimport"),
                      tr("&Безопасный импорт..."), &TADataQuality::showSafeImport,
                      QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I));
    createMenuCommand(commands, "TADataQuality.Health", QStringLiteral("health"),
                      tr("&Здоровье данных..."), &TADataQuality::showHealth,
                      QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_H));
    createMenuCommand(commands, "TADataQuality.Points", QStringLiteral("points"),
                      tr("&Точки восстановления..."), &TADataQuality::showPoints,
                      QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
}

void TADataQuality::createMenuCommand(CommandContainer* container, const QByteArray& id,
                                      const QString& icon, const QString& text,
                                      void (TADataQuality::*member)(), const QKeySequence& shortcut)
{
    auto* const command = new Command(id, this);
    command->setCategory(tr("Технический анализ"));
    command->setDefaultIcon(QIcon(QStringLiteral(":/quality/icons/%1.png").arg(icon)));
    command->setDefaultText(text);
    command->setContext(Command::GlobalContext);
    command->setDefaultShortcut(shortcut);

    // The terminal ties the action to the command of the same id.
    auto* const action = new Action(id, this);
    connect(action, &Action::triggered, this, member);

    container->addCommand(command, QByteArray(), QByteArray());
}

HealthWindow* TADataQuality::makeHealthWindow()
{
    const auto showInChart = [this](const tadata::SeriesMoment& moment,
                                    const HealthWindow::Told& told) {
        if (vexdesk::ICharts* const charts = m_core->charts())
            charts->show(moment.series, moment.day, moment.time,
                         [told](vexdesk::ChartShown shown) { told(answerOf(shown)); });
        else
            told(HealthWindow::Shown::NoCharts);
    };
    auto* const window = new HealthWindow(m_book.get(), showInChart);
    connect(window, &HealthWindow::fillRequested, this, &TADataQuality::fill);
    return window;
}

PointsWindow* TADataQuality::makePointsWindow()
{
    auto* const window = new PointsWindow;
    connect(window, &PointsWindow::storeChanged, m_book.get(), &tadata::HealthBook::look);
    return window;
}

void TADataQuality::fill(const QString& series, int timeframe)
{
    showSafeImport();
    m_safeImport->take({.series = series, .timeframe = timeframe, .isFill = true});
}

void TADataQuality::showSafeImport()
{
    showOnly(m_safeImport, [] { return new SafeImportWindow; });
}

void TADataQuality::showHealth()
{
    showOnly(m_health, [this] { return makeHealthWindow(); });
}

void TADataQuality::showPoints()
{
    showOnly(m_points, [this] { return makePointsWindow(); });
}
