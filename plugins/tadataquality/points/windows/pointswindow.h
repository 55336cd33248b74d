// SPDX-License-Identifier: MIT
#pragma once

#include "backgroundtask.h"
#include "pointfiles.h"
#include "toolwindow.h"
#include "undo.h"

#include <QtCore/QDir>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QTimer>

#include <chrono>
#include <optional>
#include <vector>

class PointFilesModel;
class PointsModel;
class QLabel;
class QProgressBar;
class QPushButton;
class QTreeView;

/// The window "Точки восстановления": the restore points of a store, what the chosen one's command
/// did and what putting it back would do; puts points back and removes old ones. It follows what
/// other programs do to the points. User-interface thread; all reading and writing is done in
/// another.
class PointsWindow final : public tadata::ToolWindow
{
    Q_OBJECT

public:
    explicit PointsWindow(QWidget* parent = nullptr);
    /// Of the store with this root; a command waits so long for the locks of its series.
    PointsWindow(const QDir& root, std::chrono::milliseconds wait, QWidget* parent = nullptr);
    /// Waits for what is being put back.
    ~PointsWindow() override;

    void reject() override;

Q_SIGNALS:
    /// A point was put back.
    void storeChanged();

protected:
    void changeEvent(QEvent* event) override;

private:
    struct PlacedPoints
    {
        vexdesk::RestorePlace place;
        vexdesk::RestorePoints found;
    };
    using Points = vexdesk::Result<PlacedPoints>;

    QWidget* makePointsPart();
    QWidget* makeFilesPart();
    QWidget* makeButtons();

    static Points pointsOf(const QDir& root);
    void read();
    void showPoints(const Points& points);
    void watch();
    void choose();
    void showFiles(const std::vector<tadata::PointFile>& files);
    void check();
    void showCheck(const tadata::UndoCheck& check, bool isWorkKnown);
    /// The chosen point, if there is one.
    std::optional<vexdesk::RestorePointRecord> chosen() const;

    void putBack(bool isForced);
    void showPutBack(const tadata::UndoResult& result);
    void askForForce(const QStringList& forbidding);
    void freeSpace();
    void showFreed(const vexdesk::Outcome& outcome);
    /// What the user is to know, in the last line.
    void say(const QString& text, bool isWarning = false);
    /// A command has begun or ended.
    void setAtWork(bool isAtWork);
    void updateButtons();

    const QDir m_root;
    const std::chrono::milliseconds m_wait;
    PointsModel* const m_points;
    PointFilesModel* const m_files;
    QTreeView* const m_pointsView;
    QTreeView* const m_filesView;
    QLabel* const m_summary;
    QLabel* const m_effect;
    QLabel* const m_status;
    QProgressBar* const m_progress;
    QPushButton* m_putBack = nullptr;
    QPushButton* m_freeSpace = nullptr;
    QFileSystemWatcher m_watcher;
    QTimer m_later;                // several changes at once are looked at once
    vexdesk::RestorePlace m_place; // of the points that are shown
    QString m_shownId;
    bool m_isAtWork = false;

    // Last, so that they end before what they tell of goes.
    tadata::BackgroundTask<Points> m_reading;
    tadata::BackgroundTask<std::vector<tadata::PointFile>> m_listing;
    tadata::BackgroundTask<tadata::UndoCheck> m_checking;
    tadata::BackgroundTask<tadata::UndoResult> m_undoing;
    tadata::BackgroundTask<vexdesk::Outcome> m_freeing;
};
