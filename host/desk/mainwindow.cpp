// SPDX-License-Identifier: MIT
#include "desk/mainwindow.h"

#include "desk/chart/chartpage.h"
#include "desk/chart/charts.h"
#include "desk/chart/charttabs.h"
#include "desk/chart/marksources.h"
#include "desk/chart/seriestree.h"
#include "desk/chartcommands.h"
#include "desk/chartmenu.h"
#include "desk/commands.h"
#include "desk/dealsfeed.h"
#include "desk/errorreport.h"
#include "desk/guidewindow.h"
#include "desk/languagechoice.h"
#include "desk/menubuilder.h"
#include "desk/optionsdialog.h"
#include "desk/pendingclose.h"
#include "desk/pluginloader.h"
#include "desk/pluginsdialog.h"
#include "desk/problemnotice.h"
#include "desk/startpage.h"
#include "desk/statuslink.h"

#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/appsettings.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/terminal/core.h>

#include <QtCore/QPointer>
#include <QtGui/QCloseEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStatusBar>

namespace vexdesk {

namespace {

const QString settingsGroup = QStringLiteral("Desk");
const QString geometryKey = QStringLiteral("geometry");
const QString stateKey = QStringLiteral("state");
const QString seriesWidthKey = QStringLiteral("seriesWidth");
constexpr int stateVersion = 2;
constexpr auto seriesCommand = "Desk.Series";
constexpr auto findSeriesCommand = "Desk.FindSeries";
constexpr auto pluginsCommand = "Desk.Plugins";
constexpr auto newDayCommand = "Desk.NewDay";
constexpr auto demoDealsCommand = "Desk.DemoDeals";
constexpr int messageTime = 5000;                // ms
constexpr int longMessageTime = 2 * messageTime; // there is something to read in it

// The core of this terminal; null before it exists.
Core* terminalCore()
{
    return dynamic_cast<Core*>(ICore::instance());
}

QKeySequence optionsShortcut()
{
    // Not every desktop has one of its own.
    const QKeySequence standard(QKeySequence::Preferences);
    return standard.isEmpty() ? QKeySequence(Qt::CTRL | Qt::Key_Comma) : standard;
}

} // namespace

MainWindow::MainWindow(const PluginLoader& loader, QWidget* parent)
    : QMainWindow(parent)
    , m_loader(loader)
    , m_languageChoice(new LanguageChoice(loader.language(), this))
    , m_pendingClose(new PendingClose(this))
{
    setObjectName(QStringLiteral("mainWindow"));
    setWindowTitle(QStringLiteral("Vexdesk"));
    addCharts();
    addOwnCommands();
    m_menuBuilder = std::make_unique<MenuBuilder>(menuBar());
    // The builder keeps an item for as long as its command is in the menu.
    m_languageChoice->markItems(m_menuBuilder->findChildren<QAction*>());
    m_chartCommands->checkItems(*m_menuBuilder);
    connect(m_languageChoice, &LanguageChoice::restartWanted, this, &MainWindow::closeToRestart);
    connect(m_pendingClose, &PendingClose::windowClosed, this, &QWidget::close);
    explainCommand(newDayCommand, tr("Сообщить модулям о начале нового торгового дня, не дожидаясь "
                                     "смены даты: для проверки модулей"));
    explainCommand(demoDealsCommand,
                   tr("Заполнить сегодняшние сделки всех инструментов придуманными; пока они "
                      "включены, они попадают и в экспорт за сегодня"));
    if (QAction* const item = m_menuBuilder->item(demoDealsCommand))
        item->setCheckable(true);
    addSeries(); // Tab comes to it before what is in the centre
    m_startPage = new StartPage(m_ownCommands);
    connect(m_startPage, &StartPage::seriesChosen, this, &MainWindow::openChart);
    m_pages = new QStackedWidget;
    m_pages->addWidget(m_startPage);
    m_pages->addWidget(m_chartTabs);
    setCentralWidget(m_pages);
    addStatusBar();
    connect(m_startPage, &StartPage::rebuilt, this, &MainWindow::keepLinksLast);
    updatePlugins();
    connect(&loader, &PluginLoader::changed, this, &MainWindow::updatePlugins);
    showChartsOrStart();

    resize(960, 640);
    // A screen without room for both begins with what is in the centre.
    constexpr int leastForBoth = 700;
    m_seriesDock->setVisible(screen()->availableSize().width() >= leastForBoth);
    const AppSettings settings(settingsGroup);
    restoreGeometry(settings.value(geometryKey).toByteArray());
    restoreState(settings.value(stateKey).toByteArray(), stateVersion);
    m_seriesWidth = settings.value(seriesWidthKey, m_seriesTree->sizeHint().width()).toInt();
    if (QAction* const item = m_menuBuilder->item(seriesCommand))
        item->setChecked(!m_seriesDock->isHidden());
}

MainWindow::~MainWindow()
{
    if (Core* const core = terminalCore())
        core->setCharts(nullptr);
}

void MainWindow::addOwnCommands()
{
    ActionManager* const manager = ActionManager::instance();
    CommandContainer* const file = manager->container("File", tr("&Файл"), "MenuBar", "", "10");
    CommandContainer* const view = manager->container("View", tr("&Вид"), "MenuBar", "", "20");
    CommandContainer* const service =
        manager->container("Service", tr("&Сервис"), "MenuBar", "", "80");
    CommandContainer* const help = manager->container("Help", tr("С&правка"), "MenuBar", "", "90");
    CommandContainer* const languages =
        manager->container("Language", tr("&Язык"), "Service", "Z", "95");
    CommandContainer* const developer =
        manager->container("Developer", tr("&Для разработчиков"), "Service", "ZZ", "90");
    addCommand(file, {"Desk.Exit", tr("&Выход"), QKeySequence(Qt::CTRL | Qt::Key_Q)},
               [this] { close(); });
    addCommand(view, {findSeriesCommand, tr("Найти се&рию"), QKeySequence(Qt::CTRL | Qt::Key_G)},
               [this] { findSeries(); });
    addCommand(view, {seriesCommand, tr("&Серии"), QKeySequence()}, [this] { toggleSeries(); });
    m_chartCommands = new ChartCommands(*m_chartTabs, *view, *this);
    m_ownCommands += m_chartCommands->ids();
    addCommand(service, {"Desk.Options", tr("&Настройки..."), optionsShortcut()},
               [this] { showOptions(); });
    addCommand(service, {pluginsCommand, tr("&Модули..."), QKeySequence()},
               [this] { showPlugins(); });
    for (const Language language : {Language::Russian, Language::English}) {
        addCommand(
            languages,
            {LanguageChoice::commandOf(language), LanguageChoice::nameOf(language), QKeySequence()},
            [this, language] { m_languageChoice->choose(language, this); });
    }
    addCommand(developer, {newDayCommand, tr("&Новый торговый день"), QKeySequence()},
               [this] { beginNewDay(); });
    addCommand(developer, {demoDealsCommand, tr("&Придуманные сделки"), QKeySequence()},
               [this] { setDemoDeals(!m_demoDeals); });
    addCommand(help, {"Desk.Guide", tr("&Руководство"), QKeySequence(Qt::Key_F1)},
               [this] { showGuide(); });
    addCommand(help, {"Desk.About", tr("&О программе"), QKeySequence()}, [this] { showAbout(); });
}

void MainWindow::addCommand(CommandContainer* menu, const OwnCommand& own,
                            const std::function<void()>& run)
{
    auto* const command = new Command(own.id, this);
    command->setCategory(tr("Терминал"));
    command->setDefaultText(own.text);
    command->setDefaultShortcut(own.shortcut);
    command->setContext(Command::GlobalContext);
    // A late group and key: what plug-ins add to these menus stands above.
    menu->addCommand(command, "Z", "90");
    connect(new Action(own.id, this), &Action::triggered, this, run);
    m_ownCommands.insert(own.id);
}

void MainWindow::explainCommand(const QByteArray& id, const QString& text)
{
    if (QAction* const item = m_menuBuilder->item(id))
        item->setStatusTip(text);
}

void MainWindow::addCharts()
{
    m_marks = new MarkSources(this);
    m_chartTabs = new ChartTabs(storeRoot().path(), *m_marks);
    m_charts = std::make_unique<Charts>(storeRoot().path(), *m_chartTabs, *m_marks);
    if (Core* const core = terminalCore())
        core->setCharts(m_charts.get());
    // A plug-in that goes may have left its marks behind.
    connect(&m_loader, &PluginLoader::starting, m_marks, &MarkSources::rememberThese);
    connect(&m_loader, &PluginLoader::startFailed, m_marks, &MarkSources::removeOthers);
    connect(&m_loader, &PluginLoader::ending, m_marks, &MarkSources::removeAll);
    connect(&m_loader, &PluginLoader::ending, m_charts.get(), &Charts::forgetShowing);
    connect(m_chartTabs, &ChartTabs::chartsChanged, this, &MainWindow::showChartsOrStart);
    connect(m_chartTabs, &ChartTabs::contextMenuWanted, this, &MainWindow::showChartMenu);
    const auto say = [this](const QString& text) {
        statusBar()->showMessage(text, longMessageTime);
    };
    connect(m_chartTabs, &ChartTabs::told, this, say);
    connect(m_charts.get(), &Charts::missed, this, say);
}

void MainWindow::addSeries()
{
    m_seriesTree = new SeriesTree(storeRoot().path());
    m_seriesDock = new QDockWidget(tr("Серии"), this);
    m_seriesDock->setObjectName(QStringLiteral("seriesDock"));
    m_seriesDock->setWidget(m_seriesTree);
    addDockWidget(Qt::LeftDockWidgetArea, m_seriesDock);
    connect(m_seriesTree, &SeriesTree::opened, this, &MainWindow::openChart);
    connect(m_seriesTree, &SeriesTree::left, this, &MainWindow::leaveSeries);
    connect(m_chartTabs, &QTabWidget::currentChanged, this, [this] {
        if (const ChartPage* const page = m_chartTabs->current())
            m_seriesTree->setCurrent(page->series());
    });
    if (QAction* const item = m_menuBuilder->item(seriesCommand)) {
        item->setCheckable(true);
        // The mark says what is there, also after the dock was closed by its own button.
        const QAction* const toggle = m_seriesDock->toggleViewAction();
        connect(toggle, &QAction::toggled, item, &QAction::setChecked);
        connect(item, &QAction::triggered, item,
                [toggle, item] { item->setChecked(toggle->isChecked()); });
    }
}

// The keys of the chart work at once.
void MainWindow::openChart(const SeriesName& series)
{
    m_chartTabs->open(series).setFocus(Qt::OtherFocusReason);
}

// What is typed at once is looked for, also where the keys were there before: nothing goes away.
void MainWindow::findSeries()
{
    if (!m_seriesDock->isVisible())
        m_seriesDock->toggleViewAction()->trigger();
    m_seriesDock->activateWindow(); // where it stands alone
    m_seriesTree->setFocus(Qt::ShortcutFocusReason);
}

void MainWindow::toggleSeries()
{
    m_seriesDock->toggleViewAction()->trigger();
    if (m_seriesDock->isVisible())
        m_seriesTree->setFocus(Qt::OtherFocusReason);
    else
        leaveSeries();
}

void MainWindow::leaveSeries()
{
    ChartPage* const page = m_chartTabs->current();
    if (!page)
        return;
    activateWindow(); // the tree may stand alone
    page->setFocus(Qt::OtherFocusReason);
}

// What takes place in the window itself is the moving of the line beside the tree.
bool MainWindow::event(QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress)
        m_widthBefore = m_seriesDock->width();
    const bool isTaken = QMainWindow::event(event);
    const bool isLet = event->type() == QEvent::MouseButtonRelease;
    if (isLet && !m_seriesDock->isFloating() && m_seriesDock->width() != m_widthBefore)
        m_seriesWidth = m_seriesDock->width();
    return isTaken;
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    giveSeriesTheirWidth();
}

