// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QProgressDialog>

/// Shows the progress of a job that cannot be cancelled: a title bar with a minimise button, no
/// cancel button and no close button, and neither Escape nor the window system closes it. The
/// command that made it calls close() when the job has ended.
class JobProgressDialog final : public QProgressDialog
{
    Q_OBJECT

public:
    JobProgressDialog(const QString& title, const QString& text);

    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;
};
