// SPDX-License-Identifier: MIT
#pragma once

#include "barexporter.h"
#include "exportdetails.h"
#include "job.h"

namespace tadata {

/// The progress that a scan of deals goes on from, and where it shows its own.
struct DealsProgress
{
    int start = 0;
    ProgressSink show;
};

/// Folds today's deals of the series, from the terminal's table "all_deals", into bars and writes
/// each when it is finished, by an exporter of the same settings. Does nothing for a security that
/// the security directory does not know, and where the terminal has no such tables.
///
/// Deals are taken in the order of their arrival. A deal's moment is the venue's wall clock as if
/// it were UTC: whatever the local time zone, its day is today's when its clock showed today.
///
/// Any thread: the table is locked during the scan. Throws Exception, with the table unlocked, when
/// a field has a type that deals do not have, or a key that it cannot take.
void exportDeals(const ExportDetails& details, const QDate& today, const DealsProgress& progress,
                 BarExporter& exporter);

} // namespace tadata
