// SPDX-License-Identifier: MIT
#include "seriesday.h"

namespace tadata {

vexdesk::SeriesName seriesNamed(const QString& path)
{
    return {path.section(u'/', 0, 0), path.section(u'/', 1, 1), path.section(u'/', 2)};
}

QString pathOf(const vexdesk::SeriesName& series)
{
    return QStringLiteral("%1/%2/%3").arg(series.stockCode, series.boardCode, series.securityName);
}

} // namespace tadata
