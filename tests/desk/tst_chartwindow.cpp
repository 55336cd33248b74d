// SPDX-License-Identifier: MIT
// The charts as the terminal's main view: tree, tabs, start page, menus and keys, what is
// remembered, and what a plug-in does with them. Runs in a real X server too.

#include "desk/chart/axisticks.h"
#include "desk/chart/chartmemory.h"
#include "desk/chart/chartpage.h"
#include "desk/chart/charttabs.h"
#include "desk/chart/chartview.h"
#include "desk/chart/gotodialog.h"
#include "desk/commands.h"
#include "desk/deskapplication.h"
#include "desk/mainwindow.h"
#include "desk/pluginloader.h"
#include "desk/rowbutton.h"
#include "desk/startpage.h"
#include "messageboxes.h"
#include "pluginfiles.h"
#include "plugins/callrecord.h"
#include "support/child.h"
#include "support/dayfiles.h"
#include "support/eventually.h"
#include "support/filesizelimit.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <vexdesk/icore.h>
#include <vexdesk/terminal/core.h>

#include <QtCore/QTemporaryDir>
#include <QtGui/QAction>
#include <QtGui/QClipboard>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialog>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTimeEdit>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeView>

#include <memory>

using testsupport::child;
using vexdesk::ChartPage;
using vexdesk::ChartTabs;
using vexdesk::MainWindow;
using vexdesk::PluginLoader;
using vexdesk::Timeframe;

namespace {

const QDate day(2024, 1, 15);
constexpr int dayCount = 5;
constexpr int barCount = 200;

QDir store()
{
    return {ICore::getDir(QStringLiteral("tadata"), false)};
}

void writeSeries(const char* series, int timeframe = 60)
{
    for (int i = 0; i < dayCount; ++i)
        testsupport::writeFile(store().filePath(QLatin1String(series) + u'/' +
                                                testsupport::dayFile(day.addDays(i), timeframe)),
                               testsupport::barLines(QTime(10, 0), barCount, 100));
}

QStringList textsOf(const QMenu* menu)
{
    QStringList texts;
    for (const QAction* const item : menu->actions())
        texts.append(item->isSeparator()
                         ? QStringLiteral("-")
                         : vexdesk::withoutMnemonic(item->text().section(u'\t', 0, 0)));
    return texts;
}

QAction* itemOf(const QMenu* menu, const QString& text)
{
    for (QAction* const item : menu->actions()) {
        if (vexdesk::withoutMnemonic(item->text().section(u'\t', 0, 0)) == text)
            return item;
    }
    qFatal("no item %s", qPrintable(text));
}

} // namespace

class TestChartWindow final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void beginsWithTheTreeAndTheStartPage();
    void aSeriesOpensByKeysAlone();
    void aSeriesOpensByMouseAndOnlyOnce();
    void tabsAreClosedByKeyAndMouse();
    void theLastTabBringsTheStartPageBack();
    void theStartPageOffersRecentSeries();
    void aTabThatWasGoneToIsRecent();
    void deletedSeriesAreNotOffered();
    void tabsOfTheSameNameAreToldApart();
    void keysGoFromTabToTab();
    void aClickOnATabLeavesTheKeysToTheChart();
    void everythingIsThereAtTheNextStart();
    void aClosedChartComesBackAsItWas();
    void theKeyLooksForASeries();
    void theFilterLeavesShortcutsToTheMenus();
    void theTreeIsToggledByItsItem();
    void theTreeIsAsItWasAtTheNextStart();
    void theMarkOfTheTreeIsTrueAtTheNextStart_data();
    void theMarkOfTheTreeIsTrueAtTheNextStart();
    void tabGoesFromTheTreeToTheChart();
    void aChartHasRoomOnASmallScreen();
    void menusOnASmallScreenScroll();
    void theMenuIsForTheChartInFront();
    void timeframeStudiesAndNightsByMenu();
    void goesToADateByKeysAlone();
    void aDayThatIsNotStoredIsTheNearestOne();
    void aDayBetweenThoseThatAreStoredIsTheNextOne();
    void arrowsGoThroughTheStoredDays();
    void aDayOfALeapYearCanBeTyped_data();
    void aDayOfALeapYearCanBeTyped();
    void whatIsNoDateIsSaid();
    void aDayIsChosenInTheCalendar();
    void goesToAMoment();
    void goingToADateCanBeGivenUp();
    void theContextMenuHasWhatTheMenusHave();
    void theContextMenuComesByKey();
    void whatThePluginsHaveWorksFromTheContextMenu();
    void shortcutsOfPluginsWorkInTheChart();
    void menuItemsDoWhatTheKeysDo();
    void copiesBarsAndPicture();
    void namesTheCandlesThatAreCopied();
    void savesThePicture_data();
    void savesThePicture();
    void saysWhyAPictureIsNotSaved_data();
    void saysWhyAPictureIsNotSaved();
    void onlyTheDirectoryOfASavedPictureIsRemembered();
    void errorsAreToldInFrontOfTheWindow();
    void theTreeGetsItsWidthBack();
    void digitsChooseTimeframes();
    void keysAreNamedAsTheyAreCalled();
    void theTabsHaveAMenu();
    void allOtherChartsAreClosed();
    void howAChartStandsIsKeptWithoutAnEnd();
    void aPluginShowsAMoment();
    void aPluginMarksBars();
    void aPluginCannotShowWhatIsNotStored();
    void aDayThatAPluginShowsMayBeMissing();
    void aPluginThatGoesIsToldNothing();
    void theTerminalComesToTheFrontWithTheChart_data();
    void theTerminalComesToTheFrontWithTheChart();
    void aPluginThatFailsToStartIsNotAskedForMarks();
    void aPluginThatGoesTakesItsMarksAlong();

private:
    void start();
    void load(const QStringList& plugins);
    void open(const char* security);
    ChartTabs* tabs() const { return child<ChartTabs>(m_window.get(), "chartTabs"); }
    ChartPage* page() const { return tabs()->current(); }
    vexdesk::ChartView* view() const { return &page()->view(); }
    bool areBarsThere() const { return page() && !view()->chart().candles.empty(); }
    QStringList titles() const;
    QTreeView* tree() const { return child<QTreeView>(m_window.get(), "seriesView"); }
    QLineEdit* filter() const { return child<QLineEdit>(m_window.get(), "seriesFilter"); }
    QDockWidget* dock() const { return child<QDockWidget>(m_window.get(), "seriesDock"); }
    bool isStartPageShown() const { return child<vexdesk::StartPage>(m_window.get())->isVisible(); }
    QList<vexdesk::RowButton*> rows() const;
    QMenu* viewMenu() const;
    QMenu* openContextMenu();
    QString said() const { return m_window->statusBar()->currentMessage(); }
    void savePictureAs(const QString& path);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    QString readout() const
    {
        return page() ? child<QLabel>(page(), "chartReadout")->text() : QString();
    }

    std::unique_ptr<vexdesk::Core> m_core;
    std::unique_ptr<PluginLoader> m_loader;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<QTemporaryDir> m_directory;
};

void TestChartWindow::init()
{
    testsupport::failOnStrayWarnings();
    QFile::remove(ICore::getDir(QString(), false).filePath(QStringLiteral("vexdesk.ini")));
    store().removeRecursively();
    desktest::takeCalls();
    for (const char* series : {"NORD/MAIN/ALFA", "NORD/MAIN/VEGA", "WEST/SPOT/BETA"})
        writeSeries(series);
    m_directory = std::make_unique<QTemporaryDir>();
    m_core = std::make_unique<vexdesk::Core>();
    m_loader = std::make_unique<PluginLoader>();
    start();
}

