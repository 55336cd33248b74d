// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/restorepoint.h>

#include <QtCore/QSet>
#include <QtWidgets/QDialog>

class QLabel;
class QPushButton;
class QSpinBox;

/// Asks how many restore points are to stay, and shows what would go. User-interface thread.
class FreeSpaceDialog final : public QDialog
{
    Q_OBJECT

public:
    /// The points, the newest first, the ids of those whose command runs, and the limits to begin
    /// with.
    FreeSpaceDialog(const QList<vexdesk::RestorePointRecord>& points, const QSet<QString>& running,
                    const vexdesk::RestoreLimits& limits, QWidget* parent);
    ~FreeSpaceDialog() override;

    vexdesk::RestoreLimits limits() const;

private:
    void showPreview();

    const QList<vexdesk::RestorePointRecord> m_points;
    const QSet<QString> m_running;
    QSpinBox* const m_keep;
    QSpinBox* const m_megabytes;
    QLabel* const m_preview;
    QPushButton* m_remove = nullptr;
};
