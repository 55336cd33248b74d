// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtGui/QKeySequence>

#include <functional>
#include <vector>

class Action;
class Command;
class CommandContainer;
class QWidget;

namespace vexdesk {

class ChartPage;
class ChartTabs;
class MenuBuilder;

/// The commands for the chart in front, in the menu "Вид": all that can be done with it, also by
/// its own keys and buttons. They go through ActionManager as those of plug-ins do. User-interface
/// thread only.
class ChartCommands final : public QObject
{
    Q_OBJECT

public:
    /// `window` has the tabs and is the parent of the dialogs; `view` is the menu. All must live as
    /// long as the commands.
    ChartCommands(ChartTabs& tabs, CommandContainer& view, QWidget& window);
    ~ChartCommands() override;

    QSet<QByteArray> ids() const;
    /// Gives the items of the menus their check marks from now on.
    void checkItems(const MenuBuilder& builder);

private:
    using Run = std::function<void(ChartPage&)>;
    using Test = std::function<bool(ChartPage&)>;

    struct Entry
    {
        QByteArray id;
        QString text;
        QKeySequence shortcut;
        Run run;
        Test canRun = {};    // whether there are bars, where it is not given
        Test isChecked = {}; // for those with a check mark
        Action* action = nullptr;
    };
    /// Whether the menu's item has the key, or the chart takes it when it has the focus.
    enum class KeyOwner { Item, Chart };

    void addMoves(CommandContainer& view);
    void addScrolls();
    void addCrosshair();
    void addTimeframes();
    void addStudies(CommandContainer& view);
    void addZooms(CommandContainer& view);
    void addCopies(CommandContainer& view);
    void addTabs(CommandContainer& view);
    Command& add(CommandContainer& menu, const char* group, KeyOwner owner, Entry entry);
    void run(const Run& run);
    void update();
    void nameCopiedBars();
    void askForDay(ChartPage& page);
    void forgetPlace();
    void askForPicture(ChartPage& page);

    ChartTabs& m_tabs;
    QWidget& m_window;
    bool m_isPlaceTold = false; // what is told last is where the chart was taken
    const MenuBuilder* m_builder = nullptr;
    std::vector<Entry> m_entries;
    Command* m_copyBars = nullptr; // is called after the candles that are shown
};

} // namespace vexdesk
