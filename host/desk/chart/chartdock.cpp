// SPDX-License-Identifier: MIT
#include "desk/chart/chartdock.h"

#include "desk/chart/chartpanel.h"

#include <vexdesk/history/storepaths.h>

namespace vexdesk {

ChartDock::ChartDock(QWidget* parent)
    : QDockWidget(tr("График"), parent)
{
    setObjectName(QStringLiteral("chartDock"));
}

ChartDock::~ChartDock() = default;

void ChartDock::showEvent(QShowEvent* event)
{
    if (!widget()) {
        QWidget* const content = new ChartPanel(storeRoot().path());
        constexpr QSize smallest(400, 300);
        content->setMinimumSize(smallest);
        setWidget(content);
    }
    QDockWidget::showEvent(event);
}

} // namespace vexdesk
