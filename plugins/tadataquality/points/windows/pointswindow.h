// SPDX-License-Identifier: MIT
#pragma once

#include "backgroundtask.h"
#include "directorywatch.h"
#include "pointfiles.h"
#include "storepoints.h"
#include "toolwindow.h"
#include "undo.h"

#include <QtCore/QDir>
#include <QtCore/QTimer>

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

class PointFilesModel;
class PointsModel;
class QLabel;
class QMessageBox;
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
    /// Waits for what is being put back, and for nothing that is only looked at.
    ~PointsWindow() override;

    void reject() override;

Q_SIGNALS:
    /// A point was put back.
    void storeChanged();

protected:
    void changeEvent(QEvent* event) override;

private:
    using Points = vexdesk::Result<tadata::StorePoints>;

    QWidget* makePointsPart();
    QWidget* makeFilesPart();
    QWidget* makeButtons();

    void read();
    void showPoints(const Points& points);
    void showSummary(const tadata::StorePoints& points);
    void watch();
    void choose();
    void showFiles(const std::vector<tadata::PointFile>& files);
    void check();
    void showCheck(const tadata::UndoCheck& check, bool isWorkKnown);
    /// The chosen point, if there is one.
    std::optional<vexdesk::RestorePointRecord> chosen() const;

    /// Whether nothing of a command that was interrupted is left to be put back.
    bool isSettled(const vexdesk::RestorePointRecord& point) const;
    /// What the button does: where it is not known what would be replaced it asks before.
    void putChosenBack();
    void putBack(const QString& id, bool isForced);
    void showPutBack(const QString& id, const tadata::UndoResult& result);
    void askForInterrupted(const vexdesk::RestorePointRecord& point);
    void askForForce(const QString& id, const QStringList& forbidding);
    /// A question about putting a point back, with the button that says yes.
    QMessageBox* makeQuestion(const char* name, const QString& title, const QString& text,
                              const QString& yes, const std::function<void()>& run);
    void freeSpace();
    void showFreed(const vexdesk::Outcome& outcome);
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
    QProgressBar* const m_progress;
    QPushButton* m_putBack = nullptr;
    QPushButton* m_freeSpace = nullptr;
    QTimer m_later; // several changes at once are looked at once
    QTimer m_again; // while a command is at work elsewhere: no file tells of its death
    vexdesk::RestorePlace m_place; // of the points that are shown
    QSet<QString> m_running;       // ids
    QSet<QString> m_putBackPoints; // likewise
    QString m_shownId;
    bool m_isAtWork = false;

    tadata::DirectoryWatch m_watch{this, [this] { m_later.start(); }};
    // Last, so that they end before what they tell of goes.
    tadata::BackgroundTask<Points> m_reading{tadata::AtEnd::Leaves};
    tadata::BackgroundTask<std::vector<tadata::PointFile>> m_listing{tadata::AtEnd::Leaves};
    tadata::BackgroundTask<tadata::UndoCheck> m_checking{tadata::AtEnd::Leaves};
    tadata::BackgroundTask<tadata::UndoResult> m_undoing;
    tadata::BackgroundTask<vexdesk::Outcome> m_freeing;
};
