// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QSet>
#include <QtCore/QStringList>
#include <QtCore/QTimer>
#include <QtWidgets/QScrollArea>

class Command;
class CommandContainer;
class QLabel;
class QVBoxLayout;

namespace vexdesk {

/// What the main window shows first: the commands that plug-ins have put into the menus as rows to
/// click, where the terminal keeps its data, and, without plug-ins, where they are looked for.
///
/// The rows follow ActionManager as the menus do: with the next turn of the event loop, the enabled
/// state at once.
class StartPage final : public QScrollArea
{
    Q_OBJECT

public:
    /// `ownCommands` are the terminal's own: they are in the menus and not on this page.
    explicit StartPage(QSet<QByteArray> ownCommands, QWidget* parent = nullptr);
    ~StartPage() override;

    /// Without a loaded plug-in the page names the directories that were searched.
    void setPlugins(qsizetype loadedCount, const QStringList& directories);

    /// Brings the rows up to date without waiting for the event loop.
    void rebuild();

Q_SIGNALS:
    /// The rows were made anew; `last` is the last of them, null without one.
    void rebuilt(QWidget* last);

private:
    struct Row
    {
        QString heading; ///< the titles of the menus on the way to the command
        const Command* command = nullptr;
    };

    void collect(const CommandContainer& container, const QString& heading, QList<Row>* rows) const;
    QWidget* makeHeader();
    void updateEnabled(const QByteArray& commandId);

    QSet<QByteArray> m_ownCommands;
    QList<QWidget*> m_rowWidgets; // headings and buttons in their order
    QVBoxLayout* m_rowLayout = nullptr;
    QLabel* m_hint = nullptr;
    QTimer m_rebuildSoon; // with the next turn of the event loop
};

} // namespace vexdesk