// A window that was small for a while has squeezed the tree, and would leave it so.
void MainWindow::giveSeriesTheirWidth()
{
    const Qt::DockWidgetArea area = dockWidgetArea(m_seriesDock);
    const bool isBeside = area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea;
    if (isBeside && m_seriesDock->isVisible() && !m_seriesDock->isFloating() &&
        m_seriesDock->width() != m_seriesWidth)
        resizeDocks({m_seriesDock}, {m_seriesWidth}, Qt::Horizontal);
}

void MainWindow::showChartsOrStart()
{
    m_startPage->setRecent(m_chartTabs->recent());
    const bool wereCharts = m_pages->currentWidget() == m_chartTabs;
    const bool areCharts = m_chartTabs->count() > 0;
    m_pages->setCurrentWidget(areCharts ? static_cast<QWidget*>(m_chartTabs) : m_startPage);
    QWidget* const row = m_startPage->firstRow();
    if (wereCharts && !areCharts && row)
        row->setFocus(Qt::OtherFocusReason);
}

// Charts that are there again are what the keys go to; else what is typed is looked for.
void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    giveSeriesTheirWidth();
    if (focusWidget())
        return;
    if (ChartPage* const page = m_chartTabs->current())
        page->setFocus(Qt::OtherFocusReason);
    else if (!m_seriesDock->isHidden())
        m_seriesTree->setFocus(Qt::OtherFocusReason);
}

