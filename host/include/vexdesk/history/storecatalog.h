#pragma once

#include <vexdesk/export.h>

#include <QtCore/QDate>
#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QString>

namespace vexdesk {

/// What a store holds of one series at one timeframe.
struct StoredSeries
{
    QString stockCode;
    QString boardCode;
    QString securityName;
    int timeframe = 0; ///< in seconds
    qint64 dayFiles = 0;
    QDate firstDay;
    QDate lastDay;
    qint64 bytes = 0;
};

/// Lists a store by its day files, in the order of codes (by code unit) and timeframe. Files with
/// other names and directories that cannot be read are passed over. Any thread.
VEXDESK_HISTORY_EXPORT QList<StoredSeries> listStore(const QDir& root);

} // namespace vexdesk