void TestChartWindow::cleanup()
{
    m_loader->unload();
    m_window.reset();
    m_loader.reset();
    m_core.reset();
    store().removeRecursively();
}

void TestChartWindow::start()
{
    if (m_window)
        m_window->close();
    m_window.reset();
    m_window = std::make_unique<MainWindow>(*m_loader);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestChartWindow::load(const QStringList& plugins)
{
    desktest::copyPlugins(plugins, QDir(m_directory->path()));
    m_loader->load({m_directory->path()}, m_core.get());
    QCoreApplication::processEvents();
}

// As a user without a mouse.
void TestChartWindow::open(const char* security)
{
    if (!filter()->hasFocus()) {
        key(Qt::Key_G, Qt::ControlModifier);
    }
    QTRY_VERIFY(tree()->model()->rowCount() > 0);
    filter()->selectAll();
    hands::keyClicks(filter(), QLatin1String(security));
    key(Qt::Key_Return);
    QVERIFY(page());
    QCOMPARE(page()->series().securityName, QLatin1String(security));
    QTRY_VERIFY(areBarsThere());
}

void TestChartWindow::key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QWidget* const focus = QApplication::focusWidget();
    hands::keyClick(focus ? focus : m_window.get(), key, modifiers);
}

QStringList TestChartWindow::titles() const
{
    QStringList texts;
    for (int i = 0; i < tabs()->count(); ++i)
        texts.append(tabs()->tabText(i));
    return texts;
}

QList<vexdesk::RowButton*> TestChartWindow::rows() const
{
    QList<vexdesk::RowButton*> shown;
    for (auto* const row : m_window->findChildren<vexdesk::RowButton*>()) {
        if (row->isVisible())
            shown.append(row);
    }
    return shown;
}

QMenu* TestChartWindow::viewMenu() const
{
    for (const QAction* const title : m_window->menuBar()->actions()) {
        if (title->text() == QStringLiteral("&Вид"))
            return title->menu();
    }
    return nullptr;
}

QMenu* TestChartWindow::openContextMenu()
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, view()->rect().center(),
                            view()->mapToGlobal(view()->rect().center()));
    QApplication::sendEvent(view(), &event);
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

void TestChartWindow::beginsWithTheTreeAndTheStartPage()
{
    QVERIFY(isStartPageShown());
    QVERIFY(!tabs()->isVisible());
    QVERIFY(dock()->isVisible());
    QVERIFY(dock()->mapTo(m_window.get(), QPoint()).x() < 10);
    QCOMPARE(QApplication::focusWidget(), filter());
    QCOMPARE(m_window->size(), QSize(960, 640));
}

void TestChartWindow::aSeriesOpensByKeysAlone()
{
    open("VEGA");
    QVERIFY(!isStartPageShown());
    QVERIFY(tabs()->isVisible());
    QCOMPARE(titles(), QStringList{"VEGA"});
    // The keys of the chart work at once.
    QCOMPARE(QApplication::focusWidget(), view());
    key(Qt::Key_Left);
    QVERIFY(readout().startsWith(QStringLiteral("19.01.2024 ")));
}

void TestChartWindow::aSeriesOpensByMouseAndOnlyOnce()
{
    QTRY_COMPARE(tree()->model()->rowCount(), 2);
    for (const char* security : {"ALFA", "VEGA", "ALFA"}) {
        QModelIndex row = tree()->model()->index(0, 0);
        while (row.isValid() && row.data().toString() != QLatin1String(security))
            row = tree()->indexBelow(row);
        const QPoint place = tree()->visualRect(row).center();
        hands::mouseClick(tree()->viewport(), Qt::LeftButton, {}, place);
        hands::mouseDClick(tree()->viewport(), Qt::LeftButton, {}, place);
        QTRY_VERIFY(areBarsThere());
    }
    QCOMPARE(titles(), QStringList({"ALFA", "VEGA"}));
    QCOMPARE(page()->series().securityName, QStringLiteral("ALFA"));
}

