// SPDX-License-Identifier: MIT
#include "desk/chart/chartcontent.h"

#include "desk/chart/chartpanel.h"

#include <vexdesk/history/storepaths.h>

namespace vexdesk {

bool isChartBuilt()
{
    return true;
}

QWidget* makeChartContent()
{
    return new ChartPanel(storeRoot().path());
}

} // namespace vexdesk