void MainWindow::showChartMenu(const QPoint& globalPlace)
{
    auto* const menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("chartMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fillChartMenu(*menu, *m_menuBuilder, {findSeriesCommand, seriesCommand}, m_ownCommands);
    menu->popup(globalPlace);
}

void MainWindow::addStatusBar()
{
    m_loadedLabel = new QLabel(this);
    m_loadedLabel->setObjectName(QStringLiteral("loadedPlugins"));
    m_loadedLabel->setContentsMargins(6, 0, 6, 0);
    statusBar()->addWidget(m_loadedLabel);
    m_refusedLink = new StatusLink(this);
    m_refusedLink->setObjectName(QStringLiteral("refusedPlugins"));
    m_refusedLink->setToolTip(tr("Показать, какие модули отклонены и почему"));
    connect(m_refusedLink, &StatusLink::clicked, this, [] { triggerCommand(pluginsCommand); });
    statusBar()->addWidget(m_refusedLink);
    // Permanent: what was not read yet gives way to no passing message.
    if (Core* const core = terminalCore()) {
        m_problemsLink = new ProblemNotice(*core, this);
        statusBar()->addPermanentWidget(m_problemsLink);
    }
    m_demoDealsLabel = new QLabel(tr("Идут придуманные сделки"), this);
    m_demoDealsLabel->setObjectName(QStringLiteral("demoDeals"));
    m_demoDealsLabel->setToolTip(
        tr("Сегодняшние сделки всех инструментов придуманы, и экспорт за сегодня берёт их. "
           "Выключаются они в меню «Сервис», «Для разработчиков»."));
    m_demoDealsLabel->hide();
    statusBar()->addPermanentWidget(m_demoDealsLabel);
}

void MainWindow::keepLinksLast()
{
    // The rows come later than the links and would be reached after them.
    QWidget* last = m_startPage->lastRow();
    for (QWidget* const link : {m_refusedLink, m_problemsLink}) {
        if (last && link)
            setTabOrder(last, link);
        if (link)
            last = link;
    }
}

void MainWindow::updatePlugins()
{
    m_startPage->setPlugins(m_loader.loadedCount(), m_loader.directories());
    m_loadedLabel->setText(tr("Загружено модулей: %1").arg(m_loader.loadedCount()));
    m_refusedLink->setText(tr("Отклонено модулей: %1. Подробнее...").arg(m_loader.refusedCount()));
    m_refusedLink->setVisible(m_loader.refusedCount() > 0);
}

void MainWindow::showPlugins()
{
    PluginsDialog(m_loader.records(), m_loader.directories(), this).exec();
}

void MainWindow::showOptions()
{
    const Core* const core = terminalCore();
    OptionsDialog(core ? core->optionsPages() : QList<IOptionsPage*>(), this).exec();
}

void MainWindow::beginNewDay()
{
    if (const Core* const core = terminalCore())
        Q_EMIT core->notifier()->aNewDay();
    statusBar()->showMessage(tr("Модулям сообщено о новом торговом дне"), messageTime);
}

void MainWindow::setDemoDeals(bool on)
{
    Core* const core = terminalCore();
    if (!on || !core)
        m_demoDeals.reset();
    else if (!m_demoDeals)
        m_demoDeals = std::make_unique<DealsFeed>(*core);
    m_demoDealsLabel->setVisible(m_demoDeals != nullptr);
    if (QAction* const item = m_menuBuilder->item(demoDealsCommand))
        item->setChecked(m_demoDeals != nullptr);
}

void MainWindow::showGuide()
{
    if (!m_guide) {
        const QString file = guideFile(m_loader.language());
        if (file.isEmpty()) {
            reportError(tr("Руководства нет ни в одном из каталогов:\n%1")
                            .arg(guideDirectories().join(u'\n')));
            return;
        }
        m_guide = new GuideWindow(file, this);
    }
    m_guide->show();
    m_guide->raise();
    m_guide->activateWindow();
}

void MainWindow::showAbout()
{
    QMessageBox::about(this, tr("О программе"),
                       tr("<h3>Vexdesk %1</h3>"
                          "<p>Торговый терминал, который расширяется модулями.</p>"
                          "<p>Версия Qt: %2</p>")
                           .arg(QCoreApplication::applicationVersion(), QLatin1String(qVersion())));
}

void MainWindow::closeToRestart()
{
    m_restartWanted = true;
    if (close())
        return;
    m_restartWanted = false;
    m_pendingClose->stop();
}

QWidget* MainWindow::closeOtherWindows()
{
    QList<QPointer<QWidget>> windows;
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        // A dock that stands alone is a part of this window and is there again with it.
        if (window != this && window->isVisible() && window->windowType() != Qt::Desktop &&
            !qobject_cast<QDockWidget*>(window))
            windows.append(window);
    }
    for (const QPointer<QWidget>& window : std::as_const(windows)) {
        if (window && !window->close())
            return window;
    }
    return nullptr;
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    m_pendingClose->begin();
    if (QWidget* const window = closeOtherWindows()) {
        m_pendingClose->waitFor(window);
        event->ignore();
        return;
    }
    m_pendingClose->stop();
    m_chartTabs->store();
    AppSettings settings(settingsGroup);
    settings.setValue(geometryKey, saveGeometry());
    settings.setValue(stateKey, saveState(stateVersion));
    settings.setValue(seriesWidthKey, m_seriesWidth);
    event->accept();
}

} // namespace vexdesk
