// SPDX-License-Identifier: MIT
#pragma once

#include "json.h"
#include "serieshealth.h"

#include <QtCore/QTime>

namespace tadata {

/// What is known of a series, for programs.
Json healthReport(const SeriesHealth& health);

/// The days that lack bars, ascending: those with a gap and those without a file.
QList<QDate> daysToAskFor(const SeriesHealth& health);

/// A time of the results.
QTime timeOfSecond(int second);

} // namespace tadata