void TestChartWindow::tabsAreClosedByKeyAndMouse()
{
    for (const char* security : {"ALFA", "VEGA", "BETA"})
        open(security);
    key(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(titles(), QStringList({"ALFA", "VEGA"}));
    QVERIFY(page()->isAncestorOf(QApplication::focusWidget()));
    hands::mouseClick(tabs()->tabBar(), Qt::MiddleButton, {},
                      tabs()->tabBar()->tabRect(0).center());
    QCOMPARE(titles(), QStringList{"VEGA"});
    QWidget* const button = tabs()->tabBar()->tabButton(0, QTabBar::RightSide);
    QVERIFY(button);
    hands::mouseClick(button, Qt::LeftButton);
    QCOMPARE(titles(), QStringList());
}

void TestChartWindow::theLastTabBringsTheStartPageBack()
{
    open("ALFA");
    key(Qt::Key_W, Qt::ControlModifier);
    QVERIFY(isStartPageShown());
    QVERIFY(!tabs()->isVisible());
    // The keys go on where the chart was: at the first row.
    QCOMPARE(rows().size(), 1);
    QCOMPARE(QApplication::focusWidget(), rows().constFirst());
    key(Qt::Key_Space);
    QCOMPARE(titles(), QStringList{"ALFA"});
    QCOMPARE(QApplication::focusWidget(), view());
}

void TestChartWindow::theStartPageOffersRecentSeries()
{
    QCOMPARE(rows().size(), 0);
    for (const char* security : {"ALFA", "VEGA", "ALFA"})
        open(security);
    while (page())
        key(Qt::Key_W, Qt::ControlModifier);
    QStringList texts;
    for (const vexdesk::RowButton* const row : rows())
        texts.append(row->text() + u' ' + row->remark());
    QCOMPARE(texts, QStringList({"ALFA MAIN — NORD", "VEGA MAIN — NORD"}));
    testsupport::click(rows().at(1));
    QCOMPARE(titles(), QStringList{"VEGA"});
    // The commands of plug-ins stand before them.
    key(Qt::Key_W, Qt::ControlModifier);
    load({QStringLiteral("good")});
    texts.clear();
    for (const vexdesk::RowButton* const row : rows())
        texts.append(row->text());
    std::sort(texts.begin(), texts.end());
    QCOMPARE(texts, QStringList({"ALFA", "VEGA", "Импорт...", "Правка...", "Экспорт..."}));
}

void TestChartWindow::aTabThatWasGoneToIsRecent()
{
    for (const char* security : {"ALFA", "VEGA", "BETA"})
        open(security);
    start(); // the tabs are there again, and one of them is gone to
    hands::mouseClick(tabs()->tabBar(), Qt::LeftButton, {}, tabs()->tabBar()->tabRect(0).center());
    QCOMPARE(page()->series().securityName, QStringLiteral("ALFA"));
    while (page()) // what comes to the front by itself was not gone to
        key(Qt::Key_W, Qt::ControlModifier);
    QStringList texts;
    for (const vexdesk::RowButton* const row : rows())
        texts.append(row->text());
    QCOMPARE(texts, QStringList({"ALFA", "BETA", "VEGA"}));
}

void TestChartWindow::deletedSeriesAreNotOffered()
{
    for (const char* security : {"ALFA", "VEGA", "BETA"})
        open(security);
    QVERIFY(QDir(store().filePath(QStringLiteral("WEST"))).removeRecursively());
    while (page())
        key(Qt::Key_W, Qt::ControlModifier);
    const auto texts = [this] {
        QStringList found;
        for (const vexdesk::RowButton* const row : rows())
            found.append(row->text());
        return found;
    };
    QTRY_COMPARE(texts(), QStringList({"VEGA", "ALFA"}));
    // Also while they are offered, and when they come back.
    QVERIFY(QDir(store().filePath(QStringLiteral("NORD/MAIN/VEGA"))).removeRecursively());
    QTRY_COMPARE(texts(), QStringList{"ALFA"});
    writeSeries("WEST/SPOT/BETA");
    QTRY_COMPARE(texts(), QStringList({"BETA", "ALFA"}));
}

void TestChartWindow::tabsOfTheSameNameAreToldApart()
{
    writeSeries("WEST/SPOT/ALFA");
    QTRY_VERIFY(tree()->model()->rowCount() == 2);
    open("ALFA");
    QCOMPARE(titles(), QStringList{"ALFA"});
    vexdesk::ICharts* const charts = m_core->charts();
    charts->show({QStringLiteral("WEST"), QStringLiteral("SPOT"), QStringLiteral("ALFA")}, day,
                 QTime(), {});
    EVENTUALLY_EQUAL(titles(), QStringList({"ALFA — MAIN — NORD", "ALFA — SPOT — WEST"}));
    key(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(titles(), QStringList{"ALFA"});
}

void TestChartWindow::keysGoFromTabToTab()
{
    for (const char* security : {"ALFA", "VEGA", "BETA"})
        open(security);
    const auto security = [this] { return page()->series().securityName; };
    key(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(security(), QStringLiteral("ALFA"));
    QCOMPARE(QApplication::focusWidget(), view());
    key(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(security(), QStringLiteral("VEGA"));
    key(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    key(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(security(), QStringLiteral("BETA"));
    // The tree goes along.
    QTRY_COMPARE(tree()->currentIndex().data().toString(), QStringLiteral("BETA"));
}

void TestChartWindow::aClickOnATabLeavesTheKeysToTheChart()
{
    for (const char* security : {"ALFA", "VEGA"})
        open(security);
    start(); // charts that had no keys yet
    for (const int tab : {0, 1, 1, 0}) {
        filter()->setFocus();
        hands::mouseClick(tabs()->tabBar(), Qt::LeftButton, {},
                          tabs()->tabBar()->tabRect(tab).center());
        QCOMPARE(tabs()->currentIndex(), tab);
        QCOMPARE(QApplication::focusWidget(), view());
        QTRY_VERIFY(areBarsThere());
        key(Qt::Key_Left);
        QVERIFY(!readout().isEmpty());
        key(Qt::Key_Escape);
    }
}

void TestChartWindow::everythingIsThereAtTheNextStart()
{
    for (const char* security : {"ALFA", "VEGA", "BETA"})
        open(security);
    key(Qt::Key_Tab, Qt::ControlModifier);
    key(Qt::Key_Tab, Qt::ControlModifier); // VEGA
    page()->chooseTimeframe(Timeframe::Minutes5);
    key(Qt::Key_PageUp);
    QTRY_VERIFY(areBarsThere());
    const qint64 end = page()->state().end;
    QVERIFY(end > 0);
    start();
    QCOMPARE(titles(), QStringList({"ALFA", "VEGA", "BETA"}));
    QVERIFY(!isStartPageShown());
    QCOMPARE(page()->series().securityName, QStringLiteral("VEGA"));
    QTRY_VERIFY(areBarsThere());
    QCOMPARE(page()->state().end, end);
    QCOMPARE(view()->timeframe(), Timeframe::Minutes5);
    QCOMPARE(QApplication::focusWidget(), view());
}

void TestChartWindow::aClosedChartComesBackAsItWas()
{
    open("ALFA");
    page()->chooseTimeframe(Timeframe::Minutes10);
    page()->show(vexdesk::Study::VolumeByPrice, true);
    key(Qt::Key_W, Qt::ControlModifier);
    start();
    open("ALFA");
    QCOMPARE(view()->timeframe(), Timeframe::Minutes10);
    QVERIFY(page()->isShown(vexdesk::Study::VolumeByPrice));
}

// Ctrl+Shift+Z does the last change of a line again, where the line takes it.
void TestChartWindow::theFilterLeavesShortcutsToTheMenus()
{
    QAction command;
    command.setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
    m_window->addAction(&command);
    const QSignalSpy chosen(&command, &QAction::triggered);
    QCOMPARE(QApplication::focusWidget(), filter());
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(chosen.count(), 1);
}

void TestChartWindow::theKeyLooksForASeries()
{
    load({QStringLiteral("good")});
    desktest::takeCalls();
    QCOMPARE(QApplication::focusWidget(), filter());
    for (int i = 0; i < 2; ++i) {
        key(Qt::Key_G, Qt::ControlModifier);
        QVERIFY2(dock()->isVisible() && filter()->hasFocus(), "it is searched, and stays");
    }
    hands::keyClicks(QApplication::focusWidget(), QStringLiteral("veg"));
    key(Qt::Key_Return);
    QTRY_COMPARE(titles(), QStringList{"VEGA"});
    QCOMPARE(QApplication::focusWidget(), view());
    // What was looked for last is not in the way.
    key(Qt::Key_G, Qt::ControlModifier);
    hands::keyClicks(QApplication::focusWidget(), QStringLiteral("alf"));
    key(Qt::Key_Return);
    QCOMPARE(titles(), QStringList({"VEGA", "ALFA"}));
    dock()->close();
    key(Qt::Key_G, Qt::ControlModifier);
    QVERIFY(dock()->isVisible() && filter()->hasFocus());
    key(Qt::Key_Escape);
    QCOMPARE(filter()->text(), QString());
    key(Qt::Key_Escape);
    QCOMPARE(QApplication::focusWidget(), view());
    QCOMPARE(desktest::takeCalls(), QStringList());
}

void TestChartWindow::theTreeIsToggledByItsItem()
{
    QAction* const item = itemOf(viewMenu(), QStringLiteral("Серии"));
    QVERIFY(item->isChecked());
    item->trigger();
    QVERIFY(!dock()->isVisible() && !item->isChecked());
    item->trigger();
    QVERIFY(dock()->isVisible() && item->isChecked());
    QCOMPARE(QApplication::focusWidget(), filter());
    open("ALFA");
    item->trigger();
    QVERIFY(!dock()->isVisible());
    QCOMPARE(QApplication::focusWidget(), view());
    key(Qt::Key_G, Qt::ControlModifier);
    QVERIFY(item->isChecked());
    dock()->close();
    QVERIFY(!item->isChecked());
    item->trigger();
    QVERIFY(dock()->isVisible() && item->isChecked());
}

void TestChartWindow::theTreeIsAsItWasAtTheNextStart()
{
    dock()->close();
    start();
    QVERIFY(!dock()->isVisible());
    QVERIFY(!itemOf(viewMenu(), QStringLiteral("Серии"))->isChecked());
    key(Qt::Key_G, Qt::ControlModifier);
    dock()->setFloating(true);
    start();
    QVERIFY(dock()->isVisible() && dock()->isFloating());
}

void TestChartWindow::theMarkOfTheTreeIsTrueAtTheNextStart_data()
{
    QTest::addColumn<bool>("isFloating");
    QTest::addColumn<bool>("hasChart");
    QTest::addColumn<bool>("isPluginThere");
    QTest::addColumn<bool>("isByKey");
    for (int i = 0; i < 16; ++i)
        QTest::addRow("%d", i) << bool(i & 1) << bool(i & 2) << bool(i & 4) << bool(i & 8);
}

void TestChartWindow::theMarkOfTheTreeIsTrueAtTheNextStart()
{
    QFETCH(const bool, isFloating);
    QFETCH(const bool, hasChart);
    QFETCH(const bool, isPluginThere);
    QFETCH(const bool, isByKey);
    if (isPluginThere)
        load({QStringLiteral("good")});
    if (hasChart)
        open("ALFA");
    dock()->setFloating(isFloating);
    const auto isMarkTrue = [this] {
        return itemOf(viewMenu(), QStringLiteral("Серии"))->isChecked() == dock()->isVisible();
    };
    QVERIFY(isMarkTrue());
    if (isByKey)
        itemOf(viewMenu(), QStringLiteral("Серии"))->trigger();
    else
        dock()->close();
    QVERIFY(isMarkTrue());
    for (int i = 0; i < 3; ++i) {
        start();
        QCoreApplication::processEvents();
        QVERIFY(isMarkTrue());
        if (i == 1)
            dock()->toggleViewAction()->trigger();
        QVERIFY(isMarkTrue());
    }
}

void TestChartWindow::tabGoesFromTheTreeToTheChart()
{
    open("ALFA");
    filter()->setFocus(Qt::TabFocusReason);
    QStringList names;
    for (const QWidget* const widget : testsupport::tabOrder(m_window.get())) {
        const QString name = widget->objectName();
        if (name.startsWith(QLatin1String("series")) || name.startsWith(QLatin1String("chart")))
            names.append(name);
    }
    QCOMPARE(names, QStringList({"seriesFilter", "seriesView", "chartTimeframe", "chartNights",
                                 "chartStudies", "chartShowAll", "chartView"}));
}

// Of 800 x 600 pixels, half of them to each side at a scale of 2.
void TestChartWindow::aChartHasRoomOnASmallScreen()
{
    open("ALFA");
    page()->show(vexdesk::Study::MovingAverage, true);
    const QSize withTree = m_window->minimumSizeHint();
    QVERIFY2(withTree.height() <= 270, qPrintable(QString::number(withTree.height())));
    dock()->hide();
    QCoreApplication::processEvents();
    const QSize alone = m_window->minimumSizeHint();
    QVERIFY2(alone.width() <= 390, qPrintable(QString::number(alone.width())));
    m_window->resize(alone);
    QTRY_COMPARE(m_window->width(), alone.width()); // a window manager answers later
    key(Qt::Key_Left);
    QTRY_VERIFY(!readout().isEmpty());
    // The values under the crosshair take more lines here than they did.
    QVERIFY2(m_window->height() <= 290, qPrintable(QString::number(m_window->height())));
    QTRY_VERIFY(view()->chart().prices.place.height() > 30);
    QTRY_VERIFY(!view()->chart().prices.lines.empty());
}

// In columns, half of them would be beside the screen.
void TestChartWindow::menusOnASmallScreenScroll()
{
    open("ALFA");
    const QMenu* const context = openContextMenu();
    QVERIFY(context);
    for (const QMenu* const menu : {context, static_cast<const QMenu*>(viewMenu())})
        QCOMPARE(menu->style()->styleHint(QStyle::SH_Menu_Scrollable, nullptr, menu), 1);
    hands::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
}

void TestChartWindow::theMenuIsForTheChartInFront()
{
    QStringList disabled;
    for (const QAction* const item : viewMenu()->actions()) {
        if (!item->isEnabled())
            disabled.append(item->text());
    }
    QVERIFY(disabled.contains(QStringLiteral("&Перейти к дате...")));
    QVERIFY(disabled.contains(QStringLiteral("&Закрыть график")));
    open("ALFA");
    for (const char* text : {"Перейти к дате...", "Показать всё", "Закрыть график"})
        QVERIFY2(itemOf(viewMenu(), QString::fromUtf8(text))->isEnabled(), text);
    // Nothing to go back to, nothing marked, no other tab.
    for (const char* text : {"Назад", "Вперёд", "Приблизить отмеченное", "Следующий график"})
        QVERIFY2(!itemOf(viewMenu(), QString::fromUtf8(text))->isEnabled(), text);
    open("VEGA");
    QVERIFY(itemOf(viewMenu(), QStringLiteral("Следующий график"))->isEnabled());
}

void TestChartWindow::timeframeStudiesAndNightsByMenu()
{
    open("ALFA");
    const QMenu* const timeframes = itemOf(viewMenu(), QStringLiteral("Таймфрейм"))->menu();
    QVERIFY(!itemOf(timeframes, QStringLiteral("1 с"))->isEnabled()); // no seconds are stored
    QVERIFY(itemOf(timeframes, QStringLiteral("1 мин"))->isChecked());
    itemOf(timeframes, QStringLiteral("1 ч"))->trigger();
    QCOMPARE(view()->timeframe(), Timeframe::Hour);
    itemOf(timeframes, QStringLiteral("1 ч"))->trigger(); // once more changes nothing
    QVERIFY(itemOf(timeframes, QStringLiteral("1 ч"))->isChecked());
    QVERIFY(!itemOf(timeframes, QStringLiteral("1 мин"))->isChecked());
    QCOMPARE(child<QComboBox>(page(), "chartTimeframe")->currentText(), QStringLiteral("1 ч"));

    QAction* const study =
        itemOf(viewMenu(), QStringLiteral("Индикаторы"))->menu()->actions().at(0);
    study->trigger();
    QVERIFY(study->isChecked() && page()->isShown(vexdesk::Study::MovingAverage));
    QAction* const nights = itemOf(viewMenu(), QStringLiteral("Ночи и выходные"));
    nights->trigger();
    QVERIFY(nights->isChecked() && view()->areNightsShown());
    // Another chart has other marks.
    open("VEGA");
    QVERIFY(!nights->isChecked() && !study->isChecked());
    QVERIFY(itemOf(timeframes, QStringLiteral("1 мин"))->isChecked());
}

void TestChartWindow::goesToADateByKeysAlone()
{
    open("ALFA");
    testsupport::ModalSteps steps;
    steps.on<vexdesk::GoToDialog>([](vexdesk::GoToDialog* dialog) {
        const auto* const edit = child<QLineEdit>(dialog, "goToDay");
        QVERIFY(child<QLabel>(dialog, "goToReach")->text().contains(QStringLiteral("15.01.2024")));
        QCOMPARE(dialog->focusWidget(), edit);
        hands::keyClicks(dialog->focusWidget(), QStringLiteral("16"));
        hands::keyClick(dialog->focusWidget(), Qt::Key_Return);
    });
    key(Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(steps.complaint(), QString());
    QTRY_VERIFY2(readout().startsWith(QStringLiteral("16.01.2024 ")), qPrintable(readout()));
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    key(Qt::Key_Left, Qt::AltModifier);
    QVERIFY(!view()->canGoBack());
    QVERIFY(view()->canGoForward());
    QTRY_VERIFY(areBarsThere());
    QCOMPARE(view()->daysInView().second, day.addDays(dayCount - 1));
    key(Qt::Key_Right, Qt::AltModifier);
    QTRY_VERIFY(view()->daysInView().first <= day.addDays(1));
}

void TestChartWindow::aDayThatIsNotStoredIsTheNearestOne()
{
    open("ALFA");
    const QDate last = day.addDays(dayCount - 1);
    testsupport::ModalSteps steps;
    steps.on<vexdesk::GoToDialog>([last](vexdesk::GoToDialog* dialog) {
        QWidget* const edit = dialog->focusWidget();
        hands::keyClicks(edit, QStringLiteral("01022030"));
        const QString said = child<QLabel>(dialog, "goToReach")->text();
        QCOMPARE(said, QStringLiteral("За 01.02.2030 показать нечего: будет показан 19.01.2024"));
        QCOMPARE(dialog->day(), last);
        hands::keyClick(edit, Qt::Key_Return);
    });
    key(Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(steps.complaint(), QString());
    const QString begin = last.toString(QStringLiteral("dd.MM.yyyy"));
    QTRY_VERIFY2(readout().startsWith(begin), qPrintable(readout()));
}

void TestChartWindow::aDayBetweenThoseThatAreStoredIsTheNextOne()
{
    for (const int distance : {7, 8})
        testsupport::writeFile(store().filePath(QStringLiteral("NORD/MAIN/ALFA/") +
                                                testsupport::dayFile(day.addDays(distance))),
                               testsupport::barLines(QTime(10, 0), barCount, 100));
    open("ALFA");
    testsupport::ModalSteps steps;
    steps.on<vexdesk::GoToDialog>([](vexdesk::GoToDialog* dialog) {
        hands::keyClicks(dialog->focusWidget(), QStringLiteral("20.01"));
        QCOMPARE(child<QLabel>(dialog, "goToReach")->text(),
                 QStringLiteral("За 20.01.2024 показать нечего: будет показан 22.01.2024"));
        hands::keyClick(dialog->focusWidget(), Qt::Key_Return);
    });
    key(Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(steps.complaint(), QString());
    QCOMPARE(said(), QStringLiteral("За 20.01.2024 показать нечего: показан 22.01.2024"));
    QTRY_VERIFY2(readout().startsWith(QStringLiteral("22.01.2024 ")), qPrintable(readout()));
    // It stays as long as that is what is shown.
    QCOMPARE(said(), QStringLiteral("За 20.01.2024 показать нечего: показан 22.01.2024"));
    view()->scroll(-0.5);
    QCOMPARE(said(), QString());
}

void TestChartWindow::arrowsGoThroughTheStoredDays()
{
    for (const int distance : {7, 8})
        testsupport::writeFile(store().filePath(QStringLiteral("NORD/MAIN/ALFA/") +
                                                testsupport::dayFile(day.addDays(distance))),
                               testsupport::barLines(QTime(10, 0), barCount, 100));
    open("ALFA");
    testsupport::ModalSteps steps;
    steps.on<vexdesk::GoToDialog>([](vexdesk::GoToDialog* dialog) {
        auto* const edit = child<QLineEdit>(dialog, "goToDay");
        const auto after = [edit](const char* typed, const QList<Qt::Key>& keys) {
            testsupport::type(edit, QLatin1String(typed));
            for (const Qt::Key key : keys)
                hands::keyClick(edit, key);
            return edit->text();
        };
        QCOMPARE(after("18.01.2024", {Qt::Key_Up}), QStringLiteral("19.01.2024"));
        QCOMPARE(after("18.01.2024", {Qt::Key_Up, Qt::Key_Up}), QStringLiteral("22.01.2024"));
        QCOMPARE(after("23.01.2024", {Qt::Key_Up}), QStringLiteral("23.01.2024"));
        QCOMPARE(after("22.01.2024", {Qt::Key_Down}), QStringLiteral("19.01.2024"));
        QCOMPARE(after("15.01.2024", {Qt::Key_Down}), QStringLiteral("15.01.2024"));
        // From a day that is not stored to those around it.
        QCOMPARE(after("20.01.2024", {Qt::Key_Down}), QStringLiteral("19.01.2024"));
        QCOMPARE(after("20.01.2024", {Qt::Key_Up}), QStringLiteral("22.01.2024"));
        QCOMPARE(after("01.01.2030", {Qt::Key_Down}), QStringLiteral("23.01.2024"));
        dialog->reject();
    });
    key(Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(steps.complaint(), QString());
}

void TestChartWindow::aDayOfALeapYearCanBeTyped_data()
{
    QTest::addColumn<QString>("keys");
    for (const char* keys : {"29.02", "29.02.2020", "29022020", "29/2/20", "2020-02-29"})
        QTest::newRow(keys) << QString::fromLatin1(keys);
}

// The year that stands in the field has no such day.
void TestChartWindow::aDayOfALeapYearCanBeTyped()
{
    QFETCH(const QString, keys);
    for (const QDate date : {QDate(2020, 2, 29), QDate(2023, 3, 1), QDate(2023, 3, 2)})
        testsupport::writeFile(
            store().filePath(QStringLiteral("NORD/MAIN/LEAP/") + testsupport::dayFile(date)),
            testsupport::barLines(QTime(10, 0), barCount, 100));
    start(); // with a tree that knows it
    open("LEAP");
    testsupport::ModalSteps steps;
    steps.on<vexdesk::GoToDialog>([&keys](vexdesk::GoToDialog* dialog) {
        const auto* const edit = child<QLineEdit>(dialog, "goToDay");
        QVERIFY2(edit->text().endsWith(QStringLiteral("2023")), qPrintable(edit->text()));
        hands::keyClicks(dialog->focusWidget(), keys);
        QCOMPARE(edit->text(), keys);
        const QString reach = child<QLabel>(dialog, "goToReach")->text();
        QVERIFY2(keys == QStringLiteral("29.02.2020") || reach.startsWith(u"29.02.2020"),
                 qPrintable(reach));
        hands::keyClick(dialog->focusWidget(), Qt::Key_Return);
    });
    key(Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(steps.complaint(), QString());
    QTRY_VERIFY2(readout().startsWith(QStringLiteral("29.02.2020 ")), qPrintable(readout()));
}

void TestChartWindow::whatIsNoDateIsSaid()
{
    open("ALFA");
    const auto before = page()->state();
    testsupport::ModalSteps steps;
    steps.on<vexdesk::GoToDialog>([](vexdesk::GoToDialog* dialog) {
        QWidget* const edit = dialog->focusWidget();
        hands::keyClicks(edit, QStringLiteral("30.02"));
        const QString said = child<QLabel>(dialog, "goToReach")->text();
        QVERIFY2(said.startsWith(QStringLiteral("Это не дата")), qPrintable(said));
        hands::keyClick(edit, Qt::Key_Return);
        QVERIFY(dialog->isVisible());
        // The arrow keys go on from what was proposed.
        hands::keyClick(edit, Qt::Key_Up);
        const QString up = qobject_cast<QLineEdit*>(edit)->text();
        hands::keyClick(edit, Qt::Key_Down);
        QVERIFY(up != qobject_cast<QLineEdit*>(edit)->text());
        hands::keyClick(dialog, Qt::Key_Escape);
    });
    key(Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(steps.complaint(), QString());
    QVERIFY(page()->state() == before);
}

void TestChartWindow::aDayIsChosenInTheCalendar()
{
    open("ALFA");
    testsupport::ModalSteps steps;
    steps.on<vexdesk::GoToDialog>([](vexdesk::GoToDialog* dialog) {
        testsupport::type(child<QLineEdit>(dialog, "goToDay"), QStringLiteral("17.01.2024"));
        QTimer whenOpen;
        connect(&whenOpen, &QTimer::timeout, dialog, [&whenOpen, dialog] {
            if (!QApplication::activePopupWidget())
                return;
            whenOpen.stop();
            auto* const calendar = child<QCalendarWidget>(dialog, "goToCalendar");
            QCOMPARE(calendar->selectedDate(), QDate(2024, 1, 17));
            QWidget* const days = child<QWidget>(calendar, "qt_calendar_calendarview");
            hands::keyClick(days, Qt::Key_Left);
            hands::keyClick(days, Qt::Key_Return);
        });
        whenOpen.start(1);
        testsupport::click(child<QToolButton>(dialog, "goToCalendarButton"));
        QTRY_VERIFY(!QApplication::activePopupWidget());
        QCOMPARE(child<QLineEdit>(dialog, "goToDay")->text(), QStringLiteral("16.01.2024"));
        dialog->accept();
    });
    key(Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(steps.complaint(), QString());
    QTRY_VERIFY2(readout().startsWith(QStringLiteral("16.01.2024 ")), qPrintable(readout()));
}

void TestChartWindow::goesToAMoment()
{
    open("ALFA");
    testsupport::ModalSteps steps;
    steps.on<vexdesk::GoToDialog>([](vexdesk::GoToDialog* dialog) {
        testsupport::type(child<QLineEdit>(dialog, "goToDay"), QStringLiteral("17.01.2024"));
        auto* const time = child<QTimeEdit>(dialog, "goToTime");
        QVERIFY(!time->isEnabled());
        hands::keyClick(child<QCheckBox>(dialog, "goToHasTime"), Qt::Key_Space);
        time->setFocus();
        time->setSelectedSection(QDateTimeEdit::HourSection);
        hands::keyClicks(time, QStringLiteral("113000"));
        hands::keyClick(time, Qt::Key_Return);
    });
    key(Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(steps.complaint(), QString());
    QTRY_VERIFY2(readout().startsWith(QStringLiteral("17.01.2024 11:30 ")), qPrintable(readout()));
}

void TestChartWindow::goingToADateCanBeGivenUp()
{
    open("ALFA");
    const auto before = page()->state();
    testsupport::ModalSteps steps;
    steps.on<vexdesk::GoToDialog>(
        [](vexdesk::GoToDialog* dialog) { hands::keyClick(dialog, Qt::Key_Escape); });
    key(Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(steps.complaint(), QString());
    QVERIFY(page()->state() == before);
}

void TestChartWindow::theContextMenuHasWhatTheMenusHave()
{
    load({QStringLiteral("good")});
    open("ALFA");
    const QMenu* const menu = openContextMenu();
    QVERIFY(menu);
    QStringList view = textsOf(viewMenu());
    QCOMPARE(view.mid(0, 3), QStringList({"Найти серию", "Серии", "-"}));
    view = view.mid(3) + QStringList{"-", "Тех. анализ"};
    QCOMPARE(textsOf(menu), view);
    const QMenu* const plugin = menu->actions().constLast()->menu();
    QVERIFY(plugin);
    QCOMPARE(textsOf(plugin), QStringList{"История"});
    QCOMPARE(textsOf(plugin->actions().constFirst()->menu()),
             QStringList({"Импорт...", "Экспорт...", "Правка..."}));
    hands::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
}

void TestChartWindow::theContextMenuComesByKey()
{
    open("ALFA");
    key(Qt::Key_F10, Qt::ShiftModifier);
    QVERIFY(qobject_cast<QMenu*>(QApplication::activePopupWidget()));
    hands::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    QTRY_VERIFY(!QApplication::activePopupWidget());
}

void TestChartWindow::whatThePluginsHaveWorksFromTheContextMenu()
{
    load({QStringLiteral("good")});
    open("ALFA");
    desktest::takeCalls();
    const QMenu* const menu = openContextMenu();
    QVERIFY(menu);
    const QMenu* const history = menu->actions().constLast()->menu()->actions().at(0)->menu();
    itemOf(history, QStringLiteral("Правка..."))->trigger();
    QCOMPARE(desktest::takeCalls(), QStringList{"GOOD.Edit"});
    hands::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
}

void TestChartWindow::shortcutsOfPluginsWorkInTheChart()
{
    load({QStringLiteral("good")});
    open("ALFA");
    QCOMPARE(QApplication::focusWidget(), view());
    desktest::takeCalls();
    key(Qt::Key_I, Qt::ShiftModifier);
    QCOMPARE(desktest::takeCalls(), QStringList{"GOOD.Import"});
}

void TestChartWindow::menuItemsDoWhatTheKeysDo()
{
    open("ALFA");
    const QMenu* const scroll = itemOf(viewMenu(), QStringLiteral("Сдвинуть"))->menu();
    const QMenu* const crosshair =
        itemOf(viewMenu(), QStringLiteral("Перекрестие и отметка"))->menu();
    itemOf(scroll, QStringLiteral("К первому бару"))->trigger();
    QTRY_COMPARE(view()->daysInView().first, day);
    const double begin = view()->range().begin;
    itemOf(scroll, QStringLiteral("На экран вперёд"))->trigger();
    QVERIFY(view()->range().begin > begin);
    const double length = view()->range().length();
    itemOf(viewMenu(), QStringLiteral("Приблизить"))->trigger();
    QVERIFY(view()->range().length() < length);
    itemOf(viewMenu(), QStringLiteral("Отдалить"))->trigger();
    QVERIFY(qAbs(view()->range().length() - length) < 1);
    QTRY_VERIFY(areBarsThere());
    itemOf(crosshair, QStringLiteral("На свечу назад"))->trigger();
    QVERIFY(view()->pointed());
    for (int i = 0; i < 4; ++i)
        itemOf(crosshair, QStringLiteral("Отметить назад"))->trigger();
    QVERIFY(view()->hasMark());
    QAction* const toMark = itemOf(viewMenu(), QStringLiteral("Приблизить отмеченное"));
    QVERIFY(toMark->isEnabled());
    toMark->trigger();
    QVERIFY(view()->range().length() < length / 2);
    QVERIFY(!toMark->isEnabled());
    itemOf(viewMenu(), QStringLiteral("Назад"))->trigger();
    QVERIFY(qAbs(view()->range().length() - length) < 1);
    itemOf(crosshair, QStringLiteral("Убрать"))->trigger();
    QVERIFY(!view()->pointed());
    itemOf(scroll, QStringLiteral("К последнему бару"))->trigger();
    QCOMPARE(view()->daysInView().second, day.addDays(dayCount - 1));
}

void TestChartWindow::copiesBarsAndPicture()
{
    open("ALFA");
    key(Qt::Key_C, Qt::ControlModifier);
    // The days beside it may have to be read.
    QTRY_VERIFY2(said().startsWith(QStringLiteral("Скопировано баров: ")), qPrintable(said()));
    QVERIFY(QGuiApplication::clipboard()->text().contains(u'\t'));
    QVERIFY2(said().endsWith(QStringLiteral(", таймфрейм: 1 мин")), qPrintable(said()));
    key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(!QGuiApplication::clipboard()->image().isNull());
    QVERIFY2(said().startsWith(QStringLiteral("Картинка скопирована")), qPrintable(said()));
    // In a line of text the keys copy the text.
    filter()->setFocus();
    filter()->setText(QStringLiteral("ALF"));
    filter()->selectAll();
    key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("ALF"));
}

void TestChartWindow::namesTheCandlesThatAreCopied()
{
    const auto isOffered = [this](const char* text) {
        const QStringList texts = textsOf(viewMenu());
        return texts.contains(QString::fromUtf8(text));
    };
    QVERIFY(isOffered("Копировать бары"));
    open("ALFA");
    QTRY_VERIFY(isOffered("Копировать бары (1 мин)"));
    page()->chooseTimeframe(Timeframe::Minutes5);
    QTRY_VERIFY(isOffered("Копировать бары (5 мин)"));
    key(Qt::Key_C, Qt::ControlModifier);
    QTRY_VERIFY2(said().endsWith(QStringLiteral(", таймфрейм: 5 мин")), qPrintable(said()));
    // Longer ones are shown where the chosen ones have no room: those are copied.
    page()->chooseTimeframe(Timeframe::Minute);
    for (int i = 0; i < 30 && view()->shownTimeframe() == Timeframe::Minute; ++i)
        key(Qt::Key_Minus);
    QVERIFY(view()->shownTimeframe() > Timeframe::Minute);
    QTRY_VERIFY(!isOffered("Копировать бары (1 мин)"));
    const QString shown = vexdesk::timeframeText(view()->shownTimeframe());
    key(Qt::Key_C, Qt::ControlModifier);
    QTRY_VERIFY2(said().endsWith(QStringLiteral(", таймфрейм: ") + shown), qPrintable(said()));
}

void TestChartWindow::savesThePicture_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("written");
    QTest::addColumn<QByteArray>("begin");
    QTest::newRow("png") << QStringLiteral("chart.png") << QStringLiteral("chart.png")
                         << QByteArray("\x89PNG");
    QTest::newRow("svg") << QStringLiteral("chart.svg") << QStringLiteral("chart.svg")
                         << QByteArray("<?xml");
    QTest::newRow("no suffix") << QStringLiteral("chart") << QStringLiteral("chart.png")
                               << QByteArray("\x89PNG");
}

void TestChartWindow::savePictureAs(const QString& path)
{
    m_window->activateWindow(); // another dialog may have been there before
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    testsupport::ModalSteps steps;
    steps.on<QFileDialog>([&path](QFileDialog* dialog) {
        auto* const edit = child<QLineEdit>(dialog, "fileNameEdit");
        QVERIFY2(edit->text().contains(QStringLiteral("NORD_MAIN_ALFA")), qPrintable(edit->text()));
        edit->setText(path);
        hands::keyClick(edit, Qt::Key_Return);
    });
    steps.letPass<QMessageBox>();
    key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(steps.complaint(), QString());
}

void TestChartWindow::savesThePicture()
{
    QFETCH(const QString, name);
    QFETCH(const QString, written);
    open("ALFA");
    savePictureAs(m_directory->filePath(name));
    const QByteArray content = testsupport::readFile(m_directory->filePath(written));
    QFETCH(const QByteArray, begin);
    QVERIFY2(content.startsWith(begin), content.left(20).constData());
    // And where it is.
    QVERIFY2(said().contains(written) && said().contains(m_directory->path()), qPrintable(said()));
}

void TestChartWindow::saysWhyAPictureIsNotSaved_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<qint64>("mostBytes");
    QTest::newRow("suffix") << QStringLiteral("chart.txt") << qint64(1'000'000'000);
    QTest::newRow("full disk") << QStringLiteral("chart.svg") << qint64(16'384);
}

void TestChartWindow::saysWhyAPictureIsNotSaved()
{
    QFETCH(const QString, name);
    QFETCH(const qint64, mostBytes);
    open("ALFA");
    const QStringList before = QDir(m_directory->path()).entryList();
    const desktest::MessageBoxes boxes;
    {
        const testsupport::FileSizeLimit limit(static_cast<rlim_t>(mostBytes));
        savePictureAs(m_directory->filePath(name));
        QTRY_COMPARE(boxes.texts().size(), 1);
    }
    QVERIFY2(boxes.texts().constFirst().contains(name), qPrintable(boxes.texts().constFirst()));
    QVERIFY2(!said().contains(name), qPrintable(said()));
    QCOMPARE(QDir(m_directory->path()).entryList(), before); // no half of it either
}

void TestChartWindow::onlyTheDirectoryOfASavedPictureIsRemembered()
{
    open("ALFA");
    QDir(m_directory->path()).mkdir(QStringLiteral("good"));
    QDir(m_directory->path()).mkdir(QStringLiteral("bad"));
    savePictureAs(m_directory->filePath(QStringLiteral("good/chart.png")));
    QVERIFY(QFile::exists(m_directory->filePath(QStringLiteral("good/chart.png"))));
    {
        const desktest::MessageBoxes boxes;
        savePictureAs(m_directory->filePath(QStringLiteral("bad/chart.txt")));
        QTRY_COMPARE(boxes.texts().size(), 1);
    }
    QString begins;
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    testsupport::ModalSteps steps;
    steps.on<QFileDialog>([&begins](QFileDialog* dialog) {
        begins = dialog->directory().dirName();
        dialog->reject();
    });
    key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(steps.complaint(), QString());
    QCOMPARE(begins, QStringLiteral("good"));
}

void TestChartWindow::errorsAreToldInFrontOfTheWindow()
{
    open("ALFA");
    desktest::MessageBoxes boxes;
    QPointer<QWidget> parent;
    boxes.whileOpen([&parent](const QMessageBox* box) { parent = box->parentWidget(); });
    savePictureAs(m_directory->filePath(QStringLiteral("chart.txt")));
    QTRY_COMPARE(boxes.texts().size(), 1);
    QCOMPARE(parent.data(), m_window.get());
}

void TestChartWindow::theTreeGetsItsWidthBack()
{
    open("ALFA");
    m_window->resize(1200, 700);
    QTRY_COMPARE(m_window->width(), 1200); // a window manager answers later
    const int usual = dock()->width();
    QVERIFY(usual > 300);
    const auto squeeze = [this] {
        m_window->resize(m_window->minimumSizeHint());
        QTRY_VERIFY(dock()->width() < 200);
        m_window->resize(1200, 700);
        QTRY_COMPARE(m_window->width(), 1200);
    };
    squeeze();
    QTRY_COMPARE(dock()->width(), usual);
    // As the user has made it.
    const auto line = [this] {
        return QPoint(dock()->geometry().right() + 3, dock()->geometry().center().y());
    };
    hands::mousePress(m_window.get(), Qt::LeftButton, {}, line());
    const QPointF aside = line() - QPoint(60, 0);
    QMouseEvent move(QEvent::MouseMove, aside, m_window->mapToGlobal(aside), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(m_window.get(), &move);
    QTRY_VERIFY(dock()->width() < usual);
    hands::mouseRelease(m_window.get(), Qt::LeftButton, {}, aside.toPoint());
    const int chosen = dock()->width();
    squeeze();
    QTRY_COMPARE(dock()->width(), chosen);
    // Also where the terminal was closed while it was small.
    m_window->resize(m_window->minimumSizeHint());
    QTRY_VERIFY(dock()->width() < 200);
    start();
    m_window->resize(1200, 700);
    QTRY_COMPARE(dock()->width(), chosen);
}

void TestChartWindow::digitsChooseTimeframes()
{
    open("ALFA");
    key(Qt::Key_3, Qt::AltModifier);
    QCOMPARE(view()->timeframe(), Timeframe::Minutes5);
    key(Qt::Key_6, Qt::AltModifier);
    QCOMPARE(view()->timeframe(), Timeframe::Hour);
    key(Qt::Key_1, Qt::AltModifier); // no seconds are stored
    QCOMPARE(view()->timeframe(), Timeframe::Hour);
    const QMenu* const timeframes = itemOf(viewMenu(), QStringLiteral("Таймфрейм"))->menu();
    QCOMPARE(timeframes->actions().size(), 9);
    for (int i = 0; i < 9; ++i)
        QCOMPARE(timeframes->actions().at(i)->shortcut(),
                 QKeySequence(QStringLiteral("Alt+%1").arg(i + 1)));
}

// "Return" stands on no key.
void TestChartWindow::keysAreNamedAsTheyAreCalled()
{
    const QAction* const toMark = itemOf(viewMenu(), QStringLiteral("Приблизить отмеченное"));
    QCOMPARE(toMark->text().section(u'\t', 1), QStringLiteral("Enter"));
}

void TestChartWindow::theTabsHaveAMenu()
{
    for (const char* security : {"ALFA", "VEGA", "BETA"})
        open(security);
    const auto choose = [this](int tab, const QString& text) {
        const QPoint place = tabs()->tabBar()->tabRect(tab).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                tabs()->tabBar()->mapToGlobal(place));
        QApplication::sendEvent(tabs()->tabBar(), &event);
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu);
        itemOf(menu, text)->trigger();
        menu->close();
        QTRY_VERIFY(!QApplication::activePopupWidget());
    };
    choose(0, QStringLiteral("Закрыть"));
    QCOMPARE(titles(), QStringList({"VEGA", "BETA"}));
    choose(0, QStringLiteral("Закрыть остальные"));
    QCOMPARE(titles(), QStringList{"VEGA"});
}

void TestChartWindow::allOtherChartsAreClosed()
{
    QAction* const item = itemOf(viewMenu(), QStringLiteral("Закрыть остальные графики"));
    open("ALFA");
    QVERIFY(!item->isEnabled());
    for (const char* security : {"VEGA", "BETA"})
        open(security);
    key(Qt::Key_Tab, Qt::ControlModifier); // ALFA
    QVERIFY(item->isEnabled());
    item->trigger();
    QCOMPARE(titles(), QStringList{"ALFA"});
    QVERIFY(!item->isEnabled());
    QCOMPARE(QApplication::focusWidget(), view());
}

// The terminal may be killed, or the machine lose its power.
void TestChartWindow::howAChartStandsIsKeptWithoutAnEnd()
{
    open("ALFA");
    const auto kept = [this] {
        return vexdesk::toText(vexdesk::ChartMemory::stored().stateOf(page()->series()));
    };
    view()->zoom(0.5);
    QTRY_COMPARE_WITH_TIMEOUT(kept(), vexdesk::toText(page()->state()), 30000);
    page()->show(vexdesk::Study::VolumeByPrice, true);
    QVERIFY(kept() != vexdesk::toText(page()->state())); // not at once
    QTRY_COMPARE_WITH_TIMEOUT(kept(), vexdesk::toText(page()->state()), 30000);
}

void TestChartWindow::aPluginShowsAMoment()
{
    load({QStringLiteral("marking")});
    desktest::takeCalls();
    vexdesk::triggerCommand("MARKING.Show");
    QCOMPARE(desktest::takeCalls(), QStringList()); // the store is looked at elsewhere
    EVENTUALLY_EQUAL(desktest::calls(), QStringList{"MARKING.shown"});
    QCOMPARE(titles(), QStringList{"ALFA"});
    QTRY_VERIFY2(readout().startsWith(QStringLiteral("16.01.2024 10:30 ")), qPrintable(readout()));
    // Once more it is the same chart, and the day is enough.
    open("VEGA");
    vexdesk::triggerCommand("MARKING.ShowDay");
    EVENTUALLY_EQUAL(page()->series().securityName, QStringLiteral("ALFA"));
    QCOMPARE(titles(), QStringList({"ALFA", "VEGA"}));
    QTRY_VERIFY2(readout().startsWith(QStringLiteral("16.01.2024 10:00 ")), qPrintable(readout()));
}

void TestChartWindow::aPluginMarksBars()
{
    load({QStringLiteral("marking")});
    vexdesk::triggerCommand("MARKING.Show");
    QTRY_VERIFY2(readout().contains(QStringLiteral("Сделок не хватает")), qPrintable(readout()));
    view()->setFocus();
    for (int i = 0; i < 3; ++i)
        key(Qt::Key_Right); // out of the stretch
    QVERIFY2(!readout().contains(QStringLiteral("Сделок не хватает")), qPrintable(readout()));
    for (int i = 0; i < 3; ++i)
        key(Qt::Key_Left);
    QVERIFY2(readout().contains(QStringLiteral("Сделок не хватает")), qPrintable(readout()));
    vexdesk::triggerCommand("MARKING.Learn");
    QTRY_VERIFY2(readout().contains(QStringLiteral("Сделки найдены")), qPrintable(readout()));
}

void TestChartWindow::aPluginCannotShowWhatIsNotStored()
{
    load({QStringLiteral("marking")});
    desktest::takeCalls();
    vexdesk::triggerCommand("MARKING.ShowNothing");
    EVENTUALLY_EQUAL(desktest::calls(), QStringList(5, QStringLiteral("MARKING.not shown")));
    QVERIFY2(said().contains(QStringLiteral("нет серии NORD/MAIN/")), qPrintable(said()));
    QVERIFY(isStartPageShown());
}

void TestChartWindow::aDayThatAPluginShowsMayBeMissing()
{
    load({QStringLiteral("marking")});
    desktest::takeCalls();
    vexdesk::triggerCommand("MARKING.ShowMissingDay");
    EVENTUALLY_EQUAL(desktest::calls(), QStringList{"MARKING.no day"});
    QCOMPARE(titles(), QStringList{"ALFA"});
    const QString start = QStringLiteral("В хранилище нет дня 16.01.2025 серии NORD/MAIN/ALFA");
    QVERIFY2(said().startsWith(start), qPrintable(said()));
}

// What is to be shown comes to nothing with the plug-in that wants it.
void TestChartWindow::aPluginThatGoesIsToldNothing()
{
    load({QStringLiteral("marking")});
    desktest::takeCalls();
    vexdesk::triggerCommand("MARKING.Show");
    m_loader->unload();
    const QStringList calls = desktest::takeCalls();
    const qsizetype before = calls.size();
    QVERIFY2(!calls.contains(QStringLiteral("MARKING.shown")), qPrintable(calls.join(u' ')));
    for (int i = 0; i < 100; ++i)
        QCoreApplication::processEvents();
    QVERIFY(before > 0 && desktest::takeCalls().isEmpty());
    QVERIFY(isStartPageShown());
}

void TestChartWindow::theTerminalComesToTheFrontWithTheChart_data()
{
    QTest::addColumn<bool>("isMinimized");
    QTest::newRow("behind another window") << false;
    QTest::newRow("minimized") << true;
}

void TestChartWindow::theTerminalComesToTheFrontWithTheChart()
{
    QFETCH(const bool, isMinimized);
    load({QStringLiteral("marking")});
    QDialog window(nullptr, Qt::Window); // such as plug-ins have them
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.setGeometry(m_window->geometry().adjusted(60, 60, -60, -60));
    if (isMinimized)
        m_window->showMinimized();
    vexdesk::triggerCommand("MARKING.Show");
    EVENTUALLY(m_window->isActiveWindow() && !m_window->isMinimized());
    // Only a real screen knows what hides what.
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return;
    const auto inFront = [&] { return QApplication::topLevelAt(window.geometry().center()); };
    EVENTUALLY_EQUAL(inFront(), static_cast<QWidget*>(m_window.get()));
}

void TestChartWindow::aPluginThatFailsToStartIsNotAskedForMarks()
{
    load({QStringLiteral("throwing"), QStringLiteral("marking")});
    vexdesk::triggerCommand("MARKING.Show");
    QTRY_VERIFY2(readout().contains(QStringLiteral("Сделок не хватает")), qPrintable(readout()));
}

void TestChartWindow::aPluginThatGoesTakesItsMarksAlong()
{
    load({QStringLiteral("marking")});
    vexdesk::triggerCommand("MARKING.Show");
    QTRY_VERIFY2(readout().contains(QStringLiteral("Сделок не хватает")), qPrintable(readout()));
    QVERIFY(m_core->charts());
    m_loader->unload();
    QTRY_VERIFY2(!readout().contains(QStringLiteral("Сделок не хватает")), qPrintable(readout()));
    m_window.reset();
    QVERIFY(!m_core->charts());
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    TestChartWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_chartwindow.moc"
