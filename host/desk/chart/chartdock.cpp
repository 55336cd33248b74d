// SPDX-License-Identifier: MIT
#include "desk/chart/chartdock.h"

#include "desk/chart/chartcontent.h"

namespace vexdesk {

ChartDock::ChartDock(QWidget* parent)
    : QDockWidget(tr("График"), parent)
{
    setObjectName(QStringLiteral("chartDock"));
}

ChartDock::~ChartDock() = default;

bool ChartDock::hasChart()
{
    return isChartBuilt();
}

void ChartDock::showEvent(QShowEvent* event)
{
    if (!widget()) {
        QWidget* const content = makeChartContent();
        constexpr QSize smallest(400, 300);
        content->setMinimumSize(smallest);
        setWidget(content);
    }
    QDockWidget::showEvent(event);
}

} // namespace vexdesk
