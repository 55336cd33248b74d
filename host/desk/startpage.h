// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/icharts.h>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QSet>
#include <QtCore/QStringList>
#include <QtCore/QTimer>
#include <QtWidgets/QScrollArea>

class Command;
class CommandContainer;
class QBoxLayout;
class QLabel;
class QVBoxLayout;

namespace vexdesk {

/// What the main window shows while no chart is open: the commands that plug-ins have put into the
/// menus as rows to click, beside them, or below where there is no room, the series that were
/// charts last, where the terminal keeps its data, and, without plug-ins, where they are looked
/// for.
///
/// The rows of commands follow ActionManager as the menus do: with the next turn of the event loop,
/// the enabled state at once.
class StartPage final : public QScrollArea
{
    Q_OBJECT

public:
    /// `ownCommands` are the terminal's own: they are in the menus and not on this page.
    explicit StartPage(QSet<QByteArray> ownCommands, QWidget* parent = nullptr);
    ~StartPage() override;

    /// Without a loaded plug-in the page names the directories that were searched.
    void setPlugins(qsizetype loadedCount, const QStringList& directories);

    /// The series to offer, the first one first; of many, some.
    void setRecent(const QList<SeriesName>& series);

    /// Brings the rows up to date without waiting for the event loop.
    void rebuild();
    /// The first row and the last one, null without any.
    QWidget* firstRow() const;
    QWidget* lastRow() const;

Q_SIGNALS:
    /// The rows were made anew.
    void rebuilt();
    /// The user wants to see this series again.
    void seriesChosen(const vexdesk::SeriesName& series);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Row
    {
        QString heading; ///< the titles of the menus on the way to the command
        const Command* command = nullptr;
    };

    void collect(const CommandContainer& container, const QString& heading, QList<Row>* rows) const;
    QWidget* makeHeader();
    void updateEnabled(const QByteArray& commandId);
    void updateColumns();
    void orderRows();
    void bringIntoView(QWidget* focused);

    /// Rows below each other, headings and buttons in their order.
    struct Column
    {
        QVBoxLayout* layout = nullptr;
        QList<QWidget*> rows;
        int width = 0; // that the widest of them needs

        void clear();
        void add(QWidget* row);
        void addHeading(const QString& text);
    };

    QSet<QByteArray> m_ownCommands;
    QBoxLayout* m_columns = nullptr;
    Column m_commands;
    Column m_recent;
    QLabel* m_hint = nullptr;
    QTimer m_rebuildSoon; // with the next turn of the event loop
};

} // namespace vexdesk
