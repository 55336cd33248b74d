// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/restorepoint.h>

#include <QtWidgets/QWidget>

class QLabel;
class QSpinBox;

/// The widget of the options page: how many restore points stay. User-interface thread.
class RestorePointsForm final : public QWidget
{
    Q_OBJECT

public:
    explicit RestorePointsForm(QWidget* parent = nullptr);
    ~RestorePointsForm() override;

    using QWidget::show;
    /// Shows these limits. What is larger than the boxes take stays as it is while nobody changes
    /// it.
    void show(const vexdesk::RestoreLimits& limits);
    /// What is shown.
    vexdesk::RestoreLimits limits() const;

private:
    void explain();

    QSpinBox* const m_keep;
    QSpinBox* const m_megabytes;
    QLabel* const m_explanation;
    vexdesk::RestoreLimits m_shown;
};
