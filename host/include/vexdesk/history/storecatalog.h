// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QDate>
#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace vexdesk {

/// What a store holds of one series at one timeframe. Bytes of a directory's name that are no UTF-8
/// stand in its code as U+DC80 to U+DCFF, so that no two names have the same code; such a code is
/// no path.
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

/// What was found in a store.
struct StoreCatalog
{
    QList<StoredSeries> series; ///< in the order of codes (by code unit) and timeframe
    QStringList unreadable;     ///< the paths of directories that could not be read to their end
    QStringList lostLinks;      ///< day files and directories of which only a link is there
};

/// Lists a store by its day files. Files with other names are passed over. Any thread.
VEXDESK_HISTORY_EXPORT StoreCatalog storeCatalog(const QDir& root);
/// The series alone, for those who do not ask what could not be read.
VEXDESK_HISTORY_EXPORT QList<StoredSeries> listStore(const QDir& root);

} // namespace vexdesk
