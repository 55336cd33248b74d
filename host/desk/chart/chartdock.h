// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QDockWidget>

namespace vexdesk {

/// The terminal's dock with the chart of stored bars. In a build without Qt Charts it says so
/// instead. What it holds is made when it is shown for the first time.
/// User-interface thread only; owned by the window.
class ChartDock final : public QDockWidget
{
    Q_OBJECT

public:
    explicit ChartDock(QWidget* parent = nullptr);
    ~ChartDock() override;

    /// Whether this build has a chart.
    static bool hasChart();

protected:
    void showEvent(QShowEvent* event) override;
};

} // namespace vexdesk
