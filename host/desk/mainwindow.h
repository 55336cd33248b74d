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
class QLabel;

namespace vexdesk {

class ChartDock;
class DealsFeed;
class GuideWindow;
class LanguageChoice;
class MenuBuilder;
class PluginLoader;
class StartPage;
class StatusLink;

/// The terminal's window: the menus, the start page, and in the status bar what became of the
/// plug-ins. Its own commands go the same way as those of plug-ins, through ActionManager.
///
/// Closing it closes every other window of the terminal first; one that refuses keeps it open.
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
    void closeEvent(QCloseEvent* event) override;

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
    /// The menu item of a command of the terminal. The builder keeps it for as long as the command
    /// is in the menu.
    QAction* menuItem(const QByteArray& id) const;
    void addChart();
    void toggleChart();
    void addStatusBar();
    void keepLinksLast(QWidget* lastRow);
    void showOptions();
    void showPlugins();
    /// Raises a new trading day by hand, whatever the date.
    void beginNewDay();
    void showGuide();
    void showAbout();
    void updatePlugins();
    void closeToRestart();
    bool closeOtherWindows();

    const PluginLoader& m_loader;
    LanguageChoice* m_languageChoice;
    QPointer<GuideWindow> m_guide;
    bool m_restartWanted = false;
    QSet<QByteArray> m_ownCommands;
    std::unique_ptr<MenuBuilder> m_menuBuilder;
    StartPage* m_startPage = nullptr;
    ChartDock* m_chartDock = nullptr;
    QLabel* m_loadedLabel = nullptr;
    StatusLink* m_refusedLink = nullptr;
    StatusLink* m_problemsLink = nullptr; // null without a core
    QLabel* m_demoDealsLabel = nullptr;
    std::unique_ptr<DealsFeed> m_demoDeals; // null while there are none
};

} // namespace vexdesk
