// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtGui/QKeySequence>
#include <QtWidgets/QMainWindow>

#include <functional>
#include <memory>

class CommandContainer;
class QAction;
class QDockWidget;
class QLabel;
class QStackedWidget;

namespace vexdesk {

class ChartCommands;
class Charts;
class ChartTabs;
class DealsFeed;
class GuideWindow;
class LanguageChoice;
class MarkSources;
class MenuBuilder;
class PendingClose;
class PluginLoader;
class SeriesTree;
struct SeriesName;
class StartPage;
class StatusLink;

/// The terminal's window: the menus, the charts or, while there are none, the start page, the tree
/// of the stored series, and in the status bar what became of the plug-ins. Its own commands go the
/// same way as those of plug-ins, through ActionManager. The core's charts are its own.
///
/// Closing it closes every other window of the terminal first; one that refuses keeps it open.
/// Where such a window closes by itself, having ended its work, before the user does anything else,
/// this one follows.
class MainWindow final : public QMainWindow
{
    Q_OBJECT

public:
    /// `loader` must live as long as the window; the window follows it.
    explicit MainWindow(const PluginLoader& loader, QWidget* parent = nullptr);
    ~MainWindow() override;

    /// Whether the user has closed the window only to see the terminal again in another language.
    bool isRestartWanted() const { return m_restartWanted; }

    /// Fills today's deals of all securities with made-up ones for as long as the window lives, or
    /// takes them out again. While they are there the status bar says so.
    void setDemoDeals(bool on);

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    struct OwnCommand
    {
        QByteArray id;
        QString text;
        QKeySequence shortcut;
    };

    void addOwnCommands();
    void addCommand(CommandContainer* menu, const OwnCommand& own,
                    const std::function<void()>& run);
    /// Shows the text in the status bar while the command is the current item of its open menu.
    void explainCommand(const QByteArray& id, const QString& text);
    void addCharts();
    void addSeries();
    void openChart(const SeriesName& series);
    void findSeries();
    void toggleSeries();
    void leaveSeries();
    void giveSeriesTheirWidth();
    void showChartsOrStart();
    void showChartMenu(const QPoint& globalPlace);
    void addStatusBar();
    void keepLinksLast();
    void showOptions();
    void showPlugins();
    /// Raises a new trading day by hand, whatever the date.
    void beginNewDay();
    void showGuide();
    void showAbout();
    void updatePlugins();
    void closeToRestart();
    /// The first one that refuses; null once all are closed.
    QWidget* closeOtherWindows();

    const PluginLoader& m_loader;
    LanguageChoice* m_languageChoice;
    QPointer<GuideWindow> m_guide;
    PendingClose* m_pendingClose;
    bool m_restartWanted = false;
    QSet<QByteArray> m_ownCommands;
    MarkSources* m_marks = nullptr;
    ChartTabs* m_chartTabs = nullptr;
    ChartCommands* m_chartCommands = nullptr;
    std::unique_ptr<Charts> m_charts;
    std::unique_ptr<MenuBuilder> m_menuBuilder;
    QStackedWidget* m_pages = nullptr;
    StartPage* m_startPage = nullptr;
    SeriesTree* m_seriesTree = nullptr;
    QDockWidget* m_seriesDock = nullptr;
    int m_seriesWidth = 0; // as the user wants it; a small window may have no room for it
    int m_widthBefore = 0; // of the dock, when the mouse went down
    QLabel* m_loadedLabel = nullptr;
    StatusLink* m_refusedLink = nullptr;
    StatusLink* m_problemsLink = nullptr; // null without a core
    QLabel* m_demoDealsLabel = nullptr;
    std::unique_ptr<DealsFeed> m_demoDeals; // null while there are none
};

} // namespace vexdesk
