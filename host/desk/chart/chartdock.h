// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QDockWidget>

namespace vexdesk {

/// The terminal's dock with the chart of stored bars. What it holds is made when it is shown for
/// the first time. User-interface thread only; owned by the window.
class ChartDock final : public QDockWidget
{
    Q_OBJECT

public:
    explicit ChartDock(QWidget* parent = nullptr);
    ~ChartDock() override;

protected:
    void showEvent(QShowEvent* event) override;
};

} // namespace vexdesk
